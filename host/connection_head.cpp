#include "host/connection_head.h"

#include <algorithm>
#include <charconv>

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

std::string_view headerOf(MHD_Connection* connection, const char* name) {
  const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
  return value ? value : "";
}

RequestHead readHead(MHD_Connection* connection, const Peer& peer, const char* method, FieldResult& queryError) {
  const auto header = [&](const char* name) { return headerOf(connection, name); };
  RequestHead head;
  head.method = method;
  head.target = pathOfTarget(peer.target);
  const std::string_view target = head.target;
  head.path = target.substr(0, target.find('?'));
  if (head.path.size() < target.size()) queryError = parseUrlEncoded(target.substr(head.path.size() + 1), head.query);
  head.remoteAddress = peer.address;
  head.host = header("Host");
  if (const char* type = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, "Content-Type")) {
    head.contentType = type;
  }
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
