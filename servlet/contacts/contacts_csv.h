// CSV texts of contacts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The rows of a CSV text, in a text of their own and two numbers a field.
//
// Fields are divided by commas; one that holds a comma or a line end stands in double quotes. Doubled quotes stay two.
// Lines end at "\r\n" where the text has one anywhere, otherwise at "\n". A record of empty fields only is no row. A
// quote that never closes ends its field at the end of the text.
class CsvRows {
 public:
  // Replaces the rows by those of the text, whose byte order mark is no part of its first field. False, without rows,
  // when it has more fields than any directory needs, or rows of the first one's width would.
  bool parse(std::string text);

  std::size_t size() const { return rowEnds_.size(); }
  // What they take in memory.
  std::size_t bytes() const { return text_.capacity() + fields_.capacity() * sizeof(Field); }
  // The number of fields of a row.
  std::size_t width(std::size_t row) const { return rowEnds_[row] - rowBegin(row); }
  // A field; valid as long as the rows. Empty behind the row's last one.
  std::string_view field(std::size_t row, std::size_t column) const;

 private:
  struct Field {
    std::uint32_t begin, length;
  };

  std::size_t rowBegin(std::size_t row) const { return row == 0 ? 0 : rowEnds_[row - 1]; }
  bool parseRecords();
  bool endRecord();

  std::string text_;
  std::vector<Field> fields_;
  std::vector<std::uint32_t> rowEnds_;  // behind the last field of each row
};
