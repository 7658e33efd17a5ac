// Files for browsers, below one folder.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/answer.h"

namespace host {

struct StaticRequest {
  std::string_view path;  // as received
  std::string_view acceptEncoding, ifNoneMatch;
};

// Safe from any thread.
class StaticFiles {
 public:
  explicit StaticFiles(const std::filesystem::path& folder);

  // The file as an answer (200, or 304 when the browser has it): compressed when a NAME.gz stands beside it and the
  // browser takes it. Nothing when there is no such file, or it is hidden, a folder or reached by a link out of the
  // folder.
  std::optional<Answer> answer(const StaticRequest& request) const;

 private:
  std::string locate(std::string_view path) const;

  std::string folder_;  // without links, with a "/" at its end; empty when there is none
};

// A picture or sound of a folder that users fill, by its name alone, which is the request's path. Nothing for anything
// else: folders, links, hidden files, and what a browser might take for a page or a script.
std::optional<Answer> userFile(const std::filesystem::path& folder, const StaticRequest& request);

// The media type of a file by its name's ending.
std::string_view mediaTypeOf(std::string_view fileName);

}  // namespace host
