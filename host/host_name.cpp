#include "host/host_name.h"

#include <algorithm>

#include "host/http_text.h"

namespace host {
namespace {
// The host name of "name:port" or "[::1]:port".
std::string_view withoutPort(std::string_view host) {
  if (host.starts_with('[')) return host.substr(0, host.find(']') + 1);
  return host.substr(0, host.find(':'));
}

bool isIPv4Loopback(std::string_view address) {
  return address.starts_with("127.") && std::count(address.begin(), address.end(), '.') == 3 &&
         address.find_first_not_of("0123456789.") == std::string_view::npos;
}
}  // namespace

bool isLoopbackAddress(std::string_view address) {
  if (address.starts_with("::ffff:")) address.remove_prefix(7);
  return address == "::1" || isIPv4Loopback(address);
}

bool namesLoopback(std::string_view host) {
  const std::string_view name = withoutPort(host);
  return equalsIgnoreCase(name, "localhost") || name == "[::1]" || isIPv4Loopback(name);
}

}  // namespace host
