#include "host/settings_index.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "host/rights.h"
#include "host/rights_table.h"

namespace host {
namespace {
using nlohmann::ordered_json;

class IndexWriter {
 public:
  IndexWriter(const RightsTable& table, Rights* rights) : table_(table), rights_(rights) {}

  std::string write() {
    for (const DeclaredTab& tab : table_.tabs()) {
      const TemplateMarkup* markup = opens(tab) ? table_.templateOf(tab) : nullptr;
      if (markup && sees(tab) && seesRowsOf(tab.page)) addPage(*markup, tab.page, tab.address);
    }
    return ordered_json{{"pages", std::move(pages_)}}.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
  }

 private:
  using Words = std::pair<std::string, std::vector<std::string>>;

  bool sees(const Keys& keys) const { return !rights_ || rights_->seesAll(keys); }

  bool sees(const DeclaredTab& tab) const { return tab.key.empty() || sees(Keys{tab.key}); }

  // The tabs of the navigation and of rows that lead to a page all say who sees it, but for those that open other
  // views.
  bool seesRowsOf(const std::string& page) const {
    const auto& tabs = table_.page(page).tabs;
    return std::all_of(tabs.begin(), tabs.end(),
                       [this](const DeclaredTab& tab) { return !tab.field.empty() || sees(tab); });
  }

  // A page with an entry in the navigation is opened by that, any other one by its tab in a row.
  bool opens(const DeclaredTab& tab) const {
    const auto& tabs = table_.page(tab.page).tabs;
    const auto isEntry = [](const DeclaredTab& other) { return !other.isInRow && !other.address.empty(); };
    return !tab.address.empty() && (!tab.isInRow || std::none_of(tabs.begin(), tabs.end(), isEntry));
  }

  void addPage(const TemplateMarkup& markup, const std::string& page, const std::string& address) {
    const TemplateTexts& texts = markup.texts;
    ordered_json settings = ordered_json::array();
    bool showsSome = texts.settings.empty();
    for (const DeclaredText& setting : texts.settings) {
      if (!sees(setting.keys)) continue;
      showsSome = true;
      // A setting that several views of a page have, or several rows of a table, is found in the first one.
      if (told_[page].insert({setting.label + "\n" + setting.help, setting.headings}).second) {
        settings.push_back(asJson(setting));
      }
    }
    if (!showsSome) return;
    pages_.push_back({{"title", texts.title},
                      {"heading", texts.heading},
                      {"lead", texts.lead},
                      {"address", address},
                      {"settings", std::move(settings)}});
    for (const DeclaredLink& link : texts.links) follow(link);
  }

  // A page that no tab opens is opened by the first link to it.
  void follow(const DeclaredLink& link) {
    const TemplateMarkup* markup = table_.markup(link.page + ".htm");
    const auto& tabs = table_.page(link.page).tabs;
    const bool isOpened = std::any_of(tabs.begin(), tabs.end(), [this](const auto& tab) { return opens(tab); });
    if (!markup || isOpened || told_.contains(link.page) || !sees(link.keys) || !seesRowsOf(link.page)) return;
    addPage(*markup, link.page, link.address);
  }

  static ordered_json asJson(const DeclaredText& setting) {
    ordered_json texts{setting.anchor, setting.label};
    if (!setting.help.empty() || !setting.headings.empty()) texts.push_back(setting.help);
    for (const std::string& heading : setting.headings) texts.push_back(heading);
    return texts;
  }

  const RightsTable& table_;
  Rights* rights_;
  std::map<std::string, std::set<Words>> told_;  // by page
  ordered_json pages_ = ordered_json::array();
};
}  // namespace

std::string settingsIndex(const RightsTable& table, Rights* rights) {
  return IndexWriter(table, rights).write();
}

}  // namespace host
