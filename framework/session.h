// Marking a session as logged in.
#pragma once

#include "framework/servlet_base.h"

// Stores `user` as the session's attribute "user" and gives the session the configured idle time. False when none is
// configured; the host's own then holds.
bool logInSession(HttpRequest* request, const char* user);

// Gives the request's session an idle time, as it was configured: minutes in decimal; the host's own for any text that
// is not a number above 0.
void setSessionIdleMinutes(HttpRequest* request, const char* minutes);
