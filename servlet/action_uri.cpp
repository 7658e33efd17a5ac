#include "servlet/action_uri.h"

#include "platform/log.h"

std::string_view getURIType(std::string_view query) {
  constexpr std::string_view kTypes[] = {"key", "number", "phonecfg", "redirectcall", "forward", "Server"};
  for (const std::string_view type : kTypes) {
    if (query.starts_with(type)) return type;
  }
  return {};
}

// This phone takes no commands yet: each is answered like a page that does not exist.
int proccessActionURI(HttpRequest*, HttpResponse* response, std::string_view, const std::string&) {
  response->sendError(404);
  return 0;
}

bool ProcessPushXml(HttpRequest*, bool) {
  log_log(2, 4, "pushXML() don't have remoteIP, or ip don't match, or xmlvalue is error.\n");
  return false;
}
