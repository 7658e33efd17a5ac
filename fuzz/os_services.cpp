// The operating system of a fuzzed phone: nothing is done. Commands are checked instead, and run where a program says
// so.
#include "platform/os_services.h"

#include <sys/wait.h>

#include <cstdlib>

#include "fuzz/phone.h"

namespace {

// What a literal part of a command is made of; all else has to stand in quotes, "'" as "'\''".
constexpr std::string_view kPlain = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz /._-+=:,*><&|;@%";

// What stands outside quotes.
std::string literalOf(std::string_view command) {
  std::string literal;
  for (bool quoted = false; !command.empty(); command.remove_prefix(1)) {
    if (!quoted && command.starts_with("\\'")) {
      command.remove_prefix(1);
    } else if (command.front() == '\'') {
      quoted = !quoted;
      require(!quoted || command.find('\'', 1) != std::string_view::npos, "quotes are closed in a command");
    } else if (!quoted) {
      literal += command.front();
    }
  }
  return literal;
}

}  // namespace

int osShell(const std::string& command) {
  require(command.find('\0') == std::string::npos, "no NUL in a command");
  require(literalOf(command).find_first_not_of(kPlain) == std::string::npos,
          "what is not literal is quoted: " + command);
  if (!fuzzedCommandsRun) return 0;
  const int status = std::system(("exec 2>/dev/null; " + command).c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int osKill(int, int) {
  return 0;
}

void osSleep(int) {}

std::time_t osTime() {
  return 1'372'896'300;
}

void osSyslog(int, const char*) {}
