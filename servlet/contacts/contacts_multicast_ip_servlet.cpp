// The page "contacts-multicastIP": paging calls that the phone listens to.
#include <string>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/contacts/contacts_tabs.h"

namespace {
constexpr const char* kKeys[] = {"ReceiveActive", "ReceivePriority"};
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-multicastIP");
constexpr const char* kItems[] = {"MulticastIPReceivePriority", "MulticastIPConfig", "MulticastIPPagePriorityActive"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kKeys) && allUnique(kItems));

constexpr int kAddresses = 10;
constexpr std::size_t kFieldSize = 128;

std::string section(int i) {
  return "ListenAddress" + std::to_string(i);
}
std::string addressKey(int i) {
  return section(i) + "IPAddress";
}
std::string labelKey(int i) {
  return section(i) + "Label";
}

TMPL_loop* addressRows() {
  TMPL_loop* rows = nullptr;
  for (int i = 1; i <= kAddresses; ++i) {
    const std::string address = readConfigText(addressKey(i).c_str(), kFieldSize);
    const std::string label = readConfigText(labelKey(i).c_str(), kFieldSize);
    rows = TMPL_add_varlist(
        rows, TMPL_add_var(nullptr, "index", std::to_string(i).c_str(), "section", section(i).c_str(), "IPAddress",
                           address.c_str(), "Label", label.c_str(), "classStyle", i % 2 == 0 ? "1" : "0", nullptr));
  }
  return rows;
}
}  // namespace

class ContactsMulticastIPServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ContactsMulticastIPServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsMulticastIPServlet> kActions[] = {
      {"load", &ContactsMulticastIPServlet::loadConfig},
      {"write", &ContactsMulticastIPServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsMulticastIPServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  list = TMPL_add_loop(list, "multicastIPloop", addressRows());
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", list, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-multicastIP.htm", showItemsByLevel(list, request));
  return 1;
}

int ContactsMulticastIPServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  bool changed = writeConfigOperate(GLOBAL_FILE, kKeys, request, 0) > 0;
  for (int i = 1; i <= kAddresses; ++i) {
    changed |= writeConfigOperate(GLOBAL_FILE, addressKey(i).c_str(), request, 0) > 0;
    changed |= writeConfigOperate(GLOBAL_FILE, labelKey(i).c_str(), request, 0) > 0;
  }
  if (changed) broadcastConfigChanged(ConfigArea::kMulticast);
  response->sendRedirect("/servlet?p=contacts-multicastIP&q=load");
  return 1;
}

TMPL_varlist* ContactsMulticastIPServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsMulticastIPServlet, HttpServlet, ContactsMulticastIPServlet);
