#include "servlet/features/features_general_settings.h"

#include <array>

#include "framework/config_operate.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/session.h"

namespace {

// Keys that nobody waits for.
constexpr const char* kQuietKeys[] = {"HotlineNumber",
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
static_assert(allUnique(kQuietKeys));

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

// The session that saves a new idle time has it at once.
void applyIdleTime(HttpRequest* request) {
  const char* minutes = request->getParameter("ReLogOffTime");
  if (minutes) setSessionIdleMinutes(request, minutes);
}

}  // namespace

void storeGeneralSettings(HttpRequest* request) {
  writeConfigOperate(GLOBAL_FILE, kQuietKeys, request, 0);
  writeConfigOperate(ACCOUNT_FILE, "AccountAutoAnswerSwitch", request, kAddressCallAccount);
  storeGroup(kInternational, request);
  applyIdleTime(request);
  for (const SaveGroup& group : kGroups) storeGroup(group, request);
  if (writeConfigOperate(GLOBAL_FILE, "BLFLedOffInIdle", request, 0) > 0) {
    postMessage(kPhoneApplication, kBusyLampsChanged);
  }
}
