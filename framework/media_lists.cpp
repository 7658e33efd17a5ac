#include "framework/media_lists.h"

#include <initializer_list>
#include <string_view>

#include "framework/file_utils.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "platform/log.h"

namespace {

constexpr char kSystemRings[] = "/phone/resource/sysdata/sound/";
constexpr char kUserRings[] = "/data/userdata/sound/";
constexpr char kSystemWallpapers[] = "/phone/resource/sysdata/wallpaper/";
constexpr char kUserWallpapers[] = "/data/userdata/wallpaper/";
constexpr char kSystemPhotos[] = "/phone/resource/sysdata/contact-image/";
constexpr char kUserPhotos[] = "/data/userdata/contact-image/";
constexpr std::size_t kValueSize = 512;

std::list<std::string> filesIn(const char* folder, std::initializer_list<const char*> suffixes) {
  std::list<std::string> names;
  for (const char* suffix : suffixes) ReadFiles::FindFiles(names, folder, suffix, false, true);
  return names;
}

std::list<std::string> sortedFilesIn(const char* folder, std::initializer_list<const char*> suffixes) {
  std::list<std::string> names = filesIn(folder, suffixes);
  sortStringListByName(&names, true);
  return names;
}

// The file name of a media value.
std::string fileNameOf(std::string value) {
  cutText(value, kValueSize);
  const std::size_t slash = value.rfind('/');
  const std::size_t start = slash != std::string::npos ? slash : value.rfind(':');
  return start == std::string::npos ? value : value.substr(start + 1);
}

const char* firstEntry(RING_OPERATOR_TYPE kind) {
  if (kind == RING_ACCOUNT) return "Common";
  return kind == RING_CONTACT ? "Auto" : "";
}

// Position 0, the built-in ring, is not on the list.
std::string ringAt(int position, std::list<std::string> system, std::list<std::string> user) {
  system.splice(system.end(), user);
  return position >= 1 ? GetStringListByIndex(system, position - 1) : "";
}

}  // namespace

TMPL_loop* GetRingToneLoop(const char* selected, RING_OPERATOR_TYPE kind, bool withSource) {
  const std::list<std::string> system = sortedFilesIn(kSystemRings, {".wav"});
  const std::list<std::string> user = sortedFilesIn(kUserRings, {".wav"});
  std::string name = selected ? fileNameOf(selected) : "";
  if (kind == RING_ALERT_INFO && selected) name = ringAt(parseInt(selected).value_or(0), system, user);
  TMPL_loop* loop = nullptr;
  AddRingToneLoop(&loop, {firstEntry(kind)}, name.c_str(), withSource ? "Default" : nullptr);
  AddRingToneLoop(&loop, system, name.c_str(), withSource ? "Resource" : nullptr);
  AddRingToneLoop(&loop, user, name.c_str(), withSource ? "Config" : nullptr);
  return loop;
}

TMPL_loop* GetWallpaperLoop(const char* selected) {
  if (!selected) {
    log_log(kWebLog, kLogWarning, "GetWallpaperLoop para error\n");
    return nullptr;
  }
  TMPL_loop* loop = nullptr;
  AddPrefixLoop(&loop, {"Default.jpg"}, "Default", selected);
  AddPrefixLoop(&loop, sortedFilesIn(kSystemWallpapers, {".png", ".jpg"}), "Resource", selected);
  AddPrefixLoop(&loop, sortedFilesIn(kUserWallpapers, {".png", ".jpg", ".bmp"}), "Config", selected);
  return loop;
}

TMPL_loop* GetPhotoLoop() {
  TMPL_loop* loop = nullptr;
  AddPrefixLoop(&loop, {"default_contact_image.png"}, "Default", nullptr);
  AddPrefixLoop(&loop, filesIn(kSystemPhotos, {".png"}), "Resource", nullptr);
  AddPrefixLoop(&loop, filesIn(kUserPhotos, {".jpg", ".png", ".bmp"}), "Config", nullptr);
  return loop;
}

void AddRingToneLoop(TMPL_loop** loop, const std::list<std::string>& names, const char* selected, const char* source) {
  for (const std::string& name : names) {
    if (name.empty()) continue;
    const bool bare = !source || name == "Common" || name == "Auto";
    std::string value = bare ? name : std::string(source) + ":" + name;
    cutText(value, kValueSize);
    *loop = TMPL_add_varlist(*loop, TMPL_add_var(nullptr, "selValue", value.c_str(), "selName", name.c_str(),
                                                 "selected", selected && name == selected ? "selected" : "", nullptr));
  }
}

std::list<std::string> ringNumbering() {
  std::list<std::string> rings{"default-ring.wav"};
  rings.splice(rings.end(), sortedFilesIn(kSystemRings, {".wav"}));
  rings.splice(rings.end(), sortedFilesIn(kUserRings, {".wav"}));
  return rings;
}
