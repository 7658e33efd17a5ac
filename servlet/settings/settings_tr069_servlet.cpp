// The page "settings-tr069": remote management by the provider.
#include <string>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/network.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"TR069ServerURL", "TR069PeriodicInformSwitch", "TR069PeriodicInformInterval",
                                      "TR069ConnectionRequestUsername", "TR069ServerTR069Switch"};
constexpr const char* kStoredKeys[] = {"TR069ServerUsername",
                                       "TR069ServerURL",
                                       "TR069PeriodicInformSwitch",
                                       "TR069PeriodicInformInterval",
                                       "TR069ConnectionRequestUsername",
                                       "TR069ServerTR069Switch"};
constexpr const char* kSecretKeys[] = {"TR069ServerPassword", "TR069ConnectionRequestPassword"};
constexpr const char* kMenu[] = {"settings-tr069",   "settings-voice", "settings-preference", "settings-datetime",
                                 "settings-upgrade", "settings-autop", "settings-config",     "settings-dialplan",
                                 "settings-ring",    "settings-tones", "settings-softkey"};
constexpr const char* kItems[] = {"PhoneTR069Header",
                                  "PhoneEnableTR069",
                                  "PhoneACSUsername",
                                  "PhoneACSPassword",
                                  "PhoneACSURL",
                                  "PhoneEnablePeriodicInform",
                                  "PhonePeriodicInformInterval",
                                  "PhoneRequestUsername",
                                  "PhoneRequestPassword"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(areTabsOf(kMenu, kSettingsTabs) && allUnique(kShownKeys) && allUnique(kStoredKeys) &&
              allUnique(kSecretKeys) && allUnique(kMenu) && allUnique(kItems));

// The user name as the server gets it: one made of placeholders is filled in from this phone.
std::string serverUserName() {
  std::string name = readConfigText("TR069ServerUsername", 128);
  if (name != "$ManufactureOUI-$ProductClass-$MAC") return name;
  char mac[32] = "";
  netGetMACText(mac, sizeof mac);
  return readConfigText("TR069DeviceManufacturerOUI", kConfigValueSize) + "-" +
         readConfigText("TR069DeviceProductClass", kConfigValueSize) + "-" + mac;
}
}  // namespace

class SettingsTr069Servlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsTr069Servlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsTr069Servlet> kActions[] = {
      {"load", &SettingsTr069Servlet::loadConfig},
      {"write", &SettingsTr069Servlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsTr069Servlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = TMPL_add_var(nullptr, "TR069ServerUsername", serverUserName().c_str(), nullptr);
  list = readConfigOperate(GLOBAL_FILE, kShownKeys, GetTR069Supported(list), 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-tr069.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsTr069Servlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  bool changed = false;
  for (const char* key : kSecretKeys) changed |= writeSecret(GLOBAL_FILE, key, request->getParameter(key), 0);
  changed |= writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0) > 0;
  if (changed) broadcastConfigChanged(ConfigArea::kTr069);
  response->sendRedirect("/servlet?p=settings-tr069&q=load");
  return 1;
}

TMPL_varlist* SettingsTr069Servlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingTr069Servlet, HttpServlet, SettingsTr069Servlet);
