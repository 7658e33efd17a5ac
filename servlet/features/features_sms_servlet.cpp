// The page "features-sms": sends a text message from one of the phone's accounts.
#include <optional>
#include <string>

#include "framework/accounts.h"
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "framework/xml_file.h"
#include "platform/log.h"
#include "platform/os_services.h"
#include "servlet/features/features_sms_message.h"
#include "servlet/features/features_tabs.h"

namespace {

constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-sms");
constexpr Visibility kVisibility{.menu = kMenu, .bufferSize = 512};

constexpr char kMessageList[] = "/config/data/text_message_list.xml";
constexpr std::size_t kAccountSize = 512;
constexpr int kPreparationTime = 1000;  // milliseconds that the applications get before a message

bool isRegistered(int account) {
  const int state = queryRegistrationState(account);
  return state == kRegistered || state == kRegisteredAgain;
}

// The accounts that a message can be sent from.
TMPL_loop* accountRows() {
  TMPL_loop* rows = nullptr;
  for (int account = 0; account < GetAccountMax(); ++account) {
    if (readAccountConfigPlain("AccountEnable", account, kConfigValueSize) != "1") continue;
    std::string name, host, port;
    readConfigOperate(ACCOUNT_FILE, "AccountUserName", name, kAccountSize, account);
    if (name.empty() || !isRegistered(account)) continue;
    GetSipServerHost(host, port, account);
    name.append("@").append(templateText(host));
    cutUtf8(name, kAccountSize);
    rows = TMPL_add_varlist(
        rows, TMPL_add_var(nullptr, "selValue", std::to_string(account).c_str(), "selName", name.c_str(), nullptr));
  }
  return rows;
}

}  // namespace

class FeaturesSMSServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int send(HttpRequest* request, HttpResponse* response);
  int sendFrom(int account, const TextMessage& message, HttpResponse* response);
  int loadConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesSMSServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesSMSServlet> kActions[] = {
      {"send", &FeaturesSMSServlet::send},
      {"load", &FeaturesSMSServlet::loadConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesSMSServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = TMPL_add_loop(nullptr, "selectAccount", accountRows());
  response->renderTemplate("/phone/www/WEB-INFO/template/features-sms.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesSMSServlet::send(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const TextMessage message = messageOf(request);
  if (message.fault) {
    SetNoticePage(response, false, "features-sms", message.fault);
    return 1;
  }
  broadcastConfigChanged(ConfigArea::kTextMessages, 0);
  osSleep(kPreparationTime);
  const std::optional<int> account = validAccount(request->getParameter("acc"));
  if (!account) {
    log_log(kWebLog, kLogWarning, "FeaturesSMSServlet::send() no account.\n");
    return 1;
  }
  return sendFrom(*account, message, response);
}

// A message that the SIP client does not take stays in the list.
int FeaturesSMSServlet::sendFrom(int account, const TextMessage& message, HttpResponse* response) {
  pugi::xml_document document;
  loadXml(kMessageList, document);
  if (!document.document_element()) {
    log_log(kWebLog, kLogWarning, "FeaturesSMSServlet::send() error to get root element\n");
    return 1;
  }
  addMessage(document.document_element(), message, account);
  const bool isListed = saveXml(kMessageList, document);
  if (!isListed || !handOver(message, account)) {
    log_log(kWebLog, kLogWarning, "Send_Message_Failed\n");
    SetNoticePage(response, false, "features-sms", "Error:The message was not sent!");
    return 1;
  }
  broadcastConfigChanged(ConfigArea::kTextMessages, 1);
  response->sendRedirect("/servlet?p=features-sms&q=load");
  return 1;
}

TMPL_varlist* FeaturesSMSServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesSMSServlet, HttpServlet, FeaturesSMSServlet);
