// The page "settings-tones": what the phone plays for dialling, ringing and so on.
#include <string>
#include <vector>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/registry.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kKeys[] = {"ToneDial",        "ToneRing",       "ToneBusy",       "ToneCongestion",
                                 "ToneCallwaiting", "ToneDialrecall", "ToneRecord",     "ToneInfo",
                                 "ToneStutter",     "ToneMessage",    "ToneAutoanswer", "ToneCountry"};
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-tones");
constexpr const char* kItems[] = {"ToneDial"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kKeys) && allUnique(kItems));

constexpr std::size_t kCountrySize = 32;
constexpr std::size_t kCountryNameSize = 64;

// "Custom", then each country that the phone has tones of.
TMPL_loop* countryRows() {
  const std::string current = readConfigPlain("ToneCountry", kCountrySize);
  std::vector<std::string> countries;
  registrySections("/config/tone/CptToneCountry.cfg", countries);
  countries.insert(countries.begin(), "Custom");
  TMPL_loop* rows = nullptr;
  for (std::string& country : countries) {
    cutText(country, kCountryNameSize);
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "selValue", country.c_str(), "selName", country.c_str(),
                                               "selected", country == current ? "true" : "false", nullptr));
  }
  return rows;
}
}  // namespace

class SettingsTonesServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsTonesServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsTonesServlet> kActions[] = {
      {"load", &SettingsTonesServlet::loadConfig},
      {"write", &SettingsTonesServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsTonesServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  list = TMPL_add_loop(list, "countryLoop", countryRows());
  list = GetTR069Supported(list);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-tones.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsTonesServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kKeys, request, 0);
  broadcastConfigChanged(ConfigArea::kTones);
  response->sendRedirect("/servlet?p=settings-tones&q=load");
  return 1;
}

TMPL_varlist* SettingsTonesServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsTonesServlet, HttpServlet, SettingsTonesServlet);
