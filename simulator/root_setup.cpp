#include "simulator/root_setup.h"

#include <fcntl.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <system_error>

#include "platform/log.h"
#include "simulator/simulator.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr int kLogModule = 2;

// Folders in which a tree or "/config" is put together before it is renamed into place. One that is still there
// belongs to a fill that was cut short.
constexpr char kTreeStage[] = ".fill";
constexpr char kConfigStage[] = ".config";

// Of the phone itself, in place of the delivered defaults.
constexpr char kCustomFactory[] = "data/customfactory";

// Names of "/phone/factory" that have no namesake under "/config".
constexpr std::string_view kFactoryOnly[] = {"hostapp"};

constexpr const char* kRuntimeFolders[] = {
    "tmp/log",
    "dev",
    "proc/keypad",
    "config/Pics",
    "config/certs/phonedev",
    "config/data",
    "config/user/voip",
    "config/softkey",
    "config/openvpn",
    "config/dot1x",
    "data/userdata/sound",
    "data/userdata/wallpaper",
    "data/userdata/contact-image",
};

void copyTree(const fs::path& from, const fs::path& to) {
  fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  fs::permissions(to, fs::perms::owner_write, fs::perm_options::add);
  for (const auto& entry : fs::recursive_directory_iterator(to)) {
    if (entry.is_symlink()) continue;
    fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);  // the delivered tree may lack it
  }
}

bool needsFill(const fs::path& root) {
  return !fs::exists(root) || fs::is_empty(root) || fs::exists(root / kTreeStage);
}

// The first folder of PATH is the tree's own "bin", whose commands leave the machine alone.
void requireSafePath(const fs::path& root) {
  if (fs::weakly_canonical(root).string().find(':') == std::string::npos) return;
  throw std::runtime_error("a \":\" in the path of the phone's tree: " + root.string());
}

void requireTree(const fs::path& root) {
  if (fs::is_directory(root / "phone") && fs::is_directory(root / "bin")) return;
  throw std::runtime_error("neither empty nor a phone's tree: " + root.string());
}

void fillTree(const fs::path& root, const fs::path& rootfs) {
  if (!fs::is_directory(rootfs)) throw std::runtime_error("no delivered tree at " + rootfs.string());
  const fs::path stage = root / kTreeStage;
  fs::create_directories(root);
  fs::remove_all(stage);
  fs::create_directory(stage);
  for (const auto& entry : fs::directory_iterator(rootfs)) {
    if (!entry.is_directory()) continue;
    copyTree(entry.path(), stage / entry.path().filename());
  }
  for (const auto& entry : fs::directory_iterator(stage)) {
    const fs::path target = root / entry.path().filename();
    if (!fs::exists(target)) fs::rename(entry.path(), target);  // else moved before the cut
  }
  fs::remove_all(stage);
}

bool hasNamesakeInConfig(const fs::directory_entry& entry) {
  const std::string name = entry.path().filename().string();
  return entry.is_directory() &&
         std::find(std::begin(kFactoryOnly), std::end(kFactoryOnly), name) == std::end(kFactoryOnly);
}

// Puts a new "/config" together beside the place of it.
fs::path stageConfig(const fs::path& root) {
  const fs::path factory = root / "phone/factory", stage = root / kConfigStage;
  fs::remove_all(stage);
  fs::create_directory(stage);
  if (!fs::is_directory(factory)) return stage;
  for (const auto& entry : fs::directory_iterator(factory)) {
    if (hasNamesakeInConfig(entry)) copyTree(entry.path(), stage / entry.path().filename());
  }
  return stage;
}

void fillConfig(const fs::path& root) {
  if (fs::exists(root / "config")) {
    fs::remove_all(root / kConfigStage);
  } else {
    fs::rename(stageConfig(root), root / "config");
  }
}

void makeRuntimeFolders(const fs::path& root) {
  for (const char* folder : kRuntimeFolders) fs::create_directories(root / folder);
}

// Files came from an archive that somebody brought: links among them are left out.
void addCustomFactory(const fs::path& root, const fs::path& stage) {
  const fs::path custom = root / kCustomFactory;
  if (fs::symlink_status(custom).type() != fs::file_type::directory) return;
  fs::copy(custom, stage,
           fs::copy_options::recursive | fs::copy_options::overwrite_existing | fs::copy_options::skip_symlinks);
}

// Both names change at once where the file system can do that.
void exchange(const fs::path& one, const fs::path& other) {
  if (::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0) return;
  const fs::path aside = one.string() + ".old";
  fs::remove_all(aside);
  fs::rename(other, aside);
  fs::rename(one, other);
  fs::rename(aside, one);
}

}  // namespace

void prepareRoot(const fs::path& root, const fs::path& rootfs) {
  try {
    requireSafePath(root);
    if (needsFill(root)) fillTree(root, rootfs);
    requireTree(root);
    fillConfig(root);
    makeRuntimeFolders(root);
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error("cannot prepare the phone's tree: " + std::string(error.what()));
  }
}

bool resetConfig(const fs::path& root, bool custom) {
  try {
    const fs::path stage = stageConfig(root);
    if (custom) addCustomFactory(root, stage);
    exchange(stage, root / "config");
    fs::remove_all(stage);
    makeRuntimeFolders(root);
    return true;
  } catch (const fs::filesystem_error& error) {
    log_log(kLogModule, kLogError, "factory reset: %s\n", error.what());
    return false;
  }
}

}  // namespace simulator
