// What is made and checked of a page's tables while it is compiled.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// True when no text of a table occurs twice; null entries do not count.
template <std::size_t N>
consteval bool allUnique(const char* const (&texts)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    for (std::size_t j = i + 1; j < N; ++j) {
      if (texts[i] && texts[j] && std::string_view(texts[i]) == texts[j]) return false;
    }
  }
  return true;
}

// The tabs of a section with a page's own one first and the others in their order. Does not compile for a tab that is
// none of the section's.
template <std::size_t N>
consteval std::array<const char*, N> ownTabFirst(const char* const (&tabs)[N], std::string_view own) {
  std::array<const char*, N> order{};
  std::size_t next = 1;
  for (const char* tab : tabs) order.at(tab == own ? 0 : next++) = tab;
  return order;
}

// True when each tab of a page's own order is one of the section's.
template <std::size_t N, std::size_t M>
consteval bool areTabsOf(const char* const (&order)[M], const char* const (&tabs)[N]) {
  for (std::string_view tab : order) {
    bool known = false;
    for (const char* other : tabs) known |= tab == other;
    if (!known) return false;
  }
  return true;
}
