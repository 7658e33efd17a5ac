// The page "features-acd": automatic call distribution.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kKeys[] = {"EnableACDAutoAvailable", "ACDAutoAvailableTime"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-acd");
constexpr const char* kItems[] = {"FeaturesACDAutoAvailable", "FeaturesACDAutoAvailableTimer"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kItems));
}  // namespace

class FeaturesACDServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesACDServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesACDServlet> kActions[] = {
      {"load", &FeaturesACDServlet::loadConfig},
      {"write", &FeaturesACDServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesACDServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-acd.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesACDServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  bool changed = false;
  for (const char* key : kKeys) changed |= writeConfigOperate(GLOBAL_FILE, key, request, 0) > 0;
  if (changed) postConfigChanged(ConfigArea::kAcd);
  response->sendRedirect("/servlet?p=features-acd&q=load");
  return 1;
}

TMPL_varlist* FeaturesACDServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesACDServlet, HttpServlet, FeaturesACDServlet);
