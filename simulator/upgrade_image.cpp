// The newer interface loads 2 MiB of the library for one sum.
#define OPENSSL_SUPPRESS_DEPRECATED
#include "simulator/upgrade_image.h"

#include <algorithm>
#include <cctype>

#include "simulator/number.h"

namespace simulator {
namespace {

constexpr std::string_view kFirstLine = "PHONE-FIRMWARE 1";
constexpr std::size_t kMaxVersion = 31;
constexpr std::size_t kHashDigits = 64;

// Takes the next line off the front; nothing when it does not begin with `name`.
std::optional<std::string_view> takeLine(std::string_view& text, std::string_view name) {
  const auto end = text.find('\n');
  if (end == std::string_view::npos || !text.starts_with(name)) return std::nullopt;
  const std::string_view value = text.substr(name.size(), end - name.size());
  text.remove_prefix(end + 1);
  return value;
}

bool isVersion(std::string_view text) {
  const auto fits = [](unsigned char c) { return (c < 0x80 && std::isalnum(c)) || c == '.' || c == '-' || c == '_'; };
  return !text.empty() && text.size() <= kMaxVersion && std::all_of(text.begin(), text.end(), fits);
}

std::optional<std::string> hashOf(std::string_view text) {
  std::string digits(text);
  std::transform(digits.begin(), digits.end(), digits.begin(), [](unsigned char c) { return std::tolower(c); });
  const bool isHash = digits.size() == kHashDigits && digits.find_first_not_of("0123456789abcdef") == std::string::npos;
  return isHash ? std::optional(digits) : std::nullopt;
}

}  // namespace

std::optional<ImageHead> parseImageHead(std::string_view text) {
  const auto first = takeLine(text, kFirstLine), version = takeLine(text, "version: "), size = takeLine(text, "size: "),
             sha256 = takeLine(text, "sha256: "), last = takeLine(text, "");
  if (!first || !version || !size || !sha256 || !last) return std::nullopt;
  if (!first->empty() || !isVersion(*version) || !last->empty() || !text.empty()) return std::nullopt;
  const auto bytes = decimalNumber<std::int64_t>(*size);
  const auto hash = hashOf(*sha256);
  if (!bytes || *bytes < 1 || *bytes > kMaxImageSize || !hash) return std::nullopt;
  return ImageHead{std::string(*version), *bytes, *hash};
}

ImageHash::ImageHash() {
  SHA256_Init(&context_);
}

void ImageHash::add(std::string_view bytes) {
  SHA256_Update(&context_, bytes.data(), bytes.size());
}

std::string ImageHash::finish() {
  unsigned char digest[SHA256_DIGEST_LENGTH];
  SHA256_Final(digest, &context_);
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : digest) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace simulator
