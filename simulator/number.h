// Decimal numbers in texts.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace simulator {

// Nothing when the text is not a decimal number of the type's range from its first to its last character.
template <class Integer = int>
std::optional<Integer> decimalNumber(std::string_view text) {
  Integer value;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc{} && stop == end ? std::optional(value) : std::nullopt;
}

}  // namespace simulator
