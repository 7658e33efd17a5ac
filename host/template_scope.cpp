#include "host/template_scope.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace host {
namespace {
constexpr std::size_t kShortList = 12;  // shorter ones are searched faster than indexed

bool isTrue(std::string_view value) {
  return !value.empty() && value != "0" && value != "false";
}

bool hasRows(const TemplateEntry& entry) {
  return entry.loop() && !entry.loop()->rows.empty();
}

bool takeSuffix(std::string_view& name, std::string_view suffix) {
  if (!name.ends_with(suffix)) return false;
  name.remove_suffix(suffix.size());
  return true;
}
}  // namespace

bool takeOffEscapes(std::string_view value, std::string& plain) {
  static constexpr std::array<std::pair<std::string_view, char>, 4> kEscapes{
      {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}}};
  std::size_t sign = value.find('&');
  if (sign == std::string_view::npos) return false;
  plain.clear();
  for (; sign != std::string_view::npos; sign = value.find('&')) {
    plain.append(value.substr(0, sign));
    value.remove_prefix(sign);
    const auto escape =
        std::ranges::find_if(kEscapes, [&](const auto& known) { return value.starts_with(known.first); });
    plain += escape == kEscapes.end() ? '&' : escape->second;
    value.remove_prefix(escape == kEscapes.end() ? 1 : escape->first.size());
  }
  plain.append(value);
  return true;
}

TemplateScope::TemplateScope(const TMPL_varlist& list, const TemplateScope* outer) : list_(list), outer_(outer) {
  if (list.entries.size() <= kShortList) return;
  index_.reserve(list.entries.size());
  for (const TemplateEntry& entry : list.entries) index_[entry.name()] = &entry;
}

const TemplateEntry* TemplateScope::find(std::string_view name) const {
  if (!index_.empty()) {
    if (const auto at = index_.find(name); at != index_.end()) return at->second;
  } else {
    for (auto entry = list_.entries.rbegin(); entry != list_.entries.rend(); ++entry) {
      if (entry->name() == name) return &*entry;
    }
  }
  return outer_ ? outer_->find(name) : nullptr;
}

bool TemplateScope::shows(std::string_view section) const {
  if (const TemplateEntry* entry = find(section)) return entry->isLoop() ? hasRows(*entry) : isTrue(entry->value());
  if (takeSuffix(section, "_off")) {
    const TemplateEntry* entry = find(section);
    return entry && !(entry->isLoop() ? hasRows(*entry) : isTrue(entry->value()));
  }
  if (!takeSuffix(section, "_any")) return false;
  const TemplateEntry* entry = find(section);
  return entry && hasRows(*entry);
}

ctemplate::TemplateString TemplateScope::GetValue(const Name& variable) const {
  const TemplateEntry* entry = find({variable.data(), variable.size()});
  if (!entry || entry->isLoop()) return Name("", 0);
  std::string plain;
  if (!takeOffEscapes(entry->value(), plain)) return Name(entry->value().data(), entry->value().size());
  return Name(plain_.emplace_front(std::move(plain)));
}

bool TemplateScope::IsHiddenSection(const Name& name) const {
  return !shows({name.data(), name.size()});
}

// The rows of a loop, each in a scope of its own.
class TemplateScope::Rows final : public Iterator {
 public:
  Rows(const TMPL_loop* loop, const TemplateScope& outer) : loop_(loop), outer_(outer) {}
  bool HasNext() const override { return loop_ && next_ < loop_->rows.size(); }
  const TemplateDictionaryInterface& Next() override { return row_.emplace(*loop_->rows[next_++], &outer_); }

 private:
  const TMPL_loop* loop_;
  const TemplateScope& outer_;
  std::size_t next_ = 0;
  std::optional<TemplateScope> row_;
};

ctemplate::TemplateDictionaryInterface::Iterator* TemplateScope::CreateTemplateIterator(const Name&) const {
  return new Rows(nullptr, *this);
}

ctemplate::TemplateDictionaryInterface::Iterator* TemplateScope::CreateSectionIterator(const Name& section) const {
  const TemplateEntry* entry = find({section.data(), section.size()});
  return new Rows(entry ? entry->loop() : nullptr, *this);
}

}  // namespace host
