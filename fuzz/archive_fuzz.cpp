// Archives that come in: whatever one holds, what is taken of it are plain files and folders below its own folder, and
// nothing else on the phone changes. Input: a member a line, "TYPE PATH|TARGET|CONTENT"; or, behind a line that is "*",
// the bytes of an archive.
#include <sys/stat.h>

#include <fstream>

#include "framework/unpacked_archive.h"
#include "fuzz/phone.h"
#include "tests/support/tar.h"

namespace {

namespace fs = std::filesystem;

constexpr TreeLimits kLimits{.bytes = 100'000, .entries = 50};

std::string archiveOf(std::string_view input) {
  Tar archive;
  while (!input.empty()) {
    std::string line = takeLine(input);
    if (line == "*") return std::string(input);
    std::string_view rest = line;
    const char type = rest.empty() ? '0' : rest.front();
    rest.remove_prefix(std::min<std::size_t>(2, rest.size()));
    const std::string path(takeUpTo(rest, '|')), target(takeUpTo(rest, '|')), content(rest);
    archive.member(type, path, target, static_cast<long>(content.size()), 0644);
    if (!content.empty()) archive.bytes(content);
  }
  return archive.text();
}

// All that the phone holds but for "/tmp", with the times of the last changes.
std::string treeOf(const fs::path& root) {
  std::string all;
  for (const char* folder : {"config", "data", "phone/factory"}) {
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      struct stat status {};
      lstat(entry.path().c_str(), &status);
      all += entry.path().string() + " " + std::to_string(status.st_mtim.tv_nsec) + " " +
             std::to_string(status.st_nlink) + "\n";
    }
  }
  return all;
}

void checkEntries(const UnpackedArchive& archive, const fs::path& root) {
  std::int64_t bytes = 0;
  for (const auto& [path, isFolder] : archive.entries()) {
    struct stat status {};
    require(lstat((root / archive.folder().substr(1) / path).c_str(), &status) == 0, "an entry is there");
    require(isFolder ? S_ISDIR(status.st_mode) : S_ISREG(status.st_mode) && status.st_nlink == 1, "an entry is plain");
    require((status.st_mode & 07022) == 0 && (status.st_mode & 0600) == 0600, "it is its owner's");
    if (!isFolder) bytes += status.st_size;
  }
  require(bytes <= kLimits.bytes && archive.entries().size() <= kLimits.entries, "the limits hold");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fs::path& root = fuzzedPhone();
  fuzzedCommandsRun = true;
  std::ofstream(root / "tmp/a.tar", std::ios::binary) << archiveOf(inputText(data, size));
  const std::string before = treeOf(root);
  {
    const UnpackedArchive archive("/tmp/a.tar", kLimits);
    require(archive.isPlain() || archive.entries().empty(), "a refused archive has no entries");
    if (archive.isPlain()) checkEntries(archive, root);
    require(treeOf(root) == before, "nothing else changes while it is unpacked");
    fs::create_directories(root / "tmp/stage");
    if (archive.isPlain()) require(copyPlain(archive.folder(), "/tmp/stage"), "what is plain can be copied");
    require(!archive.isPlain() || plainTree("/tmp/stage", kLimits)->size() == archive.entries().size(), "all of it");
  }
  fs::remove_all(root / "tmp/stage");
  require(!fs::exists(root / "tmp/unpacked") && treeOf(root) == before, "nothing is left");
  return 0;
}
