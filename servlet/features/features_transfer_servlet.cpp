#include "servlet/features/features_transfer_servlet.h"

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/page_factory.h"
#include "framework/page_utils.h"
#include "framework/phone_messages.h"
#include "framework/visibility.h"

namespace {
constexpr const char* kKeys[] = {"SemiAttendedTranSwitch", "OnhookBlindTranSwitch", "OnhookAttendTranSwitch",
                                 "TranAfterConfExitSwitch", "TransferModeViaDsskey"};
constexpr const char* kQuietKeys[] = {"OnhookAttendTranSwitch", "TransferModeViaDsskey"};
constexpr const char* kSipKeys[] = {"OnhookBlindTranSwitch", "SemiAttendedTranSwitch", "TranAfterConfExitSwitch"};
constexpr const char* kMenu[] = {"features-transfer", "features-forward",   "features-general",
                                 "features-audio",    "features-intercom",  "features-callpickup",
                                 "features-remote",   "features-phonelock", "features-acd",
                                 "features-sms",      "features-actionurl", "features-bluetooth"};
constexpr const char* kItems[] = {"FeaturesSemiAttendTransfer", "FeaturesSemiAttendTransOnHook",
                                  "FeaturesBlindTranOnhook",    "FeaturesTransferonConferenceHangup",
                                  "FeaturesDsskeyBlindTran",    "FeaturesTransferModeViaDsskey"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kQuietKeys) && allUnique(kSipKeys) && allUnique(kMenu) &&
              allUnique(kItems));
}  // namespace

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
