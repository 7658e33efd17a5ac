// The page of configuration archives: what is downloaded.
#include <algorithm>
#include <fstream>
#include <list>
#include <string>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/plain_tree.h"
#include "framework/shell_command.h"
#include "platform/log.h"
#include "platform/named_lock.h"
#include "platform/phone_root.h"
#include "platform/secrets.h"
#include "servlet/settings/settings_config_servlet.h"

namespace {

constexpr char kWorkFolder[] = "/tmp/export";
constexpr int kBlockSize = 1024;
constexpr std::size_t kMacSize = 63;

void announceFile(HttpResponse* response, const char* disposition) {
  response->setContentType("text/xml");
  response->setHeader("Content-disposition", disposition);
  response->setHeader("Accept-Ranges", "bytes");
  response->setHeader("Expires", "-1");
}

void sendFile(HttpResponse* response, const std::string& path) {
  std::ifstream file(phonePath(path), std::ios::binary);
  if (!file) {
    log_log(kWebLog, kLogWarning, "SettingsConfigServlet::exportConfig() End. failed to open file\n");
    return;
  }
  char block[kBlockSize];
  while (file.read(block, kBlockSize), file.gcount() > 0) {
    response->write(block, 1, static_cast<int>(file.gcount()));
  }
}

// Everything of "/config" that the factory settings have, too, but for what belongs to this one phone.
bool copyConfig(const std::string& folder) {
  ETL_BaseHelper::chMutex lock;
  if (!lock.OpenMutex(kConfigLock) || !lock.Lock(-1)) return false;
  std::list<std::string> names;
  ReadFiles::FindFiles(names, "/phone/factory/", "", false, true);
  const bool done = CommandShell(ShellCommand("mkdir").path(folder)) == 0 &&
                    std::ranges::all_of(names, [&folder](const std::string& name) {
                      return copyPlain("/config/" + name, folder + name);
                    });
  CommandShell(ShellCommand("rm").word("-fr").path(folder + "certs").path(folder + "system/autop_code.cfg"));
  return done;
}

bool packConfig(const std::string& folder) {
  const std::string set = folder + "/factory/";
  if (!copyConfig(set)) return false;
  if (readConfigPlain("ExportCFGClearPWD", kConfigValueSize) == "1" &&
      configParser_CleanPassword(set.c_str(), "/config/") != 0) {
    log_log(kWebLog, kLogWarning, "SettingsConfigServlet::exportConfig() passwords cannot be left out\n");
    return false;
  }
  return CommandShell(ShellCommand("tar").in(folder).word("-cf").path(folder + "/config.bin").word("factory/")) == 0;
}

// The phone's hardware address, as the name of its log; only hexadecimal digits and colons are taken.
std::string logName() {
  std::string mac;
  readFile("/tmp/mac.tmp", mac);
  mac.resize(std::min(mac.size(), kMacSize));
  mac.resize(std::min(mac.size(), mac.find_last_not_of(" \r\n") + 1));
  const bool isMac = !mac.empty() && mac.find_first_not_of("0123456789ABCDEFabcdef:") == std::string::npos;
  return (isMac ? mac : "000000000000") + ".log";
}

}  // namespace

int SettingsConfigServlet::exportConfig(HttpRequest*, HttpResponse* response) {
  announceFile(response, "attachment; filename=config.bin");
  const WorkFolder work(kWorkFolder);
  const bool done = work.isReady() && packConfig(work.path());
  sendFile(response, done ? work.path() + "/config.bin" : "");
  return 1;
}

int SettingsConfigServlet::exportSyslog(HttpRequest*, HttpResponse* response) {
  announceFile(response, "attachment; filename=syslog.tar");
  const WorkFolder work(kWorkFolder);
  const std::string archive = work.path() + "/syslog.tar";
  if (work.isReady()) {
    CommandShell(ShellCommand("sh").word("-c").word("ifconfig >>\"$0\"; ps >>\"$0\"").path("/tmp/log/" + logName()));
    CommandShell(ShellCommand("tar").in("/tmp/").word("-cf").path(archive).word("log"));
  }
  sendFile(response, archive);
  return 1;
}
