// Fields of the key page.
#pragma once

#include <string_view>

#include "framework/servlet_base.h"

namespace dsskey {

// The number that a text is; `none` for a text that is no number. No family, page, key or type is negative or larger
// than an int: such a number gives -1.
int numberIn(std::string_view text, int none = 0);

// True for a field that is there and not empty.
bool isGiven(const char* field);

}  // namespace dsskey
