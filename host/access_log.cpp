#include "host/access_log.h"

#include <array>
#include <cstdio>
#include <utility>

#include "host/log.h"

namespace host {

std::string accessLine(const RequestHead& head, int status, std::size_t bytes, std::chrono::microseconds duration) {
  std::string line = head.remoteAddress + " " + printable(head.method, 16) + " " + printable(head.path, 128);
  char separator = '?';
  for (const char* name : {"p", "q"}) {
    const std::string* value = head.field(name);
    if (!value) continue;
    line += std::exchange(separator, '&') + std::string(name) + "=" + printable(*value, 64);
  }
  std::array<char, 64> end;
  std::snprintf(end.data(), end.size(), " %d %zu %.1fms", status, bytes, static_cast<double>(duration.count()) / 1000);
  return line + end.data();
}

}  // namespace host
