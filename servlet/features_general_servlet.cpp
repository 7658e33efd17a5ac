#include "servlet/features_general_servlet.h"

#include <array>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/page_factory.h"
#include "framework/page_utils.h"
#include "framework/phone_messages.h"
#include "framework/visibility.h"
#include "servlet/logo.h"
#include "servlet/session_login.h"

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
constexpr const char* kStoredKeys[] = {"HotlineNumber",
                                       "HotlineDelay",
                                       "BusytoneDelay",
                                       "NormalRefuseCode",
                                       "DNDRefuseCode",
                                       "EnableHideDTMF",
                                       "EnableDTMFDelay",
                                       "PlayHoldToneSwitch",
                                       "PlayHoldToneDelay",
                                       "LocalDtmfTone",
                                       "AutoAnswerDelay",
                                       "HeadsetPriorSwitch",
                                       "EnableDTMFReplaceTran",
                                       "TransferDTMF",
                                       "ReLogOffTime",
                                       "PSWDialPrefix",
                                       "PSWDialLength",
                                       "EnablePSWDial",
                                       "EnableSendPoundKey",
                                       "AllowMute",
                                       "HeadsetTrainingSwitch",
                                       "CalllogShowNumEnable",
                                       "KeyAsSendSwitch",
                                       "DialNowDelay",
                                       "GPickupSwitch",
                                       "GPickupCode",
                                       "DPickupSwitch",
                                       "DPickupCode",
                                       "PickupAllowBlfRing",
                                       "IndicationBLFPickup",
                                       "CallParkSwitch",
                                       "GroupCallParkSwitch",
                                       "CallParkVisualNotifySwitch",
                                       "AllowTransExistCall",
                                       "CallParkRingNotifyType",
                                       "DiversionEnable",
                                       "EnableDirectIPCall",
                                       "CallNumFilter",
                                       "EnableVoiceMailTone",
                                       "DhcpHostnameValue"};
constexpr const char* kMenu[] = {"features-general",  "features-forward",   "features-audio",
                                 "features-intercom", "features-transfer",  "features-callpickup",
                                 "features-remote",   "features-phonelock", "features-acd",
                                 "features-sms",      "features-actionurl", "features-bluetooth"};
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
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kMenu) && allUnique(kItems));

// Keys that are stored together, and who is told when one of them changed.
struct SaveGroup {
  std::array<const char*, 5> keys;
  void (*announce)(ConfigArea area, int detail);
  ConfigArea area;
};
constexpr SaveGroup kInternational{{"ForwardInternationalEnable"}, broadcastConfigChanged, ConfigArea::kForward};
constexpr SaveGroup kGroups[] = {
    {{"CallWaitingSwitch", "CallWaitingOnCode", "CallWaitingOffCode"}, postConfigChanged, ConfigArea::kAudio},
    {{"BroadsoftFeatureKeySync"}, broadcastConfigChanged, ConfigArea::kFeatureKeySync},
    {{"LCDLogo"}, postConfigChanged, ConfigArea::kLogo},
    {{"TextLogo"}, postConfigChanged, ConfigArea::kLogo},
    {{"CallCompletionSwitch"}, postConfigChanged, ConfigArea::kCallCompletion},
    {{"SaveCallLogSwitch"}, postConfigChanged, ConfigArea::kCallLog},
    {{"ClosePowerLight"}, postConfigChanged, ConfigArea::kPowerLight},
    {{"SipReservePound", "SipRFC2543Hold", "SipUseOutBoundInDialog", "Deal180After183", "LogonWizard"},
     broadcastConfigChanged,
     ConfigArea::kSip},
    {{"PayloadType"}, broadcastConfigChanged, ConfigArea::kMulticast},
    {{"AutoRedialInterval", "AutoRedialTimes", "AutoRedialSwitch"}, postConfigChanged, ConfigArea::kAutoRedial},
    {{"Dtmfrep"}, broadcastConfigChanged, ConfigArea::kVoice},
};

void storeGroup(const SaveGroup& group, HttpRequest* request) {
  const int count = static_cast<int>(group.keys.size());
  if (writeConfigOperate(GLOBAL_FILE, group.keys.data(), count, request, 0) > 0) group.announce(group.area, 0);
}

// Automatic answering of calls by address belongs to the account behind the six that register.
constexpr int kAddressCallAccount = 6;

// The session that saves a new idle time has it at once.
void applyIdleTime(HttpRequest* request) {
  const char* minutes = request->getParameter("ReLogOffTime");
  if (minutes) setSessionIdleMinutes(request, minutes);
}

}  // namespace

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
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  writeConfigOperate(ACCOUNT_FILE, "AccountAutoAnswerSwitch", request, kAddressCallAccount);
  storeGroup(kInternational, request);
  applyIdleTime(request);
  for (const SaveGroup& group : kGroups) storeGroup(group, request);
  if (writeConfigOperate(GLOBAL_FILE, "BLFLedOffInIdle", request, 0) > 0) {
    postMessage(kPhoneApplication, kBusyLampsChanged);
  }
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
