// The page "features-transfer": how calls are passed on.
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
constexpr const char* kKeys[] = {"SemiAttendedTranSwitch", "OnhookBlindTranSwitch", "OnhookAttendTranSwitch",
                                 "TranAfterConfExitSwitch", "TransferModeViaDsskey"};
constexpr const char* kQuietKeys[] = {"OnhookAttendTranSwitch", "TransferModeViaDsskey"};
constexpr const char* kSipKeys[] = {"OnhookBlindTranSwitch", "SemiAttendedTranSwitch", "TranAfterConfExitSwitch"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-transfer");
constexpr const char* kItems[] = {"FeaturesSemiAttendTransfer", "FeaturesSemiAttendTransOnHook",
                                  "FeaturesBlindTranOnhook",    "FeaturesTransferonConferenceHangup",
                                  "FeaturesDsskeyBlindTran",    "FeaturesTransferModeViaDsskey"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kQuietKeys) && allUnique(kSipKeys) && allUnique(kItems));
}  // namespace

class FeaturesTransferServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesTransferServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesTransferServlet> kActions[] = {
      {"load", &FeaturesTransferServlet::loadConfig},
      {"write", &FeaturesTransferServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesTransferServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-transfer.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesTransferServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kQuietKeys, request, 0);
  if (writeConfigOperate(GLOBAL_FILE, kSipKeys, request, 0) > 0) broadcastConfigChanged(ConfigArea::kSip);
  response->sendRedirect("/servlet?p=features-transfer&q=load");
  return 1;
}

TMPL_varlist* FeaturesTransferServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesTransferServlet, HttpServlet, FeaturesTransferServlet);
