// The page "features-bluetooth": the Bluetooth headset.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kKeys[] = {"BluetoothSwitch"};
constexpr const char* kMenu[] = {"features-bluetooth", "features-forward",   "features-general",  "features-audio",
                                 "features-intercom",  "features-acd",       "features-transfer", "features-callpickup",
                                 "features-remote",    "features-phonelock", "features-sms",      "features-actionurl",
                                 "features-bluetooth"};
constexpr const char* kItems[] = {"GPickupSwitch"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(areTabsOf(kMenu, kFeaturesTabs) && allUnique(kKeys) && allUnique(kItems));
}  // namespace

class FeaturesBluetoothServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesBluetoothServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesBluetoothServlet> kActions[] = {
      {"load", &FeaturesBluetoothServlet::loadConfig},
      {"write", &FeaturesBluetoothServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesBluetoothServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-bluetooth.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesBluetoothServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) {
    log_log(kWebLog, kLogInfo, "Talking,please wait...\n");
    return 1;
  }
  if (writeConfigOperate(GLOBAL_FILE, "BluetoothSwitch", request, 0) > 0) {
    postMessage(kBluetoothService, kBluetoothSwitch, parseInt(request->getParameter("BluetoothSwitch")).value_or(0));
  }
  response->sendRedirect("/servlet?p=features-bluetooth&q=load");
  return 1;
}

TMPL_varlist* FeaturesBluetoothServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesBluetoothServlet, HttpServlet, FeaturesBluetoothServlet);
