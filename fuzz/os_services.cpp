// The operating system of a fuzzed phone: nothing is done. Commands are checked instead.
#include "platform/os_services.h"

#include <algorithm>

#include "fuzz/require.h"

namespace {

// True for what a literal part of a command is made of; all else has to stand in quotes, "'" as "'\''".
bool isPlain(char c) {
  constexpr std::string_view kMarks = " /._-+=:,*><&|;@%";
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         kMarks.find(c) != std::string_view::npos;
}

std::string withoutQuoted(std::string_view command) {
  std::string literal;
  bool quoted = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    if (command[i] == '\'') {
      quoted = !quoted;
    } else if (!quoted && command.substr(i, 2) == "\\'") {
      ++i;
    } else if (!quoted) {
      literal += command[i];
    }
  }
  require(!quoted, "quotes are closed in a command");
  return literal;
}

}  // namespace

int osShell(const std::string& command) {
  require(command.find('\0') == std::string::npos, "no NUL in a command");
  const std::string literal = withoutQuoted(command);
  require(std::all_of(literal.begin(), literal.end(), isPlain), "what is not literal is quoted: " + command);
  return 0;
}

int osKill(int, int) {
  return 0;
}

void osSleep(int) {}

std::time_t osTime() {
  return 1'372'896'300;
}

void osSyslog(int, const char*) {}
