#include "simulator/phone.h"

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/phone_root.h"
#include "platform/web_debug.h"
#include "simulator/processes.h"
#include "simulator/root_setup.h"
#include "simulator/runtime_files.h"
#include "simulator/shared_texts.h"
#include "simulator/simulator.h"
#include "simulator/upgrade_image.h"
#include "simulator/web_certificate.h"

namespace simulator {
namespace {

using Clock = std::chrono::steady_clock;

std::atomic<Clock::rep> rebootEnd{0};
std::atomic<std::uint64_t> reboots{0};

constexpr char kBootMode[] = "BOOTMODE";

bool isSafeMode(const DeviceState& state) {
  const auto mode = state.bootEnvironment.find(kBootMode);
  return mode != state.bootEnvironment.end() && mode->second == "safemode";
}

}  // namespace

Phone& phone() {
  static Phone instance;
  return instance;
}

void Phone::systemCall(const char* call, std::string text) {
  journal.add({JournalEntry::Kind::kSystem, call, std::move(text)});
}

std::optional<std::string> Phone::patchState(const std::string& patch) {
  const nlohmann::json parsed = nlohmann::json::parse(patch, nullptr, false);
  if (parsed.is_discarded()) return "the state is not JSON";
  const std::string mac = state.mac;
  const std::optional<std::string> error = state.patch(parsed, config);
  if (state.mac != mac) writeMacFile(state.mac);
  return error;
}

void Phone::comeUp() {
  config.load();
  directory.load();
  running = {};
  running.safeMode = isSafeMode(state);
  state.bringUp(config);
  startProcesses();
  removeUnfinishedImage();
  writeMacFile(state.mac);
  writeStartLine("The phone is up with firmware " + config.get(kFirmwareKey) + ".");
}

void Phone::reboot(std::string reason) {
  systemCall("reboot", std::move(reason));
  ensureDeviceCertificate(state.mac);
  if (state.rebootSeconds <= 0) {
    directory.load();
    return startProcesses();
  }
  if (running.safeMode) state.bootEnvironment.erase(kBootMode);
  rebootEnd = (Clock::now() + std::chrono::seconds(state.rebootSeconds)).time_since_epoch().count();
  ++reboots;
  comeUp();
}

void Phone::resetToFactory() {
  const bool custom = config.get("FactoryConfigCustomEnabled") == "1";
  const std::string firmware = config.get(kFirmwareKey);
  if (resetConfig(root, custom) || (custom && resetConfig(root, false))) {
    config.load();
    directory.load();
    if (fileStamp(phonePath(kFirmwareImage))) config.set({{kFirmwareKey, firmware}});
  }
  reboot("factory reset");
}

std::optional<std::string> start(const std::filesystem::path& root, const std::string& state) {
  Phone& phone = simulator::phone();
  const std::lock_guard lock(phone.mutex);
  phone.root = std::filesystem::canonical(root).string();
  phone.state = DeviceState();
  phone.comeUp();
  std::optional<std::string> error;
  if (!state.empty()) error = phone.patchState(state);
  ensureDeviceCertificate(phone.state.mac);
  phone.journal = Journal();
  phone.expansionHandles.clear();
  phone.certificateOptions = {};
  forgetSharedTexts();
  WebDebug::getInstance().setDebugLevel(WebDebug::kErrors);
  rebootEnd = 0;
  reboots = 0;
  return error;
}

bool rebooting() {
  return Clock::now().time_since_epoch().count() < rebootEnd;
}

std::uint64_t rebootCount() {
  return reboots;
}

}  // namespace simulator
