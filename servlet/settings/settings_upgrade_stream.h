// Reading a request's body bit by bit, without taking more of it than needed.
#pragma once

#include <cstddef>
#include <string>

#include "framework/servlet_base.h"

inline constexpr std::size_t kPartHeadSize = 1024;  // bytes of a collected text, the final NUL included

// Reads up to the end of `pattern`, and not a byte more; what it reads goes behind `output`, when that is given. False
// when the pattern is null, does not come before the body ends, or `output` would outgrow kPartHeadSize. A byte that
// breaks a match off begins none itself.
bool matchStreamData(HttpRequest* request, const char* pattern, std::string* output = nullptr);
