// The phone application: accounts and their calls, the configuration, the phone as a whole.
#include "platform/phone_application.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/phone_root.h"
#include "simulator/applications/application.h"
#include "simulator/applications/call_history.h"
#include "simulator/applications/exported_config.h"
#include "simulator/applications/network_directories.h"
#include "simulator/applications/provisioning_service.h"
#include "simulator/directory/directory_exchange.h"
#include "simulator/files.h"
#include "simulator/xml_file.h"

namespace simulator {
namespace {

constexpr int kHeadsetAdapter = 2;
// Where a call was asked for.
constexpr int kDirectoryOrigin = 100;
constexpr int kHistoryOrigin = 1100;

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

// The account that a call goes over: behind an origin of 100 or 1100 its index, or -1 for the first that is registered.
std::optional<int> callingAccount(const Phone& phone, int origin) {
  if (origin < kDirectoryOrigin - 1) return std::nullopt;
  const int account = origin - (origin < kHistoryOrigin - 1 ? kDirectoryOrigin : kHistoryOrigin);
  if (account >= kAccountCount) return std::nullopt;
  if (account >= 0) return account;
  const auto& all = phone.state.registration;
  const auto first = std::find(all.begin(), all.end(), kRegistered);
  return first != all.end() ? static_cast<int>(first - all.begin()) : 0;
}

int dials(Phone& phone, const JournalEntry& message) {
  return !message.text.empty() && fitsXml(message.text) && callingAccount(phone, message.wParam) ? 1 : 0;
}

void dial(Phone& phone, const JournalEntry& message) {
  if (dials(phone, message) != 0) addPlacedCall(phone, *callingAccount(phone, message.wParam), message.text);
}

int callHistory(Phone&, const JournalEntry&) {
  writeCallHistory();
  return 0;
}

// A record a key, fields behind the marks that the key model drops.
int writeBlfList(Phone& phone, const JournalEntry&) {
  std::string text;
  for (const BusyLamp& lamp : phone.state.blfList) {
    if (!text.empty()) text += '$';
    text += std::to_string(lamp.key) + "?v" + lamp.value + "?l" + lamp.label + "?e" + lamp.extension;
  }
  return replaceFile(phonePath(kBlfListPath), text) ? 1 : 0;
}

int exchangeDirectory(Phone& phone, DirectoryFile request) {
  const DirectoryState& state = phone.state.directory;
  if (state.busy) return kDirectoryInUse;
  if (!state.available || request < DirectoryFile::kImport || request > DirectoryFile::kImportReplacing) {
    return NS_DIRECTORY::kDirectoryFailed;
  }
  if (request == DirectoryFile::kExport) return exportDirectory(phone.directory.contents());
  if (state.refusal < 0) return state.refusal;
  DirectoryContents next;
  if (request == DirectoryFile::kImportKeeping) next = phone.directory.contents();
  if (const int error = importDirectory(next)) return error;
  if (!phone.directory.replace(std::move(next))) return NS_DIRECTORY::kDirectoryFailed;
  return kExchanged;
}

int answerChange(Phone& phone, const JournalEntry& message) {
  if (message.wParam != static_cast<int>(ConfigArea::kDirectoryFile)) return 0;
  return exchangeDirectory(phone, static_cast<DirectoryFile>(message.lParam));
}

void takeChange(Phone& phone, const JournalEntry& message) {
  if (message.wParam == static_cast<int>(ConfigArea::kCustomDirectories)) fetchNetworkDirectories(phone);
}

void reboot(Phone& phone, const JournalEntry& message) {
  phone.reboot(messageName(message));
}

void provisionAnew(Phone& phone, const JournalEntry&) {
  startProvisioning(phone);
}

constexpr MessageHandler kMessages[] = {
    {.message = kConfigChanged, .answer = answerChange, .react = takeChange},
    {.message = kServerChanged, .react = provisionAnew},
    {.message = kReboot, .react = reboot},
    {.message = kRegistrationState, .answer = registration},
    {.message = kTalkingState, .answer = idle},
    {.message = kExpansionKeys, .answer = expansionModules},
    {.message = kWriteBlfList, .answer = writeBlfList},
    {.message = kExportConfig, .answer = exportConfig},
    {.message = kWriteCallHistory, .answer = callHistory},
    {.message = kMakeCall, .answer = dials, .react = dial},
};

void resetToFactory(Phone& phone, const JournalEntry&) {
  phone.resetToFactory();
}

void reload(Phone& phone, const JournalEntry& message) {
  switch (static_cast<ConfigArea>(message.wParam)) {
    case ConfigArea::kAccount:
      return phone.state.registerAccount(phone.config, message.lParam);
    case ConfigArea::kNetwork:
      phone.state.network.bringUp(phone.config);
      if (phone.state.rebootSeconds > 0) phone.reboot("network settings");
      return;
    case ConfigArea::kCustomDirectories:
      return fetchNetworkDirectories(phone);
    default:
      return;
  }
}

constexpr MessageHandler kBroadcasts[] = {
    {.message = kConfigChanged, .react = reload},
    {.message = kFactoryReset, .react = resetToFactory},
};

}  // namespace

constinit const Application phoneApplication{kPhoneApplication, kMessages, kBroadcasts};

}  // namespace simulator
