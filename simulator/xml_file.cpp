#include "simulator/xml_file.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/phone_root.h"
#include "simulator/files.h"

namespace simulator {
namespace {

// An element or attribute takes up to 64 bytes of memory and as little as 3 of the file.
constexpr std::ptrdiff_t kMaxMarks = 2'000'000;

bool hasTooMany(std::string_view text) {
  return std::count_if(text.begin(), text.end(), [](char c) { return c == '<' || c == '='; }) > kMaxMarks;
}

bool hasOneRoot(const pugi::xml_document& document) {
  const auto children = document.children();
  return std::count_if(children.begin(), children.end(),
                       [](const pugi::xml_node& node) { return node.type() == pugi::node_element; }) == 1;
}

class TextWriter : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
  std::string text;
};

}  // namespace

pugi::xml_node readXml(const std::string& path, pugi::xml_document& document, unsigned options) {
  document.reset();
  const std::optional<std::string> text = readFile(phonePath(path));
  if (!text || hasTooMany(*text)) return {};
  if (!document.load_buffer(text->data(), text->size(), options) || !hasOneRoot(document)) document.reset();
  return document.document_element();
}

std::string xmlText(const pugi::xml_document& document) {
  TextWriter writer;
  document.save(writer, "\t");
  return std::move(writer.text);
}

pugi::xml_node newXml(pugi::xml_document& document, const char* root) {
  document.reset();
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "utf-8";
  return document.append_child(root);
}

bool fitsXml(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n' || c == '\r';
  });
}

}  // namespace simulator
