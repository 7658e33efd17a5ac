// An open file that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace host {

class FileHandle {
 public:
  FileHandle() = default;
  explicit FileHandle(int file) : file_(file) {}
  FileHandle(FileHandle&& other) noexcept : file_(other.release()) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  ~FileHandle() { reset(); }

  explicit operator bool() const { return file_ >= 0; }
  int get() const { return file_; }
  int release() { return std::exchange(file_, -1); }
  void reset(int file = -1) {
    if (file_ >= 0) ::close(file_);
    file_ = file;
  }

 private:
  int file_ = -1;
};

}  // namespace host
