// How a server is set up.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/device.h"
#include "host/rate_guard.h"

namespace host {

inline constexpr std::size_t kDefaultMaxUpload = 64 * 1024 * 1024;

struct MountReply {
  int status = 200;
  std::string contentType;
  std::string body;
};

// Something served under "/simulator/", beside the handlers' turn, to loopback clients only. `query` holds decoded
// fields. Called from several threads; must not throw and must not wait for a handler.
using Mount = std::function<MountReply(const std::string& method, const std::string& path,
                                       const std::map<std::string, std::string>& query, const std::string& body)>;

// A folder that users of the phone fill, for those who are logged in: "/media/user/sound/" and "data/userdata/sound",
// which lies below the root.
struct UserFolder {
  std::string prefix;  // of its files' addresses
  std::filesystem::path folder;
};

struct ServerSettings {
  std::filesystem::path root;         // of the phone's file tree
  std::string address = "127.0.0.1";  // numeric, IPv4 or IPv6; empty: only HTTPS, below
  std::uint16_t port = 0;             // 0: any free one
  std::string tlsAddress;             // of HTTPS with the device's certificate; empty: none
  std::uint16_t tlsPort = 0;
  std::vector<std::string> names;  // further names of the phone, as hostName() gives them
  std::size_t maxUpload = kDefaultMaxUpload;
  std::chrono::milliseconds rateWindow = kDefaultRateWindow;  // of the pace that a sender must keep
  bool accessLog = true;
  bool rights = true;                  // templates say who may see and do what, see rights_table.h
  std::string tlsCertificate, tlsKey;  // PEM texts: HTTPS at `address`; both empty: plain HTTP
  std::vector<UserFolder> userFolders;
  Mount simulator;  // may be empty
  Device device;
};

}  // namespace host
