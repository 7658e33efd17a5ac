#include "framework/notice.h"

#include <string>
#include <string_view>

#include "framework/phone_messages.h"

namespace {
constexpr int kDefaultRebootDelay = 2;
}  // namespace

void SetNoticePage(HttpResponse* response, bool repeat, const char* page, const char* message) {
  const std::string label = std::string(repeat ? "setInterval$" : "setTimeout$") + page + "$" + message;
  response->renderTemplate("/phone/www/WEB-INFO/template/notice.htm",
                           TMPL_add_var(nullptr, "noticeLabel", label.c_str(), nullptr));
}

bool IsInTalking(HttpResponse* response) {
  if (!isCallInProgress()) return false;
  SetNoticePage(response, false, "notice", "Talking, Please wait...");
  return true;
}

bool wantsReboot(HttpRequest* request) {
  const char* reboot = request->getParameter("reboot");
  return reboot && std::string_view(reboot) == "true";
}

void sysReboot(int delay) {
  postMessage(kPhoneApplication, kReboot, delay < 0 ? kDefaultRebootDelay : delay);
}
