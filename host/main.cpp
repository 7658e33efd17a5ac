// phone-web-host: the page handlers' web server with a phone in software behind it.
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/log.h"
#include "host/module.h"
#include "host/options.h"
#include "host/page_table.h"
#include "host/server.h"
#include "platform/config_parser.h"
#include "simulator/simulator.h"

namespace {
namespace fs = std::filesystem;

int endPipe[2];

class WrongArguments : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Signals stay unblocked, since commands that handlers start inherit the mask.
void catchEndSignals() {
  if (::pipe2(endPipe, O_CLOEXEC) != 0) throw std::runtime_error("no pipe for signals");
  struct sigaction action {};
  action.sa_handler = [](int) {
    const int kept = errno;
    if (::write(endPipe[1], "", 1) < 0) {
    }  // full: one is enough
    errno = kept;
  };
  ::sigaction(SIGTERM, &action, nullptr);
  ::sigaction(SIGINT, &action, nullptr);
  ::signal(SIGPIPE, SIG_IGN);
}

void waitForEnd() {
  char byte;
  while (::read(endPipe[0], &byte, 1) < 0 && errno == EINTR) continue;
}

std::string readText(const fs::path& file) {
  if (file.empty()) return {};
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(in), {}};
}

host::MountReply control(const std::string& method, const std::string& path,
                         const std::map<std::string, std::string>& query, const std::string& body) {
  simulator::ControlReply reply = simulator::control(method, path, query, body);
  return {reply.status, std::move(reply.contentType), std::move(reply.body)};
}

// The identity behind what a session holds as its user: its own name, or a login name that was configured for it.
std::string identityOf(const std::string& user) {
  static constexpr std::array<std::pair<const char*, const char*>, 3> kLoginNames{
      {{"admin", "UserNameAdmin"}, {"var", "UserNameVar"}, {"user", "UserNameUser"}}};
  for (const auto& [identity, key] : kLoginNames) {
    if (user == identity) return identity;
  }
  for (const auto& [identity, key] : kLoginNames) {
    if (configParser_GetConfigString(key) == user) return identity;
  }
  return {};
}

std::string levelOf(const std::string& key) {
  return configParser_GetConfigString(key.c_str());
}

host::ServerSettings settingsFor(const host::Options& options, const fs::path& root) {
  host::ServerSettings settings;
  settings.root = root;
  settings.address = options.address;
  settings.port = options.port;
  settings.tlsAddress = options.tlsAddress;
  settings.tlsPort = options.tlsPort;
  settings.names = options.names;
  settings.maxUpload = options.maxUpload;
  settings.accessLog = !options.quiet;
  settings.tlsCertificate = readText(options.tlsCertificate);
  settings.tlsKey = readText(options.tlsKey);
  settings.userFolders = {{"/media/user/sound/", "data/userdata/sound"},
                          {"/media/user/contact-image/", "data/userdata/contact-image"},
                          {"/media/user/wallpaper/", "data/userdata/wallpaper"}};
  settings.simulator = control;
  settings.rights = options.rights;
  settings.device = {simulator::rebooting, simulator::rebootCount, simulator::webCertificates, levelOf, identityOf};
  return settings;
}

void startPhone(const host::Options& options, const fs::path& root) {
  if (const auto error = simulator::start(root, options.state)) {
    throw WrongArguments("bad value for --state: " + *error);
  }
}

void serve(const host::Options& options) {
  catchEndSignals();
  simulator::prepareRoot(options.root, options.rootfs);
  const fs::path root = fs::canonical(options.root);
  startPhone(options, root);
  const host::Module module(options.module);
  host::PageTable pages(options.pages, [&](const std::string& name) { return module.function(name); });
  host::Server server(pages, settingsFor(options, root));
  for (const host::Listening& listening : server.listening()) std::printf("listening on %s\n", listening.url.c_str());
  std::fflush(stdout);
  waitForEnd();
  if (!server.stop()) {
    host::logLine({"a handler did not return; ending without it"});
    std::_Exit(EXIT_SUCCESS);
  }
  pages.destroy();
}
}  // namespace

int main(int argc, char** argv) {
  try {
    host::Options options;
    std::string error;
    const fs::path program = fs::read_symlink("/proc/self/exe");
    if (!host::parseOptions({argv + 1, argv + argc}, program.parent_path(), options, error)) {
      throw WrongArguments(error);
    }
    if (options.help) {
      std::fputs(host::kUsage, stdout);
    } else {
      serve(options);
    }
    return EXIT_SUCCESS;
  } catch (const WrongArguments& error) {
    std::fprintf(stderr, "phone-web-host: %s\n%s", error.what(), host::kUsage);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "phone-web-host: %s\n", error.what());
    return EXIT_FAILURE;
  }
}
