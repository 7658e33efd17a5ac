// Numbers in the boundaries of daylight saving.
#pragma once

#include <optional>
#include <string_view>

// The number that a text begins with, behind blanks, taken off its front; beyond an int, the largest.
std::optional<int> takeNumber(std::string_view& text);

bool isWithin(int number, int least, int most);

// True when the text is a boundary that a rule of this kind can have. Both may be null.
bool CheckDSTTime(const char* kind, const char* text);
