// The phone's network interface.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "simulator/config_store.h"

namespace simulator {

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

class NetworkInterface {
 public:
  bool cableConnected = true;

  // Takes the addresses that the configuration gives, or what the network hands out where it gives none.
  void bringUp(const ConfigStore& config);

  const std::string& text(NetworkField field) const;
  // Has the interface show another text until it is taken back.
  void force(NetworkField field, std::optional<std::string> text);

 private:
  std::array<std::string, kNetworkFieldCount> found_;
  std::array<std::optional<std::string>, kNetworkFieldCount> forced_;
};

}  // namespace simulator
