#include "simulator/xml_file.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/phone_root.h"
#include "simulator/files.h"

namespace simulator {
namespace {

// An element or attribute takes up to 64 bytes of memory and as little as 3 of the file.
constexpr std::ptrdiff_t kMaxMarks = 2'000'000;

bool hasTooMany(std::string_view text) {
  return std::count_if(text.begin(), text.end(), [](char c) { return c == '<' || c == '='; }) > kMaxMarks;
}

bool isReadable(std::string_view text) {
  return text.size() <= kMaxFileSize && !hasTooMany(text);
}

bool hasOneRoot(const pugi::xml_document& document) {
  const auto children = document.children();
  return std::count_if(children.begin(), children.end(),
                       [](const pugi::xml_node& node) { return node.type() == pugi::node_element; }) == 1;
}

class TextWriter : public pugi::xml_writer {
 public:
  explicit TextWriter(std::string& text) : text_(text) {}
  void write(const void* data, std::size_t size) override { text_.append(static_cast<const char*>(data), size); }

 private:
  std::string& text_;
};

// Gives the text to the document, which parses it where it lies.
bool parse(pugi::xml_document& document, std::optional<std::string> text, unsigned options) {
  const std::size_t size = text->size();
  void* memory = pugi::get_memory_allocation_function()(size + 1);
  if (memory == nullptr) return false;
  std::memcpy(memory, text->data(), size);
  text.reset();
  return document.load_buffer_inplace_own(memory, size, options) && hasOneRoot(document);
}

}  // namespace

pugi::xml_node readXml(const std::string& path, pugi::xml_document& document, unsigned options) {
  document.reset();
  std::optional<std::string> text = readFile(phonePath(path));
  if (!text || !isReadable(*text)) return {};
  if (!parse(document, std::move(text), options)) document.reset();
  return document.document_element();
}

std::string xmlText(const pugi::xml_document& document) {
  std::string text;
  TextWriter writer(text);
  document.save(writer, "\t");
  return text;
}

XmlRows::XmlRows(const char* root, std::size_t size)
    : root_(root), text_("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n") {
  text_.reserve(size);
  text_ += "<" + root_ + ">\n";
}

pugi::xml_node XmlRows::add(const char* name) {
  end();
  return row_.append_child(name);
}

std::string XmlRows::take() {
  end();
  text_ += "</" + root_ + ">\n";
  return std::move(text_);
}

void XmlRows::end() {
  TextWriter writer(text_);
  if (row_.first_child()) row_.first_child().print(writer, "\t", pugi::format_default, pugi::encoding_utf8, 1);
  row_.reset();
}

bool replaceXml(const std::string& path, std::string_view text) {
  return isReadable(text) && replaceFile(path, text);
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
