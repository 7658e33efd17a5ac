#include "host/server.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "host/file_handle.h"
#include "host/http_daemon.h"
#include "host/log.h"
#include "host/server_core.h"
#include "host/socket_address.h"
#include "host/tls_certificates.h"

namespace host {
namespace {
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

std::string urlOf(const char* scheme, const std::string& address, std::uint16_t port) {
  const bool v6 = address.find(':') != std::string::npos;
  return scheme + (v6 ? "[" + address + "]" : address) + ":" + std::to_string(port);
}
}  // namespace

class Server::Impl final : private Connections {
 public:
  Impl(PageTable& pages, ServerSettings settings) : core_(pages, std::move(settings)) {
    if (!wake_) throw std::runtime_error("nothing to wake the server with");
    const ServerSettings& wanted = core_.settings;
    const unsigned listeners = wanted.address.empty() || wanted.tlsAddress.empty() ? 1 : 2;
    // None of them is left without by what happens on the other.
    const HttpDaemon::Limits limits{connectionLimit() / listeners, kMaxConnectionsPerAddress / listeners};
    if (!wanted.address.empty()) listen(wanted.address, wanted.port, limits, fixedIdentity());
    if (!wanted.tlsAddress.empty()) listen(wanted.tlsAddress, wanted.tlsPort, limits, deviceIdentity());
    core_.threads.start(*this);
  }
  ~Impl() { stop(std::chrono::minutes(1)); }

  const std::vector<Listening>& listening() const { return listening_; }

  // The order matters: no suspended connection may be left when a daemon stops.
  bool stop(std::chrono::milliseconds patience) {
    core_.stopping = true;
    if (!core_.threads.stop(patience)) return false;
    daemons_.clear();
    return true;
  }

 private:
  HttpDaemon::Identity fixedIdentity() const {
    if (core_.settings.tlsKey.empty()) return {};
    const auto identity = std::make_shared<TlsIdentity>(core_.settings.tlsCertificate, core_.settings.tlsKey);
    return [identity]() -> const TlsIdentity& { return *identity; };
  }

  HttpDaemon::Identity deviceIdentity() const {
    const auto certificates = std::make_shared<TlsCertificates>(core_.settings.device.certificates);
    return [certificates]() -> const TlsIdentity& { return certificates->current(); };
  }

  void listen(const std::string& address, std::uint16_t port, const HttpDaemon::Limits& limits,
              HttpDaemon::Identity identity) {
    FileHandle listener = listenOn(address, port);
    const std::uint16_t taken = portOf(listener);
    listening_.push_back({urlOf(identity ? "https://" : "http://", address, taken), taken});
    daemons_.push_back(std::make_unique<HttpDaemon>(core_, std::move(listener), limits, std::move(identity)));
    events_.push_back({daemons_.back()->events(), POLLIN, 0});
  }

  void serve() override {
    int patience = -1;
    for (const auto& daemon : daemons_) {
      const int own = daemon->patience();
      patience = patience < 0 || own < 0 ? std::max(patience, own) : std::min(patience, own);
    }
    const bool all = patience == 0 || wait(patience);
    for (std::size_t i = 0; i < daemons_.size(); ++i) {
      if (all || events_[i + 1].revents != 0) daemons_[i]->run();
    }
  }

  // True when every daemon is to be run: its time has come, or a connection was resumed, which does not end the wait of
  // a daemon without threads of its own; wake() does.
  bool wait(int milliseconds) {
    const bool late = ::poll(events_.data(), events_.size(), milliseconds) <= 0;
    if (late || events_[0].revents == 0) return late;
    std::uint64_t count = 0;
    return ::read(wake_.get(), &count, sizeof count) > 0;
  }

  void wake() override {
    constexpr std::uint64_t kOnce = 1;
    if (::write(wake_.get(), &kOnce, sizeof kOnce) < 0) logLine({"the serving thread was not woken"});
  }

  ServerCore core_;
  std::vector<Listening> listening_;
  FileHandle wake_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
  std::vector<std::unique_ptr<HttpDaemon>> daemons_;
  std::vector<pollfd> events_{{wake_.get(), POLLIN, 0}};  // then those of the daemons
};

Server::Server(PageTable& pages, ServerSettings settings) : impl_(std::make_unique<Impl>(pages, std::move(settings))) {}
Server::~Server() = default;

const std::vector<Listening>& Server::listening() const {
  return impl_->listening();
}
bool Server::stop(std::chrono::milliseconds patience) {
  return impl_->stop(patience);
}

}  // namespace host
