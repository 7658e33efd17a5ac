#include "host/tls_certificates.h"

#include <fcntl.h>
#include <string.h>
#include <sys/stat.h>

#include <cerrno>
#include <stdexcept>
#include <utility>

#include "host/file_handle.h"
#include "host/log.h"

namespace host {
namespace {
// Holds a key, so nothing is left of it in memory.
class KeyText {
 public:
  KeyText() = default;
  ~KeyText() { ::explicit_bzero(bytes.data(), bytes.size()); }
  KeyText(const KeyText&) = delete;
  KeyText& operator=(const KeyText&) = delete;

  std::string bytes;
};

[[noreturn]] void failWith(const char* reason) {
  throw std::runtime_error(reason);
}

void readInto(std::string& bytes, const std::string& path) {
  // A named pipe must not hold up anybody; a link may lead anywhere.
  const FileHandle file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
  struct stat status;
  if (!file || ::fstat(file.get(), &status) != 0) failWith(::strerror(errno));
  if (!S_ISREG(status.st_mode)) failWith("it is no plain file");
  if (status.st_size > static_cast<off_t>(kMaxCertificateFile)) failWith("it is too long");
  bytes.resize(static_cast<std::size_t>(status.st_size));
  const ssize_t count = ::pread(file.get(), bytes.data(), bytes.size(), 0);
  if (count != status.st_size) failWith("it cannot be read");
}
}  // namespace

TlsCertificates::TlsCertificates(Files files) : files_(std::move(files)) {
  for (const std::string& path : files_()) {
    std::optional<Stamp> stamp = stampOf(path);
    if (!stamp) continue;
    if (!seen_) seen_ = std::move(stamp);
    if ((identity_ = read(path, "another one is looked for"))) return;
  }
  throw std::runtime_error("there is no certificate for HTTPS");
}

const TlsIdentity& TlsCertificates::current() {
  for (const std::string& path : files_()) {
    std::optional<Stamp> stamp = stampOf(path);
    if (!stamp) continue;
    if (stamp == seen_) break;
    seen_ = std::move(stamp);
    if (auto renewed = read(path, "the one before goes on")) identity_ = std::move(renewed);
    break;
  }
  return *identity_;
}

std::optional<TlsCertificates::Stamp> TlsCertificates::stampOf(const std::string& path) {
  struct stat status;
  if (::lstat(path.c_str(), &status) != 0) return std::nullopt;
  return Stamp{path, status.st_dev, status.st_ino, status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

// Null, with a log line, when the file is no use; `otherwise` tells what follows from that.
std::unique_ptr<TlsIdentity> TlsCertificates::read(const std::string& path, const char* otherwise) {
  try {
    KeyText text;
    readInto(text.bytes, path);
    return std::make_unique<TlsIdentity>(text.bytes, text.bytes);
  } catch (const std::exception& error) {
    logLine({"no certificate and key in ", path, ": ", error.what(), "; ", otherwise});
    return nullptr;
  }
}

}  // namespace host
