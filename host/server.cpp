#include "host/server.h"

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "host/connection_head.h"
#include "host/exchange.h"
#include "host/file_handle.h"
#include "host/log.h"
#include "host/server_core.h"

namespace host {
namespace {
using ExchangeHolder = std::shared_ptr<Exchange>;

[[noreturn]] void failWith(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

union SocketAddress {
  sockaddr any;
  sockaddr_in v4;
  sockaddr_in6 v6;
};

std::string textOf(const SocketAddress& address) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  const void* bytes = address.any.sa_family == AF_INET6 ? static_cast<const void*>(&address.v6.sin6_addr)
                                                        : static_cast<const void*>(&address.v4.sin_addr);
  ::inet_ntop(address.any.sa_family, bytes, text.data(), text.size());
  const std::string_view plain = text.data();
  // A client of a socket that takes both families.
  return std::string(plain.starts_with("::ffff:") ? plain.substr(7) : plain);
}

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

FileHandle listenOn(const std::string& text, std::uint16_t port) {
  const SocketAddress address = parseAddress(text, port);
  const bool v6 = address.any.sa_family == AF_INET6;
  FileHandle listener(::socket(address.any.sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const int on = 1;
  if (listener) ::setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (!listener || ::bind(listener.get(), &address.any, v6 ? sizeof address.v6 : sizeof address.v4) != 0 ||
      ::listen(listener.get(), SOMAXCONN) != 0) {
    failWith("cannot listen on " + text + " port " + std::to_string(port));
  }
  return listener;
}

std::uint16_t portOf(int listener) {
  SocketAddress address{};
  socklen_t length = sizeof address;
  ::getsockname(listener, &address.any, &length);
  return ntohs(address.any.sa_family == AF_INET6 ? address.v6.sin6_port : address.v4.sin_port);
}

// How many connections the process can open files for: each has a socket and may have an answer or a body in a file,
// and handlers want some of their own. Asks the system for enough.
unsigned connectionLimit() {
  constexpr rlim_t kPerConnection = 2, kReserve = 256;
  constexpr rlim_t kWanted = kReserve + kPerConnection * kMaxConnections;
  rlimit files{};
  if (::getrlimit(RLIMIT_NOFILE, &files) != 0) return kMaxConnections / 4;
  if (files.rlim_cur < kWanted) {
    files.rlim_cur = std::min(kWanted, files.rlim_max);
    ::setrlimit(RLIMIT_NOFILE, &files);
  }
  const rlim_t open = std::clamp(files.rlim_cur, 2 * kReserve, kWanted);
  return static_cast<unsigned>((open - kReserve) / kPerConnection);
}

Peer* peerOf(MHD_Connection* connection) {
  const auto* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
  return info ? static_cast<Peer*>(info->socket_context) : nullptr;
}

// --- What libmicrohttpd calls

void connectionChanged(void*, MHD_Connection* connection, void** context, MHD_ConnectionNotificationCode code) {
  if (code == MHD_CONNECTION_NOTIFY_CLOSED) {
    delete static_cast<Peer*>(*context);
    *context = nullptr;
    return;
  }
  const auto* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
  SocketAddress address{};
  if (info && info->client_addr) {
    std::memcpy(&address, info->client_addr,
                info->client_addr->sa_family == AF_INET6 ? sizeof address.v6 : sizeof address.v4);
  }
  *context = new Peer{textOf(address), {}};
}

// Called with the target before it is decoded. What it gives becomes the request's context, which there is none yet.
void* targetCame(void*, const char* target, MHD_Connection* connection) {
  if (Peer* peer = peerOf(connection)) peer->target = target;
  return nullptr;
}

MHD_Result requestCame(void* core, MHD_Connection* connection, const char*, const char* method, const char* version,
                       const char* data, std::size_t* size, void** context) {
  try {
    auto*& holder = reinterpret_cast<ExchangeHolder*&>(*context);
    const Peer* peer = peerOf(connection);
    if (!peer) return MHD_NO;
    if (!holder) {
      holder = new ExchangeHolder(
          std::make_shared<Exchange>(*static_cast<ServerCore*>(core), connection, *peer, method, version));
    }
    return (*holder)->proceed(data, size);
  } catch (const std::exception& error) {
    logLine({"connection dropped: ", error.what()});
  } catch (...) {
    logLine({"connection dropped"});
  }
  return MHD_NO;
}

void requestEnded(void*, MHD_Connection*, void** context, MHD_RequestTerminationCode) {
  auto* holder = static_cast<ExchangeHolder*>(*context);
  if (!holder) return;
  (*holder)->connectionEnded();
  delete holder;
  *context = nullptr;
}

__attribute__((format(printf, 2, 0))) void libraryLog(void*, const char* format, va_list arguments) {
  std::array<char, 512> text;
  std::vsnprintf(text.data(), text.size(), format, arguments);
  std::string_view line = text.data();
  while (line.ends_with('\n')) line.remove_suffix(1);
  logLine({"http: ", line});
}
}  // namespace

class Server::Impl final : private Connections {
 public:
  Impl(PageTable& pages, ServerSettings settings)
      : core_(pages, std::move(settings)), listener_(listenOn(core_.settings.address, core_.settings.port)) {
    if (!wake_) failWith("nothing to wake the server with");
    port_ = portOf(listener_.get());
    start();
  }
  ~Impl() { stop(std::chrono::minutes(1)); }

  std::string url() const {
    const std::string& address = core_.settings.address;
    const bool v6 = address.find(':') != std::string::npos;
    return (core_.settings.tlsKey.empty() ? "http://" : "https://") + (v6 ? "[" + address + "]" : address) + ":" +
           std::to_string(port_);
  }
  std::uint16_t port() const { return port_; }

  // The order matters: no suspended connection may be left when the daemon stops.
  bool stop(std::chrono::milliseconds patience) {
    core_.stopping = true;
    if (!core_.threads.stop(patience)) return false;
    if (daemon_) MHD_stop_daemon(std::exchange(daemon_, nullptr));
    return true;
  }

 private:
  void start() {
    ::signal(SIGPIPE, SIG_IGN);  // files are sent by a call that could raise it
    std::vector<MHD_OptionItem> options{
        {MHD_OPTION_EXTERNAL_LOGGER, reinterpret_cast<intptr_t>(&libraryLog), nullptr},
        {MHD_OPTION_CONNECTION_LIMIT, static_cast<intptr_t>(connectionLimit()), nullptr},
        {MHD_OPTION_PER_IP_CONNECTION_LIMIT, kMaxConnectionsPerAddress, nullptr},
        {MHD_OPTION_CONNECTION_TIMEOUT, kIdleSeconds, nullptr},
        {MHD_OPTION_SIGPIPE_HANDLED_BY_APP, 1, nullptr},
        {MHD_OPTION_CONNECTION_MEMORY_LIMIT, kMaxConnectionMemory, nullptr},
        {MHD_OPTION_NOTIFY_COMPLETED, reinterpret_cast<intptr_t>(&requestEnded), nullptr},
        {MHD_OPTION_NOTIFY_CONNECTION, reinterpret_cast<intptr_t>(&connectionChanged), nullptr},
        {MHD_OPTION_URI_LOG_CALLBACK, reinterpret_cast<intptr_t>(&targetCame), nullptr},
        {MHD_OPTION_LISTEN_SOCKET, listener_.get(), nullptr}};
    unsigned flags = MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_ERROR_LOG;
    if (!core_.settings.tlsKey.empty()) {
      flags |= MHD_USE_TLS;
      options.push_back({MHD_OPTION_HTTPS_MEM_KEY, 0, const_cast<char*>(core_.settings.tlsKey.c_str())});
      options.push_back({MHD_OPTION_HTTPS_MEM_CERT, 0, const_cast<char*>(core_.settings.tlsCertificate.c_str())});
    }
    options.push_back({MHD_OPTION_END, 0, nullptr});
    daemon_ = MHD_start_daemon(flags, 0, nullptr, nullptr, &requestCame, &core_, MHD_OPTION_ARRAY, options.data(),
                               MHD_OPTION_END);
    if (!daemon_) throw std::runtime_error("cannot start the server on " + url());
    listener_.release();  // the daemon closes it
    epoll_ = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
    core_.threads.start(*this);
  }

  void serve() override {
    MHD_UNSIGNED_LONG_LONG left = 0;
    const bool limited = MHD_get_timeout(daemon_, &left) == MHD_YES;
    if (!limited || left > 0) wait(limited ? static_cast<int>(std::min<MHD_UNSIGNED_LONG_LONG>(left, INT_MAX)) : -1);
    MHD_run(daemon_);
  }

  // Resuming a connection does not end the wait of a daemon without threads of its own; wake() does.
  void wait(int milliseconds) {
    std::array<pollfd, 2> events{{{epoll_, POLLIN, 0}, {wake_.get(), POLLIN, 0}}};
    ::poll(events.data(), events.size(), milliseconds);
    std::uint64_t count = 0;
    if (events[1].revents != 0 && ::read(wake_.get(), &count, sizeof count) < 0) return;
  }

  void wake() override {
    constexpr std::uint64_t kOnce = 1;
    if (::write(wake_.get(), &kOnce, sizeof kOnce) < 0) logLine({"the serving thread was not woken"});
  }

  ServerCore core_;
  FileHandle listener_;
  std::uint16_t port_ = 0;
  FileHandle wake_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
  MHD_Daemon* daemon_ = nullptr;
  int epoll_ = -1;  // the daemon's
};

Server::Server(PageTable& pages, ServerSettings settings) : impl_(std::make_unique<Impl>(pages, std::move(settings))) {}
Server::~Server() = default;

std::uint16_t Server::port() const {
  return impl_->port();
}
std::string Server::url() const {
  return impl_->url();
}
bool Server::stop(std::chrono::milliseconds patience) {
  return impl_->stop(patience);
}

}  // namespace host
