// The tabs of the settings pages.
#pragma once

#include "framework/page_tables.h"

inline constexpr const char* kSettingsTabs[] = {"settings-preference", "settings-datetime", "settings-upgrade",
                                                "settings-autop",      "settings-config",   "settings-dialplan",
                                                "settings-voice",      "settings-ring",     "settings-tones",
                                                "settings-softkey",    "settings-tr069"};

// The dial plan is a section of its own within: its four pages stand where the other pages have its one tab.
inline constexpr const char* kDialPlanTabs[] = {
    "settings-dialplan",   "replace-rule",      "dial-now",         "area-code",        "block-out",
    "settings-preference", "settings-datetime", "settings-upgrade", "settings-autop",   "settings-config",
    "settings-voice",      "settings-ring",     "settings-tones",   "settings-softkey", "settings-tr069"};
static_assert(allUnique(kSettingsTabs) && allUnique(kDialPlanTabs));
