// The page for people and what it loads, built in from simulator/web.
#pragma once

#include <string_view>

namespace simulator {

struct WebFile {
  const char* contentType;
  std::string_view bytes;
};

extern const WebFile kPageFile;
extern const WebFile kStyleFile;
extern const WebFile kScriptFile;

}  // namespace simulator
