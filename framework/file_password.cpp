#include "framework/file_password.h"

#include <crypt.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "framework/file_utils.h"
#include "platform/log.h"
#include "platform/os_services.h"

namespace {

constexpr std::size_t kBlock = 8;   // characters that crypt(3) looks at
constexpr std::size_t kGroup = 13;  // characters of one crypt(3) result
constexpr std::string_view kSaltAlphabet = "./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// Brings the salt to `length` characters: random filler, and each further group begins with the first one's salt.
void extendSalt(std::string& salt, std::size_t length) {
  while (salt.size() < length) {
    if (!salt.empty() && salt.size() % kGroup == 0) {
      salt.append(salt, 0, 2);
    } else {
      salt += kSaltAlphabet[static_cast<std::size_t>(std::rand()) % kSaltAlphabet.size()];
    }
  }
}

std::size_t blocksOf(std::string_view password) {
  return password.empty() ? 1 : (password.size() - 1) / kBlock + 1;
}

std::size_t hashSize(const char* password) {
  return kGroup * blocksOf(password ? password : "");
}

}  // namespace

filePassword::filePassword(const char* path) {
  std::string content;
  readFile(path, content);
  for (std::string_view rest = content; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t colon = line.find(':');
    if (colon != std::string_view::npos) entries_.emplace_back(line.substr(0, colon), line.substr(colon + 1));
  }
  std::srand(static_cast<unsigned>(osTime()));
}

std::vector<filePassword::Entry>::const_iterator filePassword::find(const char* user) const {
  const std::string_view name = user ? user : "";
  return std::ranges::find_if(entries_, [name](const Entry& entry) { return entry.first == name; });
}

bool filePassword::IsRightUserPassword(const char* user, const char* password) const {
  const auto entry = find(user);
  // A length that cannot match is not worth hashing.
  if (entry == entries_.end() || entry->second.size() != hashSize(password)) return false;
  return GetEncryptedText(password, entry->second.c_str()) == entry->second;
}

bool filePassword::SetUserPassword(const char* user, const char* password) {
  const auto known = find(user);
  std::string hash = newHash(password, known == entries_.end() ? "" : known->second);
  if (hash.empty()) return false;
  if (known == entries_.end()) {
    entries_.emplace_back(user ? user : "", std::move(hash));
    return true;
  }
  if (hash == known->second) return false;
  entries_[static_cast<std::size_t>(known - entries_.begin())].second = std::move(hash);
  return true;
}

bool filePassword::RemoveUser(const char* user) {
  const auto known = find(user);
  if (known == entries_.end()) return false;
  entries_.erase(known);
  return true;
}

void filePassword::SaveToFile(const char* path) const {
  std::string content;
  for (const auto& [name, hash] : entries_) content += name + ":" + hash + "\n";
  replaceFile(path, content);
}

std::string filePassword::GetEncryptedText(const char* password, const char* salt) {
  const std::string text = password ? password : "";
  const std::size_t blocks = blocksOf(text);
  std::string salts = salt ? salt : "";
  extendSalt(salts, kGroup * blocks);
  std::string hash;
  const auto work = std::make_unique<crypt_data>();
  for (std::size_t i = 0; i < blocks; ++i) {
    const char* result = crypt_r(text.c_str() + kBlock * i, salts.substr(kGroup * i, 2).c_str(), work.get());
    if (result && result[0] != '*') hash += result;  // a refused salt gives "*0" or "*1"
  }
  return hash;
}

std::string filePassword::newHash(const char* password, const std::string& old) {
  for (const char* salt : {old.c_str(), ""}) {
    std::string hash = GetEncryptedText(password, salt);
    if (hash.size() == hashSize(password)) return hash;
  }
  log_log(kWebLog, kLogError, "filePassword: no hash can be made\n");
  return {};
}

void EncryptString(const char* plain, std::string& output, const char* salt) {
  output += filePassword::GetEncryptedText(plain, salt);
}
