#include "servlet/account/account_registration_status.h"

#include <optional>
#include <string>

#include "framework/config_operate.h"
#include "framework/phone_messages.h"
#include "framework/text_utils.h"
#include "platform/log.h"

int answerRegistrationStatus(HttpRequest* request, HttpResponse* response) {
  const std::optional<int> account = parseInt(request->getParameter("acc"));
  if (!account) {
    log_log(kWebLog, kLogWarning, "AccountRegisterServlet::askStatus() para error\n");
    return 1;
  }
  int status = 0;
  if (readAccountConfigPlain("AccountEnable", *account, kConfigValueSize) == "1") {
    status = sendMessage(kPhoneApplication, kRegistrationState, *account);
  }
  std::string text = std::to_string(status);
  cutText(text, 3);
  response->print("%s", text.c_str());
  return 1;
}
