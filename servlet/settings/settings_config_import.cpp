// The page of configuration archives: what is uploaded.
#include <sys/stat.h>

#include <algorithm>
#include <string>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/phone_messages.h"
#include "framework/unpacked_archive.h"
#include "framework/uploads.h"
#include "platform/log.h"
#include "platform/named_lock.h"
#include "platform/phone_root.h"
#include "servlet/settings/settings_config_accounts.h"
#include "servlet/settings/settings_config_servlet.h"

namespace {

constexpr char kUploadPattern[] = "/tmp/fileupload_XXXXXX";
constexpr char kConfigArchive[] = "/tmp/importfile.tar";
constexpr char kFactoryArchive[] = "/tmp/config.tar";
constexpr char kImportError[] = "Error:Import config error!";
constexpr std::int64_t kReserve = 5119;  // bytes of a partition that stay free

// Where files wait until all of them are there: in the file system that they are for.
constexpr char kConfigStage[] = "/config/.import";
constexpr char kFactoryStage[] = "/data/customfactory.new";

// The file uploaded in a field is at the path `archive` while the object lives.
class Upload {
 public:
  Upload(HttpRequest* request, const char* field, const char* archive) : archive_(archive) {
    const std::string upload = uploadedFile(request, field, kUploadPattern);
    isThere_ = !upload.empty() && RenameUploadFile(upload.c_str(), archive);
    if (isThere_) return;
    if (!upload.empty()) removeFile(upload.c_str());
    log_log(kWebLog, kLogWarning, "rename file failed:%s\n", archive);
  }
  ~Upload() {
    if (isThere_) removeFile(archive_);
  }
  Upload(const Upload&) = delete;
  Upload& operator=(const Upload&) = delete;

  bool isThere() const { return isThere_; }

 private:
  const char* archive_;
  bool isThere_;
};

TreeLimits limitsOf(const char* partition) {
  return {.bytes = GetPartionFreeSize(partition) - kReserve};
}

// True for what may stand in an archive of the configuration: "factory/" or "phone/factory/", and what lies below.
bool belongsToSet(const TreeEntry& entry) {
  const std::string path = entry.path + (entry.isFolder ? "/" : "");
  return path.starts_with("factory/") || path.starts_with("phone/factory/") || path == "phone/";
}

// The folder of the settings in an archive; empty (logged) when it is no archive of a configuration.
std::string setIn(const UnpackedArchive& archive) {
  const bool isSet = archive.isPlain() && std::ranges::all_of(archive.entries(), belongsToSet);
  for (const char* folder : {"factory", "phone/factory"}) {
    if (isSet && archive.hasFolder(folder)) return archive.folder() + "/" + folder;
  }
  log_log(kWebLog, kLogWarning, "SettingsConfigServlet() no archive of a configuration\n");
  return {};
}

// Copies the settings to where they wait. A password file beside the folders is that of the folder "data", too.
bool stageSet(const std::string& set, const WorkFolder& stage) {
  if (set.empty() || !stage.isReady() || !copyPlain(set, stage.path())) return false;
  const std::string passwords = set + "/htpasswd";
  if (GetFileSize(passwords.c_str()) < 0) return true;
  mkdir(phonePath(stage.path() + "/data").c_str(), 0755);
  return copyPlain(passwords, stage.path() + "/data/htpasswd");
}

// The phone hears of it before anything changes.
void announceImport() {
  writeConfigOperate(GLOBAL_FILE, "UpdateStatus", "ImportConfigFile", 0);
  askFor(kAnswerTimeout, kPhoneApplication, kConfigImport);
}

// The configuration service reads its files anew once the stage is gone.
bool putInPlace(const std::string& set) {
  const WorkFolder stage(kConfigStage);
  if (!stageSet(set, stage) || !fitsInPlace(stage.path(), "/config")) return false;
  announceImport();
  ETL_BaseHelper::chMutex lock;
  return lock.OpenMutex(kConfigLock) && lock.Lock(-1) && moveIntoPlace(stage.path(), "/config");
}

// Accounts that the settings leave out keep the passwords they had: these are stored the new way.
bool restore(const std::string& set) {
  const unsigned accounts = GetMaxAccountNum();
  const bool wereEncrypted = arePasswordsEncrypted();
  if (!putInPlace(set)) return false;
  const bool areEncrypted = arePasswordsEncrypted();
  if (areEncrypted != wereEncrypted) EncrpptPassword(GetMaxAccountNum(), accounts, areEncrypted);
  return true;
}

bool storeFactory(const std::string& set) {
  const WorkFolder stage(kFactoryStage);
  return stageSet(set, stage) && replaceFolder(stage.path(), kCustomFactory);
}

int answer(HttpResponse* response, const char* notice) {
  SetNoticePage(response, false, "settings-config", notice);
  return 1;
}

}  // namespace

int SettingsConfigServlet::importConfig(HttpRequest* request, HttpResponse* response) {
  const Upload upload(request, "ConfigFileName", kConfigArchive);
  if (!upload.isThere()) return answer(response, kImportError);
  if (!msgGetThreadByName(kPhoneApplication)) return answer(response, "Failed");
  const UnpackedArchive archive(kConfigArchive, limitsOf("/config/"));
  if (!restore(setIn(archive))) return answer(response, kImportError);
  SetNoticePage(response, true, "settings-config", "Configuration updating ...");
  sysReboot(0);
  return 1;
}

int SettingsConfigServlet::importFactory(HttpRequest* request, HttpResponse* response) {
  const Upload upload(request, "FactoryConfig", kFactoryArchive);
  if (!upload.isThere()) return answer(response, kImportError);
  const UnpackedArchive archive(kFactoryArchive, limitsOf("/data/"));
  if (!storeFactory(setIn(archive))) return answer(response, kImportError);
  return answer(response, "Success:Import your factory config OK!");
}
