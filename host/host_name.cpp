#include "host/host_name.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>

namespace host {
namespace {
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kNameBytes = "abcdefghijklmnopqrstuvwxyz0123456789-_.";

bool isAddress(int family, const std::string& text) {
  std::array<unsigned char, sizeof(in6_addr)> bytes;
  return ::inet_pton(family, text.c_str(), bytes.data()) == 1;
}

bool isIPv6Literal(std::string_view host) {
  return host.size() > 2 && host.starts_with('[') && host.ends_with(']') &&
         isAddress(AF_INET6, std::string(host.substr(1, host.size() - 2)));
}

bool isName(std::string_view text) {
  return !text.empty() && !text.starts_with('.') && text.find("..") == std::string_view::npos &&
         text.find_first_not_of(kNameBytes) == std::string_view::npos;
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
}  // namespace

std::optional<std::string> hostName(std::string_view text) {
  const std::size_t bracket = text.starts_with('[') ? std::min(text.find(']'), text.size()) : 0;
  const std::size_t end = std::min(text.find(':', bracket), text.size());
  if (end < text.size() && text.find_first_not_of(kDigits, end + 1) != std::string_view::npos) return {};
  std::string host(text.substr(0, end));
  std::transform(host.begin(), host.end(), host.begin(), lower);
  if (isIPv6Literal(host)) return host;
  if (!isName(host)) return {};
  if (host.ends_with('.')) host.pop_back();
  return host;
}

bool isPhoneHost(const std::string& host, const std::vector<std::string>& names) {
  if (host.find('.') == std::string::npos || host.starts_with('[') || isAddress(AF_INET, host)) return true;
  for (std::string_view suffix : {".local", ".lan", ".home.arpa", ".internal", ".localhost"}) {
    if (host.ends_with(suffix)) return true;
  }
  return std::find(names.begin(), names.end(), host) != names.end();
}

bool isLoopbackAddress(std::string_view address) {
  if (address.starts_with("::ffff:")) address.remove_prefix(7);
  return address == "::1" || (address.starts_with("127.") && isAddress(AF_INET, std::string(address)));
}

bool isLoopbackHost(std::string_view host) {
  return host == "localhost" || host == "[::1]" || isLoopbackAddress(host);
}

}  // namespace host
