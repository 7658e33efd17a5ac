// The page "account-adv": how an account speaks SIP.
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
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/account/account_tabs.h"

namespace {
constexpr const char* kKeys[] = {"AccountExpire",
                                 "AccountPrecondition",
                                 "AccountSubsribeRegister",
                                 "AccountSubsribeMWI",
                                 "AccountSubscribeMWIExpire",
                                 "AccountCIDSource",
                                 "AccountEnableSessionTimer",
                                 "AccountSessionExpires",
                                 "AccountSessionRefresher",
                                 "AccountEnableUserEqualPhone",
                                 "AccountSrtpEncryption",
                                 "AccountPtime",
                                 "AccountBLFListBargeInCode",
                                 "AccountBLAType",
                                 "AccountDialogPickup",
                                 "AccountBLANumber",
                                 "AccountBLASubscribePeriod",
                                 "AccountRegisterMAC",
                                 "AccountRegisterLine",
                                 "AccountRegFailRetryInterval",
                                 "AccountSignalEncode",
                                 "AccountConfType",
                                 "AccountConfURI",
                                 "AccountSubscribeACDExpire",
                                 "Accountearlymedia",
                                 "AccountSIPServerType",
                                 "AccountMusicServerUri",
                                 "AccountDefaultT1",
                                 "AccountDefaultT2",
                                 "AccountDefaultT4",
                                 "AccountSubscribePeriod",
                                 "AccountDTMFType",
                                 "AccountDTMFInfoType",
                                 "AccountDTMFPayload",
                                 "AccountNATEnableUDPUpdate",
                                 "AccountNATUDPUpdateTime",
                                 "AccountMinRTPPort",
                                 "AccountMaxRTPPort",
                                 "AccountNATRport",
                                 "AccountBLFListURL",
                                 "AccountSIPListenPort",
                                 "AccountEnable100Rel",
                                 "AccountSubscribeMWIToVM",
                                 "AccountBLFListCode",
                                 "AccountDPickupCode",
                                 "AccountGPickupCode",
                                 "AccountDisableAlertInfoURL",
                                 "AccountUnRegisterOnReboot",
                                 "AccountEnableOutDialogBLF"};
constexpr const char* kMenu[] = {"account-codec", "account-basic", "account-adv"};
constexpr const char* kItems[] = {"SwitchAccount",
                                  "AdvUDPKeepAlive",
                                  "AdvLocalSIPPort",
                                  "AdvRport",
                                  "AdvSipSessionTimer",
                                  "AdvSubscribePeriod",
                                  "AdvDTMFItems",
                                  "AdvReliableRetransmission",
                                  "AdvEnablePrecondition",
                                  "AdvSubscribeRegister",
                                  "AdvMWIItems",
                                  "AdvCallerIDHeader",
                                  "AdvUseSessionTimer",
                                  "AdvSessionTimer",
                                  "AdvSessionRefresher",
                                  "AdvUserEqualPhone",
                                  "AdvVoiceEncryption",
                                  "AdvPtimeItem",
                                  "AdvBLFListURI",
                                  "AdvBlfListCode",
                                  "AdvDialogInfoCallPickup",
                                  "AdvBLASubscriptionPeriod",
                                  "AdvShareLine",
                                  "AdvBLANumber",
                                  "AdvSIPSendMAC",
                                  "AdvSIPSendLine",
                                  "AdvSIPRegRetryTimer",
                                  "AdvEnableSignalEncode",
                                  "AdvConferenceType",
                                  "AdvConferenceUri",
                                  "AdvACDSubscripPeriod",
                                  "AdvSIPServerType",
                                  "AdvEarlymedia",
                                  "AdvMusicServerURI",
                                  "AdvBLFListBargeInCode",
                                  "AdvDirectCallPickupCode",
                                  "AdvGroupCallPickupCode",
                                  "AdvDistinctiveRingTones",
                                  "AdvUnregisterOnReboot",
                                  "AdvOutDialogBLF",
                                  "AdvVoiceMail"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(areTabsOf(kMenu, kAccountTabs) && allUnique(kKeys) && allUnique(kMenu) && allUnique(kItems));

constexpr std::size_t kNumberSize = 256;

int refuse(HttpResponse* response) {
  response->print("no such account!");
  log_log(kWebLog, kLogWarning, "AccountAdvServlet::loadConfig(). accountID is illegal\n");
  return 1;
}
}  // namespace

class AccountAdvServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int AccountAdvServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<AccountAdvServlet> kActions[] = {
      {"load", &AccountAdvServlet::loadConfig},
      {"write", &AccountAdvServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int AccountAdvServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const char* text = request->getParameter("acc");
  if (!text) {
    log_log(kWebLog, kLogWarning, "AccountAdvServlet::loadConfig(). accountID is null\n");
    return 1;
  }
  const std::optional<int> account = validAccount(text);
  if (!account) return refuse(response);
  TMPL_varlist* list = readConfigOperate(ACCOUNT_FILE, kKeys, nullptr, *account);
  list = readConfigOperate(GLOBAL_FILE, "SipVoiceEncryptType", list, 0);
  std::string number;
  readConfigOperate(ACCOUNT_FILE, "AccountVoiceMailNumber", number, kNumberSize, *account);
  list = TMPL_add_var(list, "MessageVoiceNumber", number.c_str(), "var_accountID", text, nullptr);
  list = TMPL_add_loop(list, "accountLoop", GetAccountLoop(text, false));
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", list, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/account-adv.htm", showItemsByLevel(list, request));
  return 1;
}

int AccountAdvServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* text = request->getParameter("var_accountID");
  if (!text) {
    log_log(kWebLog, kLogWarning, " AccountAdvServlet::writeConfig() accountID is NULL\n");
    return 1;
  }
  const std::optional<int> account = validAccount(text);
  if (!account) return refuse(response);
  const std::string number = std::to_string(*account);
  writeConfigOperate(ACCOUNT_FILE, "AccountVoiceMailNumber",
                     request->getParameter(("MessageVoiceNumber" + number).c_str()), *account);
  writeConfigOperate(ACCOUNT_FILE, kKeys, request, *account);
  broadcastConfigChanged(ConfigArea::kAccountAdvanced);
  broadcastConfigChanged(ConfigArea::kAccount, *account);
  response->sendRedirect(("/servlet?p=account-adv&q=load&acc=" + number).c_str());
  return 1;
}

TMPL_varlist* AccountAdvServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createAccountAdvServlet, HttpServlet, AccountAdvServlet);
