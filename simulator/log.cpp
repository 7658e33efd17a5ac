#include "platform/log.h"

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "simulator/simulator.h"

namespace {

using Sink = std::function<void(int module, int level, std::string_view line)>;

std::mutex sinkMutex;
std::shared_ptr<const Sink> sink;  // null: standard error

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  return text;
}

// Control characters as one byte, or as the two bytes that UTF-8 has for U+0080 to U+009F.
std::size_t controlLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x20 || first == 0x7f) return 1;
  const bool isC1 = first == 0xc2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xa0;
  return isC1 ? 2 : 0;
}

std::string oneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  while (!text.empty()) {
    const std::size_t control = controlLength(text);
    if (control == 0) line += text[0];
    for (std::size_t i = 0; i < control; ++i) {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned char>(text[i]));
      line += escape;
    }
    text.remove_prefix(control == 0 ? 1 : control);
  }
  return line;
}

}  // namespace

void log_log(int module, int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = formatted(format, arguments);
  va_end(arguments);
  const std::string line = oneLine(text.ends_with('\n') ? std::string_view(text).substr(0, text.size() - 1) : text);
  std::shared_ptr<const Sink> current;
  {
    const std::lock_guard lock(sinkMutex);
    current = sink;
  }
  if (current) {
    (*current)(module, level, line);
  } else {
    std::fprintf(stderr, "log %d %d %s\n", module, level, line.c_str());
  }
}

namespace simulator {

void setLogSink(Sink newSink) {
  const std::lock_guard lock(sinkMutex);
  sink = newSink ? std::make_shared<const Sink>(std::move(newSink)) : nullptr;
}

}  // namespace simulator
