#include "platform/config_parser.h"

#include "simulator/applications/network_directories.h"
#include "simulator/number.h"
#include "simulator/phone.h"

using simulator::phone;

std::string configParser_GetConfigString(const char* key) {
  if (key == nullptr) return {};
  const std::lock_guard lock(phone().mutex);
  simulator::takeNetworkDirectories(phone());
  return phone().config.get(key);
}

int configParser_GetConfigInt(const char* key) {
  return simulator::decimalNumber(configParser_GetConfigString(key)).value_or(0);
}

int configParser_SetConfigString(const char* key, const char* value) {
  if (key == nullptr || value == nullptr) return 0;
  const std::lock_guard lock(phone().mutex);
  return phone().config.set({{key, value}});
}

std::string configParser_GetAccountConfigName(const char* key, int account) {
  return simulator::accountConfigName(key != nullptr ? key : "", account);
}
