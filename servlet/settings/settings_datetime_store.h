// What a save of the date and time page stores beside the settings that it takes as they are.
#pragma once

#include "framework/servlet_base.h"

// Stores the zone that was chosen; false when the form has none.
bool SetTimeZone(HttpRequest* request);

// Stores the phone's own rule of daylight saving; false when the form does not ask for one. A boundary with a part
// missing from the form stays as it is.
bool SetDayLight(HttpRequest* request);

// Sets the clock. It stays as it is when a field is missing or no number, or when there is no such time.
void SetManualTime(HttpRequest* request);
