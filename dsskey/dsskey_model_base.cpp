#include "dsskey/dsskey_model_base.h"

#include <algorithm>
#include <cstring>

#include "dsskey/dsskey_types.h"
#include "dsskey/page_files.h"
#include "framework/accounts.h"
#include "framework/phone_messages.h"
#include "platform/device.h"
#include "platform/registry.h"

namespace {

constexpr int kMemoryKeys = 10;
constexpr int kProgrammableKeys = 14;
constexpr int kKeysOfFirstKind = 38;
constexpr int kKeysOfSecondKind = 40;

// The first and the last key of a page that shows all between.
void setRange(Key_Display& display, int first, int last) {
  display.status = kKeyRange;
  display.keyIndexList.push_back(first);
  display.keyIndexList.push_back(last);
}

// Visits the keys of a page in their order, as long as `visit` gives true. False when it does not, or the display shows
// no keys.
template <class Visit>
bool visitKeys(const Key_Display& display, Visit visit) {
  const OrbList<int>& indexes = display.keyIndexList;
  if (display.status == kKeyList) return std::ranges::all_of(indexes, visit);
  if (display.status != kKeyRange || indexes.size() != 2) return false;
  for (int index = indexes.front(); index <= indexes.back(); ++index) {
    if (!visit(index)) return false;
  }
  return true;
}

}  // namespace

DssKey_Model_Base::DssKey_Model_Base() : phoneType_(GetPhoneType()) {}

void DssKey_Model_Base::GetKeyIndexList(Key_Display* display, DSSK_MODEL_TYPE family, int page) {
  if (!display) return;
  *display = {};
  display->page = page;
  display->pageCount = 1;
  switch (family) {
    case DSSK_MEMORY:
      return setRange(*display, 1, kMemoryKeys);
    case DSSK_LINE:
      return setRange(*display, 1, GetAccountMax());
    case DSSK_PROGRAM:
      return setRange(*display, 1, kProgrammableKeys);
    case DSSK_EXT:
      return showModule(*display);
    default:
      *display = {};
  }
}

void DssKey_Model_Base::showModule(Key_Display& display) {
  const int answer = sendMessage(kPhoneApplication, kExpansionKeys);
  const int modules = answer == kMessageNoAnswer ? 0 : answer;
  display.pageCount = modules & 0xf;
  moduleKind_ = modules >> 4 == 1 ? 1 : 2;
  if (display.page < 1 || display.page > display.pageCount) return;
  setRange(display, 0, (moduleKind_ == 1 ? kKeysOfFirstKind : kKeysOfSecondKind) - 1);
}

bool DssKey_Model_Base::GetDsskeyList(OrbList<DssKey>* keys, DSSK_MODEL_TYPE family, const Key_Display* display,
                                      int page) {
  return readKeys(keys, family, display, page, &DssKey_Model_Base::readStoredKey);
}

bool DssKey_Model_Base::GetFactoryData(OrbList<DssKey>* keys, DSSK_MODEL_TYPE family, const Key_Display* display,
                                       int page) {
  return readKeys(keys, family, display, page, &DssKey_Model_Base::GetFactoryDsskey);
}

bool DssKey_Model_Base::readStoredKey(DssKey* key, DSSK_MODEL_TYPE family, int page) {
  return GetDsskey(key, family, page, false);
}

bool DssKey_Model_Base::readKeys(OrbList<DssKey>* keys, DSSK_MODEL_TYPE family, const Key_Display* display, int page,
                                 KeyReader read) {
  if (!keys || !display) return false;
  const PageFiles files;
  const RegistryBatch sections;
  return visitKeys(*display, [&](int index) {
    DssKey key;
    key.keyIndex = index;
    const bool isRead = (this->*read)(&key, family, page);
    if (isRead) keys->push_back(std::move(key));
    return isRead;
  });
}

bool DssKey_Model_Base::SendMessage(DSSK_MODEL_TYPE family, const char* changedKeys, int page) {
  if (!changedKeys || !dsskey::isFamily(family)) return false;
  if (family == DSSK_PROGRAM) {
    broadcastConfigChanged(ConfigArea::kProgrammableKeys);
    return true;
  }
  const ConfigArea area = family == DSSK_EXT ? ConfigArea::kModuleKeys : ConfigArea::kLineKeys;
  const int size = static_cast<int>(std::strlen(changedKeys)) + 1;
  broadcastConfigChanged(ConfigArea::kKeys);
  broadcastConfigChanged(area, family == DSSK_EXT ? page - 1 : 0, changedKeys, size);
  return true;
}
