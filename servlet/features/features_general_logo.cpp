#include "servlet/features/features_general_logo.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/phone_messages.h"
#include "framework/shell_command.h"
#include "framework/text_utils.h"
#include "framework/uploads.h"
#include "platform/device.h"
#include "platform/log.h"
#include "platform/phone_root.h"

namespace {

constexpr char kFolder[] = "/config/Pics/";
constexpr char kLogo[] = "/config/Pics/logo.dob";
constexpr char kUpload[] = "/tmp/logo.dob";

// What a screen can show, in pixels.
struct LogoLimit {
  int phoneType;
  int width, height;
};
constexpr LogoLimit kLimits[] = {{28, 236, 82}, {19, 132, 64}, {21, 132, 64}, {22, 132, 64},
                                 {26, 132, 64}, {41, 192, 64}, {42, 192, 64}};

const LogoLimit* limitOfPhone() {
  const auto limit = std::ranges::find(kLimits, GetPhoneType(), &LogoLimit::phoneType);
  return limit == std::end(kLimits) ? nullptr : &*limit;
}

// The file begins with the logo's width and its height, a byte each; a shorter one is no logo.
bool fitsScreen(const char* file) {
  std::ifstream stream(phonePath(file), std::ios::binary);
  const int width = stream.get();
  const int height = stream.get();
  if (!stream) return false;
  const LogoLimit* limit = limitOfPhone();
  return !limit || (width <= limit->width && height <= limit->height);
}

bool fitsDisk(const char* file) {
  const std::int64_t free = GetPartionFreeSize(kFolder);
  const std::int64_t size = GetFileSize(file);
  log_log(kWebLog, kLogInfo, "lPartionFreeSize = %lld, lFileSize = %lld\n", static_cast<long long>(free),
          static_cast<long long>(size));
  return size < free;
}

bool replaceLogo() {
  removeFile(kLogo);
  return CommandShell(ShellCommand("cp").word("-f").path(kUpload).path(kFolder)) == 0;
}

}  // namespace

TMPL_varlist* addLogo(TMPL_varlist* list) {
  const bool shown = limitOfPhone();
  list = TMPL_add_var(list, "userLogoHide", shown ? "false" : "true", nullptr);
  if (shown && GetFileSize(kLogo) >= 0) list = TMPL_add_var(list, "existLogo", "true", nullptr);
  return list;
}

const char* takeLogo(HttpRequest* request) {
  if (isCallInProgress()) return "talking";
  CommandShell(ShellCommand("mkdir").word("-p").path(kFolder));
  const std::string upload = uploadedFile(request, "logoFile", "/tmp/logofile_XXXXXX");
  if (upload.empty()) return nullptr;
  if (!RenameUploadFile(upload.c_str(), kUpload)) {
    removeFile(upload.c_str());
    return "fail";
  }
  const bool onScreen = fitsScreen(kUpload);
  const bool fits = fitsDisk(kUpload) && onScreen;
  const bool stored = fits && replaceLogo();
  removeFile(kUpload);
  if (!fits) return "big";
  if (!stored) return "fail";
  writeConfigOperate(GLOBAL_FILE, "LCDLogo", "2", 0);
  postConfigChanged(ConfigArea::kLogo);
  return "success";
}

void deleteLogo() {
  CommandShell(ShellCommand("rm").word("-rf").allIn(kFolder));
  postConfigChanged(ConfigArea::kLogo);
}
