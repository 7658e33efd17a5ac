#include "framework/phone_messages.h"

#include "platform/messaging.h"

void broadcastConfigChanged(ConfigArea area, int detail) {
  msgBroadpostThreadMsg(kConfigChanged, static_cast<int>(area), detail);
}

void postMessage(const char* thread, unsigned message, int wParam, int lParam) {
  msgPostMsgToThread(msgGetThreadByName(thread), message, wParam, lParam);
}

void postConfigChanged(ConfigArea area, int detail) {
  postMessage(kPhoneApplication, kConfigChanged, static_cast<int>(area), detail);
}

bool isCallInProgress() {
  return msgSendMsgToThread(msgGetThreadByName(kPhoneApplication), kTalkingState, 0, 1) == 0;
}

int queryRegistrationState(int account) {
  return msgSendMsgToThreadTimeoutEx(msgGetThreadByName(kPhoneApplication), kRegistrationState, account, 0,
                                     kAnswerTimeout, nullptr, 0);
}
