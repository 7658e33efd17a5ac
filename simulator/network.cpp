#include "platform/network.h"

#include <cstdio>
#include <ctime>

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

LocalTime netGetLocalTime() {
  const std::lock_guard lock(phone().mutex);
  const std::time_t now = phone().state.time();
  std::tm local{};
  localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

bool netSetLocalTime(int year, int month, int day, int hour, int minute, int second) {
  const auto isWithin = [](int value, int least, int most) { return value >= least && value <= most; };
  const bool isTime = isWithin(year, 1970, 2099) && isWithin(month, 1, 12) && isWithin(day, 1, 31) &&
                      isWithin(hour, 0, 23) && isWithin(minute, 0, 59) && isWithin(second, 0, 59);
  if (!isTime) return false;
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", year, month, day, hour, minute, second);
  std::tm local{};
  strptime(text, "%Y-%m-%d %H:%M:%S", &local);
  local.tm_isdst = -1;  // whichever holds then
  const std::time_t wanted = std::mktime(&local);
  if (wanted == -1 || local.tm_mday != day) return false;
  const std::lock_guard lock(phone().mutex);
  phone().state.clockOffset = static_cast<std::int64_t>(wanted) - std::time(nullptr);
  phone().systemCall("setClock", text);
  return true;
}
