#include "platform/network.h"

#include "simulator/phone.h"
#include "simulator/text_out.h"

using simulator::NetworkField;
using simulator::phone;

namespace {

void query(NetworkField field, char* text, std::size_t size) {
  const std::lock_guard lock(phone().mutex);
  simulator::copyOut(phone().state.network.text(field), text, size);
}

}  // namespace

void netGetLocalIPv4(char* text, std::size_t size) {
  query(NetworkField::kLocalIPv4, text, size);
}
void netGetWanNetmaskIPv4(char* text, std::size_t size) {
  query(NetworkField::kNetmaskIPv4, text, size);
}
void netGetWanGatewayIPv4(char* text, std::size_t size) {
  query(NetworkField::kGatewayIPv4, text, size);
}
void netGetWanPrimaryDNSIPv4(char* text, std::size_t size) {
  query(NetworkField::kPrimaryDNSIPv4, text, size);
}
void netGetWanSecondaryDNSIPv4(char* text, std::size_t size) {
  query(NetworkField::kSecondaryDNSIPv4, text, size);
}
void netGetLocalIPv6(char* text, std::size_t size) {
  query(NetworkField::kLocalIPv6, text, size);
}
void netGetWanPrefixIPv6(char* text, std::size_t size) {
  query(NetworkField::kPrefixIPv6, text, size);
}
void netGetWanGatewayIPv6(char* text, std::size_t size) {
  query(NetworkField::kGatewayIPv6, text, size);
}
void netGetWanPrimaryDNSIPv6(char* text, std::size_t size) {
  query(NetworkField::kPrimaryDNSIPv6, text, size);
}
void netGetWanSecondaryDNSIPv6(char* text, std::size_t size) {
  query(NetworkField::kSecondaryDNSIPv6, text, size);
}
void netGetLanIP(char* text, std::size_t size) {
  query(NetworkField::kLanIP, text, size);
}

bool netGetMACText(char* text, std::size_t size) {
  const std::lock_guard lock(phone().mutex);
  const std::string& mac = phone().state.mac;
  simulator::copyOut(mac, text, size);
  return !mac.empty();
}

bool netIsCableConnected() {
  const std::lock_guard lock(phone().mutex);
  return phone().state.network.cableConnected;
}
