// What the key model and the key page exchange: families, parameters and types of keys, records of keys. Records are
// plain values; a record that is handed to an operation is filled in place.
#pragma once

#include <string>

#include "platform/orb_list.h"

// Key families. Values from outside are converted as they are: operations refuse those beyond the four.
enum DSSK_MODEL_TYPE : int {
  DSSK_MEMORY = 0,
  DSSK_LINE = 1,
  DSSK_PROGRAM = 2,  // soft keys, navigation keys and feature keys
  DSSK_EXT = 3,      // keys of the expansion modules
};

// Parameters of a key.
enum DSSK_PARA_TYPE : int {
  DSSK_PARA_VALUE = 0,  // a number, address or code
  DSSK_PARA_LINE = 1,   // the account or list the key acts on
  DSSK_PARA_LABEL = 2,
  DSSK_PARA_EXT = 3,
};

inline constexpr DSSK_PARA_TYPE kKeyParameters[] = {DSSK_PARA_VALUE, DSSK_PARA_LINE, DSSK_PARA_LABEL, DSSK_PARA_EXT};

// What a key does. What each type means for a key is in dsskey_types.h.
enum DssKey_Type : int {
  DT_NA = 0,
  DT_CONF,
  DT_FWD,
  DT_TRAN,
  DT_HOLD,
  DT_DND,
  DT_REDIAL,
  DT_CALLRETURN,
  DT_SMS,
  DT_PICKUP,
  DT_CALLPARK,
  DT_DTMF,
  DT_VOICEMAIL,
  DT_SPEEDDIAL,
  DT_INTERCOM,
  DT_SIPTRUND,
  DT_BLF,
  DT_URL,
  DT_GROUPLISTEN,
  DT_PUBLICHOLD,
  DT_PRIVATEHOLD,
  DT_BLA,
  DT_XMLGROUP,
  DT_GROUPPICKUP,
  DT_PAGING,
  DT_RECORD,
  DT_VOICERECORD,
  DT_XMLBROWSER,
  DT_HISTORY,
  DT_DIRECTORY,
  DT_MENU,
  DT_SWITCHACCOUNT,
  DT_NEWSMS,
  DT_STATUS,
  DT_HOTDESKING,
  DT_URLRECORD,
  DT_BUTTON,
  DT_EXTSWITCH,
  DT_LDAP,
  DT_BLFLIST,
  DT_PREFIX,
  DT_ZEROSPTOUCH,
  DT_ACD,
  DT_LOCALPHONEBOOK,
  DT_NETWORKDIRECTORY,
  DT_LOCALGROUP,
  DT_NETWORKGROUP,
  DT_XMLPHONEBOOK,
  DT_GETBALANCE,
  DT_CUSTOMBUTTON,
  DT_KEYPADLOCK,
  DT_SWITCHACCOUNTUP,
  DT_SWITCHACCOUNTDOWN,
  DT_NETCALLLOGPHONEBOOK,
  DT_NETCALLLOGGROUP,
  DT_MEETMECONF,
  DT_RETRIEVEPARK,
  DT_HOTELING,
  DT_ACDTRACE,
  DT_DISPCODE,
  DT_EMERGENCY,
  DT_FAVORITES,
};

inline constexpr int kNoKeyType = -1;  // of a record that names no type

// One choice of a list.
struct KeyValue {
  KeyValue(int number, std::string text) : key(number), value(std::move(text)) {}
  int key;            // stored when the choice is taken
  std::string value;  // shown, plain text
};

// One parameter of one key.
struct Dsskey_Attr {
  OrbList<KeyValue> choices;  // empty when it is free text
  std::string text;
  bool enabled = false;  // it applies to this key; of a record from a form: the form had the field
};

// One key.
struct DssKey {
  int dktype = kNoKeyType;  // a DssKey_Type
  int keyIndex = 0;         // within its family: from 1, expansion keys from 0
  Dsskey_Attr value, line, label, extension;
};

// The parameter of a key by its number, which is one of the four.
inline Dsskey_Attr& attributeOf(DssKey& key, DSSK_PARA_TYPE parameter) {
  Dsskey_Attr* const attributes[] = {&key.value, &key.line, &key.label, &key.extension};
  return *attributes[parameter];
}
inline const Dsskey_Attr& attributeOf(const DssKey& key, DSSK_PARA_TYPE parameter) {
  return attributeOf(const_cast<DssKey&>(key), parameter);
}

// What is shown of a conference key's extension, its PIN. In a record that is written it stands for the stored one.
inline constexpr char kMaskedExtension[] = "******";

// How Key_Display::keyIndexList is to be read.
enum KeyDisplayStatus : int {
  kNothingToShow = 0,
  kKeyRange = 1,  // exactly two numbers: the first and the last key
  kKeyList = 2,   // every key
};

// Which keys one page shows.
struct Key_Display {
  int status = kNothingToShow;  // a KeyDisplayStatus
  int page = -1;                // the page or, of expansion keys, the module, as asked for; -1 for an unknown family
  int pageCount = 0;            // how many pages or modules there are
  OrbList<int> keyIndexList;
};
