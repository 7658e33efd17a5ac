// Keys into their XML files and, with these, into the ini store.
#include "dsskey/changed_keys.h"
#include "dsskey/dsskey_k7x_model.h"
#include "dsskey/key_files.h"
#include "framework/xml_file.h"
#include "platform/log.h"
#include "platform/registry.h"

namespace {

constexpr int kLinePages = 3;
constexpr int kKeysOfPage = 9;

bool isWritable(DSSK_MODEL_TYPE family, int page) {
  if (family == DSSK_LINE) return page >= 1 && page <= kLinePages;
  return family == DSSK_PROGRAM || family == DSSK_EXT;
}

pugi::xml_node firstItem(pugi::xml_node root) {
  const pugi::xml_node item = root.child(dsskey::kItem);
  return item ? item : root.append_child(dsskey::kItem);
}

// Moves by `step` items. Behind the last one items are appended, before the first one there is none.
pugi::xml_node itemAt(pugi::xml_node item, int step) {
  for (pugi::xml_node root = item.parent(); step > 0; --step) {
    const pugi::xml_node next = item.next_sibling(dsskey::kItem);
    item = next ? next : root.append_child(dsskey::kItem);
  }
  for (; item && step < 0; ++step) item = item.previous_sibling(dsskey::kItem);
  return item;
}

void addMissing(pugi::xml_node node, const char* attribute, const char* value) {
  if (!node.attribute(attribute)) node.append_attribute(attribute) = value;
}

pugi::xml_node itemDataOf(pugi::xml_node item) {
  pugi::xml_node itemdata = item.child(dsskey::kItemData);
  if (!itemdata) itemdata = item.append_child(dsskey::kItemData);
  for (const DSSK_PARA_TYPE parameter : kKeyParameters) {
    addMissing(itemdata, dsskey::attributeName(parameter), parameter == DSSK_PARA_LINE ? "-1" : "");
  }
  return itemdata;
}

DssKey unlockedKey(int keyIndex) {
  DssKey key;
  key.dktype = DT_SIPTRUND;
  key.keyIndex = keyIndex;
  key.line.text = "-1";
  return key;
}

// Writes the keys of a page into a document, and what repeats them into the ini store, too.
class PageWriter {
 public:
  PageWriter(Dsskey_K7X_Model& model, DSSK_MODEL_TYPE family, int page, pugi::xml_node first)
      : changed(family), model_(model), family_(family), page_(page), item_(first), place_(dsskey::firstKey(family)) {}

  void write(const DssKey& key) {
    const bool repeats = family_ == DSSK_LINE && page_ == 1 && key.dktype != kNoKeyType;
    if (writeItem(key, page_)) changed.add(key.keyIndex);
    if (!repeats) return;
    if (model_.IsLineKeyLocked(family_, &key, key.keyIndex)) {
      repeat(key);
    } else if (model_.IsLineKeyLocked(family_, nullptr, key.keyIndex)) {
      for (int page = 2; page <= kLinePages; ++page) clear(key.keyIndex + (page - 1) * kKeysOfPage, page);
    }
  }

  ChangedKeys changed;

 private:
  // Moves to the key's item and writes it. The place stays when the key has none.
  bool writeItem(const DssKey& key, int page) {
    pugi::xml_node item = item_;
    const bool isChanged = model_.SetDsskey(family_, &key, item, key.keyIndex - place_, page);
    if (!item) return false;
    item_ = item;
    place_ = key.keyIndex;
    return isChanged;
  }

  // The same key at the same place of the other pages.
  void repeat(DssKey key) {
    for (int page = 2; page <= kLinePages; ++page) {
      key.keyIndex += kKeysOfPage;
      if (writeItem(key, page)) changed.add(key.keyIndex);
      model_.SetDsskey(family_, &key, page);
    }
  }

  // Clears a key that repeated a locked one: its parameters, which a line has and no type else, then its type.
  void clear(int keyIndex, int page) {
    DssKey key = unlockedKey(keyIndex);
    log_log(kWebLog, kLogInfo, "write unlocked line : xml defalue value... iKeyIndex = %d, value = %s\n", keyIndex,
            key.value.text.c_str());
    bool isChanged = writeItem(key, page);
    log_log(kWebLog, kLogWarning, "write ini file...DT_SIPTRUND\n");
    model_.SetDsskey(family_, &key, page);
    key.dktype = DT_NA;
    isChanged |= writeItem(key, page);
    log_log(kWebLog, kLogWarning, "write ini file...DT_NA\n");
    model_.SetDsskey(family_, &key, page);
    if (isChanged) changed.add(keyIndex);
  }

  Dsskey_K7X_Model& model_;
  const DSSK_MODEL_TYPE family_;
  const int page_;
  pugi::xml_node item_;
  int place_;  // the number of the key whose item that is
};

}  // namespace

bool Dsskey_K7X_Model::SetDsskey(DSSK_MODEL_TYPE family, const DssKey* key, pugi::xml_node& item, int step, int) {
  if (!key || family < DSSK_LINE || family > DSSK_EXT) {
    log_log(kWebLog, kLogWarning, "Dsskey_K7X_Model::SetDsskey... null or < DSSK_LINE\n");
    return false;
  }
  item = itemAt(item, step);
  if (!item) {
    log_log(kWebLog, kLogWarning, "Get item node error! iKeyIndex = %d\n", key->keyIndex);
    return false;
  }
  addMissing(item, "type", "");
  if (key->dktype == kNoKeyType) {
    log_log(kWebLog, kLogWarning, "keyIndex = %d, dktype = -1\n", key->keyIndex);
    return false;
  }
  bool changed = dsskey::storedType(item) != key->dktype;
  if (changed) item.attribute("type") = key->dktype;
  const pugi::xml_node itemdata = itemDataOf(item);
  for (const DSSK_PARA_TYPE parameter : kKeyParameters) {
    const std::string& text = attributeOf(*key, parameter).text;
    pugi::xml_attribute attribute = itemdata.attribute(dsskey::attributeName(parameter));
    if (!isToBeStored(parameter, family, *key) || text == attribute.value()) continue;
    attribute = text.c_str();
    changed = true;
  }
  return changed;
}

bool Dsskey_K7X_Model::SetDsskeyList(DSSK_MODEL_TYPE family, const OrbList<DssKey>* keys, int page, bool notify) {
  if (!keys || !isWritable(family, page)) {
    log_log(kWebLog, kLogWarning, "paramer data error!\n");
    return false;
  }
  const PageFiles before;  // the locks are those from before this change
  pugi::xml_document document;
  if (!dsskey::loadForWriting(family, page, document)) {
    log_log(kWebLog, kLogWarning, "Open the dsskey xml error!\n");
    return false;
  }
  PageWriter writer(*this, family, page, firstItem(document.child(dsskey::rootName(family))));
  {
    const RegistryBatch sections;
    for (const DssKey& key : *keys) writer.write(key);
  }
  const std::string path = dsskey::keyFilePath(family, page);
  if (!saveXml(path.c_str(), document)) {
    log_log(kWebLog, kLogError, "cannot save %s\n", path.c_str());
    return false;
  }
  if (family != DSSK_PROGRAM) {
    log_log(kWebLog, kLogInfo, "call base model process dsskey data...\n");
    DssKey_Model_Base::SetDsskeyList(family, keys, page, false);
  }
  const std::string& changed = writer.changed.text();
  if (notify && !changed.empty()) SendMessage(family, changed.c_str(), page);
  return true;
}
