#include "framework/accounts.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/phone_messages.h"
#include "framework/text_utils.h"
#include "platform/device.h"
#include "platform/log.h"
#include "platform/os_services.h"
#include "platform/phone_root.h"
#include "platform/registry.h"
#include "platform/shared_text.h"

namespace {

constexpr std::size_t kPatternEnd = 6;  // characters that make an upload's path unique
constexpr int kDefaultRebootDelay = 2;
constexpr int kLastSipAccount = 5;
constexpr long kConfigReserve = 5119;
constexpr char kContactMark[] = "/tmp/contact_update_mark.ini";

bool folderExists(const char* path) {
  struct stat status {};
  return stat(phonePath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The server of one section of an account's SIP file; false when it names none.
bool serverOf(const std::string& file, const char* section, std::string& host, std::string& port) {
  const auto ini = registryOpen(file.c_str(), section, RegistryFile::kMayBeMissing);
  if (!ini || ini->registryGetString("server", "").empty()) return false;
  host = ini->registryGetString("server", "");
  port = ini->registryGetString("port", "5060");
  return true;
}

}  // namespace

void SetNoticePage(HttpResponse* response, bool repeat, const char* page, const char* message) {
  const std::string label = std::string(repeat ? "setInterval$" : "setTimeout$") + page + "$" + message;
  response->renderTemplate("/phone/www/WEB-INFO/template/notice.htm",
                           TMPL_add_var(nullptr, "noticeLabel", label.c_str(), nullptr));
}

bool wantsReboot(HttpRequest* request) {
  const char* reboot = request->getParameter("reboot");
  return reboot && std::string_view(reboot) == "true";
}

bool IsInTalking(HttpResponse* response) {
  if (!isCallInProgress()) return false;
  SetNoticePage(response, false, "notice", "Talking, Please wait...");
  return true;
}

bool CheckUploadFile(HttpRequest* request, const char* partition, const char* folder, std::string* error, bool replace,
                     long maximum, long reserve) {
  if (!request || !partition || !folder || !error) return false;
  if (!folderExists(folder)) {
    *error = "Error:The destination folder does not exist!";
    return false;
  }
  const long length = request->getContentLength();
  const long total = replace ? length : length + 1 + GetDirSize(folder);
  const long free = GetPartionFreeSize(partition);
  log_log(kWebLog, kLogInfo, "ContentLength = %d, TotleSize = %d, partion_free_size = %d, iLeastSize=%d\n",
          static_cast<int>(length), static_cast<int>(total), static_cast<int>(free), static_cast<int>(reserve));
  if (total <= maximum && length <= free - reserve) return true;
  *error = "No space left!";
  return false;
}

bool CheckConfigFreeSize(HttpRequest* request, HttpResponse* response, const char* existing, bool isFolder) {
  if (!request || !response || !existing) return false;
  const long replaced = isFolder ? GetDirSize(existing) : GetFileSize(existing);
  if (request->getContentLength() < GetPartionFreeSize("/config/") - kConfigReserve + replaced) return true;
  SetNoticePage(response, false, "notice", "Error:No space left!");
  return false;
}

std::string uploadedFile(HttpRequest* request, const char* field, const char* pattern) {
  request->setUploadFileTemplate(pattern);
  const char** values = request->getParameterValues(field);
  const std::string_view path = values && values[0] ? values[0] : "";
  const std::string_view front(pattern, std::strlen(pattern) - kPatternEnd);
  const bool stored =
      path.size() == front.size() + kPatternEnd && path.starts_with(front) && isPlainName(path.substr(front.size()));
  if (!stored && !path.empty()) log_log(kWebLog, kLogWarning, "uploadedFile() %s is no file\n", field);
  return stored ? std::string(path) : "";
}

bool RenameUploadFile(const char* upload, const char* target) {
  if (!upload || !target) return false;
  const std::string to = phonePath(target);
  unlink(to.c_str());
  return std::rename(phonePath(upload).c_str(), to.c_str()) == 0;
}

bool CommandShell(const char* command) {
  if (!command) return false;
  osShell(command);
  return true;
}

void sysReboot(int delay) {
  postMessage(kPhoneApplication, kReboot, delay < 0 ? kDefaultRebootDelay : delay);
}

int GetAccountMax() {
  const bool single = readConfigPlain("AccountNum", 4) == "1";
  switch (GetPhoneType()) {
    case 28:
      return single ? 16 : 6;
    case 26:
      return single ? 13 : 3;
    case 46:
      return 6;
    case 20:
    case 21:
      return 2;
    case 19:
      return 1;
    default:  // 22 too
      return 3;
  }
}

TMPL_loop* GetAccountLoop(const char* selected, bool withAuto) {
  const std::string_view choice = selected ? selected : "";
  TMPL_loop* loop = nullptr;
  const auto add = [&](const std::string& index, const std::string& name) {
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "index", index.c_str(), "selected", choice == index ? "1" : "0",
                                               "accountno", name.c_str(), nullptr));
  };
  if (withAuto) add("-1", "Auto");
  for (int i = 0; i < GetAccountMax(); ++i) add(std::to_string(i), "Account" + std::to_string(i + 1));
  return loop;
}

