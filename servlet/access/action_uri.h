// Commands that other systems send to the phone over HTTP.
#pragma once

#include <string>
#include <string_view>

#include "framework/servlet_base.h"

// The command word that a query text begins with: "key", "number", "phonecfg", "redirectcall", "forward" or "Server";
// empty when it is no Action URI.
std::string_view getURIType(std::string_view query);

// Carries out an Action URI of a trusted client. 1 when it was handled, 0 when it was refused or failed (the answer
// says why).
// With `user`, the session of a client that is trusted is logged in under that name before the command runs.
int proccessActionURI(HttpRequest* request, HttpResponse* response, std::string_view type, const std::string& query,
                      const char* user = nullptr);

// Writes the command to the system log, when the configured level is above 2. `address` may be null.
void ActionURISyslog(const std::string& action, const char* address);

// Appends "&RIP=" and the address. A null argument is logged and changes nothing.
void AddIPtoURI(std::string* command, const char* address);
