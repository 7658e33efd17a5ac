// Decimal numbers in the phone's files.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace simulator {

// Nothing when the text is not a decimal number of int's range from its first to its last character.
inline std::optional<int> decimalNumber(std::string_view text) {
  int value;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc{} && stop == end ? std::optional(value) : std::nullopt;
}

}  // namespace simulator
