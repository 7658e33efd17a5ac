// The page "account-register": how an account registers with its SIP servers.
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
#include "platform/log.h"
#include "servlet/account/account_registration_status.h"
#include "servlet/account/account_servers.h"
#include "servlet/account/account_tabs.h"

namespace {

constexpr const char* kKeys[] = {"AccountEnable",       "AccountLabel",         "AccountDisplayName",
                                 "AccountRegisterName", "AccountUserName",      "AccountOutboundSwitch",
                                 "AccountTransport",    "AccountStunSwitch",    "AccountStunServerHost",
                                 "AccountSTUNPort",     "AccountOutboundProxy", "AccountOutboundPort"};
constexpr const auto& kMenu = kAccountTabs;
constexpr const char* kItems[] = {"SwitchAccount",
                                  "RegisterLineActive",
                                  "RegisterAccountLabel",
                                  "RegisterDisplayName",
                                  "RegisterName",
                                  "RegisterUserName",
                                  "RegisterSipServer",
                                  "RegisterAccountPassword",
                                  "RegisterEnabledOutboundProxyServer",
                                  "RegisterOutboundProxyServer",
                                  "RegisterTransportItem",
                                  "RegisterBackupOutboundProxyServer",
                                  "RegisterNATTraversal",
                                  "RegisterSTUNServer",
                                  "RegisterAccountStatus"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kItems));

}  // namespace

class AccountRegisterServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int askStatus(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int AccountRegisterServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<AccountRegisterServlet> kActions[] = {
      {"load", &AccountRegisterServlet::loadConfig},
      {"write", &AccountRegisterServlet::writeConfig},
      {"askstatus", &AccountRegisterServlet::askStatus},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int AccountRegisterServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const char* text = request->getParameter("acc");
  const std::optional<int> account = parseInt(text);
  if (!account) {
    log_log(kWebLog, kLogWarning, "AccountRegisterServlet::loadConfig(). accountID is null\n");
    return 1;
  }
  TMPL_varlist* list = readConfigOperate(ACCOUNT_FILE, kKeys, nullptr, *account);
  std::string status;
  MapAccountStatusToString(&status, queryRegistrationState(*account));
  list = addServers(list, *account);
  list = TMPL_add_var(list, "var_accountID", text, "AccountStatus", status.c_str(), nullptr);
  list = TMPL_add_loop(list, "accountLoop", GetAccountLoop(text, false));
  response->renderTemplate("/phone/www/WEB-INFO/template/account-register.htm", showItemsByLevel(list, request));
  return 1;
}

int AccountRegisterServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* text = request->getParameter("var_accountID");
  if (!text) {
    log_log(kWebLog, kLogWarning, " AccountRegisterServlet::writeConfig() accountID is NULL\n");
    return 1;
  }
  const std::optional<int> account = validAccount(text);
  if (!account) {
    log_log(kWebLog, kLogWarning, " AccountRegisterServlet::writeConfig() accountID is invail\n");
    return 1;
  }
  writeConfigOperate(ACCOUNT_FILE, kKeys, request, *account);
  writeConfigOperate(ACCOUNT_FILE, "AccountSIPServerHost", request->getParameter("server1"), *account);
  writeConfigOperate(ACCOUNT_FILE, "AccountSIPServerPort", request->getParameter("port1"), *account);
  writeSecret(ACCOUNT_FILE, "AccountPassword", request->getParameter("AccountPassword"), *account);
  storeServers(*account, request);
  broadcastConfigChanged(ConfigArea::kAccount, *account);
  response->sendRedirect(("/servlet?p=account-register&q=load&acc=" + std::to_string(*account)).c_str());
  return 1;
}

int AccountRegisterServlet::askStatus(HttpRequest* request, HttpResponse* response) {
  return answerRegistrationStatus(request, response);
}

TMPL_varlist* AccountRegisterServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createAccountRegisterServlet, HttpServlet, AccountRegisterServlet);
