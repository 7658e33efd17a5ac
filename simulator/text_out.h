// Texts on their way out through platform/.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

namespace simulator {

// Writes as much of `text` as fits into `size` bytes with its final NUL.
inline void copyOut(std::string_view text, char* buffer, std::size_t size) {
  if (buffer == nullptr || size == 0) return;
  const std::size_t length = std::min(text.size(), size - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
}

// As much of a UTF-8 text as fits into `size` bytes, without a part of a character at the end.
inline std::string_view cutUtf8(std::string_view text, std::size_t size) {
  if (text.size() <= size) return text;
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xc0) == 0x80) --size;
  return text.substr(0, size);
}

}  // namespace simulator
