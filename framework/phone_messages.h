// The numbers and names by which the pages talk to the phone's applications.
#pragma once

// Names of the applications' message threads.
inline constexpr char kPhoneApplication[] = "app_hostapp";

// Messages.
inline constexpr unsigned kConfigChanged = 0x10007;      // CONFIG_CHANGED: wParam = area, lParam = detail
inline constexpr unsigned kReboot = 0x10101;             // wParam = delay in seconds
inline constexpr unsigned kRegistrationState = 0x30006;  // wParam = account; answered with its status code
inline constexpr unsigned kTalkingState = 0x30007;       // answered 0 while a call is in progress

// How long a page waits for an answer, in milliseconds.
inline constexpr int kAnswerTimeout = 3000;

// What part of the configuration changed.
enum class ConfigArea : int {
  kForward = 1,
  kAccountAdvanced = 2,
  kAccount = 3,  // detail = account index
  kDialPlan = 4,
  kDialNow = 6,
  kLocalContacts = 8,
  kNetwork = 9,
  kAudio = 11,
  kTones = 12,
  kAccountBasic = 13,
  kVoice = 0x11,
  kAreaCode = 0x12,
  kBlockOut = 0x13,
  kPhoneLock = 0x14,
  kLogo = 0x15,
  kTr069 = 0x17,
  kSip = 0x1c,
  kIntercom = 0x1d,
  kCallCompletion = 0x20,
  kActionUrl = 0x26,
  kAcd = 0x27,
};

// Tells every application that an area changed.
void broadcastConfigChanged(ConfigArea area, int detail = 0);
// Tells the phone application alone.
void postConfigChanged(ConfigArea area, int detail = 0);

// The phone application's status code of an account (MapAccountStatusToString gives its text), waiting kAnswerTimeout
// at the most; kMessageNoAnswer when it does not answer.
int queryRegistrationState(int account);
