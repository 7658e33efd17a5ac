#include "simulator/ini_file.h"

#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include <algorithm>

namespace simulator {
namespace {

constexpr std::string_view kMark = "\\:";
constexpr char kHexDigits[] = "0123456789abcdef";

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

bool needsMark(std::string_view text, std::string_view specials) {
  if (text.empty()) return false;
  return text.front() == ' ' || text.back() == ' ' || text.starts_with(kMark) ||
         std::any_of(text.begin(), text.end(),
                     [&](char c) { return isControl(c) || specials.find(c) != std::string_view::npos; });
}

std::string marked(std::string_view text, std::string_view specials) {
  std::string result(kMark);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool edge = c == ' ' && (i == 0 || i + 1 == text.size());
    if (c == '\\') {
      result += "\\\\";
    } else if (edge || isControl(c) || specials.find(c) != std::string_view::npos) {
      const auto byte = static_cast<unsigned char>(c);
      result += {'\\', 'x', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
    } else {
      result += c;
    }
  }
  return result;
}

std::string encode(std::string_view text, std::string_view specials) {
  return needsMark(text, specials) ? marked(text, specials) : std::string(text);
}

// The value of a lower-case hexadecimal digit, -1 for any other character.
int hexDigit(char c) {
  const auto place = std::string_view(kHexDigits, 16).find(c);
  return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

// Takes one character, escaped or not, off the front; false when the escape is broken.
bool takeCharacter(std::string_view& text, std::string& result) {
  std::size_t length = 1;
  char c = text[0];
  if (text.starts_with("\\\\")) {
    length = 2;
  } else if (text.size() >= 4 && text.starts_with("\\x") && hexDigit(text[2]) >= 0 && hexDigit(text[3]) >= 0) {
    c = static_cast<char>(hexDigit(text[2]) * 16 + hexDigit(text[3]));
    length = 4;
  } else if (c == '\\') {
    return false;
  }
  result += c;
  text.remove_prefix(length);
  return true;
}

std::string_view trimmed(std::string_view line) {
  const auto first = line.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

bool isIniLine(std::string_view line) {
  if (line.empty() || line[0] == ';' || line[0] == '#') return true;
  if (line[0] == '[') return line.find(']') != std::string_view::npos;
  return line.find('=', 1) != std::string_view::npos;
}

// The library reads on over line ends for the "]" of a section that lacks it: such lines are left out, as it does with
// other broken ones.
std::string withoutOpenSections(std::string_view bytes) {
  std::string result(bytes.starts_with(SI_UTF8_SIGNATURE) ? SI_UTF8_SIGNATURE : "");
  bytes.remove_prefix(result.size());
  while (!bytes.empty()) {
    const std::size_t length = std::min(bytes.find_first_of("\r\n"), bytes.size() - 1) + 1;
    const std::string_view line = bytes.substr(0, length);
    const auto first = line.find_first_not_of(" \t");
    const bool isOpen =
        first != std::string_view::npos && line[first] == '[' && line.find(']') == std::string_view::npos;
    if (!isOpen) result += line;
    bytes.remove_prefix(length);
  }
  return result;
}

}  // namespace

std::string encodeIniSection(std::string_view name) {
  return encode(name, "]");
}

std::string encodeIniKey(std::string_view key) {
  if (key.empty()) return std::string(kMark);
  const bool opensOther = key[0] == ';' || key[0] == '#' || key[0] == '[' || key.starts_with(SI_UTF8_SIGNATURE);
  return opensOther ? marked(key, "=;#[") : encode(key, "=");
}

std::string encodeIniValue(std::string_view value) {
  return encode(value, "");
}

std::string decodeIniText(std::string_view text) {
  if (!text.starts_with(kMark)) return std::string(text);
  std::string result;
  for (std::string_view rest = text.substr(kMark.size()); !rest.empty();) {
    if (!takeCharacter(rest, result)) return std::string(text);
  }
  return result;
}

bool isIniText(std::string_view bytes) {
  if (bytes.starts_with(SI_UTF8_SIGNATURE)) bytes.remove_prefix(3);
  while (!bytes.empty()) {
    const auto end = std::min(bytes.find('\n'), bytes.size() - 1);
    const std::string_view line = trimmed(bytes.substr(0, end + 1 - (bytes[end] == '\n')));
    if (!isIniLine(line) || std::any_of(line.begin(), line.end(), [](char c) { return isControl(c) && c != '\t'; })) {
      return false;
    }
    bytes.remove_prefix(end + 1);
  }
  return true;
}

struct IniFile::Parsed {
  CSimpleIniCaseA ini;
};

IniFile::IniFile(const std::string& bytes) : parsed_(std::make_unique<Parsed>()) {
  parsed_->ini.SetSpaces(false);
  parsed_->ini.LoadData(withoutOpenSections(bytes));
}

IniFile::IniFile(IniFile&&) noexcept = default;
IniFile& IniFile::operator=(IniFile&&) noexcept = default;
IniFile::~IniFile() = default;

std::optional<std::string> IniFile::get(const std::string& section, const std::string& key) const {
  const char* value = parsed_->ini.GetValue(encodeIniSection(section).c_str(), encodeIniKey(key).c_str());
  if (value == nullptr) return std::nullopt;
  return decodeIniText(value);
}

void IniFile::set(const std::string& section, const std::string& key, const std::string& value) {
  parsed_->ini.SetValue(encodeIniSection(section).c_str(), encodeIniKey(key).c_str(), encodeIniValue(value).c_str());
}

std::vector<std::string> IniFile::sections() const {
  CSimpleIniCaseA::TNamesDepend sections;
  parsed_->ini.GetAllSections(sections);
  sections.sort(CSimpleIniCaseA::Entry::LoadOrder());
  std::vector<std::string> names;
  for (const auto& section : sections) {
    if (*section.pItem != '\0') names.push_back(decodeIniText(section.pItem));
  }
  return names;
}

void IniFile::visit(const Visitor& visitor) const {
  CSimpleIniCaseA::TNamesDepend sections;
  parsed_->ini.GetAllSections(sections);
  sections.sort(CSimpleIniCaseA::Entry::LoadOrder());
  for (const auto& section : sections) {
    const std::string name = decodeIniText(section.pItem);
    CSimpleIniCaseA::TNamesDepend keys;
    parsed_->ini.GetAllKeys(section.pItem, keys);
    keys.sort(CSimpleIniCaseA::Entry::LoadOrder());
    for (const auto& key : keys) {
      visitor(name, decodeIniText(key.pItem), decodeIniText(parsed_->ini.GetValue(section.pItem, key.pItem)));
    }
  }
}

std::string IniFile::text() const {
  std::string result;
  parsed_->ini.Save(result, false);
  // A key that looks like the mark of UTF-8 is not to be taken for it.
  return result.starts_with(SI_UTF8_SIGNATURE) ? "\n" + result : result;
}

}  // namespace simulator
