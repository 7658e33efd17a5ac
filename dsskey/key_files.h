// The XML files of keys: an "item" a key in the order of the keys, its parameters the attributes of its "itemdata".
#pragma once

#include <pugixml.hpp>
#include <string>

#include "dsskey/dsskey_records.h"

namespace dsskey {

inline constexpr char kItem[] = "item";
inline constexpr char kItemData[] = "itemdata";

// The file of a family, of expansion keys that of a module (from 1). Empty for a family or module that is none.
std::string keyFilePath(DSSK_MODEL_TYPE family, int module);

const char* rootName(DSSK_MODEL_TYPE family);

// The number of the first key.
constexpr int firstKey(DSSK_MODEL_TYPE family) {
  return family == DSSK_EXT ? 0 : 1;
}

// The attribute of "itemdata" that holds a parameter.
const char* attributeName(DSSK_PARA_TYPE parameter);

// The item of a key below the outermost element, null when there is none.
pugi::xml_node findItem(pugi::xml_node root, DSSK_MODEL_TYPE family, int keyIndex);

// The type that an item names, DT_NA when that is no number.
int storedType(pugi::xml_node item);

// Reads a file that keys are to be written to; an empty file gets its outermost element. False when it cannot be
// read, is no XML or has another outermost element: such a file is left as it is.
bool loadForWriting(DSSK_MODEL_TYPE family, int module, pugi::xml_document& document);

}  // namespace dsskey
