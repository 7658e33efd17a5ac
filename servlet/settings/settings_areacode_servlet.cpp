// The page "settings-areacode": the prefix of local numbers.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kKeys[] = {"AreaCode", "AreaCodeMinLen", "AreaCodeMaxLen", "AreaCodeAccount"};
constexpr const auto& kMenu = kDialPlanTabs;
constexpr const char* kItems[] = {"AreaCode"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kKeys) && allUnique(kItems));
}  // namespace

class SettingsAreacodeServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsAreacodeServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsAreacodeServlet> kActions[] = {
      {"load", &SettingsAreacodeServlet::loadConfig},
      {"write", &SettingsAreacodeServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsAreacodeServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  list = GetTR069Supported(list);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-areacode.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsAreacodeServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kKeys, request, 0);
  postConfigChanged(ConfigArea::kAreaCode);
  response->sendRedirect("/servlet?p=settings-areacode&q=load");
  return 1;
}

TMPL_varlist* SettingsAreacodeServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsAreacodeServlet, HttpServlet, SettingsAreacodeServlet);
