#include "platform/os_services.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/phone.h"
#include "simulator/processes.h"

using simulator::phone;

namespace {

// How the commands of rootfs/bin tell the phone to reboot.
constexpr char kRebootFlag[] = "/tmp/.reboot";

void journal(const char* call, std::string text) {
  const std::lock_guard lock(phone().mutex);
  phone().systemCall(call, std::move(text));
}

// Where a command starts: in the root, without the descriptors of this process, its signals as usual. What it prints
// goes to standard error: standard output is the host's.
class SpawnSettings {
 public:
  explicit SpawnSettings(const std::string& folder) {
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
};

int run(const std::string& command, const std::string& root) {
  const SpawnSettings settings(root);
  std::string shell = "sh", option = "-c", text = command;
  char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
  std::string path = "PATH=" + root + "/bin:/usr/bin:/bin", home = "HOME=" + root, rootName = "PHONE_ROOT=" + root;
  std::string locale = "LC_ALL=C";
  char* const environment[] = {path.data(), home.data(), rootName.data(), locale.data(), nullptr};
  pid_t child;
  if (::posix_spawn(&child, "/bin/sh", &settings.actions, &settings.attributes, arguments, environment) != 0) return -1;
  int status;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// What a command may have changed: the configuration's files, and whether the phone goes on running.
void noticeChanges() {
  const std::lock_guard lock(phone().mutex);
  phone().config.reloadIfChanged();
  if (::unlink(phonePath(kRebootFlag).c_str()) == 0) phone().reboot("shell");
}

}  // namespace

int osShell(const std::string& command) {
  journal("shell", command);
  if (phone().root.empty() || command.find('\0') != std::string::npos) return -1;
  const int status = run(command, phone().root);
  if (status == -1) log_log(kWebLog, kLogWarning, "osShell() failed: %s\n", command.c_str());
  noticeChanges();
  return status;
}

int osKill(int process, int signal) {
  journal("kill", "process " + std::to_string(process) + ", signal " + std::to_string(signal));
  simulator::endProcess(process);
  return 0;
}

void osSleep(int milliseconds) {
  journal("sleep", std::to_string(milliseconds) + " ms");
}

void osSyslog(int priority, const char* text) {
  if (text != nullptr) journal("syslog", std::to_string(priority) + " " + text);
}

std::time_t osTime() {
  const std::lock_guard lock(phone().mutex);
  return phone().state.time();
}
