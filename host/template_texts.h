// The words of a template: what a search over the settings looks through.
#pragma once

#include "host/template_markup.h"

struct GumboInternalNode;

namespace host {

// What a parsed template says to its reader, without dialogs and what only chooses among views of the page.
TemplateTexts readTexts(const GumboInternalNode& document);

}  // namespace host
