#include "framework/text_list.h"

#include <functional>
#include <iterator>

#include "framework/text_utils.h"

namespace {
constexpr std::size_t kRowValueSize = 256;
}

bool String2List(OrbList<std::string>& list, std::string_view text, char separator) {
  if (text.empty()) return false;
  list.clear();
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(separator, start)) != std::string_view::npos; start = end + 1) {
    list.push_back(std::string(text.substr(start, end - start)));
  }
  if (start < text.size()) list.push_back(std::string(text.substr(start)));
  return true;
}

std::string GetStringListByIndex(const std::list<std::string>& list, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= list.size()) return {};
  return *std::next(list.begin(), index);
}

void sortStringListByName(std::list<std::string>* list, bool ascending) {
  if (!list) return;
  if (ascending) {
    list->sort();
  } else {
    list->sort(std::greater<>());
  }
}

void AddPrefixLoop(TMPL_loop** loop, const std::list<std::string>& names, const char* prefix, const char* selected) {
  for (const std::string& name : names) {
    if (name.empty()) continue;
    std::string value = prefix ? std::string(prefix) + ":" + name : name;
    cutText(value, kRowValueSize);
    TMPL_varlist* row = TMPL_add_var(nullptr, "selValue", value.c_str(), "selName", name.c_str(), nullptr);
    if (selected) row = TMPL_add_var(row, "selected", value == selected ? "selected" : "", nullptr);
    *loop = TMPL_add_varlist(*loop, row);
  }
}
