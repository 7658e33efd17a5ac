// The tabs of the account pages.
#pragma once

#include "framework/page_tables.h"

inline constexpr const char* kAccountTabs[] = {"account-register", "account-basic", "account-codec", "account-adv"};
static_assert(allUnique(kAccountTabs));
