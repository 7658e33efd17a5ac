// The numbers and names by which the pages talk to the phone's applications.
#pragma once

// Names of the applications' message threads.
inline constexpr char kPhoneApplication[] = "app_hostapp";

inline constexpr char kProvisioningService[] = "autoServer";
inline constexpr char kBluetoothService[] = "bluetooththread";

// Messages.
inline constexpr unsigned kConfigChanged = 0x10007;      // CONFIG_CHANGED: wParam = area, lParam = detail
inline constexpr unsigned kReboot = 0x10101;             // wParam = delay in seconds
inline constexpr unsigned kRegistrationState = 0x30006;  // wParam = account; answered with its status code
inline constexpr unsigned kTalkingState = 0x30007;       // answered 0 while a call is in progress

inline constexpr unsigned kActionUri = 0x30017;     // a "key" or "number" command
inline constexpr unsigned kShowXml = 0x3001a;       // a pushed XML document is there
inline constexpr unsigned kExportConfig = 0x3001f;  // a "phonecfg" command; answered 1 when its file is ready
inline constexpr unsigned kRedirectCall = 0x30020;  // a "redirectcall" command
inline constexpr unsigned kForwardCall = 0x30021;   // a "forward" command
inline constexpr unsigned kBusyLampsChanged = 0x30029;
inline constexpr unsigned kServerChanged = 0x1000b;      // another provisioning server was set
inline constexpr unsigned kMakeCall = 0xa0002;           // wParam = origin and account; answered non-zero when it dials
inline constexpr unsigned kProvisioningState = 0xa0001;  // answered non-zero while provisioning runs
inline constexpr unsigned kProvisionNow = 0xb0001;
inline constexpr unsigned kBluetoothSwitch = 0xa59;  // wParam = the switch

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
  kAutoRedial = 0x1a,
  kSip = 0x1c,
  kIntercom = 0x1d,
  kDnd = 0x1e,
  kCallCompletion = 0x20,
  kFeatureKeySync = 0x25,
  kActionUrl = 0x26,
  kAcd = 0x27,
  kCallLog = 0x28,
  kMulticast = 0x2a,
  kRings = 0x39,
  kPowerLight = 0x5a,
};

// A message without a payload to one application, by its thread's name.
void postMessage(const char* thread, unsigned message, int wParam = 0, int lParam = 0);

// Tells every application that an area changed.
void broadcastConfigChanged(ConfigArea area, int detail = 0);
// Tells the phone application alone.
void postConfigChanged(ConfigArea area, int detail = 0);

// True when the phone application says so; not when nobody answers.
bool isCallInProgress();

// The phone application's status code of an account (MapAccountStatusToString gives its text), waiting kAnswerTimeout
// at the most; kMessageNoAnswer when it does not answer.
int queryRegistrationState(int account);
