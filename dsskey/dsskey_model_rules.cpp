// What a family of keys offers, and which parameters a type of key has there.
#include <algorithm>

#include "dsskey/dsskey_model_base.h"
#include "dsskey/dsskey_types.h"
#include "framework/config_operate.h"

namespace {

using dsskey::keyType;
using dsskey::LineChoices;

constexpr int kFortyKeys = 2;
constexpr int kSoftKeys = 4;
constexpr int kPhonesWithoutLabels[] = {20, 21, 22, 26, 60, 65};  // their line keys have none

bool hasLineKeyLabel(int phoneType, int type) {
  const bool isShown = std::ranges::find(kPhonesWithoutLabels, phoneType) == std::end(kPhonesWithoutLabels);
  return isShown && type != DT_SIPTRUND && type != DT_BLFLIST;
}

}  // namespace

bool DssKey_Model_Base::CheckSupportDKtype(DSSK_MODEL_TYPE family, int type) {
  return dsskey::isFamily(family) && dsskey::isKeyType(type) && keyType(type).isOffered;
}

bool DssKey_Model_Base::EnableParamer(DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family, int type, int keyIndex) {
  switch (parameter) {
    case DSSK_PARA_VALUE:
      return EnableValue(family, type, keyIndex);
    case DSSK_PARA_LINE:
      return EnableLine(family, type, keyIndex);
    case DSSK_PARA_LABEL:
      return EnableLabel(family, type, keyIndex);
    case DSSK_PARA_EXT:
      return EnableExtension(family, type, keyIndex);
  }
  return false;
}

// Only some phones choose the value of their line keys from a list: their models know it.
bool DssKey_Model_Base::EnableValue(DSSK_MODEL_TYPE family, int type, int) {
  if (!dsskey::isFamily(family)) return false;
  if (keyType(type).value == dsskey::HasValue::kNotProgram) return family != DSSK_PROGRAM;
  return keyType(type).value == dsskey::HasValue::kValue;
}

bool DssKey_Model_Base::EnableLabel(DSSK_MODEL_TYPE family, int type, int keyIndex) {
  if (type == DT_NA) return false;
  switch (family) {
    case DSSK_LINE:
      return hasLineKeyLabel(phoneType_, type);
    case DSSK_PROGRAM:
      return keyIndex >= 1 && keyIndex <= kSoftKeys;
    case DSSK_EXT:
      return moduleKind_ == kFortyKeys && type != DT_SIPTRUND;
    default:
      return false;
  }
}

bool DssKey_Model_Base::EnableLine(DSSK_MODEL_TYPE family, int type, int) {
  return dsskey::isFamily(family) && keyType(type).line;
}

bool DssKey_Model_Base::EnableExtension(DSSK_MODEL_TYPE family, int type, int) {
  return dsskey::isFamily(family) && keyType(type).extension;
}

bool DssKey_Model_Base::IsAttrWithList(int, DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE) {
  return parameter == DSSK_PARA_LINE;
}

bool DssKey_Model_Base::IsLineWithGroupList(int type) {
  switch (keyType(type).lineChoices) {
    case LineChoices::kPhonebooks:
    case LineChoices::kHistory:
    case LineChoices::kLocalGroups:
    case LineChoices::kNetworkGroups:
      return true;
    default:
      return false;
  }
}

bool DssKey_Model_Base::CheckSupportParamer(DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family) {
  if (!dsskey::isFamily(family) || parameter < DSSK_PARA_VALUE || parameter > DSSK_PARA_EXT) return false;
  return family != DSSK_MEMORY || parameter != DSSK_PARA_LABEL;
}

bool DssKey_Model_Base::IsBroadsoftDKtype(int type) {
  return keyType(type).broadsoft == dsskey::Broadsoft::kService;
}

bool DssKey_Model_Base::GetDKtypeList(OrbList<DssKey_Type>* types, DSSK_MODEL_TYPE family) {
  if (!types || !dsskey::isFamily(family)) return false;
  for (int place = 1; place <= dsskey::kKeyTypeCount; ++place) {
    const DssKey_Type type = dsskey::typeAtPlace(place);
    if (CheckSupportDKtype(family, type)) types->push_back(type);
  }
  return true;
}

bool DssKey_Model_Base::isToBeStored(DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family, const DssKey& key) {
  if (!EnableParamer(parameter, family, key.dktype, key.keyIndex) || !CheckSupportParamer(parameter, family)) {
    return false;
  }
  return parameter != DSSK_PARA_EXT || key.dktype != DT_MEETMECONF || key.extension.text != kMaskedExtension;
}

bool DssKey_Model_Base::isBlfListInUse(int type) {
  return type == DT_BLFLIST && readConfigPlain("BSFTActive", kConfigValueSize) == "1";
}
