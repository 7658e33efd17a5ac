#include "servlet/contacts/contacts_make_call.h"

#include <cstring>

#include "framework/phone_messages.h"
#include "platform/messaging.h"

bool sendMakeCallMsg(int wParam, int lParam, const char* number, bool synchronous) {
  if (!number) return false;
  MessageThread* phone = msgGetThreadByName(kPhoneApplication);
  const int size = static_cast<int>(std::strlen(number)) + 1;
  if (synchronous) {
    const int answer = msgSendMsgToThreadEx(phone, kMakeCall, wParam, lParam, number, size);
    return answer != 0 && answer != kMessageNoAnswer;
  }
  msgPostMsgToThreadEx(phone, kMakeCall, wParam, lParam, number, size);
  return true;
}
