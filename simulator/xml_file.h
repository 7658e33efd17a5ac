// XML files of the phone, by their paths there.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace simulator {

// Reads a file and gives its outermost element; null when the file cannot be read, is above 64 MiB, is no well-formed
// XML with one outermost element, or holds so many elements and attributes that they would fill the memory.
pugi::xml_node readXml(const std::string& path, pugi::xml_document& document, unsigned options = pugi::parse_default);

// The text of a file, indented with one tab a level.
std::string xmlText(const pugi::xml_document& document);

// The text of a file of many elements below its outermost one, of which only the last is held as more than text.
class XmlRows {
 public:
  // `size` is about what the text will take.
  XmlRows(const char* root, std::size_t size);
  // A new element, valid until the next call.
  pugi::xml_node add(const char* name);
  std::string take();

 private:
  void end();

  pugi::xml_document row_;
  std::string root_, text_;
};

// Replaces the file with a real path by a text. False, with the file untouched, when that fails, and for a text that
// readXml() would not take.
bool replaceXml(const std::string& path, std::string_view text);

// An empty document with an outermost element.
pugi::xml_node newXml(pugi::xml_document& document, const char* root);

// False for a text with control characters that XML cannot carry.
bool fitsXml(const std::string& text);

}  // namespace simulator
