// What the session of a request may see and do.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/device.h"
#include "host/template_markup.h"
#include "template/template_list.h"

namespace host {

class RightsTable;

// True when an identity ("admin", "var", any other counts as "user") sees what has that level code.
bool maySee(std::string_view identity, std::string_view code);

// The field of a request by its name; null when there is none.
using FieldLookup = std::function<const char*(const std::string& name)>;

// The rights of one request. A key's level is asked of the device once.
class Rights {
 public:
  // `user` is the text that the session holds. The table must outlive the rights and is refreshed for them.
  Rights(RightsTable& table, const Device& device, std::string user, std::string page, std::string action);

  // Whether the request may be run at all; to be asked once, before the others. The lookup must outlive the rights.
  bool mayRun(const FieldLookup& field);
  // Whether the page may read a field; one that it may not is logged, once.
  bool mayRead(std::string_view field);
  // What of a page's list may be shown; the list itself when that is all.
  TMPL_varlist* visible(std::string_view templatePath, TMPL_varlist* list);
  // Whether the session sees what stands below all of these keys.
  bool seesAll(const Keys& keys);
  // Variables of the page that says what mayRun() refused: "isAction" when the page itself may be seen.
  TMPL_varlist* forbiddenList();

 private:
  bool sees(const std::string& key);
  bool seesOne(const Places& places);
  bool maySeePage(const std::string& page);
  bool isAskedElsewhere();
  bool mayUse(std::string_view field);
  const std::vector<const DeclaredAction*>& candidates();

  RightsTable& table_;
  const Device& device_;
  std::string user_, page_, action_, identity_;
  bool isReading_ = false;
  bool isPageSeen_ = false;
  const FieldLookup* field_ = nullptr;
  bool isExact_ = false;  // one of the candidates is what was asked for
  bool areFound_ = false;
  std::vector<const DeclaredAction*> candidates_;  // once they are found
  std::map<std::string, bool, std::less<>> seen_;
  std::set<std::string, std::less<>> logged_;
};

}  // namespace host
