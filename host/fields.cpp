#include "host/fields.h"

#include <utility>

namespace host {
namespace {
int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The byte that `text` codes at `at` as %XX; -1 when it does not.
int codedByte(std::string_view text, std::size_t at) {
  if (text[at] != '%' || at + 2 >= text.size()) return -1;
  const int high = hexValue(text[at + 1]), low = hexValue(text[at + 2]);
  return high < 0 || low < 0 ? -1 : high * 16 + low;
}
}  // namespace

std::string percentDecode(std::string_view text, bool plusIsBlank) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int byte = codedByte(text, i);
    if (byte >= 0) {
      out += static_cast<char>(byte);
      i += 2;
    } else {
      out += plusIsBlank && text[i] == '+' ? ' ' : text[i];
    }
  }
  return out;
}

FieldResult parseUrlEncoded(std::string_view text, Fields& fields) {
  while (!text.empty()) {
    const std::string_view pair = text.substr(0, text.find('&'));
    text.remove_prefix(std::min(text.size(), pair.size() + 1));
    if (pair.empty()) continue;
    const std::size_t equals = std::min(pair.find('='), pair.size());
    std::string value = equals < pair.size() ? percentDecode(pair.substr(equals + 1), true) : std::string();
    const FieldResult result = fields.add(percentDecode(pair.substr(0, equals), true), std::move(value));
    if (result != FieldResult::kOk) return result;
  }
  return FieldResult::kOk;
}

FieldResult Fields::add(std::string name, std::string value) {
  Field field{std::move(name), {}};
  field.values.push_back(std::move(value));
  return add(std::move(field));
}

FieldResult Fields::addFile(std::string name, std::string path, std::string browserName) {
  Field field{std::move(name), {}};
  field.values.push_back(std::move(path));
  field.values.push_back(std::move(browserName));
  return add(std::move(field));
}

FieldResult Fields::add(Field field) {
  std::size_t bytes = field.name.size();
  bool nul = field.name.find('\0') != std::string::npos;
  for (const std::string& value : field.values) {
    bytes += value.size();
    nul = nul || value.find('\0') != std::string::npos;
  }
  if (nul) return FieldResult::kNul;
  if (bytes > kMaxFieldBytes - bytes_ || fields_.size() >= kMaxFieldCount) return FieldResult::kTooLarge;
  bytes_ += bytes;
  fields_.push_back(std::move(field));
  return FieldResult::kOk;
}

const std::string* Fields::first(std::string_view name) const {
  for (const Field& field : fields_) {
    if (field.name == name) return &field.values.front();
  }
  return nullptr;
}

}  // namespace host
