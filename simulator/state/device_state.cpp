#include "simulator/state/device_state.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include "platform/phone_root.h"
#include "simulator/applications/applications.h"
#include "simulator/ini_file.h"

namespace simulator {

// Found by the JSON library.
static void to_json(nlohmann::ordered_json& json, const ExpansionModule& module) {
  json = {{"type", module.type}, {"hardware", module.hardware}, {"firmware", module.firmware}};
}

namespace {

using nlohmann::json;
using nlohmann::ordered_json;

// The text of an error, or nothing.
using Error = std::optional<std::string>;

constexpr std::int64_t kMaxClockOffset = 100LL * 366 * 24 * 3600;
constexpr int kMaxRebootSeconds = 3600;
constexpr std::size_t kMaxExpansionModules = 15;

struct NetworkFieldInfo {
  const char* name;
  const char* dynamic;     // what the network hands out
  const char* modeKey;     // the setting that says how the interface is configured
  const char* staticMode;  // its value for static addresses
  const char* staticKey;   // the setting that holds the address then
};
constexpr NetworkFieldInfo kNetworkFields[kNetworkFieldCount] = {
    {"localIPv4", "192.0.2.46", "NetworkWanType", "2", "NetworkWanStaticIp"},
    {"netmaskIPv4", "255.255.255.0", "NetworkWanType", "2", "NetworkWanStaticMask"},
    {"gatewayIPv4", "192.0.2.1", "NetworkWanType", "2", "NetworkWanStaticGateWay"},
    {"primaryDNSIPv4", "192.0.2.53", "NetworkWanType", "2", "NetworkWanStaticPriDns"},
    {"secondaryDNSIPv4", "192.0.2.54", "NetworkWanType", "2", "NetworkWanStaticSecDns"},
    {"localIPv6", "2001:db8::46", "NetworkIPv6WANType", "1", "NetworkIPv6WanIP"},
    {"prefixIPv6", "64", "NetworkIPv6WANType", "1", "NetworkIPv6Prefix"},
    {"gatewayIPv6", "2001:db8::1", "NetworkIPv6WANType", "1", "NetworkIPv6WanGateway"},
    {"primaryDNSIPv6", "2001:db8::53", "NetworkIPv6WANType", "1", "NetworkIPv6WanPrimaryDNS"},
    {"secondaryDNSIPv6", "2001:db8::54", "NetworkIPv6WANType", "1", "NetworkIPv6WanSecondaryDNS"},
    {"lanIP", "10.0.0.1", "NetworkLanType", "0", "NetworkLanRouterIP"},
};
constexpr char kCable[] = "cableConnected";

Error wrongType(const std::string& name, const char* expected) {
  return "\"" + name + "\" is to be " + expected;
}
Error unknown(const std::string& name) {
  return "\"" + name + "\" is not known";
}

bool hasNul(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

Error readBool(const json& value, const std::string& name, bool& target) {
  if (!value.is_boolean()) return wrongType(name, "true or false");
  target = value.get<bool>();
  return {};
}

template <class Integer>
Error readInteger(const json& value, const std::string& name, Integer& target, std::int64_t least, std::int64_t most) {
  const bool tooLarge = value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
  if (!value.is_number_integer() || tooLarge || value.get<std::int64_t>() < least || value.get<std::int64_t>() > most) {
    const std::string expected = "an integer from " + std::to_string(least) + " to " + std::to_string(most);
    return wrongType(name, expected.c_str());
  }
  target = static_cast<Integer>(value.get<std::int64_t>());
  return {};
}

Error readInt(const json& value, const std::string& name, int& target) {
  return readInteger(value, name, target, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

Error readModuleType(const json& value, const std::string& name, int& target) {
  return readInteger(value, name, target, 0, std::numeric_limits<int>::max());
}

Error readClockOffset(const json& value, const std::string& name, std::int64_t& target) {
  return readInteger(value, name, target, -kMaxClockOffset, kMaxClockOffset);
}

Error readRebootSeconds(const json& value, const std::string& name, int& target) {
  return readInteger(value, name, target, 0, kMaxRebootSeconds);
}

Error readText(const json& value, const std::string& name, std::string& target) {
  if (!value.is_string() || hasNul(value.get_ref<const std::string&>())) return wrongType(name, "a text without NUL");
  target = value.get<std::string>();
  return {};
}

Error readMac(const json& value, const std::string& name, std::string& target) {
  if (const Error error = readText(value, name, target)) return error;
  const bool isMac = target.empty() ||
                     (target.size() == 12 && target.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos);
  return isMac ? Error() : wrongType(name, "12 hexadecimal digits");
}

Error readRegistration(const json& value, const std::string& name, std::vector<int>& target) {
  if (!value.is_array() || value.size() > kAccountCount) return wrongType(name, "a list of at most 16 integers");
  target.assign(value.size(), 0);
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (const Error error = readInt(value[i], name + "[" + std::to_string(i) + "]", target[i])) return error;
  }
  return {};
}

Error readModule(const json& value, const std::string& name, ExpansionModule& target) {
  if (!value.is_object()) return wrongType(name, "an object");
  for (const auto& [key, member] : value.items()) {
    const std::string path = name + "." + key;
    Error error = unknown(path);
    if (key == "type") error = readModuleType(member, path, target.type);
    if (key == "hardware") error = readText(member, path, target.hardware);
    if (key == "firmware") error = readText(member, path, target.firmware);
    if (error) return error;
  }
  return {};
}

Error readModules(const json& value, const std::string& name, std::vector<ExpansionModule>& target) {
  if (!value.is_array() || value.size() > kMaxExpansionModules) return wrongType(name, "a list of at most 15 objects");
  target.assign(value.size(), {});
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (const Error error = readModule(value[i], name + "[" + std::to_string(i) + "]", target[i])) return error;
  }
  return {};
}

// "THREAD 0xMESSAGE" with a thread of this phone, the number in lower-case digits without leading zeros.
bool isAnswerName(const std::string& name) {
  const auto blank = name.find(' ');
  if (blank == std::string::npos || !name.substr(blank + 1).starts_with("0x")) return false;
  const auto threads = applicationNames();
  if (std::find(threads.begin(), threads.end(), name.substr(0, blank)) == threads.end()) return false;
  const std::string digits = name.substr(blank + 3);
  return !digits.empty() && digits.size() <= 8 && (digits[0] != '0' || digits.size() == 1) &&
         digits.find_first_not_of("0123456789abcdef") == std::string::npos;
}

// Merges an object into a map; null removes an entry.
template <class Value, class ReadValue>
Error mergeMap(const json& value, const std::string& name, std::map<std::string, Value>& target, ReadValue read) {
  if (!value.is_object()) return wrongType(name, "an object");
  for (const auto& [key, member] : value.items()) {
    if (member.is_null()) {
      target.erase(key);
      continue;
    }
    Value parsed{};
    if (const Error error = read(key, member, name + "." + key, parsed)) return error;
    target[key] = std::move(parsed);
  }
  return {};
}

Error readAnswer(const std::string& key, const json& value, const std::string& name, int& target) {
  if (!isAnswerName(key)) return wrongType(name, "named like \"app_hostapp 0x30007\"");
  return readInt(value, name, target);
}

Error readVariable(const std::string& key, const json& value, const std::string& name, std::string& target) {
  if (key.empty() || hasNul(key)) return unknown(name);
  return readText(value, name, target);
}

Error mergeVariables(const json& value, const std::string& name, std::map<std::string, std::string>& target) {
  return mergeMap(value, name, target, readVariable);
}

Error mergeAnswers(const json& value, const std::string& name, std::map<std::string, int>& target) {
  return mergeMap(value, name, target, readAnswer);
}

Error mergeNetwork(const json& value, const std::string& name, DeviceState& state) {
  if (!value.is_object()) return wrongType(name, "an object");
  for (const auto& [key, member] : value.items()) {
    const std::string path = name + "." + key;
    if (key == kCable) {
      const Error error =
          member.is_null() ? (state.cableConnected = true, Error()) : readBool(member, path, state.cableConnected);
      if (error) return error;
      continue;
    }
    const auto* field = std::find_if(std::begin(kNetworkFields), std::end(kNetworkFields),
                                     [&key = key](const auto& info) { return info.name == key; });
    if (field == std::end(kNetworkFields)) return unknown(path);
    auto& forced = state.networkForced[static_cast<std::size_t>(field - kNetworkFields)];
    forced.reset();
    if (member.is_null()) continue;
    if (const Error error = readText(member, path, forced.emplace())) return error;
  }
  return {};
}

ordered_json networkJson(const DeviceState& state) {
  ordered_json result{{kCable, state.cableConnected}};
  for (std::size_t i = 0; i < kNetworkFieldCount; ++i) {
    result[kNetworkFields[i].name] = state.networkText(static_cast<NetworkField>(i));
  }
  return result;
}

void resetNetwork(DeviceState& state, const DeviceState& fresh) {
  state.cableConnected = fresh.cableConnected;
  state.networkForced = fresh.networkForced;
}

// One member of the state. `merge` takes a value that is not null, `reset` what the phone came up with.
struct Member {
  const char* name;
  Error (*merge)(const json& value, const std::string& name, DeviceState& state);
  void (*reset)(DeviceState& state, const DeviceState& fresh);
  ordered_json (*show)(const DeviceState& state);
};

// A member that is one field of the state, read by `kRead`.
template <auto kField, auto kRead>
constexpr Member field(const char* name) {
  return {
      name,
      [](const json& value, const std::string& path, DeviceState& state) { return kRead(value, path, state.*kField); },
      [](DeviceState& state, const DeviceState& fresh) { state.*kField = fresh.*kField; },
      [](const DeviceState& state) { return ordered_json(state.*kField); }};
}

constexpr Member kMembers[] = {
    field<&DeviceState::phoneType, readInt>("phoneType"),
    field<&DeviceState::hardwareVersion, readText>("hardwareVersion"),
    field<&DeviceState::mac, readMac>("mac"),
    field<&DeviceState::talking, readBool>("talking"),
    field<&DeviceState::registration, readRegistration>("registration"),
    {"network", mergeNetwork, resetNetwork, networkJson},
    field<&DeviceState::expansionModules, readModules>("expansionModules"),
    field<&DeviceState::bootEnvironment, mergeVariables>("bootEnvironment"),
    field<&DeviceState::clockOffset, readClockOffset>("clockOffset"),
    field<&DeviceState::rebootSeconds, readRebootSeconds>("rebootSeconds"),
    field<&DeviceState::answers, mergeAnswers>("answers"),
};

Error mergeMember(const std::string& name, const json& value, DeviceState& state, const DeviceState& fresh) {
  const auto* member = std::find_if(std::begin(kMembers), std::end(kMembers),
                                    [&name](const Member& candidate) { return candidate.name == name; });
  if (member == std::end(kMembers)) return unknown(name);
  if (!value.is_null()) return member->merge(value, name, state);
  member->reset(state, fresh);
  return {};
}

bool hasServer(const ConfigStore& config, int account) {
  if (!config.get(accountConfigName("AccountSIPServerHost", account)).empty()) return true;
  const std::string path = phonePath("/config/user/voip/sipAccount" + std::to_string(account) + ".cfg");
  const IniFile file(readFile(path).value_or(""));
  return !file.get("sipserver1", "server").value_or("").empty() ||
         !file.get("sipserver2", "server").value_or("").empty();
}

}  // namespace

void DeviceState::bringUp(const ConfigStore& config) {
  registration.assign(kAccountCount, kDisabled);
  for (int account = 0; account < kAccountCount; ++account) registerAccount(config, account);
  bringUpNetwork(config);
}

void DeviceState::bringUpNetwork(const ConfigStore& config) {
  for (std::size_t i = 0; i < kNetworkFieldCount; ++i) {
    const NetworkFieldInfo& field = kNetworkFields[i];
    network[i] = config.get(field.modeKey) == field.staticMode ? config.get(field.staticKey) : field.dynamic;
  }
}

void DeviceState::registerAccount(const ConfigStore& config, int account) {
  if (account < 0 || account >= kAccountCount) return;
  const auto index = static_cast<std::size_t>(account);
  if (registration.size() <= index) registration.resize(index + 1, kDisabled);
  int& status = registration[index];
  if (config.get(accountConfigName("AccountEnable", account)) != "1") {
    status = kDisabled;
  } else if (!hasServer(config, account)) {
    status = kRegisterFailed;
  } else {
    status = config.get(accountConfigName("AccountUserName", account)).empty() ? kUnregistered : kRegistered;
  }
}

const std::string& DeviceState::networkText(NetworkField field) const {
  const auto index = static_cast<std::size_t>(field);
  return networkForced[index] ? *networkForced[index] : network[index];
}

int DeviceState::registrationOf(int account) const {
  const auto index = static_cast<std::size_t>(account);
  return account >= 0 && index < registration.size() ? registration[index] : kInexistent;
}

ordered_json DeviceState::json() const {
  ordered_json result;
  for (const Member& member : kMembers) result[member.name] = member.show(*this);
  return result;
}

Error DeviceState::patch(const nlohmann::json& patch, const ConfigStore& config) {
  if (!patch.is_object()) return "the state is to be an object";
  DeviceState fresh, patched = *this;
  fresh.bringUp(config);
  for (const auto& [name, value] : patch.items()) {
    if (Error error = mergeMember(name, value, patched, fresh)) return error;
  }
  *this = std::move(patched);
  return {};
}

}  // namespace simulator
