#include "servlet/contacts/contacts_update_mark.h"

#include "platform/registry.h"

namespace {
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
