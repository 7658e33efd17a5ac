// The protocol of the phone's applications: their threads, the messages that each takes, and the codes in them.
// wParam and lParam are 0 and the answer means nothing where nothing else is said; texts travel with their final NUL.
#pragma once

// --- Threads, by the names that msgGetThreadByName() takes.

inline constexpr char kPhoneApplication[] = "app_hostapp";
inline constexpr char kScreenApplication[] = "app_dispsvc";
inline constexpr char kSipClient[] = "app_sipClient";  // followed by the account's index
inline constexpr char kCaptureService[] = "app_pcapServer";
inline constexpr char kProvisioningService[] = "autoServer";
inline constexpr char kUpgradeManager[] = "smGui";
inline constexpr char kBluetoothService[] = "bluetooththread";

// --- To every application, or to the phone application alone.

inline constexpr unsigned kConfigChanged = 0x10007;  // CONFIG_CHANGED: wParam = ConfigArea, lParam = detail

// What part of the configuration changed. The detail is 0 where nothing else is said.
enum class ConfigArea : int {
  kForward = 1,
  kAccountAdvanced = 2,
  kLineKeys = 2,  // memory keys, too; data = their numbers, a byte each
  kAccount = 3,   // detail = account index
  kDialPlan = 4,
  kDialNow = 6,
  kLocalContacts = 8,  // detail: kGroupsChanged or kContactsChanged
  kNetwork = 9,
  kKeys = 10,  // of any family but the programmable ones
  kAudio = 11,
  kTones = 12,
  kAccountBasic = 13,
  kVoice = 0x11,
  kAreaCode = 0x12,
  kBlockOut = 0x13,
  kPhoneLock = 0x14,
  kLogo = 0x15,
  kTimeServers = 0x16,  // the servers, the zone and its daylight saving
  kTr069 = 0x17,
  kTextMessages = 0x18,  // detail: 0 one is about to be sent, 1 it was handed over
  kModuleKeys = 0x19,    // detail = the module from 0; data = their numbers from 1, a byte each
  kAutoRedial = 0x1a,
  kClock = 0x1b,  // detail: 0 it was set by hand, 1 it follows its servers, 2 the formats changed
  kSip = 0x1c,
  kIntercom = 0x1d,
  kDnd = 0x1e,
  kProgrammableKeys = 0x1f,
  kCallCompletion = 0x20,
  kLdap = 0x23,
  kSoftKeys = 0x24,
  kFeatureKeySync = 0x25,
  kActionUrl = 0x26,
  kAcd = 0x27,
  kCallLog = 0x28,
  kWatchdog = 0x29,
  kMulticast = 0x2a,
  kDirectoryFile = 0x2e,       // detail: a DirectoryFile; sent, answers 0 when it is done
  kRemotePhoneBooks = 0x2f,    // detail: 0 the list, 1 how long names are kept
  kNetworkCallLog = 0x30,      // its switch or its accounts
  kNetworkDirectories = 0x31,  // which, and their names
  kSearchOrder = 0x34,
  kUserRings = 0x35,  // one came or went
  kNetworkDirectoryLogin = 0x36,
  kCustomDirectories = 0x37,  // fetched from the server anew
  kFavorites = 0x38,
  kRings = 0x39,
  kActiveLevel = 0x55,
  kWallpaper = 0x56,      // detail: 1 the list or the choice changed, 0 after it: it is shown
  kContactPhotos = 0x58,  // data = the path of a photo that came or went
  kPowerLight = 0x5a,
  kKeyPageTips = 0x5b,
  kKeyLabelLength = 0x60,
};

inline constexpr int kGroupsChanged = 1;
inline constexpr int kContactsChanged = 2;

// What is done with the exchange file of the local directory.
inline constexpr char kDirectoryFilePath[] = "/config/data//contact_xported.xml";
enum class DirectoryFile : int {
  kImport = 0,  // replaces the directory
  kExport = 1,
  kImportKeeping = 2,    // contacts of the file come to those that are there
  kImportReplacing = 3,  // replaces the directory
};

