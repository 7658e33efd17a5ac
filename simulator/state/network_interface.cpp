#include "simulator/state/network_interface.h"

#include <utility>

namespace simulator {
namespace {

struct Source {
  NetworkField field;
  const char* dynamic;     // what the network hands out
  const char* modeKey;     // the setting that says how the interface is configured
  const char* staticMode;  // its value for static addresses
  const char* staticKey;   // the setting that holds the address then
};
constexpr Source kSources[] = {
    {NetworkField::kLocalIPv4, "192.0.2.46", "NetworkWanType", "2", "NetworkWanStaticIp"},
    {NetworkField::kNetmaskIPv4, "255.255.255.0", "NetworkWanType", "2", "NetworkWanStaticMask"},
    {NetworkField::kGatewayIPv4, "192.0.2.1", "NetworkWanType", "2", "NetworkWanStaticGateWay"},
    {NetworkField::kPrimaryDNSIPv4, "192.0.2.53", "NetworkWanType", "2", "NetworkWanStaticPriDns"},
    {NetworkField::kSecondaryDNSIPv4, "192.0.2.54", "NetworkWanType", "2", "NetworkWanStaticSecDns"},
    {NetworkField::kLocalIPv6, "2001:db8::46", "NetworkIPv6WANType", "1", "NetworkIPv6WanIP"},
    {NetworkField::kPrefixIPv6, "64", "NetworkIPv6WANType", "1", "NetworkIPv6Prefix"},
    {NetworkField::kGatewayIPv6, "2001:db8::1", "NetworkIPv6WANType", "1", "NetworkIPv6WanGateway"},
    {NetworkField::kPrimaryDNSIPv6, "2001:db8::53", "NetworkIPv6WANType", "1", "NetworkIPv6WanPrimaryDNS"},
    {NetworkField::kSecondaryDNSIPv6, "2001:db8::54", "NetworkIPv6WANType", "1", "NetworkIPv6WanSecondaryDNS"},
    {NetworkField::kLanIP, "10.0.0.1", "NetworkLanType", "0", "NetworkLanRouterIP"},
};
static_assert(std::size(kSources) == kNetworkFieldCount);

constexpr std::size_t indexOf(NetworkField field) {
  return static_cast<std::size_t>(field);
}

}  // namespace

void NetworkInterface::bringUp(const ConfigStore& config) {
  for (const Source& source : kSources) {
    const bool isStatic = config.get(source.modeKey) == source.staticMode;
    found_[indexOf(source.field)] = isStatic ? config.get(source.staticKey) : source.dynamic;
  }
}

const std::string& NetworkInterface::text(NetworkField field) const {
  const std::optional<std::string>& forced = forced_[indexOf(field)];
  return forced ? *forced : found_[indexOf(field)];
}

void NetworkInterface::force(NetworkField field, std::optional<std::string> text) {
  forced_[indexOf(field)] = std::move(text);
}

}  // namespace simulator
