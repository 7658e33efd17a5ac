// Pages from templates and lists: HTML, or the same as JSON.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/page_context.h"
#include "host/spool_buffer.h"
#include "template/template_list.h"

namespace host {

// Keeps parsed templates until one of their files changes, which it looks for at most once a second a template. Used in
// a turn alone, by one request at a time.
class TemplateRenderer {
 public:
  explicit TemplateRenderer(std::filesystem::path root);
  ~TemplateRenderer();

  // Appends the template file `path` (of the phone), filled from `list` (null: an empty one) and the context, to `out`.
  // False, with a log line that names file and line, when it is missing or malformed; `out` may hold a part then.
  bool render(std::string_view path, const TMPL_varlist* list, const PageContext& context, SpoolBuffer& out);

 private:
  struct Entry;
  Entry* current(const std::string& file);
  bool parse(const std::string& file, Entry& entry);

  std::filesystem::path root_;
  std::unordered_map<std::string, std::unique_ptr<Entry>> entries_;  // by file
};

// {"template":"status","language":"English","phoneType":"46","variables":{...}}: text variables as they were given,
// loops as arrays of objects. Bytes that are no UTF-8 become U+FFFD.
std::string templateJson(std::string_view path, const TMPL_varlist* list, const PageContext& context);

}  // namespace host
