#include "host/rights_table.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "host/log.h"

namespace host {
namespace {
namespace fs = std::filesystem;

constexpr auto kCheckInterval = std::chrono::seconds(1);
constexpr std::string_view kEnding = ".htm";

std::set<std::string> templatesIn(const fs::path& folder) {
  std::set<std::string> names;
  std::error_code error;
  for (fs::directory_iterator file(folder, error), end; !error && file != end; file.increment(error)) {
    if (file->path().extension() == kEnding) names.insert(file->path().filename().string());
  }
  return names;
}

bool isSameTab(const DeclaredTab& a, const DeclaredTab& b) {
  return std::tie(a.page, a.key, a.field, a.value, a.isInRow) == std::tie(b.page, b.key, b.field, b.value, b.isInRow);
}
}  // namespace

const PageDeclarations& RightsTable::page(std::string_view name) const {
  static const PageDeclarations kNone;
  const auto found = pages_.find(name);
  return found != pages_.end() ? found->second : kNone;
}

const TemplateMarkup* RightsTable::markup(std::string_view templatePath) const {
  const auto found = templates_.find(templatePath.substr(templatePath.rfind('/') + 1));
  return found != templates_.end() && found->second.markup ? &*found->second.markup : nullptr;
}

// Of several templates for one page, a form's constant tells which one the tab opens.
const TemplateMarkup* RightsTable::templateOf(const DeclaredTab& tab) const {
  if (const TemplateMarkup* own = markup(tab.page + std::string(kEnding))) return own;
  const auto opens = [&](const DeclaredAction& action) {
    const std::pair constant(tab.field, tab.value);
    return action.page == tab.page && std::count(action.constants.begin(), action.constants.end(), constant) > 0;
  };
  for (const auto& [name, entry] : templates_) {
    if (entry.markup && std::any_of(entry.markup->actions.begin(), entry.markup->actions.end(), opens))
      return &*entry.markup;
  }
  return nullptr;
}

void RightsTable::refresh() {
  const auto now = std::chrono::steady_clock::now();
  if (checked_ != std::chrono::steady_clock::time_point() && now - checked_ < kCheckInterval) return;
  checked_ = now;
  if (readFolder()) join();
}

// True when something is other than before.
bool RightsTable::readFolder() {
  const std::set<std::string> names = templatesIn(folder_);
  bool changed = std::erase_if(templates_, [&](const auto& entry) { return !names.contains(entry.first); }) > 0;
  for (const std::string& name : names) {
    const auto [entry, isNew] = templates_.try_emplace(name);
    auto& [source, markup] = entry->second;
    if (!isNew && !source.changed()) continue;
    changed = true;
    markup.reset();
    TemplateFault fault;
    if (TemplateSource::load((folder_ / name).string(), source, fault)) {
      markup = readMarkup(source.text(), std::string_view(name).substr(0, name.size() - kEnding.size()));
    }
    if (!markup) logLine({"rights of template ", name, ": unknown, the administrator's alone"});
  }
  return changed;
}

void RightsTable::join() {
  pages_.clear();
  tabs_.clear();
  for (const auto& [name, entry] : templates_) {
    if (!entry.markup) continue;
    for (const DeclaredAction& action : entry.markup->actions) {
      auto& known = pages_[action.page].actions;  // a link of the navigation stands in all templates
      if (std::find(known.begin(), known.end(), action) == known.end()) known.push_back(action);
    }
    for (const DeclaredTab& tab : entry.markup->tabs) {
      const auto isKnown = [&](const DeclaredTab& other) { return isSameTab(tab, other); };
      if (std::any_of(tabs_.begin(), tabs_.end(), isKnown)) continue;
      tabs_.push_back(tab);
      pages_[tab.page].tabs.push_back(tab);
    }
  }
}

}  // namespace host
