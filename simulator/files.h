// Whole files of the phone's tree, by their real paths.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

// Tells whether a file is still the one that was read or written.
struct FileStamp {
  dev_t device;
  ino_t inode;
  off_t size;
  std::int64_t changed;  // ns since the epoch
  bool operator==(const FileStamp&) const = default;
};

// Nothing when there is no such file.
std::optional<FileStamp> fileStamp(const std::string& path);

inline constexpr off_t kMaxFileSize = 64 << 20;

// The bytes of a regular file of at most that size; nothing when it cannot be read or is a link.
std::optional<std::string> readFile(const std::string& path);

// Writes the file beside and renames it into place, so that readers, an end of this process and a power cut at any
// moment find the old or the new one whole; once it returns, a power cut finds the new one. Makes the folders above it.
// The file gets the rights of `mode`, or with 0 the old one's. False when it could not be written; the old file then
// stays, unless only the last step failed, which makes the new one last.
bool replaceFile(const std::string& path, std::string_view bytes, mode_t mode = 0);

// Renames a file in its folder; once it returns, a power cut finds the new name. False when nothing was renamed.
bool renameFile(const std::string& from, const std::string& to);

}  // namespace simulator
