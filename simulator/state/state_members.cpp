// The device's state as JSON: a row a key.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "simulator/applications/applications.h"
#include "simulator/state/device_state.h"
#include "simulator/state/json_members.h"

namespace simulator {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

constexpr std::int64_t kMaxClockOffset = 100LL * 366 * 24 * 3600;
constexpr int kMaxRebootSeconds = 3600;
constexpr std::size_t kMaxExpansionModules = 15;
constexpr std::size_t kMaxBusyLamps = 1000;
constexpr std::size_t kMaxThreads = 100;
constexpr std::size_t kMaxNetworkDirectories = 100;

constexpr auto readClockOffset = readRange<-kMaxClockOffset, kMaxClockOffset, std::int64_t>;
constexpr auto readRebootSeconds = readRange<0, kMaxRebootSeconds, int>;
constexpr auto readRefusal = readRange<std::numeric_limits<int>::min(), 0, int>;
constexpr auto readModuleType = readRange<0, std::numeric_limits<int>::max(), int>;

Error readMac(const json& value, const std::string& path, std::string& target) {
  if (Error error = readText(value, path, target)) return error;
  const bool isMac = target.empty() ||
                     (target.size() == 12 && target.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos);
  return isMac ? Error() : wrongType(path, "12 hexadecimal digits");
}

Error readRegistration(const json& value, const std::string& path, std::vector<int>& target) {
  return readList(value, path, target, kAccountCount, "integers", readInt);
}

Error mergeVariables(const json& value, const std::string& path, std::map<std::string, std::string>& target) {
  return mergeMap(value, path, target,
                  [](const std::string& key, const json& given, const std::string& name, std::string& text) {
                    return key.empty() || hasNul(key) ? unknown(name) : readText(given, name, text);
                  });
}

bool isThread(const std::string& name) {
  const auto threads = threadNames();
  return std::find(threads.begin(), threads.end(), name) != threads.end();
}

Error readThreads(const json& value, const std::string& path, std::vector<std::string>& target) {
  return readList(value, path, target, kMaxThreads, "applications",
                  [](const json& given, const std::string& name, std::string& thread) {
                    Error error = readText(given, name, thread);
                    return error || isThread(thread) ? error : unknown(name);
                  });
}

Error readDirectoryNames(const json& value, const std::string& path, std::vector<std::string>& target) {
  return readList(value, path, target, kMaxNetworkDirectories, "texts", readText);
}

// "THREAD 0xMESSAGE" with a thread of this phone, the number in lower-case digits without leading zeros.
bool isMessageName(const std::string& name) {
  const auto blank = name.find(' ');
  if (blank == std::string::npos || !name.substr(blank + 1).starts_with("0x")) return false;
  if (!isThread(name.substr(0, blank))) return false;
  const std::string digits = name.substr(blank + 3);
  return !digits.empty() && digits.size() <= 8 && (digits[0] != '0' || digits.size() == 1) &&
         digits.find_first_not_of("0123456789abcdef") == std::string::npos;
}

Error mergeAnswers(const json& value, const std::string& path, std::map<std::string, int>& target) {
  return mergeMap(value, path, target,
                  [](const std::string& key, const json& given, const std::string& name, int& answer) {
                    return isMessageName(key) ? readInt(given, name, answer)
                                              : wrongType(name, "named like \"app_hostapp 0x30007\"");
                  });
}

// A text of the interface, which can be forced.
template <NetworkField kField>
constexpr Member<NetworkInterface> networkText(const char* name) {
  return {name, [](const NetworkInterface& network) { return ordered_json(network.text(kField)); },
          [](const json& value, const std::string& path, NetworkInterface& network, const NetworkInterface*) {
            std::string text;
            Error error = readText(value, path, text);
            if (!error) network.force(kField, std::move(text));
            return error;
          },
          [](NetworkInterface& network, const NetworkInterface&) { network.force(kField, std::nullopt); }};
}

constexpr Member<NetworkInterface> kNetworkMembers[] = {
    field<&NetworkInterface::cableConnected, readBool>("cableConnected"),
    networkText<NetworkField::kLocalIPv4>("localIPv4"),
    networkText<NetworkField::kNetmaskIPv4>("netmaskIPv4"),
    networkText<NetworkField::kGatewayIPv4>("gatewayIPv4"),
    networkText<NetworkField::kPrimaryDNSIPv4>("primaryDNSIPv4"),
    networkText<NetworkField::kSecondaryDNSIPv4>("secondaryDNSIPv4"),
    networkText<NetworkField::kLocalIPv6>("localIPv6"),
    networkText<NetworkField::kPrefixIPv6>("prefixIPv6"),
    networkText<NetworkField::kGatewayIPv6>("gatewayIPv6"),
    networkText<NetworkField::kPrimaryDNSIPv6>("primaryDNSIPv6"),
    networkText<NetworkField::kSecondaryDNSIPv6>("secondaryDNSIPv6"),
    networkText<NetworkField::kLanIP>("lanIP"),
};

constexpr Member<ExpansionModule> kModuleMembers[] = {
    field<&ExpansionModule::type, readModuleType>("type"),
    field<&ExpansionModule::hardware, readText>("hardware"),
    field<&ExpansionModule::firmware, readText>("firmware"),
};

constexpr Member<BusyLamp> kBusyLampMembers[] = {
    field<&BusyLamp::key, readInt>("key"),
    field<&BusyLamp::value, readText>("value"),
    field<&BusyLamp::label, readText>("label"),
    field<&BusyLamp::extension, readText>("extension"),
};

constexpr Member<DirectoryState> kDirectoryMembers[] = {
    field<&DirectoryState::available, readBool>("available"),
    field<&DirectoryState::busy, readBool>("busy"),
    field<&DirectoryState::refusal, readRefusal>("refusal"),
};

constexpr Member<DeviceState> kMembers[] = {
    field<&DeviceState::phoneType, readInt>("phoneType"),
    field<&DeviceState::hardwareVersion, readText>("hardwareVersion"),
    field<&DeviceState::mac, readMac>("mac"),
    field<&DeviceState::talking, readBool>("talking"),
    field<&DeviceState::registration, readRegistration>("registration"),
    object<&DeviceState::network, kNetworkMembers>("network"),
    objectList<&DeviceState::expansionModules, kModuleMembers, kMaxExpansionModules>("expansionModules"),
    field<&DeviceState::bootEnvironment, mergeVariables>("bootEnvironment"),
    field<&DeviceState::clockOffset, readClockOffset>("clockOffset"),
    field<&DeviceState::rebootSeconds, readRebootSeconds>("rebootSeconds"),
    field<&DeviceState::answers, mergeAnswers>("answers"),
    object<&DeviceState::directory, kDirectoryMembers>("directory"),
    objectList<&DeviceState::blfList, kBusyLampMembers, kMaxBusyLamps>("blfList"),
    field<&DeviceState::networkDirectories, readDirectoryNames>("networkDirectories"),
    field<&DeviceState::networkDirectoryError, readText>("networkDirectoryError"),
    field<&DeviceState::missingApplications, readThreads>("missingApplications"),
    field<&DeviceState::bootEnvironmentLocked, readBool>("bootEnvironmentLocked"),
    field<&DeviceState::upgrading, readBool>("upgrading"),
    shown<&DeviceState::capturing>("capturing"),
};

}  // namespace

ordered_json DeviceState::json() const {
  return showMembers(kMembers, *this);
}

std::optional<std::string> DeviceState::patch(const nlohmann::json& patch, const ConfigStore& config) {
  if (!patch.is_object()) return "the state is to be an object";
  DeviceState fresh, patched = *this;
  fresh.bringUp(config);
  if (Error error = mergeMembers(patch, "", kMembers, patched, &fresh)) return error;
  *this = std::move(patched);
  return {};
}

}  // namespace simulator
