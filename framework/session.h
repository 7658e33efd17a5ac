// Who a session is logged in as, and with whose rights.
#pragma once

#include <string>

#include "framework/servlet_base.h"

// Stores `user` as the session's attribute "user" and gives the session the configured idle time. False when none is
// configured; the host's own then holds.
bool logInSession(HttpRequest* request, const char* user);

// Gives the request's session an idle time, as it was configured: minutes in decimal; the host's own for any text that
// is not a number above 0.
void setSessionIdleMinutes(HttpRequest* request, const char* minutes);

// The session's attribute "user": an identity ("admin", "var", "user") or, where a command brought its credentials
// along, a login name. Empty when nobody is logged in, and for a login name that belonged to no identity.
std::string sessionIdentity(HttpRequest* request);

// Whose rights such a text has: one of the three identities, or an empty text, which has none.
std::string identityOfUser(const std::string& user);

// What a session holds for somebody who logged in by a name: the name, but never another identity's word.
std::string userOfLoginName(const std::string& name, const std::string& identity);
