// The phone's SIP accounts, by their index from 0.
#pragma once

#include <optional>
#include <string>

#include "framework/servlet_base.h"

// How many accounts this phone has.
int GetAccountMax();

// The account index in a request's field; nothing when the field is absent, not a number or beyond this phone's.
std::optional<int> validAccount(const char* text);

// The rows of an account selector: "index", "selected" ("1" or "0"), "accountno". `selected` may be null.
TMPL_loop* GetAccountLoop(const char* selected, bool withAuto);

// The text of a registration status code; "Unknown" for a code without one.
void MapAccountStatusToString(std::string* text, int status);

// The path of an account's SIP file.
std::string accountFile(int account);

// The SIP server that an account (0 to 5) registers with. False for any other account.
bool GetSipServerHost(std::string& host, std::string& port, int account);

// The registered account whose "user@host" is `uri`, or -1.
int GetAccountID(const char* uri);
