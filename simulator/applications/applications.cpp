#include "simulator/applications/applications.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "platform/phone_application.h"
#include "platform/phone_root.h"
#include "simulator/applications/exported_config.h"
#include "simulator/files.h"

namespace simulator {
namespace {

constexpr std::string_view kNames[] = {
    "app_hostapp",     "app_dispsvc",     "app_pcapServer",  "autoServer",      "smGui",           "bluetooththread",
    "app_sipClient0",  "app_sipClient1",  "app_sipClient2",  "app_sipClient3",  "app_sipClient4",  "app_sipClient5",
    "app_sipClient6",  "app_sipClient7",  "app_sipClient8",  "app_sipClient9",  "app_sipClient10", "app_sipClient11",
    "app_sipClient12", "app_sipClient13", "app_sipClient14", "app_sipClient15",
};

constexpr int kHeadsetAdapter = 2;
constexpr std::chrono::seconds kProvisioningTime{3};

std::string messageName(const JournalEntry& message) {
  char number[16];
  std::snprintf(number, sizeof number, " 0x%x", message.message);
  return message.target + number;
}

int idle(const Phone& phone, const JournalEntry&) {
  return phone.state.talking ? 0 : 1;
}

int registration(const Phone& phone, const JournalEntry& message) {
  return phone.state.registrationOf(message.wParam);
}

// The number of key modules in the low four bits, above them 1 for the module of 38 keys and 2 for the one of 40.
int expansionModules(const Phone& phone, const JournalEntry&) {
  const auto& modules = phone.state.expansionModules;
  const auto isKeys = [](const ExpansionModule& module) { return module.type != kHeadsetAdapter; };
  const auto first = std::find_if(modules.begin(), modules.end(), isKeys);
  if (first == modules.end()) return 0;
  const auto count = std::min<std::ptrdiff_t>(std::count_if(modules.begin(), modules.end(), isKeys), 15);
  return static_cast<int>(count) | (first->type == 0 ? 1 : 2) << 4;
}

int exportConfig(const Phone& phone, const JournalEntry&) {
  return replaceFile(phonePath("/tmp/phonecfg.ini"), exportedConfig(phone.config)) ? 1 : 0;
}

int provisioning(const Phone& phone, const JournalEntry&) {
  return std::chrono::steady_clock::now() < phone.provisioningEnd ? 1 : 0;
}

int accepted(const Phone&, const JournalEntry&) {
  return 1;
}

struct HealthyAnswer {
  std::string_view thread;
  unsigned message;
  int (*answer)(const Phone&, const JournalEntry&);
};
constexpr HealthyAnswer kHealthyAnswers[] = {
    {kPhoneApplication, kTalkingState, idle},
    {kPhoneApplication, kRegistrationState, registration},
    {kPhoneApplication, kExpansionKeys, expansionModules},
    {kPhoneApplication, kExportConfig, exportConfig},
    {kPhoneApplication, kMakeCall, accepted},
    {kProvisioningService, kProvisioningState, provisioning},
};

bool startsProvisioning(const JournalEntry& message) {
  return (message.message == kProvisionNow && message.target == kProvisioningService) ||
         (message.message == kServerChanged && message.target == kPhoneApplication);
}

// What a change of the configuration brings about.
void reload(Phone& phone, const JournalEntry& message) {
  if (message.wParam == static_cast<int>(ConfigArea::kAccount))
    phone.state.registerAccount(phone.config, message.lParam);
  if (message.wParam != static_cast<int>(ConfigArea::kNetwork)) return;
  phone.state.bringUpNetwork(phone.config);
  if (phone.state.rebootSeconds > 0) phone.reboot("network settings");
}

}  // namespace

std::span<const std::string_view> applicationNames() {
  return kNames;
}

int answerOf(const Phone& phone, const JournalEntry& message) {
  if (!phone.state.answers.empty()) {
    const auto found = phone.state.answers.find(messageName(message));
    if (found != phone.state.answers.end()) return found->second;
  }
  for (const HealthyAnswer& healthy : kHealthyAnswers) {
    if (healthy.message == message.message && healthy.thread == message.target) return healthy.answer(phone, message);
  }
  return 0;
}

void react(Phone& phone, const JournalEntry& message) {
  if (message.message == kReboot && message.target == kPhoneApplication) phone.reboot(messageName(message));
  if (startsProvisioning(message)) phone.provisioningEnd = std::chrono::steady_clock::now() + kProvisioningTime;
  if (message.message == kConfigChanged && message.kind == JournalEntry::Kind::kBroadcast) reload(phone, message);
}

}  // namespace simulator
