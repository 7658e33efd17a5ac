// A template list as the template library's dictionary.
#pragma once

#include <ctemplate/template_dictionary_interface.h>

#include <forward_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "template/template_list.h"

namespace host {

// Reads one level of &amp; &lt; &gt; &quot; off a value. False when there is nothing to take off.
bool takeOffEscapes(std::string_view value, std::string& plain);

// The names of one list, and beyond them those of the list around it. Nothing is copied: the lists must outlive it.
//
// A text variable shows the section of its name when it is neither empty, "0" nor "false", and NAME_off otherwise. A
// loop shows NAME once a row and NAME_any once when it has rows, NAME_off when it has none. A name that no list holds
// shows nothing.
class TemplateScope final : public ctemplate::TemplateDictionaryInterface {
 public:
  TemplateScope(const TMPL_varlist& list, const TemplateScope* outer);
  TemplateScope(const TemplateScope&) = delete;
  TemplateScope& operator=(const TemplateScope&) = delete;

  // The entry that `name` stands for here: the one added last. Null when there is none.
  const TemplateEntry* find(std::string_view name) const;
  bool shows(std::string_view section) const;

 private:
  using Name = ctemplate::TemplateString;
  class Rows;

  Name GetValue(const Name& variable) const override;
  bool IsHiddenSection(const Name& name) const override;
  bool IsUnhiddenSection(const Name& name) const override { return !IsHiddenSection(name); }
  bool IsHiddenTemplate(const Name&) const override { return true; }  // files are joined when they are loaded
  const char* GetIncludeTemplateName(const Name&, int) const override { return ""; }
  Iterator* CreateTemplateIterator(const Name&) const override;
  Iterator* CreateSectionIterator(const Name& section) const override;
  void DumpToString(std::string*, int) const override {}

  const TMPL_varlist& list_;
  const TemplateScope* outer_;
  std::unordered_map<std::string_view, const TemplateEntry*> index_;  // empty for a short list
  mutable std::forward_list<std::string> plain_;                      // values without their escapes
};

}  // namespace host
