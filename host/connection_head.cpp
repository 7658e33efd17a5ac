#include "host/connection_head.h"

namespace host {

std::string_view headerOf(MHD_Connection* connection, const char* name) {
  const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
  return value ? value : "";
}

RequestHead readHead(MHD_Connection* connection, const Peer& peer, const char* method) {
  const auto lookup = [connection](const char* name) {
    return MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
  };
  return readHead(method, peer.target, peer.address, lookup);
}

}  // namespace host
