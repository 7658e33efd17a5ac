#include "servlet/access/push_xml.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/phone_messages.h"
#include "platform/log.h"
#include "servlet/access/trusted_clients.h"

namespace {

constexpr char kDocument[] = "/tmp/XmlBrowserFile.xml";
constexpr std::string_view kBodyField = "xml=";
constexpr mode_t kReadableByAll = 0644;  // the screen runs as another user
constexpr std::size_t kServerListSize = 256;
constexpr std::size_t kBlockSize = 4096;

// What is behind "xml=" in the body, as received; empty for any other body.
std::string documentInBody(HttpRequest* request) {
  char block[kBlockSize];
  std::string body;
  for (int left = request->getContentLength(); left > 0;) {
    const int count = request->read(block, std::min(left, static_cast<int>(sizeof block)));
    if (count <= 0) break;
    body.append(block, static_cast<std::size_t>(count));
    left -= count;
  }
  return body.starts_with(kBodyField) ? body.substr(kBodyField.size()) : "";
}

bool showDocument(const std::string& document) {
  log_log(kWebLog, kLogInfo, "The content length of push xml = %d\n", static_cast<int>(document.size()));
  if (!replaceFile(kDocument, document, kReadableByAll)) {
    log_log(kWebLog, kLogWarning, "pushXML() End. failed to open file\n");
    return false;
  }
  postMessage(kPhoneApplication, kShowXml);
  return true;
}

}  // namespace

bool ProcessPushXml(HttpRequest* request, bool fromField) {
  const char* address = request->getRemoteAddr();
  const char* field = fromField ? request->getParameter("editPushXML") : nullptr;
  if (fromField && !field) {
    log_log(kWebLog, kLogWarning, "pushXML() get value error\n");
    return false;
  }
  // A stranger's document is not even read.
  if (address && IsTrustServerIP(address, readConfigText("PushXMLServerIP", kServerListSize).c_str())) {
    const std::string document = fromField ? field : documentInBody(request);
    if (!document.empty()) return showDocument(document);
  }
  log_log(kWebLog, kLogWarning, "pushXML() don't have remoteIP, or ip don't match, or xmlvalue is error.\n");
  return false;
}
