#include "framework/unpacked_archive.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "framework/file_utils.h"
#include "framework/shell_command.h"
#include "platform/log.h"

namespace {

constexpr char kFolder[] = "/tmp/unpacked";
constexpr std::int64_t kReserve = 64 << 10;  // bytes of "/tmp" that stay free
constexpr std::int64_t kBlock = 512;         // of ulimit

// $0 is the archive, $1 the folder, $2 the blocks that a file may have, $3 the bytes that the names may take. The names
// are counted first: each folder in one is made. From its standard input tar unpacks no compressed archive. Rights are
// mended so that everything can be looked at, copied and removed.
constexpr char kUnpack[] =
    "ulimit -f \"$2\"; "
    "[ \"$(tar -tf - <\"$0\" | head -c \"$3\" | wc -c)\" -lt \"$3\" ] && timeout 60 tar -xof - -C \"$1\" <\"$0\"; "
    "status=$?; chmod -R u+rwX,go-w,a-st \"$1\"; exit $status";
constexpr char kNameBytes[] = "131072";

bool unpack(const std::string& archive, const std::string& folder, std::int64_t bytes) {
  const std::int64_t size = GetFileSize(archive.c_str());
  const std::int64_t free = GetPartionFreeSize("/tmp/") - kReserve;
  if (size < 0 || size > free) {
    log_log(kWebLog, kLogWarning, "UnpackedArchive() %lld bytes, %lld are free\n", static_cast<long long>(size),
            static_cast<long long>(free));
    return false;
  }
  return CommandShell(ShellCommand("sh")
                          .word("-c")
                          .word(kUnpack)
                          .path(archive)
                          .path(folder)
                          .word(std::to_string(std::min(bytes, free) / kBlock + 1))
                          .word(kNameBytes)) == 0;
}

}  // namespace

UnpackedArchive::UnpackedArchive(const std::string& archive, const TreeLimits& limits) : folder_(kFolder) {
  if (!folder_.isReady() || limits.bytes < 0 || !unpack(archive, folder_.path(), limits.bytes)) {
    log_log(kWebLog, kLogWarning, "UnpackedArchive() %s cannot be unpacked\n", archive.c_str());
    return;
  }
  std::optional<std::vector<TreeEntry>> tree = plainTree(folder_.path(), limits);
  isPlain_ = tree.has_value();
  if (tree) entries_ = std::move(*tree);
}

bool UnpackedArchive::hasFolder(std::string_view path) const {
  return std::ranges::any_of(entries_, [path](const TreeEntry& entry) { return entry.isFolder && entry.path == path; });
}
