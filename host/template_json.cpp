#include <nlohmann/json.hpp>

#include "host/template_renderer.h"

namespace host {
namespace {
using Json = nlohmann::ordered_json;

Json listJson(const TMPL_varlist& list) {
  Json object = Json::object();
  for (const TemplateEntry& entry : list.entries) {
    Json& value = object[std::string(entry.name())];
    if (!entry.isLoop()) {
      value = std::string(entry.value());
      continue;
    }
    value = Json::array();
    if (!entry.loop()) continue;
    for (const TMPL_varlist* row : entry.loop()->rows) value.push_back(listJson(*row));
  }
  return object;
}

std::string_view templateName(std::string_view path) {
  path.remove_prefix(path.rfind('/') + 1);
  if (path.ends_with(".htm")) path.remove_suffix(4);
  return path;
}
}  // namespace

std::string templateJson(std::string_view path, const TMPL_varlist* list, const PageContext& context) {
  Json page;
  page["template"] = std::string(templateName(path));
  page["language"] = context.language;
  page["phoneType"] = context.phoneType;
  page["variables"] = list ? listJson(*list) : Json::object();
  return page.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace host
