// The page "contacts-favorite": which directories the phone offers in its menu and searches, and in which order.
#include <string>
#include <vector>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/contacts/contacts_favorite_groups.h"
#include "servlet/contacts/contacts_tabs.h"

namespace {
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-favorite");
constexpr const char* kItems[] = {"SettingFavoriteTable", "SettingSearchTable"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kItems));

constexpr char kServiceSwitch[] = "BSFTActive";
constexpr std::size_t kServiceSwitchSize = 4;

std::vector<std::string> idsOf(HttpRequest* request, const char* field) {
  std::vector<std::string> ids;
  const char** values = request->getParameterValues(field);
  for (; values && *values; ++values) ids.emplace_back(*values);
  return ids;
}
}  // namespace

class ContactsFavoriteServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  void saveFile(const favorite::File& file, HttpRequest* request, const char* disabled, const char* enabled,
                const std::string& serviceSwitch);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);

  favorite::HeldBack heldBack_;  // of the file that was read last
};

int ContactsFavoriteServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsFavoriteServlet> kActions[] = {
      {"load", &ContactsFavoriteServlet::loadConfig},
      {"write", &ContactsFavoriteServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsFavoriteServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const std::string serviceSwitch = readConfigText(kServiceSwitch, kServiceSwitchSize);
  favorite::Groups favorites, search;
  if (!favorite::getContactGroupLists(&favorites, favorite::kFavoriteFile, serviceSwitch, heldBack_)) return 1;
  if (!favorite::getContactGroupLists(&search, favorite::kSearchFile, serviceSwitch, heldBack_)) return 1;
  TMPL_loop *enabled = nullptr, *disabled = nullptr, *enabledSearch = nullptr, *disabledSearch = nullptr;
  favorite::getLoops(favorites, disabled, enabled);
  favorite::getLoops(search, disabledSearch, enabledSearch);
  TMPL_varlist* list = TMPL_add_loop(nullptr, "enabledLoop", enabled);
  list = TMPL_add_loop(list, "disabledLoop", disabled);
  list = TMPL_add_loop(list, "enabledSearchLoop", enabledSearch);
  list = TMPL_add_loop(list, "disabledSearchLoop", disabledSearch);
  list = readConfigOperate(GLOBAL_FILE, "FeaturesRecentCallEnable", list, 0);
  list = TMPL_add_var(list, kServiceSwitch, serviceSwitch.c_str(), nullptr);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-favorite.htm", showItemsByLevel(list, request));
  return 1;
}

int ContactsFavoriteServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const std::string serviceSwitch = readConfigText(kServiceSwitch, kServiceSwitchSize);
  saveFile(favorite::kFavoriteFile, request, "disabled", "enabled", serviceSwitch);
  saveFile(favorite::kSearchFile, request, "searchdisabled", "searchenabled", serviceSwitch);
  writeConfigOperate(GLOBAL_FILE, "FeaturesRecentCallEnable", request, 0);
  broadcastConfigChanged(ConfigArea::kFavorites);
  broadcastConfigChanged(ConfigArea::kSearchOrder);
  response->sendRedirect("/servlet?p=contacts-favorite&q=load");
  return 1;
}

// Reads the file right before it is written: what is held back is then what it holds.
void ContactsFavoriteServlet::saveFile(const favorite::File& file, HttpRequest* request, const char* disabled,
                                       const char* enabled, const std::string& serviceSwitch) {
  favorite::Groups known;
  favorite::getContactGroupLists(&known, file, serviceSwitch, heldBack_);
  const favorite::Groups posted = favorite::getListFromPage(idsOf(request, disabled), idsOf(request, enabled), known);
  favorite::setContactGroupLists(posted, file, serviceSwitch, heldBack_);
}

TMPL_varlist* ContactsFavoriteServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsFavoriteServlet, HttpServlet, ContactsFavoriteServlet);
