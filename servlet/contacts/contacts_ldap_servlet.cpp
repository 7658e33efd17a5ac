// The page "contacts-LDAP": the directory on an LDAP server.
#include <string_view>

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
constexpr const char* kKeys[] = {"LDAPNameFilter",   "LDAPNumberFilter", "LDAPhost",        "LDAPport",
                                 "LDAPbase",         "LDAPuser",         "LDAPpswd",        "LDAPMaxHits",
                                 "LDAPNameAttr",     "LDAPNumbAttr",     "LDAPDisplayName", "LDAPversion",
                                 "LDAPCallInLookup", "LDAPSort",         "LDAPSwitch"};
constexpr std::string_view kPassword = "LDAPpswd";
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-LDAP");
constexpr const char* kItems[] = {"ContactsLDAPNameFilter",
                                  "ContactsLDAPNumberFilter",
                                  "LDAPServerAddress",
                                  "LDAPPort",
                                  "LDAPBase",
                                  "LDAPUserName",
                                  "LDAPPassword",
                                  "LDAPMaxhits",
                                  "LDAPNameAttributes",
                                  "LDAPNumberAttributes",
                                  "ContactsLDAPDisplayName",
                                  "LDAPProtocol",
                                  "ContactsLDAPSearchDelay",
                                  "LDAPLookupforIncomingCall",
                                  "LDAPSortingResults",
                                  "LDAPLookupforPreDial"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kKeys) && allUnique(kItems));

TMPL_varlist* readKey(const char* key, TMPL_varlist* list) {
  if (key == kPassword) return TMPL_add_var(list, key, kSecretPlaceholder, nullptr);
  return readConfigOperate(GLOBAL_FILE, key, list, 0);
}

void writeKey(const char* key, const char* value) {
  if (key == kPassword) {
    writeSecret(GLOBAL_FILE, key, value, 0);
  } else if (value) {
    writeConfigOperate(GLOBAL_FILE, key, value, 0);
  }
}
}  // namespace

class ContactsLDAPServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ContactsLDAPServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsLDAPServlet> kActions[] = {
      {"load", &ContactsLDAPServlet::loadConfig},
      {"write", &ContactsLDAPServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsLDAPServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = nullptr;
  for (const char* key : kKeys) list = readKey(key, list);
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", list, 0);
  list = TMPL_add_var(showItemsByLevel(list, request), "bK7xType", "true", nullptr);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-LDAP.htm", list);
  return 1;
}

int ContactsLDAPServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  for (const char* key : kKeys) writeKey(key, request->getParameter(key));
  response->sendRedirect("/servlet?p=contacts-LDAP&q=load");
  postConfigChanged(ConfigArea::kLdap);
  return 1;
}

TMPL_varlist* ContactsLDAPServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsLDAPServlet, HttpServlet, ContactsLDAPServlet);
