// The driver of the expansion modules (extra keys and headset adapters plugged into the phone).
#pragma once

#include <cstdint>

inline constexpr char kExpansionDevice[] = "/dev/exp0";

// The driver's request record.
struct ExpansionRequest {
  std::uint16_t module;  // index from 0
  std::uint16_t reserved2;
  std::uint32_t reserved4;
  std::uint32_t reserved8;
  std::uint16_t reserved12;
  std::uint16_t textLength;  // 127 for version requests, 0 otherwise
  std::int32_t result;       // set by the driver
  std::uint32_t reserved20;
  std::uint32_t reserved24;
  std::uint32_t reserved28;
  std::uint32_t textAddress;  // of the text buffer; filled by expansionControl()
};
static_assert(sizeof(ExpansionRequest) == 36);

enum : std::uint32_t {
  kExpansionCount = 0x40045a31,
  kExpansionSelect = 0x40045a12,
  kExpansionRefresh = 0x40045a26,
  kExpansionType = 0x40045a32,
  kExpansionHardwareVersion = 0x80045a10,
  kExpansionFirmwareVersion = 0x80045a11,
};

// Opens the driver for reading and writing: a handle for the two calls below, or -1.
int expansionOpen(const char* device);
// Issues one request. `text` is the 128-byte buffer of a version request, null otherwise; addresses are wider than the
// record's field on some machines, so it is passed beside the record. 0, or -1 when the driver refuses.
int expansionControl(int handle, std::uint32_t request, ExpansionRequest* record, char* text);
void expansionClose(int handle);
