#include "dsskey/dsskey_types.h"

#include <algorithm>
#include <array>

namespace dsskey {
namespace {

using enum ProgramOffer;
using enum Broadsoft;
using enum HasValue;
using enum LineChoices;

constexpr bool kYes = true, kNo = false;

// clang-format off
constexpr KeyType kTypes[] = {
    // number, type, name, place in the picker, offered, programmable keys, BroadSoft, value, line, extension, choices
    { 0, DT_NA,                  "N/A",                   2, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    { 1, DT_CONF,                "Conference",           23, kYes, kHidden, kFree,    kValue,      kNo,  kNo,  kNone},
    { 2, DT_FWD,                 "Forward",              24, kYes, kSame,   kFree,    kNotProgram, kNo,  kNo,  kNone},
    { 3, DT_TRAN,                "Transfer",             25, kYes, kHidden, kFree,    kValue,      kNo,  kNo,  kNone},
    { 4, DT_HOLD,                "Hold",                 26, kYes, kHidden, kFree,    kNoValue,    kNo,  kNo,  kNone},
    { 5, DT_DND,                 "DND",                  27, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    { 6, DT_REDIAL,              "Redial",               28, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    { 7, DT_CALLRETURN,          "Call Return",          29, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    { 8, DT_SMS,                 "SMS",                  30, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    { 9, DT_PICKUP,              "Direct Pickup",         8, kYes, kSame,   kFree,    kValue,      kYes, kNo,  kAccounts},
    {10, DT_CALLPARK,            "Call Park",            10, kYes, kHidden, kFree,    kValue,      kYes, kNo,  kAccounts},
    {11, DT_DTMF,                "DTMF",                 12, kYes, kHidden, kFree,    kValue,      kNo,  kNo,  kNone},
    {12, DT_VOICEMAIL,           "Voice Mail",            7, kYes, kHidden, kFree,    kValue,      kYes, kNo,  kAccounts},
    {13, DT_SPEEDDIAL,           "Speed Dial",            4, kYes, kSame,   kFree,    kValue,      kYes, kNo,  kAccounts},
    {14, DT_INTERCOM,            "Intercom",             11, kYes, kHidden, kFree,    kValue,      kYes, kNo,  kAccounts},
    {15, DT_SIPTRUND,            "Line",                  3, kYes, kHidden, kFree,    kLineKeys,   kYes, kNo,  kAccounts},
    {16, DT_BLF,                 "BLF",                   5, kYes, kHidden, kFree,    kValue,      kYes, kYes, kAccounts},
    {17, DT_URL,                 "URL",                  45, kYes, kHidden, kFree,    kValue,      kNo,  kNo,  kNone},
    {18, DT_GROUPLISTEN,         "Group Listen",         37, kYes, kHidden, kFree,    kNoValue,    kNo,  kNo,  kNone},
    {19, DT_PUBLICHOLD,          "Public Hold",          38, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {20, DT_PRIVATEHOLD,         "Private Hold",         39, kYes, kHidden, kService, kNoValue,    kNo,  kNo,  kNone},
    {21, DT_BLA,                 "BLA",                  47, kNo,  kSame,   kFree,    kLineKeys,   kNo,  kNo,  kNone},
    {22, DT_XMLGROUP,            "XML Group",            15, kYes, kSame,   kFree,    kNoValue,    kYes, kNo,  kPhonebooks},
    {23, DT_GROUPPICKUP,         "Group Pickup",          9, kYes, kSame,   kFree,    kValue,      kYes, kNo,  kAccounts},
    {24, DT_PAGING,              "Paging",               36, kYes, kHidden, kFree,    kValue,      kNo,  kNo,  kNone},
    {25, DT_RECORD,              "Record",               31, kYes, kHidden, kFree,    kNoValue,    kNo,  kNo,  kNone},
    {26, DT_VOICERECORD,         "Voice Record",         48, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {27, DT_XMLBROWSER,          "XML Browser",          16, kYes, kSame,   kFree,    kValue,      kNo,  kNo,  kNone},
    {28, DT_HISTORY,             "History",              18, kNo,  kAdded,  kFree,    kNoValue,    kYes, kNo,  kHistory},
    {29, DT_DIRECTORY,           "Directory",            17, kNo,  kHidden, kFree,    kNoValue,    kNo,  kNo,  kNone},
    {30, DT_MENU,                "Menu",                 19, kNo,  kAdded,  kFree,    kNoValue,    kNo,  kNo,  kNone},
    {31, DT_SWITCHACCOUNT,       "Switch Account",       20, kNo,  kAdded,  kFree,    kNoValue,    kNo,  kNo,  kNone},
    {32, DT_NEWSMS,              "New SMS",              32, kNo,  kAdded,  kFree,    kNoValue,    kNo,  kNo,  kNone},
    {33, DT_STATUS,              "Status",               35, kNo,  kAdded,  kFree,    kNoValue,    kNo,  kNo,  kNone},
    {34, DT_HOTDESKING,          "HotDesking",           42, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {35, DT_URLRECORD,           "URL record",           33, kYes, kHidden, kFree,    kValue,      kNo,  kNo,  kNone},
    {36, DT_BUTTON,              "Button",               49, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {37, DT_EXTSWITCH,           "Exp Switch",            1, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {38, DT_LDAP,                "LDAP",                 21, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {39, DT_BLFLIST,             "BLF List",              6, kYes, kHidden, kService, kNoValue,    kYes, kNo,  kAccounts},
    {40, DT_PREFIX,              "Prefix",               13, kYes, kSame,   kFree,    kValue,      kNo,  kNo,  kNone},
    {41, DT_ZEROSPTOUCH,         "zero sp touch",        44, kYes, kHidden, kFree,    kNoValue,    kNo,  kNo,  kNone},
    {42, DT_ACD,                 "ACD",                  43, kYes, kHidden, kFree,    kNoValue,    kNo,  kNo,  kNone},
    {43, DT_LOCALPHONEBOOK,      "Local Phonebook",      40, kNo,  kAdded,  kFree,    kNoValue,    kNo,  kNo,  kNone},
    {44, DT_NETWORKDIRECTORY,    "Network Directory",    41, kNo,  kAdded,  kTied,    kNoValue,    kNo,  kNo,  kNone},
    {45, DT_LOCALGROUP,          "Local Group",          14, kYes, kSame,   kFree,    kNoValue,    kYes, kNo,  kLocalGroups},
    {46, DT_NETWORKGROUP,        "Network Group",        22, kYes, kSame,   kTied,    kNoValue,    kYes, kNo,  kNetworkGroups},
    {47, DT_XMLPHONEBOOK,        "XML Phonebook",        34, kNo,  kAdded,  kFree,    kNoValue,    kNo,  kNo,  kNone},
    {48, DT_GETBALANCE,          "Get Balance",          50, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {49, DT_CUSTOMBUTTON,        "Custom Button",        46, kYes, kHidden, kFree,    kNoValue,    kYes, kNo,  kAccounts},
    {50, DT_KEYPADLOCK,          "Keypad Lock",          51, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {51, DT_SWITCHACCOUNTUP,     "Switch Account Up",    52, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {52, DT_SWITCHACCOUNTDOWN,   "Switch Account Down",  53, kNo,  kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
    {53, DT_NETCALLLOGPHONEBOOK, "NetCalllog Phonebook", 54, kNo,  kSame,   kService, kNoValue,    kNo,  kNo,  kNone},
    {54, DT_NETCALLLOGGROUP,     "NetCalllog Group",     55, kNo,  kSame,   kService, kNoValue,    kYes, kNo,  kNetworkCalls},
    {55, DT_MEETMECONF,          "Meet-Me Conference",   56, kYes, kSame,   kService, kValue,      kYes, kYes, kAccounts},
    {56, DT_RETRIEVEPARK,        "Retrieve Park",        57, kYes, kHidden, kService, kValue,      kYes, kNo,  kAccounts},
    {57, DT_HOTELING,            "Hoteling",             58, kYes, kHidden, kService, kNoValue,    kNo,  kNo,  kNone},
    {58, DT_ACDTRACE,            "ACD Trace",            59, kYes, kHidden, kService, kNoValue,    kNo,  kNo,  kNone},
    {59, DT_DISPCODE,            "Disp Code",            61, kYes, kHidden, kService, kValue,      kNo,  kNo,  kNone},
    {60, DT_EMERGENCY,           "Emergency",            60, kYes, kHidden, kService, kValue,      kNo,  kNo,  kNone},
    {61, DT_FAVORITES,           "Favorites",            62, kYes, kSame,   kFree,    kNoValue,    kNo,  kNo,  kNone},
};
// clang-format on

constexpr bool areNumbersInOrder() {
  for (int i = 0; i < kKeyTypeCount; ++i) {
    if (kTypes[i].number != i || kTypes[i].type != i) return false;
  }
  return true;
}
static_assert(std::size(kTypes) == kKeyTypeCount && areNumbersInOrder());

// The types by their places in the picker. Does not compile unless each place from 1 is taken once.
consteval std::array<DssKey_Type, kKeyTypeCount> pickerOrder() {
  std::array<DssKey_Type, kKeyTypeCount> order{};
  std::array<bool, kKeyTypeCount> taken{};
  for (const KeyType& row : kTypes) {
    bool& place = taken.at(static_cast<std::size_t>(row.place - 1));
    if (place) throw "two types at one place";
    place = true;
    order.at(static_cast<std::size_t>(row.place - 1)) = row.type;
  }
  return order;
}
constexpr auto kPickerOrder = pickerOrder();

constexpr bool areColumnsConsistent() {
  return std::ranges::all_of(
      kTypes, [](const KeyType& row) { return row.line == (row.lineChoices != kNone) && *row.name != '\0'; });
}
static_assert(areColumnsConsistent());

}  // namespace

bool isKeyType(int type) {
  return type >= 0 && type < kKeyTypeCount;
}

const KeyType& keyType(int type) {
  return kTypes[isKeyType(type) ? type : DT_NA];
}

DssKey_Type typeAtPlace(int place) {
  return kPickerOrder.at(static_cast<std::size_t>(place - 1));
}

const char* typeName(int type, DSSK_MODEL_TYPE family) {
  if (type == DT_PREFIX && family == DSSK_PROGRAM) return "PTT";
  return keyType(type).name;
}

}  // namespace dsskey
