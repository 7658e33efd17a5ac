// What a template says of who may see its parts.
//
// An element with data-level="KEY" is seen by those who see the key, and so is all that stands in it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host {

// Keys of an element and of those around it, all of which must be seen. None: everyone sees it.
using Keys = std::vector<std::string>;
// Where a name stands. It is seen when one of the places is.
using Places = std::vector<Keys>;

// A field's name; what a marker makes of it may be anything, and is "*" here.
struct DeclaredField {
  std::string pattern;
  Keys keys;

  bool operator==(const DeclaredField&) const = default;
};

// A form, a link, or an address that a script asks (data-action="/servlet?p=PAGE&q=ACTION&FIELD=" on its element).
struct DeclaredAction {
  std::string page, action;
  std::string askedBy;                                         // the page whose script asks; empty for forms and links
  std::vector<std::pair<std::string, std::string>> constants;  // fields that tell it from others of that name
  Places places;                                               // of the form's buttons, or of the link
  std::vector<DeclaredField> fields;

  bool operator==(const DeclaredAction&) const = default;
};

// A tab of the navigation, or of a row of tabs within a page: a page it opens, the key of who sees it (empty:
// everyone), the hidden field of the page's form that tells which one it is (empty: there is only one), and the address
// behind it (empty for a page that is only led to).
struct DeclaredTab {
  std::string page, key, field, value, address;
  bool isInRow;
};

// A setting in the words of its page, in English: a field, a line of values, or a card without either.
struct DeclaredText {
  std::string anchor;  // the id or name by which the page has it; empty when it has only its label
  std::string label, help;
  std::vector<std::string> headings;  // above it, the outermost first
  Keys keys;
};

// A link that opens a page.
struct DeclaredLink {
  std::string page, address;
  Keys keys;
};

struct TemplateTexts {
  std::string title, heading, lead;
  std::vector<DeclaredText> settings;  // as they stand on the page
  std::vector<DeclaredLink> links;     // outside the navigation
};

struct TemplateMarkup {
  std::map<std::string, Places, std::less<>> variables;  // loops included
  std::vector<std::string> guarded;                      // those of them that not everyone sees
  std::vector<DeclaredAction> actions;
  std::vector<DeclaredTab> tabs;
  TemplateTexts texts;
};

// Reads the text of a template that shows the page `page`. Nothing for one that is too large to be one of ours.
std::optional<TemplateMarkup> readMarkup(std::string_view text, std::string_view page);

// True when the name is one that the pattern stands for.
bool fitsPattern(std::string_view pattern, std::string_view name);

}  // namespace host
