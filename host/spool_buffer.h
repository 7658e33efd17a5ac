// A sequence of bytes that goes to an unlinked file when it outgrows memory.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/file_handle.h"

namespace host {

class SpoolBuffer {
 public:
  // Keeps up to `memoryLimit` bytes in memory; the file beyond that lies, without a name, in `folder`.
  SpoolBuffer(std::size_t memoryLimit, std::string folder) : limit_(memoryLimit), folder_(std::move(folder)) {}
  SpoolBuffer(const SpoolBuffer&) = delete;
  SpoolBuffer& operator=(const SpoolBuffer&) = delete;

  // False when the file could not take it; the content is incomplete then, and so says failed().
  bool append(std::string_view bytes);
  bool failed() const { return failed_; }
  std::size_t size() const { return written_ + memory_.size(); }
  bool empty() const { return size() == 0; }
  void clear();

  // Copies up to `length` bytes from `offset` on; gives their number, 0 at the end.
  std::size_t read(std::size_t offset, char* buffer, std::size_t length);

  // The file with the whole content; none when all is in memory, or on failure, which failed() tells then.
  FileHandle takeFile();
  // The content, when all is in memory.
  std::string takeMemory() { return std::move(memory_); }

 private:
  bool flush();
  bool openFile();

  std::size_t limit_;
  std::string folder_;
  std::string memory_;  // what is not in the file yet
  std::size_t written_ = 0;
  FileHandle file_;
  bool failed_ = false;
};

}  // namespace host
