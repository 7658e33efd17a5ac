// Trees of folders and plain files: nothing else passes. All paths are paths of the phone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A folder of a request's own, for its owner alone. It is made anew: whatever stood there, of a request that was cut
// short, is removed. It is gone with all in it when the object ends.
class WorkFolder {
 public:
  explicit WorkFolder(std::string path);
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  // False when the folder could not be made; nothing is to be put there then.
  bool isReady() const { return isReady_; }
  const std::string& path() const { return path_; }  // without a "/" at its end

 private:
  std::string path_;
  bool isReady_;
};

struct TreeEntry {
  std::string path;  // in the tree: "data/htpasswd"
  bool isFolder;
};

struct TreeLimits {
  std::int64_t bytes;  // of all files together
  std::size_t entries = 2000;
};

// All that lies below the folder, each folder in front of what it holds. Nothing (logged) when it cannot be read, goes
// beyond a limit, or holds anything but folders and files of one name each, or a name with control characters.
std::optional<std::vector<TreeEntry>> plainTree(const std::string& folder, const TreeLimits& limits);

// Copies a file, or a folder with the folders and plain files in it, with their rights; files that are there are
// replaced, all else is left out. True also when there is nothing to copy.
bool copyPlain(const std::string& from, const std::string& to);

// Moves all that lies below `stage` to the same places below `target`, which lies in the same file system. Each file is
// there whole at any moment, the old or the new one, and keeps the rights that the old one had; a new one keeps its
// own, but nobody else may write it. False (logged), with nothing moved, when it does not fit.
bool moveIntoPlace(const std::string& stage, const std::string& target);

// False (logged) when a folder stands in a file's place or the other way round, or a folder's link leads out of the
// phone's tree.
bool fitsInPlace(const std::string& stage, const std::string& target);

// Puts the folder `stage` in the place of `target`, in the same file system, at once: at any moment one of the two is
// there whole. What stood there lies at `stage` then. False (logged), with nothing changed, when that fails.
bool replaceFolder(const std::string& stage, const std::string& target);
