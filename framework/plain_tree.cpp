#include "framework/plain_tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "framework/shell_command.h"
#include "platform/log.h"
#include "platform/phone_root.h"

namespace fs = std::filesystem;

namespace {

constexpr TreeLimits kNoLimits{.bytes = INT64_MAX, .entries = SIZE_MAX};
constexpr mode_t kRightsOfNewFiles = 0755;  // at the most
constexpr fs::perms kRightsOfCopies = fs::perms::all;

bool hasControlCharacter(std::string_view name) {
  return std::ranges::any_of(name, [](unsigned char c) { return c < ' ' || c == 0x7f; });
}

bool isLink(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

// Where the folder is: phonePath() follows a link that stands there itself.
std::string realPlace(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = phonePath(path.substr(0, slash + 1));
  return folder.empty() ? folder : folder + path.substr(slash + 1);
}

// True for a folder, and for a plain file that has this name alone.
bool isPlain(const fs::path& path, const struct stat& status) {
  if (hasControlCharacter(path.filename().native())) {
    log_log(kWebLog, kLogWarning, "plainTree() a name with control characters\n");
  } else if (!S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode)) {
    log_log(kWebLog, kLogWarning, "plainTree() neither a file nor a folder\n");
  } else if (!S_ISDIR(status.st_mode) && status.st_nlink != 1) {
    log_log(kWebLog, kLogWarning, "plainTree() a file with several names\n");
  } else {
    return true;
  }
  return false;
}

bool copyFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::remove(to, error);  // a link would be followed
  if (!error) fs::copy_file(from, to, error);
  if (!error) fs::last_write_time(to, fs::last_write_time(from, error), error);
  return !error;
}

bool copyEntry(const fs::path& from, const fs::path& to) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(from, error);
  if (fs::is_regular_file(status)) return copyFile(from, to);
  if (!fs::is_directory(status)) return true;
  error.clear();
  fs::create_directory(to, error);
  if (!error) fs::permissions(to, status.permissions() & kRightsOfCopies, error);
  fs::directory_iterator entry;
  if (!error) entry = fs::directory_iterator(from, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (!hasControlCharacter(name.native()) && !copyEntry(entry->path(), to / name)) return false;
  }
  return !error;
}

struct Move {
  std::string from, to;
  bool isFolder;
};

// True when what stands at the place gives way to what comes. A link to a file gives way, whatever it leads to.
bool fits(const Move& move) {
  struct stat status {};
  if (move.isFolder) return !move.to.empty() && (stat(move.to.c_str(), &status) != 0 || S_ISDIR(status.st_mode));
  return lstat(move.to.c_str(), &status) != 0 || S_ISREG(status.st_mode) || S_ISLNK(status.st_mode);
}

// Nothing when one of them does not fit.
std::optional<std::vector<Move>> movesThatFit(const std::string& stage, const std::string& target) {
  const std::optional<std::vector<TreeEntry>> tree = plainTree(stage, kNoLimits);
  if (!tree) return std::nullopt;
  std::vector<Move> moves;
  for (const auto& [path, isFolder] : *tree) {
    const std::string place = target + "/" + path;
    moves.push_back({phonePath(stage + "/" + path), isFolder ? phonePath(place) : realPlace(place), isFolder});
    if (fits(moves.back())) continue;
    log_log(kWebLog, kLogWarning, "fitsInPlace() %s does not fit in its place\n", path.c_str());
    return std::nullopt;
  }
  return moves;
}

bool carryOut(const Move& move) {
  struct stat status {};
  if (move.isFolder) {
    return stat(move.to.c_str(), &status) == 0 || mkdir(move.to.c_str(), 0755) == 0;
  }
  const bool replaces = lstat(move.to.c_str(), &status) == 0 && S_ISREG(status.st_mode);
  if (!replaces && lstat(move.from.c_str(), &status) != 0) return false;
  const mode_t rights = replaces ? status.st_mode & 0777 : status.st_mode & kRightsOfNewFiles;
  return chmod(move.from.c_str(), rights) == 0 && std::rename(move.from.c_str(), move.to.c_str()) == 0;
}

// What was written below the folder outlives a power cut.
void syncFileSystem(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  syncfs(folder);
  close(folder);
}

bool isRenamed(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

// Flash file systems know no exchange: there the old folder steps aside for a moment.
bool exchange(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) == 0) return true;
  if (errno == ENOENT) return isRenamed(from, to);
  const std::string aside = from + ".old";
  if (errno != EINVAL || !isRenamed(to, aside)) return false;
  if (isRenamed(from, to)) return isRenamed(aside, from);
  isRenamed(aside, to);
  return false;
}

}  // namespace

WorkFolder::WorkFolder(std::string path) : path_(std::move(path)) {
  const std::string real = realPlace(path_);
  struct stat status {};
  if (isLink(real)) {
    unlink(real.c_str());
  } else if (lstat(real.c_str(), &status) == 0) {
    CommandShell(ShellCommand("rm").word("-rf").path(path_));
  }
  isReady_ = mkdir(real.c_str(), 0700) == 0;
  if (!isReady_) log_log(kWebLog, kLogWarning, "WorkFolder() cannot make %s\n", path_.c_str());
}

// By a command: the configuration service looks at its files anew after one.
WorkFolder::~WorkFolder() {
  if (isReady_) CommandShell(ShellCommand("rm").word("-rf").path(path_));
}

std::optional<std::vector<TreeEntry>> plainTree(const std::string& folder, const TreeLimits& limits) {
  const fs::path top = phonePath(folder);
  std::vector<TreeEntry> tree;
  std::int64_t bytes = 0;
  std::error_code error;
  fs::recursive_directory_iterator entry(top, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    struct stat status {};
    if (lstat(entry->path().c_str(), &status) != 0 || !isPlain(entry->path(), status)) return std::nullopt;
    const bool isFolder = S_ISDIR(status.st_mode);
    if (!isFolder) bytes += status.st_size;
    if (bytes > limits.bytes || tree.size() >= limits.entries) {
      log_log(kWebLog, kLogWarning, "plainTree() %s holds too much\n", folder.c_str());
      return std::nullopt;
    }
    tree.push_back({entry->path().lexically_relative(top).string(), isFolder});
  }
  if (!error) return tree;
  log_log(kWebLog, kLogWarning, "plainTree() %s cannot be read\n", folder.c_str());
  return std::nullopt;
}

bool copyPlain(const std::string& from, const std::string& to) {
  const std::string source = realPlace(from), target = realPlace(to);
  return !source.empty() && !target.empty() && copyEntry(source, target);
}

bool fitsInPlace(const std::string& stage, const std::string& target) {
  return movesThatFit(stage, target).has_value();
}

bool moveIntoPlace(const std::string& stage, const std::string& target) {
  const std::optional<std::vector<Move>> moves = movesThatFit(stage, target);
  if (!moves) return false;
  syncFileSystem(phonePath(stage));
  const bool done = std::ranges::all_of(*moves, carryOut);
  if (!done) log_log(kWebLog, kLogError, "moveIntoPlace() cannot put everything below %s\n", target.c_str());
  syncFileSystem(phonePath(target));
  return done;
}

bool replaceFolder(const std::string& stage, const std::string& target) {
  const std::string from = realPlace(stage), to = realPlace(target);
  syncFileSystem(phonePath(stage));
  const bool done = exchange(from, to);
  if (!done) log_log(kWebLog, kLogError, "replaceFolder() %s: %s\n", target.c_str(), std::strerror(errno));
  return done;
}