inline constexpr unsigned kLeaveAccounts = 0x1000a;    // accounts are to be unregistered: the phone goes down
inline constexpr unsigned kUpgradePrepared = 0xb0003;  // applications are about to be ended for an upgrade
inline constexpr unsigned kFactoryReset = 0x10103;

// --- To the phone application.

inline constexpr unsigned kUpgradeAhead = 0x10009;  // an upgrade is about to begin
inline constexpr unsigned kConfigImport = 0x1000f;  // a configuration is about to be put in place of the phone's

inline constexpr unsigned kServerChanged = 0x1000b;      // another provisioning server was set
inline constexpr unsigned kReboot = 0x10101;             // wParam = delay in seconds
inline constexpr unsigned kRegistrationState = 0x30006;  // wParam = account; answers a RegistrationStatus
inline constexpr unsigned kTalkingState = 0x30007;       // lParam = 1; answers 0 while a call is in progress
inline constexpr unsigned kExpansionKeys = 0x3000e;      // answers the key modules: count in 4 bits, kind above
inline constexpr unsigned kActionUri = 0x30017;          // text = a "key" or "number" command
inline constexpr unsigned kShowXml = 0x3001a;            // a pushed XML document is there
inline constexpr unsigned kWriteBlfList = 0x3001e;       // wParam = BlfKeys; answered when kBlfListPath is there
inline constexpr unsigned kExportConfig = 0x3001f;  // text = a "phonecfg" command; answers 1 when its file is ready
inline constexpr unsigned kRedirectCall = 0x30020;  // text = a "redirectcall" command
inline constexpr unsigned kForwardCall = 0x30021;   // text = a "forward" command
inline constexpr unsigned kHangUp = 0x30011;
inline constexpr unsigned kBusyLampsChanged = 0x30029;
inline constexpr unsigned kWriteCallHistory = 0x50004;  // answered when the file of the call history is up to date
inline constexpr unsigned kMakeCall =
    0xa0002;  // wParam = origin and account, text = number; answers non-zero: it dials

// The busy lamps of a family's keys, as the phone application writes them out: a record a key, "$" between records,
// "?" between the key's number (of module keys from 1) and its value, label and extension, each behind a mark of one
// character.
inline constexpr char kBlfListPath[] = "/tmp/tmpBLFListValues";
enum class BlfKeys : int {
  kLine = 0,
  kMemory = 1,
  kModule = 2,  // lParam = the module from 1
};

// How the registration of an account stands.
enum RegistrationStatus : int {
  kDisabled = 0,
  kRegistering = 1,
  kRegistered = 2,
  kRegisterFailed = 3,
  kUnregistered = 4,
  kRegisteredAgain = 5,
  kInexistent = 6,
};

// --- To the screen.

inline constexpr unsigned kBacklightTimeChanged = 0x90004;
inline constexpr unsigned kBacklightLevelChanged = 0x90007;  // wParam = the level
inline constexpr unsigned kContrastChanged = 0x90008;        // wParam = the level

// --- To the SIP client of an account.

inline constexpr unsigned kSendTextMessage =
    0x4000b;  // wParam, lParam = bytes of its text and of its address behind it

// --- To the upgrade manager.

inline constexpr unsigned kUpgradeBegins = 0xb0001;  // answers 1 when one is running

// --- To the capture service.

inline constexpr unsigned kStartCapture = 0x200001;
inline constexpr unsigned kStopCapture = 0x200002;
inline constexpr unsigned kCaptureState = 0x200003;  // answers 1 while it captures
inline constexpr unsigned kWriteCapture = 0x200005;  // text = the path of the file to write the last capture to

// --- To the provisioning service.

inline constexpr unsigned kProvisioningState = 0xa0001;  // answers non-zero while provisioning runs
inline constexpr unsigned kProvisionNow = 0xb0001;

// --- To the Bluetooth service.

inline constexpr unsigned kBluetoothSwitch = 0xa59;  // wParam = the switch
