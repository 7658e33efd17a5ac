// The state of the phone's network, and its clock. Each query of a text writes at most `size` bytes, the final NUL
// included, and gives an empty text when there is nothing to tell.
#pragma once

#include <cstddef>

void netGetLocalIPv4(char* text, std::size_t size);
void netGetWanNetmaskIPv4(char* text, std::size_t size);
void netGetWanGatewayIPv4(char* text, std::size_t size);
void netGetWanPrimaryDNSIPv4(char* text, std::size_t size);
void netGetWanSecondaryDNSIPv4(char* text, std::size_t size);
void netGetLocalIPv6(char* text, std::size_t size);
void netGetWanPrefixIPv6(char* text, std::size_t size);
void netGetWanGatewayIPv6(char* text, std::size_t size);
void netGetWanPrimaryDNSIPv6(char* text, std::size_t size);
void netGetWanSecondaryDNSIPv6(char* text, std::size_t size);
void netGetLanIP(char* text, std::size_t size);
// The MAC address as 12 hex digits; false when it is not known.
bool netGetMACText(char* text, std::size_t size);
bool netIsCableConnected();

// The clock at the phone's place, in its time zone: month and day from 1.
struct LocalTime {
  int year = 1970, month = 1, day = 1;
  int hour = 0, minute = 0, second = 0;
};
LocalTime netGetLocalTime();
// Sets it. False, with the clock as it was, for a time that the clock cannot hold.
bool netSetLocalTime(int year, int month, int day, int hour, int minute, int second);
