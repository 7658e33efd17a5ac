#include "platform/boot_environment.h"

#include "simulator/phone.h"
#include "simulator/text_out.h"

using simulator::phone;

void userenv_get(const char* name, char* value, std::size_t size) {
  const std::lock_guard lock(phone().mutex);
  const auto& variables = phone().state.bootEnvironment;
  const auto found = name != nullptr ? variables.find(name) : variables.end();
  simulator::copyOut(found != variables.end() ? std::string_view(found->second) : "", value, size);
}

bool userenv_set(const char* name, const char* value) {
  if (name == nullptr || value == nullptr || *name == '\0') return false;
  const std::lock_guard lock(phone().mutex);
  if (phone().state.bootEnvironmentLocked) return false;
  phone().state.bootEnvironment[name] = value;
  return true;
}
