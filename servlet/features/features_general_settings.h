// The settings of the page "features-general" as a save stores them.
#pragma once

#include "framework/servlet_base.h"

// Automatic answering of calls by address belongs to the account behind the six that register.
inline constexpr int kAddressCallAccount = 6;

// Stores the fields that the form has, group by group, and tells the applications of each group that changed. A new
// idle time holds for the request's session at once.
void storeGeneralSettings(HttpRequest* request);
