// What a page answers in place of its form, and the phone's restart.
#pragma once

#include "framework/servlet_base.h"

// Answers with the notice page: `message`, and the page to go back to ("notice" for the one before). `repeat` makes
// the browser wait until the phone is back.
void SetNoticePage(HttpResponse* response, bool repeat, const char* page, const char* message);

// What a page shows while the phone restarts.
inline constexpr char kRebootingNotice[] = "Rebooting , please wait ...";

// True, with the notice as the answer, while a call is in progress: nothing may be saved then.
bool IsInTalking(HttpResponse* response);

// True when the form asks for a restart (its field "reboot" is "true").
bool wantsReboot(HttpRequest* request);

// Asks the phone application to reboot after `delay` seconds; a negative delay means its usual 2.
void sysReboot(int delay);
