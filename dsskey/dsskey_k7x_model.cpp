#include "dsskey/dsskey_k7x_model.h"

#include "dsskey/dsskey_types.h"
#include "framework/config_operate.h"
#include "framework/shell_command.h"

namespace {

using dsskey::keyType;
using dsskey::ProgramOffer;

constexpr int kLinePages = 3;
constexpr int kKeysOfPage = 9;
constexpr int kProgrammableKeys[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14};  // those that have something to set

std::unique_ptr<Dsskey_K7X_Model>& theModel() {
  static std::unique_ptr<Dsskey_K7X_Model> model;
  return model;
}

bool isBroadsoftOff() {
  return readConfigPlain("BSFTActive", kConfigValueSize) == "0";
}

bool hasValueChoices(int type) {
  return keyType(type).value == dsskey::HasValue::kLineKeys;
}

void showLineKeys(Key_Display& display) {
  display.pageCount = kLinePages;
  if (display.page < 1 || display.page > kLinePages) return;
  display.status = kKeyRange;
  display.keyIndexList.push_back(kKeysOfPage * display.page - kKeysOfPage + 1);
  display.keyIndexList.push_back(kKeysOfPage * display.page);
}

void showProgrammableKeys(Key_Display& display) {
  display.pageCount = 1;
  display.status = kKeyList;
  for (const int index : kProgrammableKeys) display.keyIndexList.push_back(index);
}

}  // namespace

Dsskey_K7X_Model* GetModelInitObj() {
  if (!theModel()) theModel() = std::make_unique<Dsskey_K7X_Model>();
  return theModel().get();
}

void FreeModelInitObj() {
  theModel().reset();
}

void Dsskey_K7X_Model::GetKeyIndexList(Key_Display* display, DSSK_MODEL_TYPE family, int page) {
  if (!display) return;
  if (family == DSSK_EXT) return DssKey_Model_Base::GetKeyIndexList(display, family, page);
  *display = {};
  if (family != DSSK_LINE && family != DSSK_PROGRAM) return;
  display->page = page;
  if (family == DSSK_LINE) {
    showLineKeys(*display);
  } else {
    showProgrammableKeys(*display);
  }
}

bool Dsskey_K7X_Model::CheckSupportDKtype(DSSK_MODEL_TYPE family, int type) {
  if (type == DT_CUSTOMBUTTON) return false;
  if (keyType(type).broadsoft != dsskey::Broadsoft::kFree && isBroadsoftOff()) return false;
  const ProgramOffer offer = family == DSSK_PROGRAM ? keyType(type).onProgramKeys : ProgramOffer::kSame;
  return offer == ProgramOffer::kSame ? DssKey_Model_Base::CheckSupportDKtype(family, type)
                                      : offer == ProgramOffer::kAdded;
}

bool Dsskey_K7X_Model::EnableValue(DSSK_MODEL_TYPE family, int type, int keyIndex) {
  if (hasValueChoices(type) && family == DSSK_LINE) return true;
  return DssKey_Model_Base::EnableValue(family, type, keyIndex);
}

bool Dsskey_K7X_Model::IsAttrWithList(int type, DSSK_PARA_TYPE parameter, DSSK_MODEL_TYPE family) {
  if (parameter == DSSK_PARA_VALUE) return family == DSSK_LINE && hasValueChoices(type);
  return parameter == DSSK_PARA_LINE;
}

bool Dsskey_K7X_Model::GetValueListByDKtype(OrbList<KeyValue>* choices, int type) {
  if (!choices || !hasValueChoices(type)) return false;
  choices->push_back({0, "default"});
  choices->push_back({1, "float"});
  choices->push_back({2, "lock"});
  return true;
}

bool Dsskey_K7X_Model::SetFactoryDsskeyList(DSSK_MODEL_TYPE family) {
  if (family != DSSK_PROGRAM) return false;
  CommandShell(ShellCommand("cp").word("-pf").path("/phone/factory/data/programkey.xml").path("/config/data/"));
  SendMessage(family, "", 0);
  return true;
}
