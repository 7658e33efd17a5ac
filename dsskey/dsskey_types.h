// The table of key types: what each one is called, where it is offered and which parameters it has.
#pragma once

#include "dsskey/dsskey_records.h"

namespace dsskey {

inline constexpr int kKeyTypeCount = 62;

// Whether programmable keys offer a type: as the other families do, though these do not, not though these do.
enum class ProgramOffer { kSame, kAdded, kHidden };
// Whether a type needs the BroadSoft services: as one of them, or because it shows what they deliver.
enum class Broadsoft { kFree, kService, kTied };
// Which keys of a type have a value.
enum class HasValue { kNoValue, kValue, kNotProgram, kLineKeys };
// What the line of a key is chosen from.
enum class LineChoices { kNone, kAccounts, kPhonebooks, kHistory, kLocalGroups, kNetworkGroups, kNetworkCalls };

struct KeyType {
  int number;
  DssKey_Type type;
  const char* name;  // shown
  int place;         // in the type picker, from 1
  bool isOffered;    // to memory, line and expansion keys
  ProgramOffer onProgramKeys;
  Broadsoft broadsoft;
  HasValue value;
  bool line;
  bool extension;
  LineChoices lineChoices;
};

// The row of a type; that of DT_NA for a number that is none.
const KeyType& keyType(int type);
bool isKeyType(int type);

// The type at a place of the picker, from 1 to kKeyTypeCount.
DssKey_Type typeAtPlace(int place);

// The name that is shown for a type on keys of a family; "N/A" for a number that is none.
const char* typeName(int type, DSSK_MODEL_TYPE family);

constexpr bool isFamily(DSSK_MODEL_TYPE family) {
  return family >= DSSK_MEMORY && family <= DSSK_EXT;
}

}  // namespace dsskey
