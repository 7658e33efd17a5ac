// The tabs of the directory pages.
#pragma once

#include "framework/page_tables.h"

inline constexpr const char* kContactsTabs[] = {"contacts-basic",   "contacts-remote",      "contacts-callinfo",
                                                "contacts-LDAP",    "contacts-multicastIP", "contacts-broadsoft",
                                                "contacts-favorite"};
static_assert(allUnique(kContactsTabs));
