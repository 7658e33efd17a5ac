#include "servlet/contacts/contacts_photo_store.h"

#include <strings.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

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
  const int result = ProcessUserPhoto(photoSource(name).c_str(), stored.c_str(), kWidth, kHeight, kByteLimit);
  if (result == 1 && stored != wanted) std::rename(phonePath(stored).c_str(), phonePath(wanted).c_str());
  return result;
}

void removeFailedPhoto(const std::string& name) {
  removeFile(userPhotoPath(withoutBlanks(name)).c_str());
}

void announcePhoto(const std::string& name) {
  const std::string path = userPhotoPath(name);
  broadcastConfigChanged(ConfigArea::kContactPhotos, 0, path.c_str(), static_cast<int>(path.size()) + 1);
}
