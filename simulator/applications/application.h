// What makes an application of the phone: its name and what it does with messages.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "simulator/journal.h"
#include "simulator/phone.h"

namespace simulator {

// What an application does with one message. Both run with the phone's mutex held.
struct MessageHandler {
  unsigned message;
  // The answer to a send, when everything is done that has to be done before it; null answers 0.
  int (*answer)(Phone& phone, const JournalEntry& message) = nullptr;
  // What follows once the message is in the journal, posted or sent; null does nothing.
  void (*react)(Phone& phone, const JournalEntry& message) = nullptr;
};

struct Application {
  std::string_view name;
  std::span<const MessageHandler> messages = {};    // that go to it alone
  std::span<const MessageHandler> broadcasts = {};  // that go to every application; nobody waits for an answer
  int threads = 1;                                  // above 1, the thread N is called "NAME" "N", from 0
};

// Those that do something with messages, a file each.
extern const Application phoneApplication;
extern const Application provisioningService;
extern const Application captureService;
extern const Application upgradeManager;

// "app_hostapp 0x30007", as the state's "answers" name a message and the journal the reason of a reboot.
std::string messageName(const JournalEntry& message);

}  // namespace simulator
