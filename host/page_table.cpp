#include "host/page_table.h"

#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "host/http_text.h"
#include "host/log.h"

namespace host {
namespace {
constexpr const char* kFilterFactory = "createLoginListener";

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(in), {}};
}

// Makes an object through its factory and initialises it; null, with a log line, when that fails.
template <class T>
T* makeObject(const std::string& factory, const FactoryLookup& lookup) {
  T* object = nullptr;
  if (void* address = lookup(factory)) {
    object = reinterpret_cast<T* (*)()>(address)();
    if (object) object->init();
  }
  if (!object) logLine({"the module has no ", factory});
  return object;
}
}  // namespace

std::vector<std::pair<std::string, std::string>> parsePageList(std::string_view text) {
  std::vector<std::pair<std::string, std::string>> pages;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view whole = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), whole.size() + 1));
    std::string_view line = whole.substr(0, whole.find_first_of("#\r"));
    if (trimBlanks(line).empty()) continue;
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::string_view page = trimBlanks(line.substr(0, equals));
    line.remove_prefix(std::min(line.size(), equals + 1));
    if (page.empty() || trimBlanks(line).empty()) {
      logLine({"page list, line ", std::to_string(number), ": no \"page = factory\""});
    } else {
      pages.emplace_back(page, trimBlanks(line));
    }
  }
  return pages;
}

PageTable::PageTable(const std::filesystem::path& file, const FactoryLookup& lookup) {
  const auto pages = parsePageList(readText(file));
  filter_ = makeObject<HttpListener>(kFilterFactory, lookup);
  if (!filter_) throw std::runtime_error(std::string("no filter: ") + kFilterFactory + " failed");
  for (const auto& [page, factory] : pages) {
    if (HttpServlet* handler = make(factory, lookup)) {
      pages_[page] = handler;
    } else {
      logLine({"page ", page, " is not served"});
    }
  }
}

HttpServlet* PageTable::make(const std::string& factory, const FactoryLookup& lookup) {
  const auto known = handlers_.find(factory);
  if (known != handlers_.end()) return known->second;
  return handlers_[factory] = makeObject<HttpServlet>(factory, lookup);
}

HttpServlet* PageTable::find(std::string_view page) const {
  const auto at = pages_.find(page);
  return at == pages_.end() ? nullptr : at->second;
}

void PageTable::destroy() {
  if (std::exchange(destroyed_, true)) return;
  for (const auto& [factory, handler] : handlers_) {
    if (handler) handler->destory();
  }
  filter_->destory();
}

}  // namespace host
