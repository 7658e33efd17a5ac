// What the preview of a CSV file shows.
#pragma once

#include <cstddef>

#include "framework/servlet_base.h"
#include "servlet/contacts/contacts_csv.h"

// The fields that a column can be mapped to: "index", "value".
TMPL_loop* GetContactParametersLoop(int phoneType);
// A row a column: "colname", "col1" and so on.
TMPL_loop* GetCVSOptionloop(std::size_t columns);
// The fields of the first row: "optionName".
TMPL_loop* GetTitleLoop(const CsvRows& rows);
// The contacts' rows, behind the title row if there is one: "lineindex" and the loop "recordoptionloop" with an
// "optionvalue" of at most 49 characters a column.
TMPL_loop* GetCSVContactLoop(const CsvRows& rows, bool hasTitle, std::size_t columns);
