#include "host/upload_files.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "host/log.h"
#include "host/phone_file.h"

namespace host {
UploadFiles::~UploadFiles() {
  close();
  for (const std::string& file : files_) ::unlink(file.c_str());
}

void UploadFiles::setPattern(std::string_view pattern) {
  pattern_.clear();
  if (pattern.ends_with("XXXXXX") && !phoneFile(root_, pattern).empty()) {
    pattern_ = pattern;
  } else {
    logLine({"no pattern for uploads: ", pattern});
  }
}

std::string UploadFiles::open() {
  close();
  std::string path = phoneFile(root_, pattern_);
  std::error_code ignored;
  if (pattern_.starts_with("/tmp/")) std::filesystem::create_directories(root_ / "tmp", ignored);
  file_.reset(::mkostemp(path.data(), O_CLOEXEC));
  if (!file_) {
    logLine({"cannot make a file for ", pattern_, ": ", std::strerror(errno)});
    return {};
  }
  files_.push_back(path);
  return path.substr(root_.string().size());
}

bool UploadFiles::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      logLine({"cannot store an upload: ", std::strerror(errno)});
      discard();
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void UploadFiles::discard() {
  close();
  if (files_.empty()) return;
  ::unlink(files_.back().c_str());
  files_.pop_back();
}

}  // namespace host
