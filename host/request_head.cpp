#include "host/request_head.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "host/http_text.h"

namespace host {
namespace {
// Parts "http://host/path" into host and "/path".
void readTarget(std::string_view target, RequestHead& head) {
  const std::size_t scheme = target.find("://");
  if (!target.starts_with('/') && scheme != std::string_view::npos) {
    target.remove_prefix(scheme + 3);
    const std::size_t end = std::min(target.find_first_of("/?"), target.size());
    head.targetHost = target.substr(0, end);
    target.remove_prefix(end);
  }
  head.target = target;
  if (head.targetHost && !target.starts_with('/')) head.target.insert(head.target.begin(), '/');
  head.path = head.target.substr(0, head.target.find('?'));
  if (head.path.size() == head.target.size()) return;
  head.queryError = parseUrlEncoded(std::string_view(head.target).substr(head.path.size() + 1), head.query);
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

RequestHead readHead(std::string method, std::string_view target, Sender sender, const HeaderLookup& headers) {
  const auto header = [&](const char* name) -> std::string_view {
    const char* value = headers(name);
    return value ? value : "";
  };
  RequestHead head;
  head.method = std::move(method);
  readTarget(target, head);
  head.remoteAddress = std::move(sender.address);
  head.secure = sender.secure;
  if (const char* host = headers("Host")) head.host = host;
  if (const char* type = headers("Content-Type")) head.contentType = type;
  if (const auto id = cookieValue(header("Cookie"), sessionCookie(head.secure)); isSessionId(id)) {
    head.sessionId = id;
  }
  head.origin = header("Origin");
  head.fetchSite = header("Sec-Fetch-Site");
  head.fetchMode = header("Sec-Fetch-Mode");
  head.fetchDest = header("Sec-Fetch-Dest");
  head.wantsJson = prefersJson(header("Accept"));
  head.acceptsGzip = host::acceptsGzip(header("Accept-Encoding"));
  head.ifNoneMatch = header("If-None-Match");
  head.contentLength = parseLength(header("Content-Length"));
  return head;
}

}  // namespace host
