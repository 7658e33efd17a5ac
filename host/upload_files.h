// The files that a request's uploads are stored in.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/file_handle.h"

namespace host {

// Makes files from a pattern of the phone ("/tmp/logofile_XXXXXX") below the root; removes those that are still in
// their place when it goes.
class UploadFiles {
 public:
  explicit UploadFiles(std::filesystem::path root) : root_(std::move(root)) {}
  ~UploadFiles();
  UploadFiles(const UploadFiles&) = delete;
  UploadFiles& operator=(const UploadFiles&) = delete;

  // A pattern that is no absolute path, climbs by ".." or does not end in "XXXXXX" is refused (log line).
  void setPattern(std::string_view pattern);
  bool hasPattern() const { return !pattern_.empty(); }

  // Makes the next file, open for write(). Gives its path on the phone; empty on failure (log line).
  std::string open();
  // False when the disk did not take it; the file is gone then.
  bool write(std::string_view bytes);
  void close() { file_.reset(); }
  // Closes the file and removes it.
  void discard();

 private:
  std::filesystem::path root_;
  std::string pattern_;
  std::vector<std::string> files_;  // where they lie
  FileHandle file_;
};

}  // namespace host
