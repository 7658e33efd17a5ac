// The SIP servers of an account, kept in the account's own ini file.
#pragma once

#include "framework/servlet_base.h"

// Adds "server", "port", "expires" and "RetryCounts" of server 1 and 2 (names end in the number) and
// "AccountTransport". A file without a server shows the one that the configuration service holds.
TMPL_varlist* addServers(TMPL_varlist* list, int account);

// Stores the fields of the same names, and the outbound proxy; fields that the form lacks keep their value.
void storeServers(int account, HttpRequest* request);
