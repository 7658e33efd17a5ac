#include "servlet/settings/settings_upgrade_processes.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/text_utils.h"
#include "platform/os_services.h"
#include "platform/phone_root.h"

namespace {
constexpr std::size_t kReadLimit = 256;
constexpr int kInit = 1;

// The numbers of the processes that may be ended at all.
std::vector<int> candidates() {
  std::vector<int> numbers;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(phonePath("/proc").c_str()), closedir);
  while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
    const std::optional<int> number = parseInt(entry->d_name);
    if (number && *number > kInit && *number != getpid() && *number != getppid()) numbers.push_back(*number);
  }
  std::ranges::sort(numbers);
  return numbers;
}

// The first bytes of a file of the process, empty when it cannot be opened. Opening waits for nobody.
std::string readEntry(int process, const char* file) {
  const std::string path = phonePath("/proc/" + std::to_string(process) + "/" + file);
  const int opened = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (opened < 0) return {};
  char bytes[kReadLimit];
  const ssize_t count = read(opened, bytes, sizeof bytes);
  close(opened);
  return {bytes, count > 0 ? static_cast<std::size_t>(count) : 0};
}

// Nothing for a thread of the kernel, and for a process that is gone.
std::optional<std::string> nameOf(int process) {
  if (readEntry(process, "cmdline").empty()) return std::nullopt;
  const std::string stat = readEntry(process, "stat");
  const std::size_t open = stat.find('(');
  const std::size_t end = open == std::string::npos ? open : stat.find(')', open);
  if (end == std::string::npos) return std::nullopt;
  return stat.substr(open + 1, end - open - 1);
}
}  // namespace

void update_kill(const char* const* names, int count, int keep) {
  for (const int process : candidates()) {
    const std::optional<std::string> name = nameOf(process);
    if (!name) continue;
    const bool isListed = std::find(names, names + count, *name) != names + count;
    if (isListed != (keep == kKeepListed)) osKill(process, SIGKILL);
  }
}
