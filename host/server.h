// The web server: connections and their limits.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/server_settings.h"

namespace host {

class PageTable;

// Where there are two listeners, each has half of these.
inline constexpr unsigned kMaxConnections = 1024;  // fewer where the system grants too few open files
inline constexpr unsigned kMaxConnectionsPerAddress = 256;
inline constexpr unsigned kIdleSeconds = 15;                    // a connection without traffic is dropped
inline constexpr std::size_t kMaxConnectionMemory = 32 * 1024;  // request line and headers together

struct Listening {
  std::string url;  // "http://127.0.0.1:41234"
  std::uint16_t port = 0;
};

// Serves from its making until stop(). The page table must outlive it; it is not destroyed by the server.
class Server {
 public:
  // Throws std::runtime_error when an address cannot be listened on, or no certificate be shown there.
  Server(PageTable& pages, ServerSettings settings);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  // In the order of the settings.
  const std::vector<Listening>& listening() const;

  // Ends the waits of handlers and clients and closes every connection. False when a handler does not return within
  // `patience`: then its thread still runs, and the process had better end at once.
  bool stop(std::chrono::milliseconds patience = std::chrono::milliseconds(700));

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace host