void MapAccountStatusToString(std::string* text, int status) {
  constexpr const char* kTexts[] = {"Disabled",     "Registering", "Registered", "Register Failed",
                                    "Unregistered", "Registered",  "Inexistence"};
  *text = status >= 0 && status < static_cast<int>(std::size(kTexts)) ? kTexts[status] : "Unknown";
}

std::string accountFile(int account) {
  return "/config/user/voip/sipAccount" + std::to_string(account) + ".cfg";
}

bool GetSipServerHost(std::string& host, std::string& port, int account) {
  if (account < 0 || account > kLastSipAccount) return false;
  const std::string file = accountFile(account);
  if (serverOf(file, "sipserver1", host, port) || serverOf(file, "sipserver2", host, port)) return true;
  const auto ini = registryOpen(file.c_str(), "account", RegistryFile::kMayBeMissing);
  host = ini ? ini->registryGetString("SIPServerHost", "") : "";
  if (host.empty()) host = "0.0.0.0";
  port = ini ? ini->registryGetString("SIPServerPort", "5060") : "5060";
  return true;
}

int GetAccountID(const char* uri) {
  if (!uri) return -1;
  for (int account = 0; account < GetAccountMax(); ++account) {
    if (queryRegistrationState(account) != kRegistered) continue;
    std::string host, port;
    GetSipServerHost(host, port, account);
    if (readAccountConfigPlain("AccountUserName", account, kConfigValueSize) + "@" + host == uri) return account;
  }
  return -1;
}

void writeShareText(const char* name, const char* text, int size) {
  if (!name || !text || size < 1) return;
  sharedTextLock();
  std::size_t capacity = 0;
  char* place = sharedTextGet(name, static_cast<std::size_t>(size), &capacity);
  if (place && capacity) {
    const std::size_t length = std::min({std::strlen(text), static_cast<std::size_t>(size), capacity - 1});
    std::memcpy(place, text, length);
    place[length] = '\0';
  }
  sharedTextUnlock();
}

std::string readShareText(const char* name) {
  if (!name) return {};
  sharedTextLock();
  std::size_t capacity = 0;
  const char* place = sharedTextGet(name, 0, &capacity);
  std::string text(place ? std::string_view(place, strnlen(place, capacity)) : std::string_view());
  sharedTextUnlock();
  return text;
}

bool IsContactNeedUpdate(int& type) {
  const auto mark = registryOpen(kContactMark, "update", RegistryFile::kMustExist);
  if (!mark) return false;
  type = mark->registryGetInt("type", 0);
  return type > 0;
}

void SetDefalutUpdate() {
  const auto mark = registryOpen(kContactMark, "update", RegistryFile::kMayBeMissing);
  if (!mark) return;
  mark->registrySetInt("type", 0);
  mark->registryFlush();
}
