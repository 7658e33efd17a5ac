// Firmware images: text lines, an empty line, the bytes.
//
//   PHONE-FIRMWARE 1
//   version: 46.84.0.1
//   size: 1048576
//   sha256: 64 hexadecimal digits
#pragma once

#include <openssl/sha.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

// Where the image that the phone runs lies, if it is not the delivered one, and the key that has its version.
inline constexpr char kFirmwareImage[] = "/data/firmware.img";
inline constexpr char kFirmwareKey[] = "PhoneFirmware";

inline constexpr std::size_t kMaxImageHead = 512;  // bytes, the empty line included
inline constexpr std::int64_t kMaxImageSize = 64 << 20;

struct ImageHead {
  std::string version;  // 1 to 31 letters, digits, ".", "-" and "_"
  std::int64_t size;    // 1 to kMaxImageSize
  std::string sha256;   // in lower case
};

// The head of an image from its first byte to its empty line; nothing when it is none.
std::optional<ImageHead> parseImageHead(std::string_view text);

// SHA-256 of bytes that come piece by piece.
class ImageHash {
 public:
  ImageHash();

  void add(std::string_view bytes);
  // In lower-case hexadecimal digits; nothing can be added any more.
  std::string finish();

 private:
  SHA256_CTX context_;
};

}  // namespace simulator
