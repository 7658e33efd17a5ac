// Keys from their XML files.
#include "dsskey/dsskey_k7x_model.h"
#include "dsskey/key_files.h"
#include "platform/log.h"

namespace {

constexpr int kKeysOfPage = 9;
constexpr char kLocked[] = "2";
constexpr char kNotLocked[] = "0";

int placeOnFirstPage(int keyIndex) {
  return (keyIndex - 1) % kKeysOfPage + 1;
}

bool isLocked(const DssKey& key) {
  return (key.dktype == DT_SIPTRUND || key.dktype == DT_BLA) && key.value.text == kLocked;
}

std::string storedText(pugi::xml_node itemdata, DSSK_PARA_TYPE parameter) {
  if (!itemdata) return parameter == DSSK_PARA_LINE ? "0" : "";
  return itemdata.attribute(dsskey::attributeName(parameter)).value();
}

}  // namespace

bool Dsskey_K7X_Model::GetXmlDataNode(DSSK_MODEL_TYPE family, int keyIndex, XmlDocument& document, pugi::xml_node& item,
                                      int module) {
  document = PageFiles::xml(dsskey::keyFilePath(family, module));
  const pugi::xml_node root = document ? document->child(dsskey::rootName(family)) : pugi::xml_node();
  if (!root) {
    log_log(kWebLog, kLogWarning, "Open the dsskey xml error!\n");
    return false;
  }
  if (!root.child(dsskey::kItem)) {
    log_log(kWebLog, kLogWarning, "Get dsskey node error!\n");
    return false;
  }
  item = dsskey::findItem(root, family, keyIndex);
  return !item.empty();
}

bool Dsskey_K7X_Model::GetDsskey(DssKey* key, DSSK_MODEL_TYPE family, int page, bool keepType) {
  if (!key) {
    log_log(kWebLog, kLogWarning, "NULL == pDsskeyData\n");
    return false;
  }
  const PageFiles files;
  XmlDocument document;
  pugi::xml_node item;
  if (!GetXmlDataNode(family, key->keyIndex, document, item, page)) {
    log_log(kWebLog, kLogWarning, "Can't find the item node! iKeyIndex = %d\n", key->keyIndex);
    return false;
  }
  const bool isRepeatable = family == DSSK_LINE && key->keyIndex > kKeysOfPage;
  const bool isRepeated = isRepeatable && IsLineKeyLocked(family, nullptr, key->keyIndex);
  if (!keepType || isRepeated) {
    const int type = dsskey::storedType(item);
    key->dktype = CheckSupportDKtype(family, type) ? type : DT_NA;
  }
  const pugi::xml_node itemdata = item.child(dsskey::kItemData);
  const auto read = [&](DSSK_PARA_TYPE parameter, int keyIndex) {
    GetAttrValueList(&attributeOf(*key, parameter), key->dktype, parameter, family, itemdata, keyIndex);
  };
  if (!keepType && isBlfListInUse(key->dktype)) {
    GetBlfListDssKey(key, family);
    read(DSSK_PARA_LINE, -1);
  } else {
    read(DSSK_PARA_VALUE, key->keyIndex);
    read(DSSK_PARA_LINE, -1);
    read(DSSK_PARA_LABEL, key->keyIndex);
    read(DSSK_PARA_EXT, -1);
  }
  if (isRepeatable && !isRepeated && isLocked(*key)) key->value.text = kNotLocked;
  return true;
}

bool Dsskey_K7X_Model::IsLineKeyLocked(DSSK_MODEL_TYPE family, const DssKey* key, int keyIndex) {
  if (family != DSSK_LINE) return false;
  if (key) return isLocked(*key);
  if (keyIndex < 0) return false;
  DssKey first;
  first.keyIndex = placeOnFirstPage(keyIndex);
  return GetDsskey(&first, family, 1, false) && isLocked(first);
}

bool Dsskey_K7X_Model::GetAttrValueList(Dsskey_Attr* attribute, int type, DSSK_PARA_TYPE parameter,
                                        DSSK_MODEL_TYPE family, pugi::xml_node itemdata, int keyIndex) {
  if (!attribute) return false;
  attribute->enabled = EnableParamer(parameter, family, type, keyIndex);
  const bool withList = IsAttrWithList(type, parameter, family);
  if (!attribute->enabled && !withList) return true;
  attribute->text = storedText(itemdata, parameter);
  if (withList && (parameter == DSSK_PARA_VALUE || parameter == DSSK_PARA_LINE)) {
    GetAttrListByDKtype(&attribute->choices, type, parameter, attribute->enabled);
  }
  return true;
}
