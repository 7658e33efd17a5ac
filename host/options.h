// The command line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/server_settings.h"

namespace host {

struct Options {
  std::filesystem::path root, rootfs, module, pages;
  std::string address, tlsAddress;  // empty: not given
  std::uint16_t port = 0, tlsPort = 0;
  std::vector<std::string> names;  // as hostName() gives them
  std::size_t maxUpload = kDefaultMaxUpload;
  std::filesystem::path tlsCertificate, tlsKey;
  std::string state;  // JSON: what the phone in software starts with
  bool quiet = false, help = false, rights = true;
};

// Fills what is not given with the defaults that follow from where the program lies. False, with `error` set, when the
// arguments are wrong.
bool parseOptions(const std::vector<std::string>& arguments, const std::filesystem::path& programFolder,
                  Options& options, std::string& error);

extern const char* const kUsage;

}  // namespace host
