#include "framework/shell_command.h"

#include "platform/log.h"
#include "platform/os_services.h"
#include "platform/phone_root.h"

namespace {

// One word, quoted so that the shell takes it as it is.
std::string shellQuote(std::string_view word) {
  std::string quoted = "'";
  for (const char c : word) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted += '\'';
}

}  // namespace

ShellCommand::ShellCommand(std::string_view program) {
  text_ = program.starts_with('/') ? mapped(program) : std::string(program);
}

ShellCommand& ShellCommand::word(std::string_view text) {
  return add(shellQuote(text));
}

ShellCommand& ShellCommand::path(std::string_view path) {
  return add(mapped(path));
}

ShellCommand& ShellCommand::allIn(std::string_view folder) {
  return add(mapped(folder) + (folder.ends_with('/') ? "*" : "/*"));
}

ShellCommand& ShellCommand::into(std::string_view file) {
  return add("> " + mapped(file));
}

ShellCommand& ShellCommand::in(std::string_view folder) {
  folder_ = mapped(folder);
  return *this;
}

ShellCommand& ShellCommand::add(std::string_view quoted) {
  text_.append(" ").append(quoted);
  return *this;
}

std::string ShellCommand::mapped(std::string_view path) {
  const std::string real = phonePath(path);
  if (real.empty() && refused_.empty()) refused_ = path.empty() ? "(empty)" : path;
  return shellQuote(real);
}

int CommandShell(const ShellCommand& command) {
  if (!command.refused_.empty()) {
    log_log(kWebLog, kLogWarning, "CommandShell() path refused: %s\n", command.refused_.c_str());
    return -1;
  }
  return osShell(command.folder_.empty() ? command.text_ : "cd " + command.folder_ + " && " + command.text_);
}
