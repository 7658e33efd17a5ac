#include "framework/file_utils.h"

#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include "platform/log.h"
#include "platform/phone_root.h"

namespace {

constexpr std::size_t kPathLimit = 4096;
constexpr long kFlashFileSystem = 0x72b6;
constexpr std::int64_t kFlashReserve = 65536;

struct CloseDirectory {
  void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::ranges::find(names, name) != names.end();
}

bool endsWithIgnoringCase(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() &&
         strncasecmp(text.data() + text.size() - suffix.size(), suffix.data(), suffix.size()) == 0;
}

// `rootLength` is what the phone's root adds to each path. Nothing when a path is too long.
std::optional<std::int64_t> sizeBelow(const std::string& path, std::size_t rootLength) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) {
    log_log(kWebLog, kLogWarning, "filename : %s, error info : %s\n", path.c_str() + rootLength, std::strerror(errno));
    return 0;
  }
  std::int64_t total = status.st_size;
  if (!S_ISDIR(status.st_mode)) return total;
  const Directory directory(opendir(path.c_str()));
  if (!directory) return total;
  while (const dirent* entry = readdir(directory.get())) {
    if (isOneOf(entry->d_name, {".", ".."})) continue;
    const std::string below = path + (path.ends_with('/') ? "" : "/") + entry->d_name;
    if (below.size() - rootLength > kPathLimit) {
      log_log(kWebLog, kLogWarning, "filename length > PATH_MAX\n");
      return std::nullopt;
    }
    const std::optional<std::int64_t> size = sizeBelow(below, rootLength);
    if (!size) return std::nullopt;
    total += *size;
  }
  return total;
}

bool writeAll(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(file, content.data(), content.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// A renamed file is there after a power cut only once its folder is on disk, too.
void syncFolderOf(const std::string& path) {
  const int folder = open(path.substr(0, path.rfind('/')).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  fsync(folder);
  close(folder);
}

}  // namespace

bool ReadFiles::FindFiles(std::list<std::string>& names, const char* directory, const char* suffix, bool withPath,
                          bool keepSuffix) {
  const Directory opened(opendir(phonePath(directory).c_str()));
  if (!opened) return false;
  std::string front;
  if (withPath) front = std::string(directory) + (std::string_view(directory).ends_with('/') ? "" : "/");
  while (const dirent* entry = readdir(opened.get())) {
    std::string_view name = entry->d_name;
    if (isOneOf(name, {".", "..", ".svn"}) || !endsWithIgnoringCase(name, suffix)) continue;
    if (!keepSuffix) name.remove_suffix(std::strlen(suffix));
    names.push_back(front + std::string(name));
  }
  return true;
}

std::int64_t GetFileSize(const char* path) {
  struct stat status {};
  return stat(phonePath(path).c_str(), &status) == 0 ? std::int64_t{status.st_size} : -1;
}

std::int64_t GetDirSize(const char* path) {
  const std::string real = phonePath(path);
  const std::size_t length = std::strlen(path);
  return sizeBelow(real, real.size() > length ? real.size() - length : 0).value_or(0);
}

std::int64_t GetPartionFreeSize(const char* path) {
  struct statfs status {};
  if (statfs(phonePath(path).c_str(), &status) != 0) return 0;
  const auto free = static_cast<std::int64_t>(status.f_bfree) * static_cast<std::int64_t>(status.f_bsize);
  return status.f_type == kFlashFileSystem ? free - kFlashReserve : free;
}

int GetImageTypeByData(std::string_view data) {
  if (data.starts_with("BM")) return 1;
  if (data.starts_with("\xFF\xD8")) return 2;
  if (data.starts_with("\x89PNG\r\n\x1A\n")) return 3;
  return 0;
}

bool replaceFile(const char* path, std::string_view content, mode_t mode) {
  const std::string real = phonePath(path);
  if (real.empty()) return false;
  std::string beside = real + ".XXXXXX";
  const int file = mkstemp(beside.data());
  if (file < 0) return false;
  struct stat old {};
  if (mode == 0) mode = stat(real.c_str(), &old) == 0 ? old.st_mode & 0777 : 0600;
  const bool written = writeAll(file, content) && fchmod(file, mode) == 0 && fsync(file) == 0;
  if (close(file) == 0 && written && rename(beside.c_str(), real.c_str()) == 0) {
    syncFolderOf(real);
    return true;
  }
  unlink(beside.c_str());
  return false;
}

bool isFileName(std::string_view name) {
  const auto isForbidden = [](unsigned char c) { return c < ' ' || c == 0x7f || c == '/' || c == '\\'; };
  return !name.empty() && name.size() <= NAME_MAX && name.front() != '.' && std::ranges::none_of(name, isForbidden);
}

bool removeFile(const char* path) {
  return unlink(phonePath(path).c_str()) == 0;
}

bool readFile(const char* path, std::string& content) {
  const int file = open(phonePath(path).c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  content.clear();
  struct stat status {};
  if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) content.reserve(static_cast<std::size_t>(status.st_size));
  char block[4096];
  ssize_t count = 0;
  while ((count = read(file, block, sizeof block)) > 0) content.append(block, static_cast<std::size_t>(count));
  close(file);
  return count == 0;
}
