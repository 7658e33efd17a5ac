#include "host/admission.h"

#include <algorithm>

#include "host/http_text.h"

namespace host {
namespace {
// The host name of "name:port" or "[::1]:port".
std::string_view withoutPort(std::string_view host) {
  if (host.starts_with('[')) return host.substr(0, host.find(']') + 1);
  return host.substr(0, host.find(':'));
}

std::string_view withoutSuffix(std::string_view text, std::string_view suffix) {
  if (text.ends_with(suffix)) text.remove_suffix(suffix.size());
  return text;
}

bool isOwnOrigin(std::string_view origin, std::string_view host) {
  for (const auto& [scheme, port] : {std::pair{"http://", ":80"}, std::pair{"https://", ":443"}}) {
    if (!origin.starts_with(scheme)) continue;
    origin.remove_prefix(std::string_view(scheme).size());
    return !host.empty() && equalsIgnoreCase(withoutSuffix(origin, port), withoutSuffix(host, port));
  }
  return false;
}

bool isIPv4Loopback(std::string_view address) {
  return address.starts_with("127.") && std::count(address.begin(), address.end(), '.') == 3 &&
         address.find_first_not_of("0123456789.") == std::string_view::npos;
}
}  // namespace

bool isForeign(const RequestHead& head) {
  if (head.fetchSite == "cross-site" || head.fetchSite == "same-site") return true;
  // A form of our own pages comes with "null", since they ask for no referrer; then Sec-Fetch-Site vouches for it.
  if (head.origin.empty() || (head.origin == "null" && head.fetchSite == "same-origin")) return false;
  return !isOwnOrigin(head.origin, head.host);
}

bool isTopLevelNavigation(const RequestHead& head) {
  return head.reads() && head.fetchMode == "navigate" && (head.fetchDest.empty() || head.fetchDest == "document");
}

bool isPlainLink(const RequestHead& head) {
  if (!isTopLevelNavigation(head)) return false;
  if (head.path == "/") return true;
  const std::string* action = head.field("q");
  return head.path == "/servlet" && head.field("p") && action && (*action == "load" || *action == "loginForm");
}

bool isLoopbackAddress(std::string_view address) {
  if (address.starts_with("::ffff:")) address.remove_prefix(7);
  return address == "::1" || isIPv4Loopback(address);
}

bool namesLoopback(std::string_view host) {
  const std::string_view name = withoutPort(host);
  return equalsIgnoreCase(name, "localhost") || name == "[::1]" || isIPv4Loopback(name);
}

}  // namespace host
