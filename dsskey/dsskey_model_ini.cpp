// Keys in the ini files of the phone application.
#include "dsskey/changed_keys.h"
#include "dsskey/dsskey_model_base.h"
#include "dsskey/dsskey_types.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "platform/registry.h"

namespace {

using dsskey::LineChoices;

constexpr char kTypeKey[] = "DKtype";
constexpr char kUserFolder[] = "/config/user/";
constexpr char kFactoryFolder[] = "/phone/factory/hostapp/";

struct IniKey {
  const char* name;
  const char* fallback;
};

IniKey lineKey(int type) {
  switch (dsskey::keyType(type).lineChoices) {
    case LineChoices::kPhonebooks:
    case LineChoices::kLocalGroups:
    case LineChoices::kNetworkGroups:
      return {"XMLPhoneBook", "0"};
    case LineChoices::kHistory:
      return {"HistoryType", "0"};
    default:
      return {"Line", type == DT_NA ? "0" : "-1"};
  }
}

IniKey iniKey(DSSK_PARA_TYPE parameter, int type) {
  switch (parameter) {
    case DSSK_PARA_VALUE:
      return {"Value", ""};
    case DSSK_PARA_LABEL:
      return {"Label", ""};
    case DSSK_PARA_EXT:
      return {"PickupValue", ""};
    default:
      return lineKey(type);
  }
}

std::string fileName(DSSK_MODEL_TYPE family, int module) {
  return family == DSSK_EXT ? "Xm38_0000000000000" + std::to_string(module) + ".cfg" : "hostapp.ini";
}

std::string sectionName(DSSK_MODEL_TYPE family, int keyIndex) {
  const char* const name = family == DSSK_PROGRAM ? "programablekey" : family == DSSK_EXT ? "key" : "memory";
  return name + std::to_string(keyIndex);
}

// A text of the factory's file, which marks some with a "?".
std::string factoryText(ETL_SubClass& section, const IniKey& key) {
  const std::string text = section.registryGetString(key.name, key.fallback);
  return text.starts_with('?') ? text.substr(1) : text;
}

}  // namespace

std::unique_ptr<ETL_SubClass> DssKey_Model_Base::GetRegistryHandle(DSSK_MODEL_TYPE family, int keyIndex, int module,
                                                                   bool factory) {
  if (!dsskey::isFamily(family) || (family == DSSK_EXT && module < 1)) return nullptr;
  const std::string file = (factory ? kFactoryFolder : kUserFolder) + fileName(family, module);
  return registryOpen(file.c_str(), sectionName(family, keyIndex).c_str(),
                      factory ? RegistryFile::kMustExist : RegistryFile::kMayBeMissing);
}

bool DssKey_Model_Base::GetDsskey(DssKey* key, DSSK_MODEL_TYPE family, int page, bool keepType) {
  if (!key) return false;
  const auto section = GetRegistryHandle(family, key->keyIndex, page, false);
  if (!section) {
    log_log(kWebLog, kLogWarning, "Open file hostapp.ini error!\n");
    return false;
  }
  if (!keepType) {
    key->dktype = section->registryGetInt(kTypeKey, DT_NA);
    if (!CheckSupportDKtype(family, key->dktype)) key->dktype = DT_NA;
  }
  const auto read = [&](DSSK_PARA_TYPE parameter, int keyIndex) {
    return GetAttrValueList(&attributeOf(*key, parameter), key->dktype, parameter, family, section.get(), keyIndex);
  };
  if (!keepType && isBlfListInUse(key->dktype)) {
    GetBlfListDssKey(key, family);
    return read(DSSK_PARA_LINE, -1);
  }
  bool any = read(DSSK_PARA_VALUE, key->keyIndex);
  any |= read(DSSK_PARA_LINE, -1);
  any |= read(DSSK_PARA_LABEL, key->keyIndex);
  any |= read(DSSK_PARA_EXT, -1);
  return any;
}

bool DssKey_Model_Base::GetAttrValueList(Dsskey_Attr* attribute, int type, DSSK_PARA_TYPE parameter,
                                         DSSK_MODEL_TYPE family, ETL_SubClass* section, int keyIndex) {
  if (!attribute || !section) return false;
  attribute->enabled = EnableParamer(parameter, family, type, keyIndex);
  const bool withList = IsAttrWithList(type, parameter, family);
  if (!attribute->enabled && !withList) return true;
  const IniKey key = iniKey(parameter, type);
  attribute->text = GetStringAndReplaceChar(*section, key.name, key.fallback);
  if (withList && parameter == DSSK_PARA_LINE) {
    GetAttrListByDKtype(&attribute->choices, type, parameter, attribute->enabled);
  }
  return true;
}

bool DssKey_Model_Base::SetDsskey(DSSK_MODEL_TYPE family, const DssKey* key, int page) {
  if (!key || key->dktype == kNoKeyType) {
    log_log(kWebLog, kLogWarning, "DssKey_Model_Base::SetDsskey... pdsskey = null or dktype = -1\n");
    return false;
  }
  const auto section = GetRegistryHandle(family, key->keyIndex, page, false);
  if (!section) {
    log_log(kWebLog, kLogWarning, "Open hostapp.ini error!\n");
    return false;
  }
  bool changed = section->registrySetInt(kTypeKey, key->dktype);
  for (const DSSK_PARA_TYPE parameter : kKeyParameters) {
    if (!isToBeStored(parameter, family, *key)) continue;
    changed |=
        section->registrySetString(iniKey(parameter, key->dktype).name, attributeOf(*key, parameter).text.c_str());
  }
  section->registryFlush();
  return changed;
}

bool DssKey_Model_Base::SetDsskeyList(DSSK_MODEL_TYPE family, const OrbList<DssKey>* keys, int page, bool notify) {
  if (!keys || !dsskey::isFamily(family)) {
    log_log(kWebLog, kLogWarning, "Dsskey model is wrong!\n");
    return false;
  }
  ChangedKeys changed(family);
  {
    const RegistryBatch sections;
    for (const DssKey& key : *keys) {
      if (SetDsskey(family, &key, page)) changed.add(key.keyIndex);
    }
  }
  if (notify && !changed.text().empty()) SendMessage(family, changed.text().c_str(), page);
  return true;
}

bool DssKey_Model_Base::GetFactoryDsskey(DssKey* key, DSSK_MODEL_TYPE family, int page) {
  if (!key) return false;
  const auto section = GetRegistryHandle(family, key->keyIndex, page, true);
  if (!section) {
    log_log(kWebLog, kLogWarning, "Open factory config file(hostapp.ini) error!\n");
    return false;
  }
  key->dktype = parseInt(factoryText(*section, {kTypeKey, "0"})).value_or(DT_NA);
  for (const DSSK_PARA_TYPE parameter : kKeyParameters) {
    Dsskey_Attr& attribute = attributeOf(*key, parameter);
    attribute.text = factoryText(*section, iniKey(parameter, key->dktype));
    attribute.enabled = EnableParamer(parameter, family, key->dktype, key->keyIndex);
  }
  return true;
}

bool DssKey_Model_Base::SetFactoryDsskeyList(DSSK_MODEL_TYPE family) {
  if (family != DSSK_PROGRAM) return false;
  Key_Display display;
  OrbList<DssKey> keys;
  GetKeyIndexList(&display, family, 1);
  return GetFactoryData(&keys, family, &display, 1) && SetDsskeyList(family, &keys, 1, true);
}
