#include "platform/messaging.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "simulator/applications/applications.h"
#include "simulator/applications/capture_service.h"
#include "simulator/phone.h"

struct MessageThread {
  std::string name;
};

namespace {

using simulator::JournalEntry;
using Kind = JournalEntry::Kind;

std::vector<MessageThread> makeThreads() {
  std::vector<MessageThread> threads;
  for (std::string& name : simulator::threadNames()) threads.push_back({std::move(name)});
  return threads;
}

std::string payload(const void* data, int size) {
  if (data == nullptr || size <= 0) return {};
  std::string text(static_cast<const char*>(data), static_cast<std::size_t>(size));
  if (text.back() == '\0') text.pop_back();
  return text;
}

bool isMissing(const char* name) {
  const std::lock_guard lock(simulator::phone().mutex);
  const std::vector<std::string>& missing = simulator::phone().state.missingApplications;
  return std::find(missing.begin(), missing.end(), name) != missing.end();
}

// Has the applications take the message, and records it before what it causes.
int deliver(JournalEntry entry) {
  simulator::Phone& phone = simulator::phone();
  const std::lock_guard lock(phone.mutex);
  if (entry.kind == Kind::kSend) entry.answer = simulator::answerOf(phone, entry);
  if (entry.kind == Kind::kPost && simulator::givenAnswer(phone, entry) == kMessageNoAnswer) entry.answer = -1;
  phone.journal.add(entry);
  simulator::captureMessage(phone, entry);
  simulator::react(phone, entry);
  return entry.answer;
}

int post(Kind kind, std::string target, unsigned message, int wParam, int lParam, std::string data) {
  return deliver({kind, std::move(target), std::move(data), message, wParam, lParam});
}

}  // namespace

MessageThread* msgGetThreadByName(const char* name) {
  static std::vector<MessageThread> threads = makeThreads();
  if (name == nullptr || isMissing(name)) return nullptr;
  for (MessageThread& thread : threads) {
    if (thread.name == name) return &thread;
  }
  return nullptr;
}

int msgPostMsgToThread(MessageThread* thread, unsigned message, int wParam, int lParam) {
  return msgPostMsgToThreadEx(thread, message, wParam, lParam, nullptr, 0);
}

int msgPostMsgToThreadEx(MessageThread* thread, unsigned message, int wParam, int lParam, const void* data, int size) {
  if (thread == nullptr) return -1;
  return post(Kind::kPost, thread->name, message, wParam, lParam, payload(data, size));
}

int msgSendMsgToThread(MessageThread* thread, unsigned message, int wParam, int lParam) {
  return msgSendMsgToThreadEx(thread, message, wParam, lParam, nullptr, 0);
}

int msgSendMsgToThreadEx(MessageThread* thread, unsigned message, int wParam, int lParam, const void* data, int size) {
  if (thread == nullptr) return kMessageNoAnswer;
  return post(Kind::kSend, thread->name, message, wParam, lParam, payload(data, size));
}

// The applications of this phone answer at once or never, so nobody waits.
int msgSendMsgToThreadTimeoutEx(MessageThread* thread, unsigned message, int wParam, int lParam, int, const void* data,
                                int size) {
  return msgSendMsgToThreadEx(thread, message, wParam, lParam, data, size);
}

int msgBroadpostThreadMsg(unsigned message, int wParam, int lParam) {
  return msgBroadpostThreadMsgEx(message, wParam, lParam, nullptr, 0);
}

int msgBroadpostThreadMsgEx(unsigned message, int wParam, int lParam, const void* data, int size) {
  return post(Kind::kBroadcast, "", message, wParam, lParam, payload(data, size));
}
