// Addresses of the network and the sockets that listen on them.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdint>
#include <string>

#include "host/file_handle.h"

namespace host {

union SocketAddress {
  sockaddr any;
  sockaddr_in v4;
  sockaddr_in6 v6;
};

// "192.0.2.1" or "2001:db8::1", without the port.
std::string textOf(const SocketAddress& address);

// A socket on a numeric address; port 0 stands for any free one. Throws std::runtime_error when it cannot be had.
FileHandle listenOn(const std::string& text, std::uint16_t port);

std::uint16_t portOf(const FileHandle& listener);

}  // namespace host
