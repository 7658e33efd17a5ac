// Variables of the boot loader.
#pragma once

#include <cstddef>

// Writes the value of `name` as text of at most `size` bytes, the final NUL included: empty when it is not set.
void userenv_get(const char* name, char* value, std::size_t size);
// Sets a variable. False when it cannot be stored.
bool userenv_set(const char* name, const char* value);
