// Dialling a number from a page.
#pragma once

// Asks the phone application to call `number`. wParam is the origin's code plus the account index. Synchronous: true
// when it dials; otherwise the question is only posted, and true.
bool sendMakeCallMsg(int wParam, int lParam, const char* number, bool synchronous);
