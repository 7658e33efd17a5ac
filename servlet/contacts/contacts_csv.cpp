#include "servlet/contacts/contacts_csv.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Four times the fields of a full directory.
constexpr std::size_t kMaxFields = 400'000;

// Where the field at hand begins, and what was seen of it.
class FieldScanner {
 public:
  explicit FieldScanner(std::size_t begin) : begin_(begin) {}

  void quote(std::size_t position) {
    if (quotes_++ == 0) begin_ = position + 1;
  }
  bool isOpen() const { return quotes_ % 2 != 0; }
  // The field's text, which ends before `end`.
  std::pair<std::size_t, std::size_t> take(std::string_view text, std::size_t end) const {
    if (end > begin_ && text[end - 1] == '"') --end;
    return {begin_, end > begin_ ? end - begin_ : 0};
  }

 private:
  std::size_t begin_;
  std::size_t quotes_ = 0;
};

}  // namespace

bool CsvRows::parse(std::string text) {
  text_ = std::move(text);
  fields_.clear();
  rowEnds_.clear();
  if (text_.size() <= std::numeric_limits<std::uint32_t>::max() && parseRecords()) {
    return true;
  }
  *this = CsvRows();
  return false;
}

std::string_view CsvRows::field(std::size_t row, std::size_t column) const {
  if (column >= width(row)) return {};
  const Field& field = fields_[rowBegin(row) + column];
  return std::string_view(text_).substr(field.begin, field.length);
}

bool CsvRows::parseRecords() {
  const std::string_view text = text_;
  const std::string_view lineEnd = text.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
  std::size_t position = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  FieldScanner scanner(position);
  const auto ends = static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return c == ',' || c == '\n'; }));
  fields_.reserve(std::min(ends, kMaxFields) + 1);
  const auto endField = [&](std::size_t end, std::size_t next) {
    const auto [begin, length] = scanner.take(text, end);
    fields_.push_back({static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(length)});
    scanner = FieldScanner(next);
    return fields_.size() <= kMaxFields;
  };
  while ((position = text.find_first_of("\",\r\n", position)) != std::string_view::npos) {
    if (text[position] == '"') scanner.quote(position);
    const bool isEnd = text.substr(position).starts_with(lineEnd);
    if (scanner.isOpen() || (text[position] != ',' && !isEnd)) {
      ++position;
      continue;
    }
    const std::size_t next = position + (isEnd ? lineEnd.size() : 1);
    if (!endField(position, next) || (isEnd && !endRecord())) return false;
    position = next;
  }
  return endField(text.size(), text.size()) && endRecord();
}

// Takes the fields since the last row as a row, unless all are empty.
bool CsvRows::endRecord() {
  const auto begin = fields_.begin() + static_cast<std::ptrdiff_t>(rowEnds_.empty() ? 0 : rowEnds_.back());
  if (std::all_of(begin, fields_.end(), [](const Field& field) { return field.length == 0; })) {
    fields_.erase(begin, fields_.end());
    return true;
  }
  rowEnds_.push_back(static_cast<std::uint32_t>(fields_.size()));
  return size() * width(0) <= kMaxFields;
}
