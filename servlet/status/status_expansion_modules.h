// The expansion modules attached to the phone.
#pragma once

#include "framework/servlet_base.h"

// Adds "extNum", the number of modules, and returns their rows ("extName", "index", "hardware", "firmware"); null when
// there are none. `list` is not null.
TMPL_loop* GetEXPInfo(TMPL_varlist* list);
