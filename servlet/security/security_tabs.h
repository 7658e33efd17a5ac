// The tabs of the security pages.
#pragma once

#include "framework/page_tables.h"

inline constexpr const char* kSecurityTabs[] = {"password", "trusted_cert", "server_cert"};
static_assert(allUnique(kSecurityTabs));
