// Commands that other systems send to the phone over HTTP.
#pragma once

#include <string>
#include <string_view>

#include "framework/servlet_base.h"

// The command word that a query text begins with: "key", "number", "phonecfg", "redirectcall", "forward" or "Server";
// empty when it is no Action URI.
std::string_view getURIType(std::string_view query);

// Carries out an Action URI of a trusted client. 1 when it was handled, 0 when it was refused (the answer says why).
int proccessActionURI(HttpRequest* request, HttpResponse* response, std::string_view type, const std::string& query);

// Shows an XML document that a push server sent, in a form field or in the body. False when it was refused.
bool ProcessPushXml(HttpRequest* request, bool fromField);
