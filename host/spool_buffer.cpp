#include "host/spool_buffer.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace host {
namespace {
constexpr std::size_t kFirstRoom = 16 * 1024;  // a page
}  // namespace

bool SpoolBuffer::append(std::string_view bytes) {
  if (failed_) return false;
  if (memory_.empty()) memory_.reserve(std::min(kFirstRoom, limit_));
  while (memory_.size() + bytes.size() > limit_) {
    const std::size_t part = std::min(bytes.size(), limit_ - std::min(limit_, memory_.size()));
    memory_.append(bytes.substr(0, part));
    bytes.remove_prefix(part);
    if (!flush()) return false;
  }
  memory_.append(bytes);
  return true;
}

void SpoolBuffer::clear() {
  file_.reset();
  memory_.clear();
  written_ = 0;
  failed_ = false;
}

std::size_t SpoolBuffer::read(std::size_t offset, char* buffer, std::size_t length) {
  if (offset >= written_) {
    const std::string_view rest = std::string_view(memory_).substr(std::min(offset - written_, memory_.size()));
    const std::size_t count = std::min(length, rest.size());
    std::memcpy(buffer, rest.data(), count);
    return count;
  }
  const ssize_t count = ::pread(file_.get(), buffer, std::min(length, written_ - offset), static_cast<off_t>(offset));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

FileHandle SpoolBuffer::takeFile() {
  if (!file_ || !flush()) return {};
  return std::move(file_);
}

bool SpoolBuffer::openFile() {
  std::string name = folder_ + "/spool_XXXXXX";
  file_.reset(::mkostemp(name.data(), O_CLOEXEC));
  return file_ && ::unlink(name.c_str()) == 0;
}

bool SpoolBuffer::flush() {
  if (!file_ && !openFile()) return !(failed_ = true);
  std::string_view rest = memory_;
  while (!rest.empty()) {
    const ssize_t count = ::pwrite(file_.get(), rest.data(), rest.size(), static_cast<off_t>(written_));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return !(failed_ = true);
    written_ += static_cast<std::size_t>(count);
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
  memory_.clear();
  return true;
}

}  // namespace host
