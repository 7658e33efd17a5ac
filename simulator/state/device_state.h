// The state of the simulated device, as its HTTP control shows and changes it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/phone_application.h"
#include "simulator/config_store.h"

namespace simulator {

inline constexpr int kAccountCount = 16;

enum class NetworkField {
  kLocalIPv4,
  kNetmaskIPv4,
  kGatewayIPv4,
  kPrimaryDNSIPv4,
  kSecondaryDNSIPv4,
  kLocalIPv6,
  kPrefixIPv6,
  kGatewayIPv6,
  kPrimaryDNSIPv6,
  kSecondaryDNSIPv6,
  kLanIP,
};
inline constexpr std::size_t kNetworkFieldCount = 11;

struct ExpansionModule {
  int type = 0;
  std::string hardware;
  std::string firmware;
};

struct DeviceState {
  int phoneType = 46;
  std::string hardwareVersion = "46.0.0.1";
  std::string mac = "02005e000046";  // 12 hex digits, or empty when the phone does not know it
  bool talking = false;
  std::vector<int> registration;  // by account
  bool cableConnected = true;
  std::array<std::string, kNetworkFieldCount> network;                       // what the interface came up with
  std::array<std::optional<std::string>, kNetworkFieldCount> networkForced;  // what was set instead
  std::vector<ExpansionModule> expansionModules;
  std::map<std::string, std::string> bootEnvironment;
  std::int64_t clockOffset = 0;  // seconds
  int rebootSeconds = 0;
  std::map<std::string, int> answers;  // by "THREAD 0xMESSAGE"

  // What the phone does when it comes up: registers its accounts and brings its interface up, from its configuration.
  void bringUp(const ConfigStore& config);
  void bringUpNetwork(const ConfigStore& config);
  void registerAccount(const ConfigStore& config, int account);

  const std::string& networkText(NetworkField field) const;
  int registrationOf(int account) const;

  nlohmann::ordered_json json() const;
  // Merges a patch. A member that is null goes back to what the phone itself came up with. The error text names the
  // member that is unknown or of a wrong type; the state is unchanged then.
  std::optional<std::string> patch(const nlohmann::json& patch, const ConfigStore& config);
};

}  // namespace simulator
