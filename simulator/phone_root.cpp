#include "platform/phone_root.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>

#include "simulator/phone.h"

namespace {

// The path without empty and "." parts, a final "/" kept; empty when it holds "..".
std::string cleaned(std::string_view path) {
  std::string result;
  for (std::string_view rest = path; !rest.empty();) {
    const auto slash = std::min(rest.find('/'), rest.size());
    const std::string_view part = rest.substr(0, slash);
    if (part == "..") return {};
    if (!part.empty() && part != ".") result.append("/").append(part);
    rest.remove_prefix(std::min(slash + 1, rest.size()));
  }
  if (path.ends_with('/') || path.ends_with("/.")) result += '/';
  return result;
}

bool isBelow(std::string_view path, std::string_view root) {
  return path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/');
}

enum class Place { kInside, kOutside, kMissing };

// Opens the file for nothing but to see whether it is there, unless a link is on the way. -1 with errno on failure.
int openWithoutLinks(const std::string& path) {
  open_how how{};
  how.flags = O_PATH | O_CLOEXEC;
  how.resolve = RESOLVE_NO_SYMLINKS;
  return static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how));
}

// Where a path below the root leads. Without links on the way it leads where it says; one call tells that, and older
// systems do not have it.
std::optional<Place> placeWithoutLinks(const std::string& path) {
  const int file = openWithoutLinks(path);
  if (file < 0) return errno == ENOENT ? std::optional(Place::kMissing) : std::nullopt;
  ::close(file);
  return Place::kInside;
}

// Where the path leads once its links are followed. A link to nowhere counts as outside: who opens it to write would
// make a file there.
Place placeOf(const std::string& path, const std::string& root) {
  if (const std::optional<Place> place = placeWithoutLinks(path)) return *place;
  char* real = ::realpath(path.c_str(), nullptr);
  if (real != nullptr) {
    const bool inside = isBelow(real, root);
    std::free(real);
    return inside ? Place::kInside : Place::kOutside;
  }
  const bool unreachable = errno == ENOTDIR || errno == ENAMETOOLONG;
  const bool absent = errno == ENOENT;
  struct stat status;
  return unreachable || (absent && ::lstat(path.c_str(), &status) != 0) ? Place::kMissing : Place::kOutside;
}

// True when the nearest part of the path that exists lies below the root.
bool staysBelow(std::string path, const std::string& root) {
  while (path.size() >= root.size()) {
    const Place place = placeOf(path, root);
    if (place != Place::kMissing) return place == Place::kInside;
    path.resize(path.rfind('/'));
  }
  return false;
}

}  // namespace

std::string phonePath(std::string_view path) {
  const std::string& root = simulator::phone().root;
  if (root.empty() || !path.starts_with('/') || path.find('\0') != std::string_view::npos) return {};
  const std::string clean = cleaned(path);
  if (clean.empty()) return {};
  std::string mapped = root + clean;
  return staysBelow(clean.ends_with('/') ? mapped.substr(0, mapped.size() - 1) : mapped, root) ? mapped : std::string();
}
