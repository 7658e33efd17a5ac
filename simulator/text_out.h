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

}  // namespace simulator
