// The preference page: rings and wallpapers that users bring.
#include <strings.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/phone_messages.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "framework/uploads.h"
#include "framework/user_photo.h"
#include "platform/log.h"
#include "servlet/settings/settings_preference_servlet.h"

namespace {

constexpr char kPage[] = "/servlet?p=settings-preference&q=load";
constexpr char kRingFolder[] = "/data/userdata/sound/";
constexpr char kWallpaperFolder[] = "/data/userdata/wallpaper/";
constexpr std::size_t kRingPathSize = 128;
constexpr std::size_t kWallpaperPathSize = 256;
constexpr std::size_t kRingSize = 128;
constexpr std::size_t kWallpaperSize = 256;

constexpr std::int64_t kLargestRingUpload = 8388608;
constexpr std::int64_t kReserve = 2555904;           // bytes that stay free
constexpr int kWallpaperUploadEnd = 5242880;         // a request of so many bytes is too large
constexpr std::int64_t kLargestWallpaper = 5242280;  // bytes of the picture itself
constexpr int kScreenWidth = 480;
constexpr int kScreenHeight = 272;

// What the lists show.
constexpr std::string_view kRingEndings[] = {".wav"};
constexpr std::string_view kWallpaperEndings[] = {".png", ".jpg", ".bmp"};

bool hasEnding(std::string_view name, std::string_view ending) {
  return name.size() > ending.size() &&
         strncasecmp(name.data() + name.size() - ending.size(), ending.data(), ending.size()) == 0;
}

// True for a name under which the lists would show a file at `path`, and which a value names without doubt.
bool isMediaName(std::string_view name, std::span<const std::string_view> endings, const std::string& path,
                 std::size_t pathSize) {
  return path.size() < pathSize && name.find(':') == std::string_view::npos &&
         std::ranges::any_of(endings, [name](std::string_view ending) { return hasEnding(name, ending); });
}

int refuse(HttpResponse* response, const char* text) {
  SetNoticePage(response, false, "settings-preference", text);
  return 1;
}

int refuseRing(HttpResponse* response, const char* text) {
  log_log(kWebLog, kLogWarning, "SettingsPreferenceServlet::upload error!\n");
  return refuse(response, text);
}

void discard(const std::string& upload) {
  if (!upload.empty()) removeFile(upload.c_str());
}

int backToPage(HttpResponse* response) {
  response->sendRedirect(kPage);
  return 1;
}

// Scales the upload into its place. The text that says why it did not, null when it did.
const char* storeWallpaper(const std::string& upload, const std::string& name) {
  const std::string path = kWallpaperFolder + name;
  if (!isMediaName(name, kWallpaperEndings, path, kWallpaperPathSize)) {
    return "Fail to upload photo ! [Can not compress the picture]";
  }
  const int result = ProcessUserPhoto(upload.c_str(), path.c_str(), kScreenWidth, kScreenHeight, kLargestWallpaper);
  if (result == 1) return nullptr;
  removeFile(path.c_str());
  return result == 2 ? "Fail to upload photo ! [The Resolution of the picture is too large]"
                     : "Fail to upload photo ! [Can not compress the picture]";
}

}  // namespace

int SettingsPreferenceServlet::upload(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  std::string error;
  if (!CheckUploadFile(request, "/data/", kRingFolder, &error, true, kLargestRingUpload, kReserve)) {
    return refuseRing(response, error.c_str());
  }
  const std::string upload = uploadedFile(request, "nameUploadRing", "/data/userdata/sound/ringtone_XXXXXX");
  const std::string name = uploadedFileName(request, "nameUploadRing");
  if (upload.empty() || !isFileName(name)) {
    discard(upload);
    return refuseRing(response, "Error:File isn't exist!");
  }
  const std::string path = kRingFolder + name;
  if (!isMediaName(name, kRingEndings, path, kRingPathSize) || !RenameUploadFile(upload.c_str(), path.c_str())) {
    discard(upload);
    return refuseRing(response, "Error:File upload error!");
  }
  postConfigChanged(ConfigArea::kUserRings);
  return backToPage(response);
}

int SettingsPreferenceServlet::DeleteRing(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* ring = request->getParameter("Ringtype");
  const std::string name = GetRealRingName(ring, nullptr);
  if (!isFileName(name)) {
    log_log(kWebLog, kLogWarning, "get ring name is empty!\n");
    return refuse(response, "Error:Delete ring error!");
  }
  const std::string current = readConfigPlain("Ringtype", kRingSize);
  if (current == name) {
    writeConfigOperate(GLOBAL_FILE, "Ringtype", "Ring1.wav", 0);
  } else if (current == ring) {
    writeConfigOperate(GLOBAL_FILE, "Ringtype", "Resource:Ring1.wav", 0);
  }
  removeFile((kRingFolder + name).c_str());
  postConfigChanged(ConfigArea::kUserRings);
  return backToPage(response);
}

int SettingsPreferenceServlet::UploadWallpaper(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (request->getContentLength() >= kWallpaperUploadEnd) {
    return refuse(response, "The file is too large,please less than 5M!");
  }
  const std::string upload = uploadedFile(request, "nameUploadWallpaper", "/data/userdata/wallpaper/ringtone_XXXXXX");
  const std::string name = uploadedFileName(request, "nameUploadWallpaper");
  const char* error = "Error:File isn't exist!";
  if (!upload.empty() && isFileName(name)) error = storeWallpaper(upload, name);
  discard(upload);
  if (error) return refuse(response, error);
  postConfigChanged(ConfigArea::kWallpaper, 1);
  return backToPage(response);
}

int SettingsPreferenceServlet::DeleteWallpaper(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* wallpaper = request->getParameter("Wallpapertype");
  OrbList<std::string> pieces;
  if (!wallpaper || !String2List(pieces, wallpaper, ':') || pieces.size() < 2 || !isFileName(*++pieces.begin())) {
    log_log(kWebLog, kLogWarning, "Wallpaper name error.\n");
    return 1;
  }
  if (pieces.front() != "Config") {
    log_log(kWebLog, kLogWarning, "False:only can remove config Wallpaper.\n");
    return 1;
  }
  if (readConfigPlain("CurrentWallpaper", kWallpaperSize) == wallpaper) {
    writeConfigOperate(GLOBAL_FILE, "CurrentWallpaper", "pictures (01).png", 0);
  }
  removeFile((kWallpaperFolder + *++pieces.begin()).c_str());
  postConfigChanged(ConfigArea::kWallpaper, 1);
  return backToPage(response);
}
