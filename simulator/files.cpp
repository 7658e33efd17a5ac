#include "simulator/files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace simulator {
namespace {

namespace fs = std::filesystem;

class Descriptor {
 public:
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor() {
    if (value_ >= 0) ::close(value_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return value_; }
  explicit operator bool() const { return value_ >= 0; }

 private:
  int value_;
};

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

mode_t modeOf(const std::string& path) {
  struct stat status;
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0644;
}

bool writeNew(const std::string& path, std::string_view bytes, mode_t mode) {
  ::unlink(path.c_str());  // left behind by a process that was killed
  const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  return file && writeAll(file.get(), bytes) && ::fchmod(file.get(), mode) == 0 && ::fsync(file.get()) == 0;
}

// Has the names in a folder outlast a power cut. Some file systems cannot be asked for that.
bool syncFolder(const fs::path& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return opened && (::fsync(opened.get()) == 0 || errno == EINVAL);
}

bool makeFolder(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return true;
  if (folder == folder.parent_path() || !makeFolder(folder.parent_path())) return false;
  fs::create_directory(folder, error);  // another thread may have been faster
  return !error && syncFolder(folder.parent_path());
}

}  // namespace

std::optional<FileStamp> fileStamp(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FileStamp{status.st_dev, status.st_ino, status.st_size,
                   status.st_mtim.tv_sec * std::int64_t{1'000'000'000} + status.st_mtim.tv_nsec};
}

std::optional<std::string> readFile(const std::string& path) {
  // Opening a named pipe must not wait for its writer; a link may lead out of the tree.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
  struct stat status;
  if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > kMaxFileSize) {
    return std::nullopt;
  }
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
  }
  bytes.resize(length);
  return bytes;
}

bool replaceFile(const std::string& path, std::string_view bytes, mode_t mode) {
  const fs::path folder = fs::path(path).parent_path();
  if (path.empty() || !makeFolder(folder)) return false;
  const std::string beside = path + ".new";
  if (writeNew(beside, bytes, mode != 0 ? mode : modeOf(path)) && ::rename(beside.c_str(), path.c_str()) == 0)
    return syncFolder(folder);
  ::unlink(beside.c_str());
  return false;
}

bool renameFile(const std::string& from, const std::string& to) {
  if (::rename(from.c_str(), to.c_str()) != 0) return false;
  syncFolder(fs::path(to).parent_path());
  return true;
}

}  // namespace simulator
