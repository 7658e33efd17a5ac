// Marking a session as logged in.
#pragma once

#include "framework/servlet_base.h"

// Stores `user` as the session's attribute "user" and gives the session the configured idle time. False when none is
// configured; the host's own then holds.
bool logInSession(HttpRequest* request, const char* user);
