#include "host/rights.h"

#include <algorithm>
#include <utility>

#include "host/log.h"
#include "host/rights_table.h"

namespace host {
namespace {

constexpr std::string_view kAdmin = "admin";
constexpr std::size_t kLogged = 64;  // characters of a name in the log

int rankOf(std::string_view identity) {
  return identity == kAdmin ? 0 : identity == "var" ? 1 : 2;
}

bool holds(const FieldLookup& field, const std::string& name, std::string_view value) {
  const char* text = field(name);
  return text && text == value;
}

// The list without the names for which `isHidden` says so, in its loops too.
template <class IsHidden>
TMPL_varlist* without(const TMPL_varlist& list, const IsHidden& isHidden) {
  TMPL_varlist* kept = nullptr;
  for (const TemplateEntry& entry : list.entries) {
    if (isHidden(entry.name())) continue;
    if (!entry.isLoop()) {
      kept = TMPL_add_var(kept, entry.name().data(), entry.value().data(), nullptr);
      continue;
    }
    TMPL_loop* rows = nullptr;
    if (entry.loop()) {
      for (const TMPL_varlist* row : entry.loop()->rows) rows = TMPL_add_varlist(rows, without(*row, isHidden));
    }
    kept = TMPL_add_loop(kept, entry.name().data(), rows);
  }
  return kept;
}

}  // namespace

bool maySee(std::string_view identity, std::string_view code) {
  if (code == "3") return false;
  const int needed = code == "1" ? 1 : code == "2" ? 2 : 0;
  return rankOf(identity) <= needed;
}

Rights::Rights(RightsTable& table, const Device& device, std::string user, std::string page, std::string action)
    : table_(table),
      device_(device),
      user_(std::move(user)),
      page_(std::move(page)),
      action_(std::move(action)),
      identity_(device.identity(user_)),
      isReading_(action_.empty() || action_ == "load") {
  table_.refresh();
}

bool Rights::sees(const std::string& key) {
  const auto known = seen_.find(key);
  if (known != seen_.end()) return known->second;
  return seen_[key] = maySee(identity_, device_.level(key));
}

bool Rights::seesAll(const Keys& keys) {
  return std::all_of(keys.begin(), keys.end(), [this](const std::string& key) { return sees(key); });
}

bool Rights::seesOne(const Places& places) {
  return std::any_of(places.begin(), places.end(), [this](const Keys& keys) { return seesAll(keys); });
}

// Of several tabs of the navigation that lead to a page, the one that the request names counts; when it names none, all
// of them do, as all tabs of a row always do.
bool Rights::maySeePage(const std::string& page) {
  bool isNamed = false, isSeenNamed = false, isSeenAlways = true;
  for (const DeclaredTab& tab : table_.page(page).tabs) {
    const bool isSeen = tab.key.empty() || sees(tab.key);
    if (tab.isInRow && !isSeen) return false;
    if (tab.isInRow) continue;
    isSeenAlways &= isSeen;
    if (!tab.field.empty() && !holds(*field_, tab.field, tab.value)) continue;
    isNamed = true;
    isSeenNamed |= isSeen;
  }
  return isNamed ? isSeenNamed : isSeenAlways;
}

// Of several forms for an action, those count whose constants the request has; when there are none, all of them do.
const std::vector<const DeclaredAction*>& Rights::candidates() {
  if (std::exchange(areFound_, true)) return candidates_;
  std::vector<const DeclaredAction*> others;
  for (const DeclaredAction& declared : table_.page(page_).actions) {
    if (declared.action != action_) continue;
    const bool fits = std::all_of(declared.constants.begin(), declared.constants.end(), [&](const auto& constant) {
      return holds(*field_, constant.first, constant.second);
    });
    (fits ? candidates_ : others).push_back(&declared);
  }
  isExact_ = !candidates_.empty();
  if (!isExact_) candidates_ = std::move(others);
  return candidates_;
}

// True for a question that the script of another page asks, and that page may be seen.
bool Rights::isAskedElsewhere() {
  return std::any_of(candidates().begin(), candidates().end(), [&](const DeclaredAction* declared) {
    const std::string& asker = declared->askedBy;
    return !asker.empty() && asker != page_ && maySeePage(asker) && seesOne(declared->places);
  });
}

bool Rights::mayRun(const FieldLookup& field) {
  field_ = &field;
  isPageSeen_ = maySeePage(page_);
  if (!isPageSeen_) return isAskedElsewhere();
  if (isReading_) return true;
  if (candidates().empty()) return identity_ == kAdmin;
  const auto isSeen = [this](const DeclaredAction* declared) { return seesOne(declared->places); };
  return isExact_ ? std::any_of(candidates_.begin(), candidates_.end(), isSeen)
                  : std::all_of(candidates_.begin(), candidates_.end(), isSeen);
}

bool Rights::mayUse(std::string_view field) {
  bool isKnown = false, isSeenOnce = false, isSeenAlways = true;
  const auto look = [&](const DeclaredAction& declared) {
    for (const DeclaredField& one : declared.fields) {
      if (!fitsPattern(one.pattern, field)) continue;
      const bool isSeen = seesAll(one.keys);
      isKnown = true;
      isSeenOnce |= isSeen;
      isSeenAlways &= isSeen;
    }
  };
  for (const DeclaredAction* declared : candidates()) look(*declared);
  if (isKnown) return isExact_ ? isSeenOnce : isSeenAlways;
  for (const DeclaredAction& declared : table_.page(page_).actions) look(declared);
  if (isKnown) return isSeenOnce;
  return isReading_ || identity_ == kAdmin;
}

bool Rights::mayRead(std::string_view field) {
  if (field == "p" || field == "q" || mayUse(field)) return true;
  if (logged_.emplace(field).second) {
    logLine({"field ", printable(field, kLogged), " of page ", printable(page_, kLogged), " is not for ",
             printable(user_.empty() ? "(nobody)" : user_, kLogged)});
  }
  return false;
}

TMPL_varlist* Rights::visible(std::string_view templatePath, TMPL_varlist* list) {
  if (!list) return list;
  const TemplateMarkup* markup = table_.markup(templatePath);
  const bool isAdmin = identity_ == kAdmin;
  if (!markup && isAdmin) return list;
  std::set<std::string_view> hidden;
  if (markup) {
    for (const std::string& name : markup->guarded) {
      if (!seesOne(markup->variables.find(name)->second)) hidden.insert(name);
    }
  }
  if (isAdmin && hidden.empty()) return list;
  return without(*list, [&](std::string_view name) {
    if (name == "ShowLevel" || name == "Identity") return false;
    const bool isKnown = isAdmin || (markup && markup->variables.contains(name));
    return !isKnown || hidden.contains(name);
  });
}

TMPL_varlist* Rights::forbiddenList() {
  std::string levels;
  std::set<std::string_view> told;
  for (const DeclaredTab& tab : table_.tabs()) {
    if (tab.key.empty() || !told.insert(tab.key).second) continue;
    levels.append(levels.empty() ? "" : "&").append(tab.key).append(sees(tab.key) ? "=2" : "=3");
  }
  return TMPL_add_var(nullptr, "ShowLevel", (levels + "$").c_str(), "Identity", user_.c_str(), "isAction",
                      isPageSeen_ ? "1" : "0", nullptr);
}

}  // namespace host
