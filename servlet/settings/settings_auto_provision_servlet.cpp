// The page "settings-autop": where the phone fetches its configuration.
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"AutoProvisionEnablePNP",     "AutoProvisionEnableDHCPOption",
                                      "AutoProvisionOptionType",    "DhcpOptionValue",
                                      "AutoProvisionRepeatMinutes", "AutoProvisionWeeklyBeginTime",
                                      "AutoProvisionWeeklyEndTime", "AutoProvisionWeeklyMask",
                                      "ForbidZeroSwitch",           "ZeroWaitTime",
                                      "AutoProvisionEnableWeekly",  "AutoProvisionPowerOn",
                                      "AutoProvisionRepeat",        "AutoProvisionServerURL",
                                      "AutoProvisionUser",          "AutoProvisionTPGOptionPNP"};
constexpr const char* kStoredKeys[] = {"AutoProvisionEnablePNP",     "AutoProvisionEnableDHCPOption",
                                       "AutoProvisionOptionType",    "DhcpOptionValue",
                                       "AutoProvisionServerURL",     "AutoProvisionUser",
                                       "AutoProvisionRepeatMinutes", "AutoProvisionWeeklyBeginTime",
                                       "AutoProvisionWeeklyEndTime", "AutoProvisionWeeklyMask",
                                       "ForbidZeroSwitch",           "ZeroWaitTime"};
constexpr const char* kScheduleKeys[] = {"AutoProvisionEnableWeekly", "AutoProvisionPowerOn", "AutoProvisionRepeat"};
constexpr const char* kSecretKeys[] = {"AutoProvisionPassword", "AutoProvisionAESKey16", "AutoProvisionAESKey16MAC"};
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-autop");
constexpr const char* kItems[] = {"PhonedhcpActive",
                                  "PhoneCustomOption",
                                  "PhoneServerURL",
                                  "PhoneCommonAESkey",
                                  "PhoneMACOrientedAESkey",
                                  "PhonePNPActive",
                                  "PhonePoweronActive",
                                  "PhoneRepeatlyActive",
                                  "PhoneRepeatInterval",
                                  "PhoneWeeklyActive",
                                  "PhoneAutopTime",
                                  "PhoneDayofWeek",
                                  "PhonebtnAutopNow",
                                  "PhoneAutoProvisionAccount",
                                  "PhoneAutoProvisionPassword",
                                  "PhoneDHCPOptionValue"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kScheduleKeys) && allUnique(kSecretKeys) &&
              allUnique(kItems));

constexpr int kStateTimeout = 1000;  // milliseconds
}  // namespace

class SettingsAutoProvisionServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int askResult(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsAutoProvisionServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsAutoProvisionServlet> kActions[] = {
      {"load", &SettingsAutoProvisionServlet::loadConfig},
      {"write", &SettingsAutoProvisionServlet::writeConfig},
      {"result", &SettingsAutoProvisionServlet::askResult},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsAutoProvisionServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  list = GetTR069Supported(list);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-autop.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsAutoProvisionServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* now = request->getParameter("now");
  if (!now) {
    log_log(kWebLog, kLogWarning, "SettingsAutoProvisionServlet::writeConfig() para error\n");
    return 1;
  }
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  writeConfigOperate(GLOBAL_FILE, kScheduleKeys, request, 0);
  for (const char* key : kSecretKeys) writeSecret(GLOBAL_FILE, key, request->getParameter(key), 0);
  if (std::string_view(now) == "true") {
    postMessage(kProvisioningService, kProvisionNow);
    SetNoticePage(response, true, "settings-autop", "Configuration updating ...");
    return 1;
  }
  response->sendRedirect("/servlet?p=settings-autop&q=load");
  return 1;
}

int SettingsAutoProvisionServlet::askResult(HttpRequest*, HttpResponse* response) {
  const int state = askFor(kStateTimeout, kProvisioningService, kProvisioningState);
  response->print(state != 0 && state != kMessageNoAnswer ? "autoprovision" : "idle");
  return 1;
}

TMPL_varlist* SettingsAutoProvisionServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsAutoProvisionServlet, HttpServlet, SettingsAutoProvisionServlet);
