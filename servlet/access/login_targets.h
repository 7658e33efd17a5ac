// Where a login leads.
#pragma once

#include <string>
#include <string_view>

#include "framework/servlet_base.h"

// True for the pages of one account, which are opened with the field "acc".
constexpr bool isAccountPage(std::string_view page) {
  return page == "account-basic" || page == "account-adv" || page == "account-codec" || page == "phone-features-line" ||
         page.starts_with("account-register");
}

// The page of the keys, which is opened with the field "model".
inline constexpr std::string_view kKeyPage = "dsskey";

// What stands for a command in place of a page.
inline constexpr std::string_view kCommand = "URI";

// The page that a request wants to open after the login (its field "jumpto"); empty when it names none.
std::string_view wantedPage(HttpRequest* request);

// The command that the request filter put behind "URI&" of the request's target; empty when there is none.
std::string wantedCommand(HttpRequest* request);

// Where to go on with a command; empty when it is not to be followed. It may name no page: what a planted link brings
// would run with the rights of whoever logs in. One that is too long is not cut: half a command could mean something
// else.
std::string commandTarget(const std::string& command);

// Where a login leads: to the page wanted, with the fields of the request that it needs, or on with `command`; to the
// status page when none is wanted or the target is refused (logged).
std::string targetAfterLogin(HttpRequest* request, const std::string& command);
