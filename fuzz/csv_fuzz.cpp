// CSV files of contacts: any bytes are parsed, and what is imported is what was parsed. Input: the columns' fields, a
// line of digits, then the file.
#include <algorithm>
#include <pugixml.hpp>

#include "fuzz/phone.h"
#include "servlet/contacts/contacts_csv.h"
#include "servlet/contacts/contacts_preview_document.h"
#include "servlet/contacts/contacts_preview_loops.h"
#include "template/template_list.h"

namespace {

// XML knows no control characters, and texts end at a NUL.
bool canBeCarried(std::string_view text) {
  return text.find_first_of(std::string_view("\0\1\2\3\4\5\6\7\10\13\14\16\17", 13)) == std::string_view::npos;
}

void checkRows(const CsvRows& rows) {
  for (std::size_t row = 0; row < rows.size(); ++row) {
    bool isFilled = false;
    for (std::size_t i = 0; i < rows.width(row); ++i) isFilled |= !rows.field(row, i).empty();
    require(isFilled, "a row holds something");
    require(rows.field(row, rows.width(row)).empty(), "nothing is behind a row");
  }
}

void checkDocument(const CsvRows& rows, const std::vector<int>& columns) {
  pugi::xml_document document;
  const std::string text = contactDocument(rows, 0, columns);
  require(document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata_single),
          "the document is XML");
  std::size_t row = 0;
  for (const pugi::xml_node contact : document.first_child().children("contact")) {
    if (!columns.empty() && columns[0] == kDisplayName && canBeCarried(rows.field(row, 0))) {
      require(contact.attribute("display_name").value() == rows.field(row, 0), "a name comes back");
    }
    ++row;
  }
  require(row == rows.size(), "each row is a contact");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzedPhone();
  std::string_view input = inputText(data, size);
  std::vector<int> columns;
  for (const char digit : takeLine(input)) {
    if (std::find(columns.begin(), columns.end(), digit - '0') == columns.end()) columns.push_back(digit - '0');
  }
  CsvRows rows;
  if (!rows.parse(std::string(input))) return 0;
  checkRows(rows);
  checkDocument(rows, columns);
  const TemplateArena arena;
  GetTitleLoop(rows);
  GetCSVContactLoop(rows, false, rows.size() > 0 ? rows.width(0) : 0);
  return 0;
}
