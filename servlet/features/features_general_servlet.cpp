// The page "features-general": what has no page of its own, and the logo.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/features/features_general_logo.h"
#include "servlet/features/features_general_settings.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"CallWaitingSwitch",
                                      "HotlineNumber",
                                      "HotlineDelay",
                                      "BusytoneDelay",
                                      "NormalRefuseCode",
                                      "DNDRefuseCode",
                                      "CallCompletionSwitch",
                                      "CalllogShowNumEnable",
                                      "BroadsoftFeatureKeySync",
                                      "SaveCallLogSwitch",
                                      "EnableHideDTMF",
                                      "EnableDTMFDelay",
                                      "ClosePowerLight",
                                      "LocalDtmfTone",
                                      "PlayHoldToneSwitch",
                                      "PlayHoldToneDelay",
                                      "AutoAnswerDelay",
                                      "HeadsetPriorSwitch",
                                      "EnableDTMFReplaceTran",
                                      "TransferDTMF",
                                      "ReLogOffTime",
                                      "LCDLogo",
                                      "PSWDialPrefix",
                                      "PSWDialLength",
                                      "EnablePSWDial",
                                      "AutoRedialSwitch",
                                      "AutoRedialInterval",
                                      "AutoRedialTimes",
                                      "PayloadType",
                                      "EnableSendPoundKey",
                                      "AllowMute",
                                      "Deal180After183",
                                      "LogonWizard",
                                      "HeadsetTrainingSwitch",
                                      "KeyAsSendSwitch",
                                      "DialNowDelay",
                                      "SipReservePound",
                                      "SipRFC2543Hold",
                                      "SipUseOutBoundInDialog",
                                      "SpecialAutoAnswerTone",
                                      "Dtmfrep",
                                      "ForwardInternationalEnable",
                                      "GPickupSwitch",
                                      "GPickupCode",
                                      "DPickupSwitch",
                                      "DPickupCode",
                                      "PickupAllowBlfRing",
                                      "IndicationBLFPickup",
                                      "CallWaitingOnCode",
                                      "CallWaitingOffCode",
                                      "CallParkSwitch",
                                      "GroupCallParkSwitch",
                                      "CallParkVisualNotifySwitch",
                                      "CallParkRingNotifyType",
                                      "DiversionEnable",
                                      "AllowTransExistCall",
                                      "BLFLedOffInIdle",
                                      "EnableDirectIPCall",
                                      "CallNumFilter",
                                      "BSFTActive",
                                      "TextLogo",
                                      "EnableVoiceMailTone",
                                      "DhcpHostnameValue"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-general");
constexpr const char* kItems[] = {"FeaturesCallWaiting",
                                  "FeaturesAutoRedial",
                                  "FeaturesAutoRedialInterval",
                                  "FeaturesAutoRedialTimes",
                                  "FeaturesKeyasSend",
                                  "FeaturesReservePound",
                                  "FeaturesHotlineNumber",
                                  "FeaturesHotlineDelay",
                                  "FeaturesBusytoneDelay",
                                  "FeaturesReturnCodeRefuse",
                                  "FeaturesReturnCodeDND",
                                  "FeaturesCallCompletion",
                                  "FeaturesTimeOutforDialNow",
                                  "FeaturesRFC2543Hold",
                                  "FeaturesUseOutboundinDialog",
                                  "FeaturesIsDeal180",
                                  "FeaturesLogonWizard",
                                  "FeaturesPswPrefix",
                                  "FeaturesPswLength",
                                  "FeaturesPswDial",
                                  "FeaturesSaveCallHistory",
                                  "FeaturesDTMFRepetition",
                                  "FeaturesUseLogo",
                                  "FeatureKeySynchronisation",
                                  "FeaturesClosePowerLight",
                                  "FeaturesMulticastCodec",
                                  "FeaturesPlayHoldTone",
                                  "FeaturesPlayHoldToneDelay",
                                  "FeaturesAutoAnswerDelay",
                                  "FeaturesAllowMute",
                                  "FeaturesDTMFReplaceTran",
                                  "FeaturesSendPoundKey",
                                  "FeaturesHeadsetPrior",
                                  "FeaturesFwdInternational",
                                  "FeaturesReLogOffTime",
                                  "FeaturesSuppressDTMFDisplay",
                                  "FeaturesSuppressDTMFDisplayDelay",
                                  "FeaturesDualHeadset",
                                  "FeaturesTranSendDTMF",
                                  "FeaturesDiversionHistoryInfo",
                                  "FeaturesPlayLocalDTMFTone",
                                  "FeaturesBLFLedOffInIdle",
                                  "FeaturesCallNumFilter",
                                  "FeaturesDirectIPCall",
                                  "FeaturesAutoAnswer",
                                  "FeaturesCalllogShowNum",
                                  "FeaturesVoiceMailTone",
                                  "FeaturesDhcpHostname"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 2048};
static_assert(allUnique(kShownKeys) && allUnique(kItems));
}  // namespace

class FeaturesGeneralServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int UploadLogoFile(HttpRequest* request, HttpResponse* response);
  int DeleteLogoFile(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesGeneralServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesGeneralServlet> kActions[] = {
      {"load", &FeaturesGeneralServlet::loadConfig},
      {"write", &FeaturesGeneralServlet::writeConfig},
      {"uploadLogo", &FeaturesGeneralServlet::UploadLogoFile},
      {"delete", &FeaturesGeneralServlet::DeleteLogoFile},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesGeneralServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  list = addLogo(readConfigOperate(ACCOUNT_FILE, "AccountAutoAnswerSwitch", list, kAddressCallAccount));
  list = TMPL_add_var(list, "ColorfulScreen", "true", "REBOOT_IN_TALKING", "false", "hideLogoSwitch", "false", nullptr);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-general.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesGeneralServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  storeGeneralSettings(request);
  if (wantsReboot(request)) {
    sysReboot(-1);
    SetNoticePage(response, true, "features-general", kRebootingNotice);
    return 1;
  }
  response->sendRedirect("/servlet?p=features-general&q=load");
  return 1;
}

int FeaturesGeneralServlet::UploadLogoFile(HttpRequest* request, HttpResponse* response) {
  const char* result = takeLogo(request);
  response->renderTemplate("/phone/www/WEB-INFO/template/upload-result.htm",
                           result ? TMPL_add_var(nullptr, "result", result, nullptr) : nullptr);
  return 1;
}

int FeaturesGeneralServlet::DeleteLogoFile(HttpRequest*, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  deleteLogo();
  response->sendRedirect("/servlet?p=features-general&q=load");
  return 1;
}

TMPL_varlist* FeaturesGeneralServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesGeneralServlet, HttpServlet, FeaturesGeneralServlet);
