#include "servlet/contacts/contacts_preview_fields.h"

#include <iterator>

namespace {
constexpr const char* kNames[] = {"ignore", "display_name", "office_number", "mobile_number", "other_number",
                                  "line",   "ring",         "group_id_name", "default_photo", "photo_data"};
static_assert(std::size(kNames) == kContactFields);

constexpr int kPhoneOfOneLine = 19;
}  // namespace

bool GetParaNameByIndex(int index, const char** name) {
  if (index < 0 || index >= kContactFields) return false;
  *name = kNames[index];
  return true;
}

bool hasContactField(int phoneType, int index) {
  return phoneType != kPhoneOfOneLine || index != kLine;
}
