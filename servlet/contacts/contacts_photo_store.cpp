#include "servlet/contacts/contacts_photo_store.h"

#include <strings.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "framework/file_utils.h"
#include "framework/phone_messages.h"
#include "framework/user_photo.h"
#include "platform/phone_root.h"

namespace {

constexpr char kFolder[] = "/data/userdata/contact-image/";
constexpr int kWidth = 126;
constexpr int kHeight = 126;
constexpr std::int64_t kByteLimit = 5000000;
constexpr std::string_view kEndings[] = {".jpg", ".jpeg", ".png", ".bmp"};

std::string withoutBlanks(std::string name) {
  std::erase(name, ' ');
  return name;
}

void renameFile(const std::string& from, const std::string& to) {
  std::rename(phonePath(from).c_str(), phonePath(to).c_str());
}

// While a picture is scaled under a name without blanks, the photo of that name waits beside it.
class NamesakeKeeper {
 public:
  explicit NamesakeKeeper(std::string photo) : photo_(std::move(photo)), aside_(photo_ + ".kept") {
    if (!photo_.empty()) renameFile(photo_, aside_);
  }
  ~NamesakeKeeper() {
    if (!photo_.empty()) renameFile(aside_, photo_);
  }
  NamesakeKeeper(const NamesakeKeeper&) = delete;
  NamesakeKeeper& operator=(const NamesakeKeeper&) = delete;

 private:
  std::string photo_, aside_;
};

}  // namespace

bool isPhotoName(std::string_view name) {
  const auto isEnding = [name](std::string_view ending) {
    return name.size() > ending.size() &&
           strncasecmp(name.data() + name.size() - ending.size(), ending.data(), ending.size()) == 0;
  };
  return isFileName(name) && isFileName(withoutBlanks(std::string(name))) && name.find(':') == std::string_view::npos &&
         std::ranges::any_of(kEndings, isEnding);
}

std::string userPhotoPath(std::string_view name) {
  return kFolder + std::string(name);
}

std::string photoSource(const std::string& name) {
  return "/tmp/" + withoutBlanks(name);
}

int storePhoto(const std::string& name) {
  const std::string stored = userPhotoPath(withoutBlanks(name)), wanted = userPhotoPath(name);
  const bool isRenamed = stored != wanted;
  const NamesakeKeeper namesake(isRenamed ? stored : "");
  const int result = ProcessUserPhoto(photoSource(name).c_str(), stored.c_str(), kWidth, kHeight, kByteLimit);
  if (isRenamed && result == 1) renameFile(stored, wanted);
  if (isRenamed && result != 1) removeFile(stored.c_str());
  return result;
}

void removeFailedPhoto(const std::string& name) {
  if (withoutBlanks(name) == name) removeFile(userPhotoPath(name).c_str());
}

void announcePhoto(const std::string& name) {
  const std::string path = userPhotoPath(name);
  broadcastConfigChanged(ConfigArea::kContactPhotos, 0, path.c_str(), static_cast<int>(path.size()) + 1);
}
