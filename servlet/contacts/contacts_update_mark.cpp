#include "servlet/contacts/contacts_update_mark.h"

#include "platform/local_directory.h"
#include "platform/registry.h"

namespace {
constexpr int kContactsMark = 1;
constexpr int kGroupsMark = 2;
constexpr char kContactMark[] = "/tmp/contact_update_mark.ini";
}  // namespace

bool IsContactNeedUpdate(int& type) {
  const auto mark = registryOpen(kContactMark, "update", RegistryFile::kMustExist);
  if (!mark) return false;
  type = mark->registryGetInt("type", 0);
  return type > 0;
}

void SetDefalutUpdate() {
  const auto mark = registryOpen(kContactMark, "update", RegistryFile::kMayBeMissing);
  if (!mark) return;
  mark->registrySetInt("type", 0);
  mark->registryFlush();
}

void reloadMarkedContacts() {
  auto* directory = NS_DIRECTORY::CContactLocalManager::GetInstance();
  int type = 0;
  if (!directory || !IsContactNeedUpdate(type)) return;
  if (type & kGroupsMark) directory->ReloadGroupXml();
  if (type & kContactsMark) directory->ReloadContactXml();
  SetDefalutUpdate();
}
