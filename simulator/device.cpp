#include "platform/device.h"

#include "simulator/phone.h"

using simulator::phone;

int GetPhoneType() {
  const std::lock_guard lock(phone().mutex);
  return phone().state.phoneType;
}

const char* str_dev_get_hardware_version() {
  thread_local std::string version;
  const std::lock_guard lock(phone().mutex);
  version = phone().state.hardwareVersion;
  return version.c_str();
}
