// Texts in memory shared with the phone's applications.
#pragma once

#include <string>

// Writing makes the text with `size` bytes when it does not exist and cuts to what it holds. A null argument or a size
// below 1 changes nothing.
void writeShareText(const char* name, const char* text, int size);
// Empty when there is no such text.
std::string readShareText(const char* name);
