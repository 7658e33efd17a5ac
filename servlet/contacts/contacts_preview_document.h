// The exchange file that a CSV file becomes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "servlet/contacts/contacts_csv.h"
#include "servlet/contacts/contacts_preview_fields.h"

// The rows from `first` on as an XML text, an element a row with an attribute a column. Column i is what `columns` says
// of it. Pictures among the fields are stored; one that cannot be leaves its contact without photo.
std::string contactDocument(const CsvRows& rows, std::size_t first, const std::vector<int>& columns);
