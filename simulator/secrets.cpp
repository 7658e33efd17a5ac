#include "platform/secrets.h"

#include <openssl/hmac.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/ini_file.h"
#include "simulator/secret_names.h"

namespace fs = std::filesystem;

namespace {

constexpr int kLogModule = 2;

// --- Files

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  return first == std::string_view::npos ? text.substr(0, 0)
                                         : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The bytes of a line up to the value of a secret; all of it when it holds none.
std::string_view withoutSecret(std::string_view line) {
  const auto equals = line.find('=');
  const std::string_view key = trimmed(line.substr(0, std::min(equals, line.size())));
  if (equals == std::string_view::npos || key.empty() || key[0] == ';' || key[0] == '#' || key[0] == '[') return line;
  return simulator::isSecretName(simulator::decodeIniText(key)) ? line.substr(0, equals + 1) : line;
}

std::string withoutSecrets(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
    result += withoutSecret(text.substr(0, length));
    const std::size_t end = std::min(text.find_first_not_of("\r\n", length), text.size());
    result += text.substr(length, end - length);
    text.remove_prefix(end);
  }
  return result;
}

bool isIniFile(const fs::directory_entry& entry) {
  const fs::path ending = entry.path().extension();
  return entry.symlink_status().type() == fs::file_type::regular && (ending == ".ini" || ending == ".cfg");
}

// The file keeps its rights.
bool cleanFile(const fs::path& path) {
  const std::optional<std::string> text = simulator::readFile(path.string());
  if (!text) return false;
  const std::string clean = withoutSecrets(*text);
  if (clean == *text) return true;
  const fs::perms rights = fs::status(path).permissions();
  if (!simulator::replaceFile(path.string(), clean)) return false;
  fs::permissions(path, rights);
  return true;
}

// --- Passwords: each printable ASCII character becomes another one, all other bytes stay as they are, so that the
// result is text of the same length. Both halves are turned in several rounds, each by what the other one holds.

constexpr unsigned char kFirst = 0x20;
constexpr unsigned char kCount = 0x7f - kFirst;
constexpr int kRounds = 8;
constexpr char kKey[] = "the accounts of this phone in software";

// `block` numbers the bytes' origin within a round.
std::array<unsigned char, 32> roundBytes(int round, unsigned block, std::string_view other) {
  std::string text{static_cast<char>(round), static_cast<char>(block)};
  text += other;
  std::array<unsigned char, 32> bytes{};
  HMAC(EVP_sha256(), kKey, sizeof kKey - 1, reinterpret_cast<const unsigned char*>(text.data()), text.size(),
       bytes.data(), nullptr);
  return bytes;
}

void turn(char* half, std::size_t length, std::string_view other, int round, bool back) {
  std::array<unsigned char, 32> bytes{};
  for (std::size_t i = 0; i < length; ++i) {
    if (i % bytes.size() == 0) bytes = roundBytes(round, static_cast<unsigned>(i / bytes.size()), other);
    const auto character = static_cast<unsigned char>(half[i]);
    if (character < kFirst || character >= kFirst + kCount) continue;
    const unsigned step = bytes.at(i % bytes.size()) % kCount;
    half[i] = static_cast<char>(kFirst + (character - kFirst + (back ? kCount - step : step)) % kCount);
  }
}

bool turnAll(const char* text, char* result, std::size_t size, bool back) {
  if (result == nullptr || size == 0) return false;
  result[0] = '\0';
  const std::size_t length = text != nullptr ? std::strlen(text) : size;
  if (length >= size) return false;
  std::memcpy(result, text, length + 1);
  const std::size_t middle = length / 2;
  for (int i = 0; i < kRounds; ++i) {
    const int round = back ? kRounds - 1 - i : i;
    if (round % 2 == 0) {
      turn(result + middle, length - middle, {result, middle}, round, back);
    } else {
      turn(result, middle, {result + middle, length - middle}, round, back);
    }
  }
  return true;
}

}  // namespace

int configParser_CleanPassword(const char* files, const char*) {
  const std::string folder = files != nullptr ? phonePath(files) : "";
  bool isClean = true;
  try {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (isIniFile(entry)) isClean = cleanFile(entry.path()) && isClean;
    }
  } catch (const fs::filesystem_error& error) {
    log_log(kLogModule, 4, "configParser_CleanPassword() %s\n", error.what());
    return -1;
  }
  return isClean ? 0 : -1;
}

bool pw_data_encrypt(const char* text, char* result, std::size_t size) {
  return turnAll(text, result, size, false);
}

bool pw_data_decrypt(const char* text, char* result, std::size_t size) {
  return turnAll(text, result, size, true);
}
