#include "platform/upgrade.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "platform/shared_text.h"
#include "simulator/phone.h"
#include "simulator/runtime_files.h"
#include "simulator/text_out.h"
#include "simulator/upgrade_image.h"

namespace {

using simulator::ImageHead;

constexpr int kLogModule = 2;
constexpr int kPieceSize = 64 * 1024;

struct SharedText {
  const char* name;
  std::size_t size;
};
constexpr SharedText kState{"romTranStat", 32};
constexpr SharedText kReceived{"romRecvSize", 12};

void tell(const SharedText& text, const std::string& value) {
  sharedTextLock();
  std::size_t capacity = 0;
  if (char* shared = sharedTextGet(text.name, text.size, &capacity)) simulator::copyOut(value, shared, capacity);
  sharedTextUnlock();
}

// The image's file while it grows, beside its place; gone at the end unless it was put there.
class ImageFile {
 public:
  ImageFile() : beside_(simulator::unfinishedImage()) {
    if (beside_.empty()) return;
    ::unlink(beside_.c_str());  // left behind by a process that was killed
    file_ = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  }
  ~ImageFile() {
    if (file_ < 0) return;
    ::close(file_);
    ::unlink(beside_.c_str());
  }
  ImageFile(const ImageFile&) = delete;
  ImageFile& operator=(const ImageFile&) = delete;

  bool write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = ::write(file_, bytes.data(), bytes.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }

  // Takes the place of the image that is there, which may be a link. Nobody waits for the disk: that would take longer
  // than all the rest, and an image is known by its sum.
  bool putInPlace() const { return ::rename(beside_.c_str(), beside_.substr(0, beside_.rfind('.')).c_str()) == 0; }

 private:
  std::string beside_;
  int file_ = -1;
};

// The image up to its empty line, or as far as it may be long. Byte by byte: what comes behind the image is not to be
// taken out of the stream.
std::string readHead(IUpgrader& upgrader) {
  std::string head;
  for (char byte; head.size() < simulator::kMaxImageHead && upgrader.ReadStream(&byte, 1) == 1;) {
    head += byte;
    if (head.ends_with("\n\n")) break;
  }
  return head;
}

bool receive(IUpgrader& upgrader, const ImageHead& head, const ImageFile& file) {
  std::vector<char> piece(kPieceSize);
  simulator::ImageHash hash;
  for (std::int64_t received = 0; received < head.size;) {
    const auto wanted = static_cast<int>(std::min<std::int64_t>(kPieceSize, head.size - received));
    const int count = upgrader.ReadStream(piece.data(), wanted);
    if (count <= 0 || count > wanted) return false;
    const std::string_view bytes(piece.data(), static_cast<std::size_t>(count));
    hash.add(bytes);
    if (!file.write(bytes)) return false;
    received += count;
    tell(kReceived, std::to_string(received));
    upgrader.OnDownload(static_cast<int>(received), static_cast<int>(head.size));
  }
  return hash.finish() == head.sha256;
}

// The image's version; nothing when none was installed.
std::optional<std::string> install(IUpgrader& upgrader) {
  upgrader.OnRomBegin();
  const std::string text = readHead(upgrader);
  const std::optional<ImageHead> head = simulator::parseImageHead(text);
  if (!head) return std::nullopt;
  upgrader.OnDoneRomJudge();
  tell(kState, "receiving");
  const ImageFile file;
  if (!file.write(text) || !receive(upgrader, *head, file)) return std::nullopt;
  upgrader.OnRomEnd();
  upgrader.OnPrevInstall("firmware", head->version.c_str());
  if (!file.putInPlace()) return std::nullopt;
  upgrader.OnSyncInstall();
  return head->version;
}

void takeOver(const std::string& version, bool restart) {
  simulator::Phone& phone = simulator::phone();
  const std::lock_guard lock(phone.mutex);
  phone.config.set({{simulator::kFirmwareKey, version}});
  phone.systemCall("upgrade", version);
  if (restart) phone.reboot("upgrade");
}

}  // namespace

int upui_Upgrade(IUpgrader* upgrader, int restart) {
  if (upgrader == nullptr || upgrader->OpenStream() == 0) return -1;
  tell(kState, "preparing");
  tell(kReceived, "0");
  const std::optional<std::string> version = install(*upgrader);
  upgrader->CloseStream();
  tell(kState, version ? "done" : "failed");
  upgrader->OnDoneInstall("firmware", version.value_or("").c_str(), version.has_value());
  if (!version) {
    log_log(kLogModule, kLogWarning, "upgrade: no firmware was installed\n");
    return -1;
  }
  takeOver(*version, restart != 0);
  return 0;
}
