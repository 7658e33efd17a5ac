// Paths of the phone as files below the root.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace host {

// The file that an absolute path of the phone stands for; empty when the path is not absolute, climbs by ".." or holds
// a NUL.
inline std::string phoneFile(const std::filesystem::path& root, std::string_view path) {
  const bool climbs = (std::string(path) + '/').find("/../") != std::string::npos;
  if (!path.starts_with('/') || climbs || path.find('\0') != std::string_view::npos) return {};
  return root.string() + std::string(path);
}

}  // namespace host
