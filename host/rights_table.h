// Who may see and do what on which page, as the phone's templates say.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/template_markup.h"
#include "host/template_source.h"

namespace host {

struct PageDeclarations {
  std::vector<DeclaredTab> tabs;
  std::vector<DeclaredAction> actions;
};

// What all templates of a folder say. Used in a turn alone; what it gives is good until the next refresh().
class RightsTable {
 public:
  explicit RightsTable(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Reads what is new or has changed, which it looks for at most once a second.
  void refresh();
  // What templates say of a page; nothing is declared for one that they do not know.
  const PageDeclarations& page(std::string_view name) const;
  // What a template says of its variables. Null for one that cannot be read.
  const TemplateMarkup* markup(std::string_view templatePath) const;
  // The navigation's tabs, in its order.
  const std::vector<DeclaredTab>& tabs() const { return tabs_; }
  // The template that a tab opens; null when none is known to.
  const TemplateMarkup* templateOf(const DeclaredTab& tab) const;

 private:
  struct Entry {
    TemplateSource source;
    std::optional<TemplateMarkup> markup;
  };

  bool readFolder();
  void join();

  std::filesystem::path folder_;
  std::chrono::steady_clock::time_point checked_{};
  std::map<std::string, Entry, std::less<>> templates_;  // by file name
  std::map<std::string, PageDeclarations, std::less<>> pages_;
  std::vector<DeclaredTab> tabs_;
};

}  // namespace host
