#include "host/socket_address.h"

#include <arpa/inet.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace host {
namespace {
SocketAddress parseAddress(const std::string& text, std::uint16_t port) {
  SocketAddress address{};
  if (::inet_pton(AF_INET6, text.c_str(), &address.v6.sin6_addr) == 1) {
    address.v6.sin6_family = AF_INET6;
    address.v6.sin6_port = htons(port);
  } else {
    address = {};
    address.v4.sin_family = AF_INET;
    address.v4.sin_port = htons(port);
    if (::inet_pton(AF_INET, text.c_str(), &address.v4.sin_addr) != 1) {
      throw std::runtime_error("not an address: " + text);
    }
  }
  return address;
}
}  // namespace

std::string textOf(const SocketAddress& address) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  const void* bytes = address.any.sa_family == AF_INET6 ? static_cast<const void*>(&address.v6.sin6_addr)
                                                        : static_cast<const void*>(&address.v4.sin_addr);
  ::inet_ntop(address.any.sa_family, bytes, text.data(), text.size());
  const std::string_view plain = text.data();
  // A client of a socket that takes both families.
  return std::string(plain.starts_with("::ffff:") ? plain.substr(7) : plain);
}

FileHandle listenOn(const std::string& text, std::uint16_t port) {
  const SocketAddress address = parseAddress(text, port);
  const bool v6 = address.any.sa_family == AF_INET6;
  FileHandle listener(::socket(address.any.sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const int on = 1;
  if (listener) ::setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (!listener || ::bind(listener.get(), &address.any, v6 ? sizeof address.v6 : sizeof address.v4) != 0 ||
      ::listen(listener.get(), SOMAXCONN) != 0) {
    throw std::runtime_error("cannot listen on " + text + " port " + std::to_string(port) + ": " +
                             std::strerror(errno));
  }
  return listener;
}

std::uint16_t portOf(const FileHandle& listener) {
  SocketAddress address{};
  socklen_t length = sizeof address;
  ::getsockname(listener.get(), &address.any, &length);
  return ntohs(address.any.sa_family == AF_INET6 ? address.v6.sin6_port : address.v4.sin_port);
}

}  // namespace host
