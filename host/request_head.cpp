#include "host/request_head.h"

#include <charconv>
#include <utility>

#include "host/http_text.h"

namespace host {
namespace {
// A proxy's "http://host/path" as "/path".
std::string_view pathOfTarget(std::string_view target) {
  const std::size_t scheme = target.find("://");
  if (target.starts_with('/') || scheme == std::string_view::npos) return target;
  const std::size_t path = target.find('/', scheme + 3);
  return path == std::string_view::npos ? "/" : target.substr(path);
}

bool isSessionId(std::string_view text) {
  return text.size() == 32 && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::uint64_t parseLength(std::string_view text) {
  std::uint64_t length = 0;
  std::from_chars(text.data(), text.data() + text.size(), length);
  return length;
}
}  // namespace

RequestHead readHead(std::string method, std::string_view target, std::string remoteAddress,
                     const HeaderLookup& headers) {
  const auto header = [&](const char* name) -> std::string_view {
    const char* value = headers(name);
    return value ? value : "";
  };
  RequestHead head;
  head.method = std::move(method);
  head.target = pathOfTarget(target);
  target = head.target;
  head.path = target.substr(0, target.find('?'));
  if (head.path.size() < target.size()) {
    head.queryError = parseUrlEncoded(target.substr(head.path.size() + 1), head.query);
  }
  head.remoteAddress = std::move(remoteAddress);
  head.host = header("Host");
  if (const char* type = headers("Content-Type")) head.contentType = type;
  if (const auto id = cookieValue(header("Cookie"), kSessionCookie); isSessionId(id)) head.sessionId = id;
  head.origin = header("Origin");
  head.fetchSite = header("Sec-Fetch-Site");
  head.fetchMode = header("Sec-Fetch-Mode");
  head.fetchDest = header("Sec-Fetch-Dest");
  head.wantsJson = prefersJson(header("Accept"));
  head.contentLength = parseLength(header("Content-Length"));
  return head;
}

}  // namespace host
