// The page "features-actionurl": addresses that the phone calls on its events.
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
constexpr const char* kKeys[] = {"AUSetupCompleted",
                                 "AULogOn",
                                 "AULogOff",
                                 "AURegisterFailed",
                                 "AUOffHook",
                                 "AUOnHook",
                                 "AUIncomingCall",
                                 "AUCallOut",
                                 "AUEstablished",
                                 "AUTerminated",
                                 "AUOpenDnd",
                                 "AUCloseDnd",
                                 "AUOpenAlwaysForward",
                                 "AUCloseAlwaysForward",
                                 "AUOpenBusyForward",
                                 "AUCloseBusyForward",
                                 "AUOpenNoAnswerForward",
                                 "AUTransferCall",
                                 "AUBlindTransfer",
                                 "AUAttendedTransfer",
                                 "AUHold",
                                 "AUUnHold",
                                 "AUMute",
                                 "AUUnMute",
                                 "AUMissedCall",
                                 "AUIpChanged",
                                 "AUIdleToBusy",
                                 "AUBusyToIdle",
                                 "AUCloseNoAnswerForward",
                                 "AUAnswerNewInCall",
                                 "AURejectIncomingCall",
                                 "AUTransferFinished",
                                 "AUTransferFailed",
                                 "AUForwardIncomingCall"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-actionurl");
constexpr const char* kItems[] = {"FeaturesSetupComplete",
                                  "FeaturesLogOn",
                                  "FeaturesLogOff",
                                  "FeaturesRegisterFail",
                                  "FeaturesOffHook",
                                  "FeaturesOnHook",
                                  "FeaturesIncomingCall",
                                  "FeaturesOutgoingCall",
                                  "FeaturesCallEstablish",
                                  "FeaturesCallTerminated",
                                  "FeaturesDNDOn",
                                  "FeaturesDNDOff",
                                  "FeaturesForwardOnCode",
                                  "FeaturesForwardOffCode",
                                  "FeaturesBusyForwardOn",
                                  "FeaturesBusyForwardOff",
                                  "FeaturesNoAnswerForwardOn",
                                  "FeaturesNoAnswerForwardOff",
                                  "FeaturesTransferCall",
                                  "FeaturesBlindTransferCall",
                                  "FeaturesAttendedTransferCall",
                                  "FeaturesHold",
                                  "FeaturesUnhold",
                                  "FeaturesMute",
                                  "FeaturesUnmute",
                                  "FeaturesMissedCall",
                                  "FeaturesIdletoBusy",
                                  "FeaturesBusytoIdle",
                                  "FeaturesIPChange",
                                  "FeaturesRejectIncomingCall",
                                  "FeaturesAnswerNewInCall",
                                  "FeaturesTransferFailed",
                                  "FeaturesTransferFinished",
                                  "FeaturesForwardIncomingCall"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kItems));
}  // namespace

class FeaturesActionurlServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesActionurlServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesActionurlServlet> kActions[] = {
      {"load", &FeaturesActionurlServlet::loadConfig},
      {"write", &FeaturesActionurlServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesActionurlServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  if (readConfigText("ISUME", 8) == "1") {
    list = readConfigOperate(GLOBAL_FILE, "AURemoteIP", list, 0);
    list = TMPL_add_var(list, "umeactive", "1", nullptr);
  }
  response->renderTemplate("/phone/www/WEB-INFO/template/features-actionurl.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesActionurlServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kKeys, request, 0);
  if (readConfigText("ISUME", 8) == "1") writeConfigOperate(GLOBAL_FILE, "AURemoteIP", request, 0);
  broadcastConfigChanged(ConfigArea::kActionUrl);
  response->sendRedirect("/servlet?p=features-actionurl&q=load");
  return 1;
}

TMPL_varlist* FeaturesActionurlServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesActionurlServlet, HttpServlet, FeaturesActionurlServlet);
