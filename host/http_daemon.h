// The library that reads HTTP, on one listening socket.
#pragma once

#include <microhttpd.h>

#include <functional>

#include "host/file_handle.h"
#include "host/tls_identity.h"

namespace host {

struct ServerCore;

class HttpDaemon {
 public:
  struct Limits {
    unsigned connections, connectionsPerAddress;
  };
  // What a handshake shows; asked for each. An empty one means plain HTTP.
  using Identity = std::function<const TlsIdentity&()>;

  // Throws std::runtime_error when the library refuses.
  HttpDaemon(ServerCore& core, FileHandle listener, const Limits& limits, Identity identity);
  // No connection may be suspended any more.
  ~HttpDaemon() { MHD_stop_daemon(daemon_); }
  HttpDaemon(const HttpDaemon&) = delete;
  HttpDaemon& operator=(const HttpDaemon&) = delete;

  bool secure() const { return static_cast<bool>(identity_); }
  // Becomes readable when there is something to run for.
  int events() const;
  // Milliseconds until it is to be run without that; -1: never.
  int patience() const;
  // Serves what has come. For one thread at a time.
  void run();

 private:
  static gnutls_certificate_retrieve_function3 showCertificate;

  const Identity identity_;
  MHD_Daemon* daemon_ = nullptr;
};

}  // namespace host
