#include "framework/shared_texts.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/shared_text.h"

void writeShareText(const char* name, const char* text, int size) {
  if (!name || !text || size < 1) return;
  sharedTextLock();
  std::size_t capacity = 0;
  char* place = sharedTextGet(name, static_cast<std::size_t>(size), &capacity);
  if (place && capacity) {
    const std::size_t length = std::min({std::strlen(text), static_cast<std::size_t>(size), capacity - 1});
    std::memcpy(place, text, length);
    place[length] = '\0';
  }
  sharedTextUnlock();
}

std::string readShareText(const char* name) {
  if (!name) return {};
  sharedTextLock();
  std::size_t capacity = 0;
  const char* place = sharedTextGet(name, 0, &capacity);
  std::string text(place ? std::string_view(place, strnlen(place, capacity)) : std::string_view());
  sharedTextUnlock();
  return text;
}
