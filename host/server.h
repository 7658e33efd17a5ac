// The web server: connections, routing, limits.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "host/page_table.h"
#include "host/rate_guard.h"
#include "host/servlet_runner.h"

namespace host {

inline constexpr std::size_t kDefaultMaxUpload = 64 * 1024 * 1024;
inline constexpr unsigned kMaxConnections = 1024;  // fewer where the system grants too few open files
inline constexpr unsigned kMaxConnectionsPerAddress = 256;
inline constexpr unsigned kIdleSeconds = 15;                    // a connection without traffic is dropped
inline constexpr std::size_t kMaxTarget = 8 * 1024;             // of a request; 414 beyond
inline constexpr std::size_t kMaxConnectionMemory = 32 * 1024;  // request line and headers together

struct MountReply {
  int status = 200;
  std::string contentType;
  std::string body;
};

// Something served under "/simulator/", beside the handlers' turn, to loopback clients only. `query` holds decoded
// fields. Called from several threads; must not throw and must not wait for a handler.
using Mount = std::function<MountReply(const std::string& method, const std::string& path,
                                       const std::map<std::string, std::string>& query, const std::string& body)>;

struct ServerSettings {
  std::filesystem::path root;         // of the phone's file tree
  std::string address = "127.0.0.1";  // numeric, IPv4 or IPv6
  std::uint16_t port = 0;             // 0: any free one
  std::size_t maxUpload = kDefaultMaxUpload;
  std::chrono::milliseconds rateWindow = kDefaultRateWindow;  // of the pace that a sender must keep
  bool accessLog = true;
  std::string tlsCertificate, tlsKey;  // PEM texts; both empty: plain HTTP
  Mount simulator;                     // may be empty
  Device device;
};

// Serves from its making until stop(). The page table must outlive it; it is not destroyed by the server.
class Server {
 public:
  // Throws std::runtime_error when the address cannot be listened on.
  Server(PageTable& pages, ServerSettings settings);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t port() const;
  // "http://127.0.0.1:41234"
  std::string url() const;

  // Ends the waits of handlers and clients and closes every connection. False when a handler does not return within
  // `patience`: then its thread still runs, and the process had better end at once.
  bool stop(std::chrono::milliseconds patience = std::chrono::milliseconds(700));

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
