// The tabs of the features pages.
#pragma once

#include "framework/page_tables.h"

inline constexpr const char* kFeaturesTabs[] = {"features-forward",  "features-general",   "features-audio",
                                                "features-intercom", "features-transfer",  "features-callpickup",
                                                "features-remote",   "features-phonelock", "features-acd",
                                                "features-sms",      "features-actionurl", "features-bluetooth"};
static_assert(allUnique(kFeaturesTabs));
