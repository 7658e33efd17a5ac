// Fields of the key page.
#pragma once

#include <string>
#include <string_view>

#include "dsskey/dsskey_records.h"
#include "framework/servlet_base.h"

namespace dsskey {

// The number that a text is; `none` for a text that is no number. No family, page, key or type is negative or larger
// than an int: such a number gives -1.
int numberIn(std::string_view text, int none = 0);

// A parameter's text as the browser may have it: the PIN of a conference stays on the phone.
std::string shownText(const DssKey& key, DSSK_PARA_TYPE parameter);

// True for a field that is there and not empty.
bool isGiven(const char* field);

}  // namespace dsskey
