// Ini files in memory. Sections, keys and values are kept byte for byte: what the format cannot carry (blanks at the
// edges, line ends and other control characters, "=" in a key, "]" in a section, an empty key) is written behind the
// mark "\:" with "\xNN" for such a byte and "\\" for a backslash. Text that begins with the mark is written so, too.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

std::string encodeIniSection(std::string_view name);
std::string encodeIniKey(std::string_view key);
std::string encodeIniValue(std::string_view value);

// The text behind what a file holds; a text without the mark, or with a broken one, is given back as it is.
std::string decodeIniText(std::string_view text);

// True when every line is a comment, a section, a key with a value or blank, and no byte is one that text never holds.
bool isIniText(std::string_view bytes);

class IniFile {
 public:
  explicit IniFile(const std::string& bytes);
  IniFile(IniFile&&) noexcept;
  IniFile& operator=(IniFile&&) noexcept;
  ~IniFile();

  std::optional<std::string> get(const std::string& section, const std::string& key) const;
  void set(const std::string& section, const std::string& key, const std::string& value);

  // The names of the sections, in the order of the file; none for keys above the first section.
  std::vector<std::string> sections() const;

  // In the order of the file.
  using Visitor = std::function<void(const std::string& section, const std::string& key, std::string value)>;
  void visit(const Visitor& visitor) const;

  // The file's new text: order and comments are kept, new keys follow at the end of their section.
  std::string text() const;

 private:
  struct Parsed;
  std::unique_ptr<Parsed> parsed_;
};

}  // namespace simulator
