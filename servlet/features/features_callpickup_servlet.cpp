// The page "features-callpickup": picking up and parking calls.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"GPickupSwitch",
                                      "GPickupCode",
                                      "DPickupSwitch",
                                      "DPickupCode",
                                      "PickupAllowBlfRing",
                                      "IndicationBLFPickup",
                                      "CallParkSwitch",
                                      "GroupCallParkSwitch",
                                      "CallParkVisualNotifySwitch",
                                      "CallParkRingNotifyType",
                                      "BSFTActive"};
constexpr const char* kStoredKeys[] = {"GPickupSwitch",         "GPickupCode",         "DPickupSwitch",
                                       "DPickupCode",           "PickupAllowBlfRing",  "IndicationBLFPickup",
                                       "CallParkSwitch",        "GroupCallParkSwitch", "CallParkVisualNotifySwitch",
                                       "CallParkRingNotifyType"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-callpickup");
constexpr const char* kItems[] = {"FeaturesCallPickup", "FeaturesCallPark"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));
}  // namespace

class FeaturesCallpickupServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesCallpickupServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesCallpickupServlet> kActions[] = {
      {"load", &FeaturesCallpickupServlet::loadConfig},
      {"write", &FeaturesCallpickupServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesCallpickupServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-callpickup.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesCallpickupServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  response->sendRedirect("/servlet?p=features-callpickup&q=load");
  return 1;
}

TMPL_varlist* FeaturesCallpickupServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesCallpickupServlet, HttpServlet, FeaturesCallpickupServlet);
