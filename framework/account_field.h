// The account that a request is about.
#pragma once

#include <optional>

// The account index in a request's field; nothing when the field is absent, not a number or beyond this phone's.
std::optional<int> validAccount(const char* text);
