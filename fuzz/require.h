// What has to hold whatever the input is.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

// Ends the program, as a finding, when `holds` is false.
inline void require(bool holds, std::string_view what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}
