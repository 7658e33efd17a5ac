// The page "features-intercom": calls that are answered by the phone itself.
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
constexpr const char* kShownKeys[] = {"IntercomAllowance", "IntercomMuteSwitch", "IntercomToneSwitch",
                                      "IntercomBargeSwitch"};
constexpr const char* kStoredKeys[] = {"IntercomAllowance", "IntercomBargeSwitch", "IntercomMuteSwitch",
                                       "IntercomToneSwitch"};
constexpr const char* kMenu[] = {"features-intercom", "features-general",   "features-audio",
                                 "features-forward",  "features-transfer",  "features-callpickup",
                                 "features-remote",   "features-phonelock", "features-acd",
                                 "features-sms",      "features-actionurl", "features-bluetooth"};
constexpr const char* kItems[] = {"FeaturesAllowIntercom", "FeaturesIntercomMute", "FeaturesIntercomTone",
                                  "FeaturesIntercomBarge"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(areTabsOf(kMenu, kFeaturesTabs) && allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kMenu) &&
              allUnique(kItems));
}  // namespace

class FeaturesIntercomServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesIntercomServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesIntercomServlet> kActions[] = {
      {"load", &FeaturesIntercomServlet::loadConfig},
      {"write", &FeaturesIntercomServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesIntercomServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-intercom.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesIntercomServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0) > 0) postConfigChanged(ConfigArea::kIntercom);
  response->sendRedirect("/servlet?p=features-intercom&q=load");
  return 1;
}

TMPL_varlist* FeaturesIntercomServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesIntercomServlet, HttpServlet, FeaturesIntercomServlet);
