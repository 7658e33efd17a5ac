#include "servlet/contacts/contacts_preview_loops.h"

#include <string>
#include <vector>

#include "framework/text_utils.h"
#include "servlet/contacts/contacts_preview_fields.h"

namespace {

constexpr std::size_t kCellSize = 50;

// Makes the cells of one row after the other. A cell that is the same as the one above it is used again: whole columns
// of many files are alike.
class CellMaker {
 public:
  CellMaker(const CsvRows& rows, std::size_t columns) : rows_(rows), above_(columns) {}

  TMPL_loop* row(std::size_t row) {
    for (std::size_t column = 0; column < above_.size(); ++column) fill(above_[column], rows_.field(row, column));
    TMPL_loop* cells = nullptr;
    for (const Cell& cell : above_) cells = TMPL_add_varlist(cells, cell.list);
    return cells;
  }

 private:
  struct Cell {
    std::string_view text;
    TMPL_varlist* list = nullptr;
  };

  static void fill(Cell& cell, std::string_view text) {
    if (cell.list && cell.text == text) return;
    std::string shown(text.substr(0, kCellSize));
    cutUtf8(shown, kCellSize);
    cell = {text, TMPL_add_var(nullptr, "optionvalue", templateText(shown).c_str(), nullptr)};
  }

  const CsvRows& rows_;
  std::vector<Cell> above_;
};

}  // namespace

TMPL_loop* GetContactParametersLoop(int phoneType) {
  TMPL_loop* loop = nullptr;
  for (int i = 0; i < kContactFields; ++i) {
    const char* name = "";
    if (!hasContactField(phoneType, i) || !GetParaNameByIndex(i, &name)) continue;
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "index", std::to_string(i).c_str(), "value", name, nullptr));
  }
  return loop;
}

TMPL_loop* GetCVSOptionloop(std::size_t columns) {
  TMPL_loop* loop = nullptr;
  for (std::size_t i = 1; i <= columns; ++i) {
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "colname", ("col" + std::to_string(i)).c_str(), nullptr));
  }
  return loop;
}

TMPL_loop* GetTitleLoop(const CsvRows& rows) {
  TMPL_loop* loop = nullptr;
  for (std::size_t i = 0; rows.size() > 0 && i < rows.width(0); ++i) {
    const std::string title(rows.field(0, i));
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "optionName", templateText(title).c_str(), nullptr));
  }
  return loop;
}

TMPL_loop* GetCSVContactLoop(const CsvRows& rows, bool hasTitle, std::size_t columns) {
  TMPL_loop* loop = nullptr;
  CellMaker cells(rows, columns);
  std::size_t line = 0;
  for (std::size_t row = hasTitle ? 1 : 0; row < rows.size(); ++row) {
    TMPL_varlist* list = TMPL_add_var(nullptr, "lineindex", std::to_string(++line).c_str(), nullptr);
    loop = TMPL_add_varlist(loop, TMPL_add_loop(list, "recordoptionloop", cells.row(row)));
  }
  return loop;
}
