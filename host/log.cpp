#include "host/log.h"

#include <unistd.h>

namespace host {
namespace {
std::function<void(std::string_view)>& sink() {
  static std::function<void(std::string_view)> instance;
  return instance;
}

void appendHex(std::string& out, unsigned char byte) {
  static constexpr char kDigits[] = "0123456789abcdef";
  out += "\\x";
  out += kDigits[byte >> 4];
  out += kDigits[byte & 15];
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}
}  // namespace

void logLine(std::initializer_list<std::string_view> parts) {
  std::string line;
  for (std::string_view part : parts) {
    for (char c : part) {
      if (isControl(c)) {
        appendHex(line, static_cast<unsigned char>(c));
      } else {
        line += c;
      }
    }
  }
  if (sink()) return sink()(line);
  line += '\n';
  // A log that cannot be written is no reason to stop serving.
  if (::write(STDERR_FILENO, line.data(), line.size()) < 0) return;
}

void setLogSink(std::function<void(std::string_view line)> newSink) {
  sink() = std::move(newSink);
}

std::string printable(std::string_view text, std::size_t limit) {
  std::string out;
  for (char c : text.substr(0, limit)) {
    if (isControl(c) || c == '"' || c == '\\') {
      appendHex(out, static_cast<unsigned char>(c));
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace host
