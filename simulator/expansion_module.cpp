#include "platform/expansion_module.h"

#include <cstring>

#include "simulator/phone.h"
#include "simulator/text_out.h"

using simulator::ExpansionModule;
using simulator::phone;

namespace {

constexpr std::size_t kTextSize = 128;

int answerNumber(ExpansionRequest& record, std::size_t number) {
  record.result = static_cast<std::int32_t>(number);
  return 0;
}

int answerText(const ExpansionRequest& record, const std::string& text, char* buffer) {
  if (buffer == nullptr) return -1;
  simulator::copyOut(text, buffer, std::min<std::size_t>(record.textLength + std::size_t{1}, kTextSize));
  return 0;
}

int answerOf(const ExpansionModule& module, std::uint32_t request, ExpansionRequest& record, char* text) {
  switch (request) {
    case kExpansionSelect:
    case kExpansionRefresh:
      return answerNumber(record, 0);
    case kExpansionType:
      return answerNumber(record, static_cast<std::size_t>(module.type));
    case kExpansionHardwareVersion:
      return answerText(record, module.hardware, text);
    case kExpansionFirmwareVersion:
      return answerText(record, module.firmware, text);
    default:
      return -1;
  }
}

}  // namespace

int expansionOpen(const char* device) {
  const std::lock_guard lock(phone().mutex);
  if (device == nullptr || std::strcmp(device, kExpansionDevice) != 0 || phone().state.expansionModules.empty()) {
    return -1;
  }
  auto& handles = phone().expansionHandles;
  return *handles.insert(handles.empty() ? 0 : *handles.rbegin() + 1).first;
}

int expansionControl(int handle, std::uint32_t request, ExpansionRequest* record, char* text) {
  const std::lock_guard lock(phone().mutex);
  if (record == nullptr || !phone().expansionHandles.contains(handle)) return -1;
  const auto& modules = phone().state.expansionModules;
  if (request == kExpansionCount) return answerNumber(*record, modules.size());
  return record->module < modules.size() ? answerOf(modules[record->module], request, *record, text) : -1;
}

void expansionClose(int handle) {
  const std::lock_guard lock(phone().mutex);
  phone().expansionHandles.erase(handle);
}
