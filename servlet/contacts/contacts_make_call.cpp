#include "servlet/contacts/contacts_make_call.h"

#include "framework/phone_messages.h"

bool sendMakeCallMsg(int wParam, int lParam, const char* number, bool synchronous) {
  if (!number) return false;
  if (synchronous) {
    const int answer = sendText(kPhoneApplication, kMakeCall, number, wParam, lParam);
    return answer != 0 && answer != kMessageNoAnswer;
  }
  postText(kPhoneApplication, kMakeCall, number, wParam, lParam);
  return true;
}
