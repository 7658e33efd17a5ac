// The certificate that the server shows, as the device has it at this moment.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/tls_identity.h"

namespace host {

// Of a file with certificates and their key. Clients take no longer chains.
inline constexpr std::size_t kMaxCertificateFile = 128 * 1024;

class TlsCertificates {
 public:
  // Paths of PEM files in the order in which they are to be shown: the first that is there. Asked before each
  // handshake, so it is to be quick.
  using Files = std::function<std::vector<std::string>()>;

  // Throws std::runtime_error when no file can be used.
  explicit TlsCertificates(Files files);

  // What the next handshake shows. A file is read again when another one is the first, or when it was changed. What
  // cannot be used then gets a log line, and the one before goes on. For one thread at a time.
  const TlsIdentity& current();

 private:
  // Changes with whatever happens to a file, a renewal in its place and new rights included.
  struct Stamp {
    std::string path;
    dev_t device;
    ino_t inode;
    off_t size;
    std::int64_t seconds, nanoseconds;
    bool operator==(const Stamp&) const = default;
  };

  static std::optional<Stamp> stampOf(const std::string& path);
  static std::unique_ptr<TlsIdentity> read(const std::string& path, const char* otherwise);

  Files files_;
  std::optional<Stamp> seen_;  // the file that was read last, be it any use or not
  std::unique_ptr<TlsIdentity> identity_;
};

}  // namespace host
