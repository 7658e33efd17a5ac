#include "host/connection_head.h"

#include <optional>
#include <string>

#include "host/http_text.h"

namespace host {
namespace {
MHD_Result joinHost(void* context, MHD_ValueKind, const char* name, const char* value) {
  if (!equalsIgnoreCase(name, "Host")) return MHD_YES;
  auto& host = *static_cast<std::optional<std::string>*>(context);
  host = (host ? *host + ", " : "") + (value ? value : "");
  return MHD_YES;
}
}  // namespace

std::string_view headerOf(MHD_Connection* connection, const char* name) {
  const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
  return value ? value : "";
}

RequestHead readHead(MHD_Connection* connection, const Peer& peer, const char* method, std::string_view version) {
  std::optional<std::string> host;
  MHD_get_connection_values(connection, MHD_HEADER_KIND, &joinHost, &host);
  const auto lookup = [&](const char* name) { return MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name); };
  RequestHead head = readHead(method, peer.target, {peer.address, peer.secure}, lookup);
  head.host = std::move(host);  // a second one would be overlooked
  head.needsHost = version != "HTTP/1.0";
  return head;
}

}  // namespace host
