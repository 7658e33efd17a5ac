// The phone application: accounts and their calls, the configuration, the phone as a whole.
#include "platform/phone_application.h"

#include <algorithm>

#include "platform/phone_root.h"
#include "simulator/applications/application.h"
#include "simulator/applications/exported_config.h"
#include "simulator/applications/provisioning_service.h"
#include "simulator/files.h"

namespace simulator {
namespace {

constexpr int kHeadsetAdapter = 2;

int registration(Phone& phone, const JournalEntry& message) {
  return phone.state.registrationOf(message.wParam);
}

int idle(Phone& phone, const JournalEntry&) {
  return phone.state.talking ? 0 : 1;
}

// The number of key modules in the low four bits, above them 1 for the module of 38 keys and 2 for the one of 40.
int expansionModules(Phone& phone, const JournalEntry&) {
  const auto& modules = phone.state.expansionModules;
  const auto isKeys = [](const ExpansionModule& module) { return module.type != kHeadsetAdapter; };
  const auto first = std::find_if(modules.begin(), modules.end(), isKeys);
  if (first == modules.end()) return 0;
  const auto count = std::min<std::ptrdiff_t>(std::count_if(modules.begin(), modules.end(), isKeys), 15);
  return static_cast<int>(count) | (first->type == 0 ? 1 : 2) << 4;
}

int exportConfig(Phone& phone, const JournalEntry&) {
  return replaceFile(phonePath("/tmp/phonecfg.ini"), exportedConfig(phone.config)) ? 1 : 0;
}

int accepted(Phone&, const JournalEntry&) {
  return 1;
}

void reboot(Phone& phone, const JournalEntry& message) {
  phone.reboot(messageName(message));
}

void provisionAnew(Phone& phone, const JournalEntry&) {
  startProvisioning(phone);
}

constexpr MessageHandler kMessages[] = {
    {.message = kServerChanged, .react = provisionAnew},
    {.message = kReboot, .react = reboot},
    {.message = kRegistrationState, .answer = registration},
    {.message = kTalkingState, .answer = idle},
    {.message = kExpansionKeys, .answer = expansionModules},
    {.message = kExportConfig, .answer = exportConfig},
    {.message = kMakeCall, .answer = accepted},
};

void reload(Phone& phone, const JournalEntry& message) {
  switch (static_cast<ConfigArea>(message.wParam)) {
    case ConfigArea::kAccount:
      return phone.state.registerAccount(phone.config, message.lParam);
    case ConfigArea::kNetwork:
      phone.state.network.bringUp(phone.config);
      if (phone.state.rebootSeconds > 0) phone.reboot("network settings");
      return;
    default:
      return;
  }
}

constexpr MessageHandler kBroadcasts[] = {
    {.message = kConfigChanged, .react = reload},
};

}  // namespace

constinit const Application phoneApplication{kPhoneApplication, kMessages, kBroadcasts};

}  // namespace simulator
