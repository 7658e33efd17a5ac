#include "servlet/network/network_adv_uploads.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/plain_tree.h"
#include "framework/shell_command.h"
#include "framework/unpacked_archive.h"
#include "framework/uploads.h"
#include "platform/log.h"

namespace {

constexpr char kDot1xFolder[] = "/config/dot1x/";
constexpr char kVpnFolder[] = "/config/openvpn/";
constexpr char kVpnArchive[] = "/config/openvpn/importfile.tar";

struct Dot1xFile {
  std::string_view type;
  const char* path;
  const char* nameKey;
};
constexpr Dot1xFile kDot1xFiles[] = {
    {"ca", "/config/dot1x/ca.pem", "Network802_1CA_FileName"},
    {"client", "/config/dot1x/client.pem", "Network802_1Device_FileName"},
};

const Dot1xFile* dot1xFile(const char* type) {
  const auto file = std::ranges::find(kDot1xFiles, std::string_view(type ? type : ""), &Dot1xFile::type);
  return file != std::end(kDot1xFiles) ? &*file : nullptr;
}

void makeFolder(const char* folder) {
  CommandShell(ShellCommand("mkdir").word("-p").path(folder));
}

void clearVpnFolder() {
  CommandShell(ShellCommand("rm").word("-rf").path(kVpnFolder));
  makeFolder(kVpnFolder);
}

bool unpackVpnArchive() {
  const UnpackedArchive archive(kVpnArchive, {.bytes = GetPartionFreeSize(kVpnFolder)});
  removeFile(kVpnArchive);
  return archive.isPlain() && copyPlain(archive.folder(), kVpnFolder);
}

}  // namespace

bool takeDot1xFile(HttpRequest* request) {
  makeFolder(kDot1xFolder);
  const std::string upload = uploadedFile(request, "pemFile", "/config/dot1x/fileupload_XXXXXX");
  if (upload.empty()) return false;
  const Dot1xFile* file = dot1xFile(request->getParameter("type"));
  if (!file || !RenameUploadFile(upload.c_str(), file->path)) {
    removeFile(upload.c_str());
    return false;
  }
  writeConfigOperate(GLOBAL_FILE, file->nameKey, uploadedFileName(request, "pemFile").c_str(), 0);
  return true;
}

bool takeVpnArchive(HttpRequest* request) {
  clearVpnFolder();
  const std::string upload = uploadedFile(request, "pemFile", "/config/openvpn/fileupload_XXXXXX");
  if (upload.empty() || !RenameUploadFile(upload.c_str(), kVpnArchive)) {
    log_log(kWebLog, kLogWarning, "rename file failed:%s\n", kVpnArchive);
    removeFile(upload.c_str());
    return false;
  }
  const bool stored = unpackVpnArchive();
  if (!stored) clearVpnFolder();
  return stored;
}
