#include "servlet/settings/settings_upgrade_stream.h"

#include <string_view>

bool matchStreamData(HttpRequest* request, const char* pattern, std::string* output) {
  if (!pattern) return false;
  const std::string_view wanted = pattern;
  for (std::size_t matched = 0; matched < wanted.size();) {
    char byte;
    if (request->read(&byte, 1) <= 0) return false;
    matched = byte == wanted[matched] ? matched + 1 : 0;
    if (!output) continue;
    if (output->size() + 1 >= kPartHeadSize) return false;
    *output += byte;
  }
  return true;
}
