#include "simulator/state/device_state.h"

#include "platform/phone_root.h"
#include "simulator/ini_file.h"

namespace simulator {
namespace {

int statusOf(const ConfigStore& config, int account) {
  if (config.get(accountConfigName("AccountEnable", account)) != "1") return kDisabled;
  if (sipServer(config, account).empty()) return kRegisterFailed;
  return config.get(accountConfigName("AccountUserName", account)).empty() ? kUnregistered : kRegistered;
}

}  // namespace

std::string sipServer(const ConfigStore& config, int account) {
  std::string server = config.get(accountConfigName("AccountSIPServerHost", account));
  if (!server.empty()) return server;
  const std::string path = phonePath("/config/user/voip/sipAccount" + std::to_string(account) + ".cfg");
  const IniFile file(readFile(path).value_or(""));
  server = file.get("sipserver1", "server").value_or("");
  return !server.empty() ? server : file.get("sipserver2", "server").value_or("");
}

void DeviceState::bringUp(const ConfigStore& config) {
  talking = false;
  capturing = false;
  registration.assign(kAccountCount, kDisabled);
  for (int account = 0; account < kAccountCount; ++account) registerAccount(config, account);
  network.bringUp(config);
}

void DeviceState::registerAccount(const ConfigStore& config, int account) {
  if (account < 0 || account >= kAccountCount) return;
  const auto index = static_cast<std::size_t>(account);
  if (registration.size() <= index) registration.resize(index + 1, kDisabled);
  registration[index] = statusOf(config, account);
}

int DeviceState::registrationOf(int account) const {
  const auto index = static_cast<std::size_t>(account);
  return account >= 0 && index < registration.size() ? registration[index] : kInexistent;
}

}  // namespace simulator
