// The page "settings-ring": rings for calls that announce themselves by an alert-info text.
#include <algorithm>
#include <iterator>
#include <list>
#include <string>
#include <vector>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/media_lists.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/settings/settings_tabs.h"

namespace {

constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-ring");
constexpr const char* kItems[] = {"PhonePersonalRing"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kItems));

constexpr std::size_t kAlerts = 10;
constexpr std::size_t kFieldSize = 256;

std::string textKey(std::size_t alert) {
  return "AlertInfo" + std::to_string(alert) + "Text";
}
std::string ringerKey(std::size_t alert) {
  return "AlertInfo" + std::to_string(alert) + "Ringer";
}

TMPL_loop* alertRows() {
  TMPL_loop* rows = nullptr;
  for (std::size_t i = 0; i < kAlerts; ++i) {
    const std::string text = readConfigText(textKey(i).c_str(), kFieldSize);
    const std::string ringer = readConfigText(ringerKey(i).c_str(), kFieldSize);
    TMPL_varlist* row = TMPL_add_var(nullptr, "row", std::to_string(i + 1).c_str(), "Text", text.c_str(), nullptr);
    rows = TMPL_add_varlist(
        rows, TMPL_add_loop(row, "ringTypeLoop", GetRingToneLoop(ringer.c_str(), RING_ALERT_INFO, false)));
  }
  return rows;
}

// The values of a field, copied: the next look at a field may take them back.
std::vector<std::string> valuesOf(HttpRequest* request, const char* field) {
  std::vector<std::string> values;
  for (const char** value = request->getParameterValues(field); value && *value; ++value) values.emplace_back(*value);
  return values;
}

// The position of the first ring of that name, 0 when there is none.
std::ptrdiff_t GetIndexByName(const std::list<std::string>& rings, const std::string& name) {
  const auto ring = std::ranges::find(rings, name);
  return ring == rings.end() ? 0 : std::distance(rings.begin(), ring);
}

}  // namespace

class SettingsRingServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsRingServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsRingServlet> kActions[] = {
      {"load", &SettingsRingServlet::loadConfig},
      {"write", &SettingsRingServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int SettingsRingServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = TMPL_add_loop(nullptr, "TRLoop", alertRows());
  list = GetTR069Supported(showItemsByLevel(list, request));
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-ring.htm", list);
  return 1;
}

int SettingsRingServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const std::list<std::string> rings = ringNumbering();
  const std::vector<std::string> texts = valuesOf(request, "Text");
  const std::vector<std::string> ringers = valuesOf(request, "Ringer");
  for (std::size_t i = 0; i < kAlerts; ++i) {  // rows that the form lacks keep their values
    if (i < texts.size()) writeConfigOperate(GLOBAL_FILE, textKey(i).c_str(), texts[i].c_str(), 0);
    if (i >= ringers.size()) continue;
    const std::string position = std::to_string(GetIndexByName(rings, ringers[i]));
    writeConfigOperate(GLOBAL_FILE, ringerKey(i).c_str(), position.c_str(), 0);
  }
  broadcastConfigChanged(ConfigArea::kRings);
  response->sendRedirect("/servlet?p=settings-ring&q=load");
  return 1;
}

TMPL_varlist* SettingsRingServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsRingServlet, HttpServlet, SettingsRingServlet);
