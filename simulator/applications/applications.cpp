#include "simulator/applications/applications.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "platform/phone_application.h"
#include "simulator/applications/application.h"

namespace simulator {
namespace {

// Applications that only take messages. One that gets something to do moves to a file of its own.
constexpr Application kScreen{kScreenApplication};
constexpr Application kBluetooth{kBluetoothService};
constexpr Application kSipClients{.name = kSipClient, .threads = kAccountCount};

constexpr const Application* kApplications[] = {
    &phoneApplication, &provisioningService, &captureService, &upgradeManager, &kScreen, &kBluetooth, &kSipClients,
};

struct Thread {
  std::string name;
  const Application* application;
};

const std::vector<Thread>& threads() {
  static const std::vector<Thread> all = [] {
    std::vector<Thread> made;
    for (const Application* application : kApplications) {
      for (int i = 0; i < application->threads; ++i) {
        const std::string number = application->threads > 1 ? std::to_string(i) : "";
        made.push_back({std::string(application->name) + number, application});
      }
    }
    return made;
  }();
  return all;
}

const MessageHandler* handlerOf(std::span<const MessageHandler> handlers, unsigned message) {
  const auto found = std::find_if(handlers.begin(), handlers.end(),
                                  [message](const MessageHandler& handler) { return handler.message == message; });
  return found != handlers.end() ? &*found : nullptr;
}

// Null for a message that its receiver does not know.
const MessageHandler* receiverOf(const JournalEntry& message) {
  const auto thread = std::find_if(threads().begin(), threads().end(),
                                   [&message](const Thread& one) { return one.name == message.target; });
  return thread != threads().end() ? handlerOf(thread->application->messages, message.message) : nullptr;
}

std::string nameOf(std::string_view thread, unsigned message) {
  char number[16];
  std::snprintf(number, sizeof number, " 0x%x", message);
  return std::string(thread) + number;
}

std::optional<int> givenAnswer(const Phone& phone, std::string_view thread, unsigned message) {
  const auto& answers = phone.state.answers;
  if (answers.empty()) return std::nullopt;
  const auto found = answers.find(nameOf(thread, message));
  return found != answers.end() ? std::optional(found->second) : std::nullopt;
}

void run(const MessageHandler* handler, Phone& phone, const JournalEntry& message) {
  if (handler != nullptr && handler->react != nullptr) handler->react(phone, message);
}

}  // namespace

std::string messageName(const JournalEntry& message) {
  return nameOf(message.target, message.message);
}

std::vector<std::string> threadNames() {
  std::vector<std::string> names;
  for (const Thread& thread : threads()) names.push_back(thread.name);
  return names;
}

int answerOf(Phone& phone, const JournalEntry& message) {
  if (const std::optional<int> given = givenAnswer(phone, message)) return *given;
  const MessageHandler* handler = receiverOf(message);
  return handler != nullptr && handler->answer != nullptr ? handler->answer(phone, message) : 0;
}

std::optional<int> givenAnswer(const Phone& phone, const JournalEntry& message) {
  return givenAnswer(phone, message.target, message.message);
}

void react(Phone& phone, const JournalEntry& message) {
  if (message.kind != JournalEntry::Kind::kBroadcast) {
    if (!givenAnswer(phone, message)) run(receiverOf(message), phone, message);
    return;
  }
  for (const Application* application : kApplications) {
    if (givenAnswer(phone, application->name, message.message)) continue;
    run(handlerOf(application->broadcasts, message.message), phone, message);
  }
}

}  // namespace simulator
