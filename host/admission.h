// Who may ask for what, judged by the request's head alone.
#pragma once

#include <string_view>

#include "host/request_head.h"

namespace host {

// True when a page of another site started the request. Sec-Fetch-Site decides where the browser sends it; otherwise an
// Origin that is not this host.
bool isForeign(const RequestHead& head);

// A link from elsewhere that only opens a page: a top-level navigation by GET to "/" or to the "load" or "loginForm" of
// a page.
bool isPlainLink(const RequestHead& head);

// A navigation by GET in a window of its own, whatever its target.
bool isTopLevelNavigation(const RequestHead& head);

// True for 127.0.0.0/8 and ::1.
bool isLoopbackAddress(std::string_view address);
// True when a Host header names a loopback address, so that a name that was pointed at one does not count.
bool namesLoopback(std::string_view host);

}  // namespace host
