// The page "account-codec": which codecs an account uses, in which order.
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
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/account/account_codec_list.h"
#include "servlet/account/account_tabs.h"

namespace {
constexpr const char* kMenu[] = {"account-codec", "account-basic", "account-adv"};
constexpr const char* kItems[] = {"SwitchAccount", "AccountCodecsGroup"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(areTabsOf(kMenu, kAccountTabs) && allUnique(kMenu) && allUnique(kItems));

// The entries of a list field; an absent field is an empty list.
OrbList<std::string> entriesOf(HttpRequest* request, const char* field) {
  OrbList<std::string> entries;
  if (const char* text = request->getParameter(field)) String2List(entries, text, ',');
  return entries;
}
}  // namespace

class AccountCodecServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int AccountCodecServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<AccountCodecServlet> kActions[] = {
      {"load", &AccountCodecServlet::loadConfig},
      {"write", &AccountCodecServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int AccountCodecServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const char* text = request->getParameter("acc");
  const int account = parseInt(text).value_or(0);
  OrbList<Codec_Info> codecs;
  if (!GetCodecConfigData(&codecs, account)) {
    log_log(kWebLog, kLogWarning, "Get codec config data error!\n");
    return 1;
  }
  SortAudioByPriority(&codecs);
  TMPL_loop* enabled = nullptr;
  TMPL_loop* disabled = nullptr;
  for (const Codec_Info& codec : codecs) {
    TMPL_loop*& loop = codec.enabled ? enabled : disabled;
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "selValue", std::to_string(codec.index).c_str(), "selName",
                                               codec.name.c_str(), nullptr));
  }
  TMPL_varlist* list = TMPL_add_var(nullptr, "var_accountID", text, nullptr);
  list = TMPL_add_loop(list, "enabledLoop", enabled);
  list = TMPL_add_loop(list, "disabledLoop", disabled);
  list = TMPL_add_loop(list, "accountLoop", GetAccountLoop(text, false));
  response->renderTemplate("/phone/www/WEB-INFO/template/account-codec.htm", showItemsByLevel(list, request));
  return 1;
}

int AccountCodecServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* text = request->getParameter("var_accountID");
  if (!text) {
    log_log(kWebLog, kLogWarning, "AccountCodecServlet::writeConfig() accountID is null.\n");
    return 1;
  }
  const std::optional<int> account = validAccount(text);
  if (!account) {
    log_log(kWebLog, kLogWarning, "AccountCodecServlet::loadConfig(). accountID is illegal\n");
    return 1;
  }
  OrbList<Codec_Info> codecs;
  PutCodecData2List(codecs, entriesOf(request, "disabled"), false);
  PutCodecData2List(codecs, entriesOf(request, "enabled"), true);
  StoreCodecs(codecs, *account);
  broadcastConfigChanged(ConfigArea::kAccount, *account);
  response->sendRedirect(("/servlet?p=account-codec&q=load&acc=" + std::to_string(*account)).c_str());
  return 1;
}

TMPL_varlist* AccountCodecServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createAccountCodecServlet, HttpServlet, AccountCodecServlet);
