// The page "features-remotecontrl": which systems may command the phone.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"PushXMLServerIP", "EnableSIPNotifyPushXML", "PushXMLBlockInCalling",
                                      "AURILimitIP"};
constexpr const char* kStoredKeys[] = {"PushXMLServerIP", "EnableSIPNotifyPushXML", "PushXMLBlockInCalling"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-remote");
constexpr const char* kItems[] = {"FeaturesPushxmlServerAddr", "FeaturesXMLSIPNotify", "FeaturesActionURILimitIP"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));
}  // namespace

class FeaturesRemoteContrlServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesRemoteContrlServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesRemoteContrlServlet> kActions[] = {
      {"load", &FeaturesRemoteContrlServlet::loadConfig},
      {"write", &FeaturesRemoteContrlServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesRemoteContrlServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-remotecontrl.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesRemoteContrlServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  if (writeConfigOperate(GLOBAL_FILE, "AURILimitIP", request, 0) > 0) {
    writeConfigOperate(GLOBAL_FILE, "AURIShowMsgBoxEnable", "1", 0);
  }
  response->sendRedirect("/servlet?p=features-remotecontrl&q=load");
  return 1;
}

TMPL_varlist* FeaturesRemoteContrlServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesRemoteContrlServlet, HttpServlet, FeaturesRemoteContrlServlet);
