#include "servlet/contacts/contacts_preview_document.h"

#include <algorithm>
#include <optional>
#include <pugixml.hpp>

#include "framework/encoding.h"
#include "framework/file_utils.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_photo_store.h"

namespace {

// What an element and an attribute take at the most, beside their values.
constexpr std::size_t kElementSize = 16;
constexpr std::size_t kAttributeSize = 20;

constexpr char kPhotoAttribute[] = "default_photo";

enum class PhotoName { kWhole, kLacksExtension };

// Stores the picture that the base64 text holds under the name, to which the picture's own extension is added where
// it lacks one. False when that fails.
bool DecPhotoData2File(std::string_view text, std::string& name, PhotoName kind) {
  static constexpr const char* kExtensions[] = {nullptr, ".bmp", ".jpg", ".png"};
  std::string picture;
  const int length = static_cast<int>(text.size());
  if (Base64Dec(picture, std::string(text).c_str(), length) < 0) {
    log_log(kWebLog, kLogWarning, "Fail to Base64Dec len=[%d]\n", length);
    return false;
  }
  if (kind == PhotoName::kLacksExtension) {
    const char* extension = kExtensions[GetImageTypeByData(picture)];
    if (!extension) return false;
    name += extension;
  }
  return isPhotoName(name) && replaceFile(photoSource(name).c_str(), picture) && storePhoto(name) == 1;
}

void setAttribute(pugi::xml_node contact, const char* name, std::string_view value) {
  pugi::xml_attribute attribute = contact.attribute(name);
  if (!attribute) attribute = contact.append_attribute(name);
  attribute.set_value(std::string(value).c_str());
}

// Turns rows into elements.
class RowReader {
 public:
  RowReader(const CsvRows& rows, const std::vector<int>& columns)
      : rows_(rows), columns_(columns), photo_(columnOf(kPhoto)), photoData_(columnOf(kPhotoData)) {}

  void read(std::size_t row, pugi::xml_node contact) const {
    const std::size_t width = std::min(columns_.size(), rows_.width(row));
    for (std::size_t column = 0; column < width; ++column) {
      const std::string_view field = rows_.field(row, column);
      const int index = columns_[column];
      const char* name = "";
      if (index == kPhoto) {
        readPhoto(row, field, contact);
      } else if (index == kPhotoData) {
        readPhotoData(row, field, contact);
      } else if (index != kIgnored && GetParaNameByIndex(index, &name)) {
        setAttribute(contact, name, field);
      }
    }
  }

 private:
  std::optional<std::size_t> columnOf(int index) const {
    const auto found = std::ranges::find(columns_, index);
    if (found == columns_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - columns_.begin());
  }
  std::string_view fieldIn(std::size_t row, std::optional<std::size_t> column) const {
    return column ? rows_.field(row, *column) : std::string_view();
  }

  void readPhoto(std::size_t row, std::string_view photo, pugi::xml_node contact) const {
    if (photo.starts_with(kUserPhotoSource)) {
      std::string name(photo.substr(std::string_view(kUserPhotoSource).size()));
      const std::string_view data = fieldIn(row, photoData_);
      const bool isThere = data.empty() ? isPhotoName(name) && GetFileSize(userPhotoPath(name).c_str()) >= 0
                                        : DecPhotoData2File(data, name, PhotoName::kWhole);
      if (!isThere) return;
    }
    setAttribute(contact, kPhotoAttribute, photo);
  }

  // A picture without a photo value is named like its contact.
  void readPhotoData(std::size_t row, std::string_view data, pugi::xml_node contact) const {
    if (data.empty() || !fieldIn(row, photo_).empty()) return;
    std::string name = contact.attribute("display_name").value();
    if (DecPhotoData2File(data, name, PhotoName::kLacksExtension)) {
      setAttribute(contact, kPhotoAttribute, kUserPhotoSource + name);
    }
  }

  const CsvRows& rows_;
  const std::vector<int>& columns_;
  std::optional<std::size_t> photo_, photoData_;
};

class TextWriter final : public pugi::xml_writer {
 public:
  explicit TextWriter(std::string& text) : text_(text) {}
  void write(const void* data, std::size_t size) override { text_.append(static_cast<const char*>(data), size); }

 private:
  std::string& text_;
};

}  // namespace

// Written element by element, so that never more than one is held beside the text.
std::string contactDocument(const CsvRows& rows, std::size_t first, const std::vector<int>& columns) {
  std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  if (rows.size() <= first) return text + "<root_contact />\n";
  TextWriter writer(text);
  const RowReader reader(rows, columns);
  text.reserve(rows.bytes() + (rows.size() - first) * (kElementSize + columns.size() * kAttributeSize));
  text += "<root_contact>\n";
  for (std::size_t row = first; row < rows.size(); ++row) {
    pugi::xml_document document;
    pugi::xml_node contact = document.append_child("contact");
    reader.read(row, contact);
    contact.print(writer, "\t", pugi::format_default, pugi::encoding_utf8, 1);
  }
  return text.append("</root_contact>\n");
}
