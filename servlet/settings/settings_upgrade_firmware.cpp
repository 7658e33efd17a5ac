// Firmware that comes in with a request, from the preparation to the restart.
#include <algorithm>
#include <climits>
#include <iterator>
#include <string>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/phone_messages.h"
#include "framework/shared_texts.h"
#include "framework/shell_command.h"
#include "platform/boot_environment.h"
#include "platform/log.h"
#include "platform/os_services.h"
#include "servlet/settings/settings_upgrade_processes.h"
#include "servlet/settings/settings_upgrade_servlet.h"
#include "servlet/settings/settings_upgrade_stream.h"

namespace {
constexpr const char* kApplications[] = {"SipApp.sh", "ScreenApp.sh", "VpmApp.sh", "phoneapp.sh", "sipapp.sh"};
constexpr int kApplicationCount = 5;
// What the upgrade itself needs.
constexpr const char* kKept[] = {"sh",      "-sh",       "lighttpd", "fcgiServer.exx", "syslogd",
                                 "openvpn", "dot1x.exe", "flasher",  "telnetd",        "busybox"};
constexpr int kKeptCount = 10;
static_assert(std::size(kApplications) == kApplicationCount && std::size(kKept) == kKeptCount);

constexpr int kMaxLeaveSeconds = 3600;
constexpr int kSecond = 1000;  // milliseconds

void leaveAccounts() {
  const int seconds = std::min(readConfigNumber("SipUnregisterOnReboot"), kMaxLeaveSeconds);
  if (seconds <= 0) return;
  msgBroadpostThreadMsg(kLeaveAccounts, 0, 0);
  osSleep(seconds * kSecond);
}

void endApplications() {
  update_kill(kApplications, kApplicationCount, kKillListed);
  update_kill(kKept, kKeptCount, kKeepListed);
  update_kill(kKept, kKeptCount, kKeepListed);
}

bool setNeedSync(const char* value) {
  if (userenv_set("NeedSync", value)) return true;
  log_log(kWebLog, kLogError, "Fail to set user env 'NeedSync' to value '%s' !\n", value);
  return false;
}

// Reads the form up to the image's first byte.
bool readPartHead(HttpRequest* request, const std::string& boundary) {
  if (matchStreamData(request, ("--" + boundary + "\r\n").c_str())) {
    log_log(kWebLog, kLogInfo, "Post head matched!!!!\n");
  }
  std::string head;
  if (!matchStreamData(request, "\r\n", &head)) {
    log_log(kWebLog, kLogWarning, "szFormHeader is error\n");
    return false;
  }
  log_log(kWebLog, kLogInfo, "Form Header(%s)!!!!\n", head.c_str());
  head.clear();
  if (!matchStreamData(request, "\r\n\r\n", &head)) {
    log_log(kWebLog, kLogWarning, "\r\n\r\n is error\n");
    return false;
  }
  log_log(kWebLog, kLogInfo, "Block Header(%s)!!!!\n", head.c_str());
  return true;
}

// The phone comes back with the firmware that it has, and with the logs of what went wrong.
void backupUpgradeFail() {
  CommandShell(ShellCommand("rm").path("/config/data/log/").word("-r"));
  CommandShell(ShellCommand("cp").path("/tmp/log").path("/config/data/").word("-r"));
  osSleep(3 * kSecond);
  CommandShell(ShellCommand("echo").word("1").into("/proc/keypad/watchdog"));
  osSleep(10 * kSecond);
  CommandShell(ShellCommand("reboot"));
}
}  // namespace

int SettingsUpgradeServlet::beforeUpgrade(HttpRequest*, HttpResponse*) {
  isPrepared_ = true;
  sendMessage(kPhoneApplication, kUpgradeAhead);
  leaveAccounts();
  osSleep(5 * kSecond);
  if (sendMessage(kUpgradeManager, kUpgradeBegins) == 1) {
    log_log(kWebLog, kLogError, "Firmware Upgrading, can't launch once more !\n");
    return 1;
  }
  writeShareText("romTranStat", "preparing", 32);
  writeShareText("romTranInfo", "", 260);
  writeShareText("romRecvSize", "0", 12);
  msgBroadpostThreadMsg(kUpgradePrepared, 0, 0);
  log_log(kWebLog, kLogInfo, "write ShareText.\n");
  endApplications();
  return 1;
}

int SettingsUpgradeServlet::upgrade(HttpRequest* request, HttpResponse*) {
  const bool isDone = receiveFirmware(request);
  if (!isDone) backupUpgradeFail();
  return isDone ? 1 : 0;
}

bool SettingsUpgradeServlet::receiveFirmware(HttpRequest* request) {
  const char* type = request->getContentType();
  const std::string_view text = type ? type : "";
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) {
    log_log(kWebLog, kLogWarning, "lpszBoundText is null\n");
    return false;
  }
  return readPartHead(request, std::string(text.substr(equals + 1))) && install(request);
}

bool SettingsUpgradeServlet::install(HttpRequest* request) {
  CommandShell(ShellCommand("echo").word("2").into("/tmp/upgade"));
  log_log(kWebLog, kLogInfo, "Set userenv [NeedSync] to [1] ... \n");
  if (!setNeedSync("1")) return false;
  upload_ = request;
  const int result = upui_Upgrade(this, 1);
  upload_ = nullptr;
  if (result != 0) {
    log_log(kWebLog, kLogError, "Fail to upgrade!\n");
    setNeedSync("0");
    return false;
  }
  log_log(kWebLog, kLogInfo, "upui_Upgrade result = %d\n", result);
  return true;
}

int SettingsUpgradeServlet::OpenStream() {
  log_log(kWebLog, kLogInfo, "cgiServer not need open stream !\n");
  return 1;
}

int SettingsUpgradeServlet::ReadStream(char* buffer, int length) {
  return ReadStream(buffer, 1, length);
}

// All that was asked for, unless the body ends before.
int SettingsUpgradeServlet::ReadStream(char* buffer, int size, int count) {
  if (!upload_ || !buffer || size < 1 || count < 1 || count > INT_MAX / size) return 0;
  const int wanted = size * count;
  int filled = 0;
  while (filled < wanted) {
    const int read = upload_->read(buffer + filled, wanted - filled);
    if (read <= 0) break;
    filled += read;
  }
  return filled / size;
}
