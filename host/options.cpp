#include "host/options.h"

#include <charconv>
#include <functional>
#include <map>
#include <string_view>

#include "host/host_name.h"

namespace host {
namespace {
namespace fs = std::filesystem;

template <class Number>
bool parseNumber(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

// "127.0.0.1:8080" or "[::1]:8080".
bool parseListen(std::string_view text, std::string& address, std::uint16_t& port) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || !parseNumber(text.substr(colon + 1), port)) return false;
  address = text.substr(0, colon);
  if (address.starts_with('[') && address.ends_with(']')) address = address.substr(1, address.size() - 2);
  return !address.empty();
}

bool parseMebibytes(std::string_view text, std::size_t& bytes) {
  std::size_t count = 0;
  if (!parseNumber(text, count) || count == 0 || count > 1024) return false;
  bytes = count * 1024 * 1024;
  return true;
}

bool addName(std::string_view text, Options& options) {
  const auto name = text.find(':') == std::string_view::npos ? hostName(text) : std::nullopt;
  if (name) options.names.push_back(*name);
  return name.has_value();
}

// The first of the places that exists, else the first.
fs::path firstThere(const std::vector<fs::path>& places) {
  for (const fs::path& place : places) {
    std::error_code ignored;
    if (fs::exists(place, ignored)) return place;
  }
  return places.front();
}

void fillDefaults(const fs::path& folder, Options& options) {
  if (options.rootfs.empty()) options.rootfs = firstThere({folder / "rootfs", folder / "../share/phone-web/rootfs"});
  if (options.module.empty()) {
    options.module = firstThere({folder / "libphonepages.so", folder / "../lib/phone-web/libphonepages.so"});
  }
  if (options.pages.empty()) options.pages = options.root / "phone/www/WEB-INFO/pages.conf";
}
}  // namespace

const char* const kUsage =
    "Usage: phone-web-host --root DIR --listen ADDRESS:PORT [options]\n"
    "  --root DIR             the phone's file tree; filled when missing or empty\n"
    "  --listen ADDRESS:PORT  numeric address (IPv6 in brackets); port 0 picks a free one\n"
    "  --listen-tls ADDRESS:PORT\n"
    "                         HTTPS with the phone's own certificate, beside --listen or in its place\n"
    "  --rootfs PATH          what an empty root is filled from\n"
    "  --module PATH          the page handlers (libphonepages.so)\n"
    "  --pages PATH           the page list (DIR/phone/www/WEB-INFO/pages.conf)\n"
    "  --name NAME            a name by which the phone is asked for; may be repeated\n"
    "  --max-upload MIB       longest request body, 1 to 1024 (64)\n"
    "  --tls-cert FILE --tls-key FILE\n"
    "                         --listen serves HTTPS too, with this certificate and key (PEM)\n"
    "  --rights on|off        whether pages show and store only what the user may see (on)\n"
    "  --state JSON           the state that the phone in software starts with\n"
    "  --quiet                no line a request\n";

bool parseOptions(const std::vector<std::string>& arguments, const fs::path& programFolder, Options& options,
                  std::string& error) {
  using Take = std::function<bool(const std::string&)>;
  const auto path = [](fs::path& target) -> Take {
    return [&target](const std::string& text) { return !(target = text).empty(); };
  };
  const auto choice = [](bool& target) -> Take {
    return [&target](const std::string& text) {
      target = text == "on";
      return target || text == "off";
    };
  };
  const std::map<std::string_view, Take> takes{
      {"--root", path(options.root)},
      {"--rootfs", path(options.rootfs)},
      {"--module", path(options.module)},
      {"--pages", path(options.pages)},
      {"--tls-cert", path(options.tlsCertificate)},
      {"--tls-key", path(options.tlsKey)},
      {"--rights", choice(options.rights)},
      {"--listen", [&](const std::string& text) { return parseListen(text, options.address, options.port); }},
      {"--listen-tls", [&](const std::string& text) { return parseListen(text, options.tlsAddress, options.tlsPort); }},
      {"--name", [&](const std::string& text) { return addName(text, options); }},
      {"--state", [&](const std::string& text) { return !(options.state = text).empty(); }},
      {"--max-upload", [&](const std::string& text) { return parseMebibytes(text, options.maxUpload); }}};
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--help") return options.help = true;
    if (name == "--quiet") {
      options.quiet = true;
      continue;
    }
    const auto take = takes.find(name);
    if (take == takes.end()) return error = "unknown option " + name, false;
    if (++i == arguments.size() || !take->second(arguments[i])) return error = "bad value for " + name, false;
  }
  if (options.root.empty()) return error = "--root is needed", false;
  if (options.address.empty() && options.tlsAddress.empty()) return error = "--listen or --listen-tls is needed", false;
  if (options.tlsCertificate.empty() != options.tlsKey.empty()) {
    return error = "--tls-cert and --tls-key go together", false;
  }
  if (options.address.empty() && !options.tlsKey.empty()) {
    return error = "--tls-cert and --tls-key are for --listen", false;
  }
  fillDefaults(programFolder, options);
  return true;
}

}  // namespace host
