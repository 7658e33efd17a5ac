// The page "account-basic": what an account does on its own.
#include <optional>
#include <string>

#include "framework/accounts.h"
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/media_lists.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/account/account_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"AccountProxyRequire",
                                      "AccountAnonymousCallSwitch",
                                      "AccountAnonymousCallOnCode",
                                      "AccountAnonymousCallOffCode",
                                      "AccountRejectAnonymousCallSwitch",
                                      "AccountRejectAnonymousRejectOnCode",
                                      "AccountRejectAnonymousRejectOffCode",
                                      "AccountMissCallLog",
                                      "AccountAutoAnswerSwitch",
                                      "AccountRing"};
constexpr const char* kStoredKeys[] = {"AccountProxyRequire",
                                       "AccountAnonymousCallSwitch",
                                       "AccountAnonymousCallOnCode",
                                       "AccountAnonymousCallOffCode",
                                       "AccountRejectAnonymousCallSwitch",
                                       "AccountRejectAnonymousRejectOnCode",
                                       "AccountRejectAnonymousRejectOffCode",
                                       "AccountMissCallLog"};
constexpr auto kMenu = ownTabFirst(kAccountTabs, "account-basic");
constexpr const char* kItems[] = {"SwitchAccount",
                                  "AccountBasicProxyRequire",
                                  "AccountBasicAnonymousCallEnabled",
                                  "AccountBasicAnonymousCallOnCode",
                                  "AccountBasicAnonymousCallOffCode",
                                  "AccountBasicAnonymousRejectionEnabled",
                                  "AccountBasicAnonymousRejectionOnCode",
                                  "AccountBasicAnonymousRejectionOffCode",
                                  "AccountBasicMissCalllog",
                                  "AccountBasicAutoAnswer",
                                  "AccountBasicRingType"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));

constexpr std::size_t kRingSize = 512;
}  // namespace

class AccountBasicServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int AccountBasicServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<AccountBasicServlet> kActions[] = {
      {"load", &AccountBasicServlet::loadConfig},
      {"write", &AccountBasicServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int AccountBasicServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const char* text = request->getParameter("acc");
  const std::optional<int> account = parseInt(text);
  if (!account) {
    log_log(kWebLog, kLogWarning, "AccountBasicServlet::loadConfig(). accountID is null\n");
    return 1;
  }
  TMPL_varlist* list = readConfigOperate(ACCOUNT_FILE, kShownKeys, nullptr, *account);
  list = TMPL_add_var(list, "var_accountID", text, nullptr);
  list = readConfigOperate(ACCOUNT_FILE, "AccountSendAnonymous", list, *account);
  const std::string ring = readAccountConfigPlain("AccountRing", *account, kRingSize);
  list = TMPL_add_loop(list, "ringTypeloop", GetRingToneLoop(ring.c_str(), RING_ACCOUNT, true));
  list = TMPL_add_loop(list, "accountLoop", GetAccountLoop(text, false));
  response->renderTemplate("/phone/www/WEB-INFO/template/account-basic.htm", showItemsByLevel(list, request));
  return 1;
}

int AccountBasicServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* text = request->getParameter("var_accountID");
  if (!text) {
    log_log(kWebLog, kLogWarning, "AccountBasicServlet::writeConfig() accountID is NULL\n");
    return 1;
  }
  const std::optional<int> account = validAccount(text);
  if (!account) {
    log_log(kWebLog, kLogWarning, "AccountBasicServlet::writeConfig() accountID is invail\n");
    return 1;
  }
  writeConfigOperate(ACCOUNT_FILE, kStoredKeys, request, *account);
  writeConfigOperate(ACCOUNT_FILE, "AccountRing", request, *account);
  writeConfigOperate(ACCOUNT_FILE, "AccountSendAnonymous", request, *account);
  if (writeConfigOperate(ACCOUNT_FILE, "AccountAutoAnswerSwitch", request, *account) > 0) {
    postConfigChanged(ConfigArea::kAccountBasic);
  }
  broadcastConfigChanged(ConfigArea::kAccount, *account);
  response->sendRedirect(("/servlet?p=account-basic&q=load&acc=" + std::to_string(*account)).c_str());
  return 1;
}

TMPL_varlist* AccountBasicServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createAccountBasicServlet, HttpServlet, AccountBasicServlet);
