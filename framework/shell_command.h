// Programs that pages run: a command is a value, never a text that a page glues together.
#pragma once

#include <string>
#include <string_view>

// A program with its words, built one by one: ShellCommand("cp").word("-f").path("/tmp/a").path("/config/"). Each word
// reaches the program as it is, whatever it holds. All paths are paths of the phone.
class ShellCommand {
 public:
  // A program of the phone's PATH, or with "/" in front one by its path.
  explicit ShellCommand(std::string_view program);

  ShellCommand& word(std::string_view text);
  ShellCommand& path(std::string_view path);
  // All that lies in the folder but dot files; the pattern itself when there is nothing.
  ShellCommand& allIn(std::string_view folder);
  // Writes what the program prints to that file.
  ShellCommand& into(std::string_view file);
  // Runs the program in that folder.
  ShellCommand& in(std::string_view folder);

 private:
  friend int CommandShell(const ShellCommand& command);

  ShellCommand& add(std::string_view quoted);
  std::string mapped(std::string_view path);

  std::string folder_, text_;
  std::string refused_;  // the first path that does not lie below the phone's root
};

// Runs the command and waits for it: its exit status; -1 when it could not run or was ended by a signal. A command of
// which one path is refused does not run at all (logged, -1).
int CommandShell(const ShellCommand& command);
