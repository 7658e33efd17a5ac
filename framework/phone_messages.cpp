#include "framework/phone_messages.h"

namespace {
// A text's bytes in a message, its final NUL included.
int sizeOf(const std::string& text) {
  return static_cast<int>(text.size()) + 1;
}
}  // namespace

void postMessage(const char* thread, unsigned message, int wParam, int lParam) {
  msgPostMsgToThread(msgGetThreadByName(thread), message, wParam, lParam);
}

bool postText(const char* thread, unsigned message, const std::string& text, int wParam, int lParam) {
  return msgPostMsgToThreadEx(msgGetThreadByName(thread), message, wParam, lParam, text.c_str(), sizeOf(text)) == 0;
}

int sendMessage(const char* thread, unsigned message, int wParam, int lParam) {
  return msgSendMsgToThread(msgGetThreadByName(thread), message, wParam, lParam);
}

int sendText(const char* thread, unsigned message, const std::string& text, int wParam, int lParam) {
  return msgSendMsgToThreadEx(msgGetThreadByName(thread), message, wParam, lParam, text.c_str(), sizeOf(text));
}

int askFor(int milliseconds, const char* thread, unsigned message, int wParam, int lParam) {
  return msgSendMsgToThreadTimeoutEx(msgGetThreadByName(thread), message, wParam, lParam, milliseconds, nullptr, 0);
}

int askWithText(int milliseconds, const char* thread, unsigned message, const std::string& text) {
  return msgSendMsgToThreadTimeoutEx(msgGetThreadByName(thread), message, 0, 0, milliseconds, text.c_str(),
                                     sizeOf(text));
}

void broadcastConfigChanged(ConfigArea area, int detail) {
  msgBroadpostThreadMsg(kConfigChanged, static_cast<int>(area), detail);
}

void broadcastConfigChanged(ConfigArea area, int detail, const void* data, int size) {
  msgBroadpostThreadMsgEx(kConfigChanged, static_cast<int>(area), detail, data, size);
}

void postConfigChanged(ConfigArea area, int detail) {
  postMessage(kPhoneApplication, kConfigChanged, static_cast<int>(area), detail);
}

bool isCallInProgress() {
  return sendMessage(kPhoneApplication, kTalkingState, 0, 1) == 0;
}

int queryRegistrationState(int account) {
  return askFor(kAnswerTimeout, kPhoneApplication, kRegistrationState, account);
}
