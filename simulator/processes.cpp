#include "simulator/processes.h"

#include <filesystem>
#include <fstream>
#include <string_view>

#include "platform/phone_root.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

struct Process {
  int number;
  int parent;
  std::string_view name;
  std::string_view command;  // words divided by blanks; empty for a thread of the kernel
};

constexpr Process kProcesses[] = {
    {1, 0, "init", "init"},
    {2, 0, "kthreadd", ""},
    {100, 1, "syslogd", "syslogd -O /tmp/log/messages"},
    {110, 1, "lighttpd", "lighttpd -f /phone/www/lighttpd.conf"},
    {111, 110, "fcgiServer.exx", "fcgiServer.exx"},
    {120, 1, "telnetd", "telnetd"},
    {200, 1, "SipApp.sh", "/bin/sh /phone/scripts/SipApp.sh"},
    {201, 1, "ScreenApp.sh", "/bin/sh /phone/scripts/ScreenApp.sh"},
    {202, 1, "VpmApp.sh", "/bin/sh /phone/scripts/VpmApp.sh"},
    {203, 1, "phoneapp.sh", "/bin/sh /phone/scripts/phoneapp.sh"},
    {210, 203, "hostapp.exx", "hostapp.exx"},
    {211, 201, "dispsvc", "dispsvc"},
};

std::string entryOf(int process) {
  return phonePath("/proc/" + std::to_string(process));
}

// The words of a command, each ended by a NUL.
std::string commandLine(std::string_view command) {
  std::string line(command);
  for (char& c : line) {
    if (c == ' ') c = '\0';
  }
  if (!line.empty()) line += '\0';
  return line;
}

// The kernel's files have no content to keep: nothing is synced.
void writeFile(const fs::path& path, std::string_view text) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

}  // namespace

void startProcesses() {
  for (const Process& process : kProcesses) {
    const fs::path entry = entryOf(process.number);
    std::error_code error;
    if (entry.empty() || (!fs::create_directories(entry, error) && error)) continue;
    writeFile(entry / "cmdline", commandLine(process.command));
    const std::string number = std::to_string(process.number);
    writeFile(entry / "stat", number + " (" + std::string(process.name) + ") S " + std::to_string(process.parent) +
                                  " " + number + " " + number + " 0 -1 4194560\n");
  }
}

void endProcess(int process) {
  const std::string entry = process > 0 ? entryOf(process) : std::string();
  std::error_code error;
  if (!entry.empty()) fs::remove_all(entry, error);
}

}  // namespace simulator
