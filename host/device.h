// What the host asks about the device it runs on.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace host {

// Each may be empty, but for `certificates` where there is HTTPS with them. Called from several threads.
struct Device {
  std::function<bool()> rebooting;             // true: every page is answered with 503
  std::function<std::uint64_t()> rebootCount;  // a change means that all sessions are gone
  // PEM files, each with certificates and their key: the first that is there is shown. Asked before each handshake.
  std::function<std::vector<std::string>()> certificates = {};
  // The level code of a visibility key, and the identity behind what a session holds as its user ("admin", "var",
  // "user", or empty for none of them). Without them everyone has all rights.
  std::function<std::string(const std::string& key)> level = {};
  std::function<std::string(const std::string& user)> identity = {};
};

}  // namespace host
