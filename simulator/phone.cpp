#include "simulator/phone.h"

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/web_debug.h"
#include "simulator/shared_texts.h"
#include "simulator/simulator.h"
#include "simulator/web_certificate.h"

namespace simulator {
namespace {

using Clock = std::chrono::steady_clock;

std::atomic<Clock::rep> rebootEnd{0};
std::atomic<std::uint64_t> reboots{0};

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
  return parsed.is_discarded() ? "the state is not JSON" : state.patch(parsed, config);
}

void Phone::comeUp() {
  config.load();
  directory.load();
  running = {};
  state.bringUp(config);
}

void Phone::reboot(std::string reason) {
  systemCall("reboot", std::move(reason));
  ensureDeviceCertificate(state.mac);
  if (state.rebootSeconds <= 0) return directory.load();
  rebootEnd = (Clock::now() + std::chrono::seconds(state.rebootSeconds)).time_since_epoch().count();
  ++reboots;
  comeUp();
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
