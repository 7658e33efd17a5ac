// The tabs of the network pages.
#pragma once

#include "framework/page_tables.h"

inline constexpr const char* kNetworkTabs[] = {"network-basic", "network-advanced", "network-pcport"};
static_assert(allUnique(kNetworkTabs));
