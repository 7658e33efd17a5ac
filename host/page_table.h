// Which page is served by which handler.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/servlet_base.h"

namespace host {

// Gives the address of a factory (`HttpServlet* name()`, for the filter `HttpListener* name()`) by its name; null when
// there is none.
using FactoryLookup = std::function<void*(const std::string& name)>;

// The pairs of a text with one `page = factory` a line; '#' begins a comment. Lines that are neither are logged with
// their number and left out.
std::vector<std::pair<std::string, std::string>> parsePageList(std::string_view text);

// The filter and the handlers, made through their factories and initialised; they are never deleted.
class PageTable {
 public:
  // Reads the page list `file` and makes everything. A page whose factory is missing or fails is logged and left out.
  // Throws std::runtime_error when the file cannot be read or the filter (createLoginListener) cannot be made.
  PageTable(const std::filesystem::path& file, const FactoryLookup& lookup);

  HttpListener& filter() const { return *filter_; }
  // Null when no handler serves the page.
  HttpServlet* find(std::string_view page) const;
  std::size_t size() const { return pages_.size(); }

  // Calls destory() of every object, once.
  void destroy();

 private:
  HttpServlet* make(const std::string& factory, const FactoryLookup& lookup);

  HttpListener* filter_ = nullptr;
  std::map<std::string, HttpServlet*> handlers_;  // by factory: pages may share one
  std::map<std::string, HttpServlet*, std::less<>> pages_;
  bool destroyed_ = false;
};

}  // namespace host
