#include "framework/text_utils.h"

#include <algorithm>
#include <charconv>

#include "platform/registry.h"

namespace {
constexpr std::size_t kReplaceSpace = 512;
constexpr std::size_t kIniValueSize = 1024;
constexpr std::size_t kRingLabelSize = 256;

bool isAsciiAlnum(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}
}  // namespace

void cutText(std::string& text, std::size_t size) {
  if (text.size() >= size) text.resize(size ? size - 1 : 0);
}

void cutUtf8(std::string& text, std::size_t size) {
  if (text.size() < size) return;
  const auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
  std::size_t end = size ? size - 1 : 0;
  while (end > 0 && isContinuation(text[end])) --end;
  text.resize(end);
}

std::optional<int> parseInt(std::string_view text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<int> parseInt(const char* text) {
  return text ? parseInt(std::string_view(text)) : std::nullopt;
}

bool isPlainName(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return isAsciiAlnum(c) || c == '-' || c == '_'; });
}

int ReplaceStr(std::string* text, const char* from, const char* to) {
  if (!text || !from || !to || !*from) return -1;
  if (text->find(from) == std::string::npos) return -1;
  ReplaceStrByStr(*text, from, to);
  cutText(*text, kReplaceSpace);
  return 0;
}

void ReplaceSpecailStrs(std::string& text) {
  if (text.find_first_of("&<>\"") == std::string::npos) return;
  ReplaceStr(&text, "&", "&amp;");
  ReplaceStr(&text, "<", "&lt;");
  ReplaceStr(&text, ">", "&gt;");
  ReplaceStr(&text, "\"", "&quot;");
}

std::string templateText(std::string_view text) {
  static constexpr std::string_view kEscapes[] = {"&amp;", "&lt;", "&gt;", "&quot;"};
  std::string result;
  for (std::size_t sign; (sign = text.find('&')) != std::string_view::npos; text.remove_prefix(sign + 1)) {
    const std::string_view rest = text.substr(sign);
    const bool isEscape = std::ranges::any_of(kEscapes, [&](std::string_view one) { return rest.starts_with(one); });
    result.append(text.substr(0, sign)).append(isEscape ? "&amp;" : "&");
  }
  return result.append(text);
}

int ReplaceStrByStr(std::string& text, std::string_view from, std::string_view to) {
  if (from.empty()) return 1;
  std::string result;
  std::size_t start = 0;
  for (std::size_t found; (found = text.find(from, start)) != std::string::npos; start = found + from.size()) {
    result.append(text, start, found - start).append(to);
  }
  text = result.append(text, start);
  return 1;
}

int restructureString(char character, std::string_view source, std::string& output) {
  if (character != '"') return 1;
  for (const char c : source) {
    if (c == '"') output += '\\';
    output += c;
  }
  return 1;
}

void removeSpace(std::string& text) {
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
  text.erase(text.find_last_not_of(' ') + 1);
}

std::string GetStringAndReplaceChar(ETL_SubClass& section, const char* key, const char* fallback) {
  std::string value = section.registryGetString(key, "");
  cutText(value, kIniValueSize);
  if (value.empty() && fallback) value = fallback;
  ReplaceSpecailStrs(value);
  return value;
}

bool GetSimpleUpdateFileName(const char* path, std::string* name) {
  if (!path || !name) return false;
  const std::string_view text = path;
  const std::size_t slash = text.find_last_of("/\\");
  *name = slash == std::string_view::npos ? text : text.substr(slash + 1);
  return true;
}

std::string GetRealRingName(const char* ring, std::string* label) {
  const std::string_view text = ring ? ring : "";
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return {};
  if (label) {
    *label = text.substr(0, colon);
    cutText(*label, kRingLabelSize);
  }
  return std::string(text.substr(colon + 1));
}
