#include "host/http_daemon.h"

#include <signal.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "host/connection_head.h"
#include "host/exchange.h"
#include "host/log.h"
#include "host/server.h"
#include "host/server_core.h"
#include "host/socket_address.h"

namespace host {
namespace {
using ExchangeHolder = std::shared_ptr<Exchange>;

// Nothing older than TLS 1.2, and of that only what keeps a recorded connection closed to those who come by the key
// later. The client chooses among them: it knows best which cipher is cheap for it.
constexpr const char* kTlsPriorities =
    "NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2:-KX-ALL:+ECDHE-ECDSA:+ECDHE-RSA:-GROUP-DH-ALL:"
    "-CIPHER-ALL:+AES-256-GCM:+AES-128-GCM:+CHACHA20-POLY1305:-MAC-ALL:+AEAD:-SIGN-RSA-SHA1:-SIGN-ECDSA-SHA1";

// The one that this thread runs: the library does not say whose handshake it is.
thread_local const HttpDaemon* running = nullptr;

Peer* peerOf(MHD_Connection* connection) {
  const auto* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
  return info ? static_cast<Peer*>(info->socket_context) : nullptr;
}

// --- What libmicrohttpd calls

void connectionChanged(void* daemon, MHD_Connection* connection, void** context, MHD_ConnectionNotificationCode code) {
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
  *context = new Peer{textOf(address), static_cast<const HttpDaemon*>(daemon)->secure(), {}};
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

HttpDaemon::HttpDaemon(ServerCore& core, FileHandle listener, const Limits& limits, Identity identity)
    : identity_(std::move(identity)) {
  ::signal(SIGPIPE, SIG_IGN);  // files are sent by a call that could raise it
  std::vector<MHD_OptionItem> options{
      {MHD_OPTION_EXTERNAL_LOGGER, reinterpret_cast<intptr_t>(&libraryLog), nullptr},
      {MHD_OPTION_CONNECTION_LIMIT, static_cast<intptr_t>(limits.connections), nullptr},
      {MHD_OPTION_PER_IP_CONNECTION_LIMIT, static_cast<intptr_t>(limits.connectionsPerAddress), nullptr},
      {MHD_OPTION_CONNECTION_TIMEOUT, kIdleSeconds, nullptr},
      {MHD_OPTION_SIGPIPE_HANDLED_BY_APP, 1, nullptr},
      {MHD_OPTION_CONNECTION_MEMORY_LIMIT, kMaxConnectionMemory, nullptr},
      {MHD_OPTION_NOTIFY_COMPLETED, reinterpret_cast<intptr_t>(&requestEnded), nullptr},
      {MHD_OPTION_NOTIFY_CONNECTION, reinterpret_cast<intptr_t>(&connectionChanged), this},
      {MHD_OPTION_URI_LOG_CALLBACK, reinterpret_cast<intptr_t>(&targetCame), nullptr},
      {MHD_OPTION_LISTEN_SOCKET, listener.get(), nullptr}};
  unsigned flags = MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_ERROR_LOG;
  if (secure()) {
    flags |= MHD_USE_TLS;
    options.push_back({MHD_OPTION_HTTPS_PRIORITIES, 0, const_cast<char*>(kTlsPriorities)});
    options.push_back({MHD_OPTION_HTTPS_CERT_CALLBACK2, 0, reinterpret_cast<void*>(&showCertificate)});
  }
  options.push_back({MHD_OPTION_END, 0, nullptr});
  daemon_ = MHD_start_daemon(flags, 0, nullptr, nullptr, &requestCame, &core, MHD_OPTION_ARRAY, options.data(),
                             MHD_OPTION_END);
  if (!daemon_) throw std::runtime_error("cannot start the server");
  listener.release();  // the daemon closes it
}

int HttpDaemon::events() const {
  return MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
}

int HttpDaemon::patience() const {
  MHD_UNSIGNED_LONG_LONG left = 0;
  if (MHD_get_timeout(daemon_, &left) != MHD_YES) return -1;
  return static_cast<int>(std::min<MHD_UNSIGNED_LONG_LONG>(left, INT_MAX));
}

void HttpDaemon::run() {
  running = this;
  MHD_run(daemon_);
  running = nullptr;
}

int HttpDaemon::showCertificate(gnutls_session_t, const gnutls_cert_retr_st*, gnutls_pcert_st** certificates,
                                unsigned* count, gnutls_ocsp_data_st** statuses, unsigned* statusCount,
                                gnutls_privkey_t* key, unsigned* flags) {
  try {
    *statuses = nullptr;
    *statusCount = 0;
    *flags = GNUTLS_CERT_RETR_DEINIT_ALL;
    return running->identity_().give(certificates, count, key);
  } catch (const std::exception& error) {
    logLine({"no certificate for a handshake: ", error.what()});
    return GNUTLS_E_INTERNAL_ERROR;
  }
}

}  // namespace host
