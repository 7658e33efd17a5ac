// The page "contacts-calllog": the accounts by which the phone fetches call logs from a server.
#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "framework/xml_file.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_tabs.h"

namespace {
// No tab leads here but a link of the network directories: who sees those sees this page.
constexpr const char* kItems[] = {"contacts-broadsoft"};
constexpr Visibility kVisibility{.menu = kContactsTabs, .items = kItems};

constexpr char kAccountsFile[] = "/config/data/broadsoft_calllog_list.xml";

// A form field and the attribute of an account that holds it.
struct AccountField {
  const char* field;
  const char* attribute;
};
constexpr AccountField kFields[] = {
    {"DisplayName", "name"}, {"Server", "server"}, {"Port", "port"}, {"UserName", "user_name"}};
constexpr AccountField kPassword{"PassWord", "password"};

// False (logged) without a root element.
bool loadAccounts(pugi::xml_document& document) {
  loadXml(kAccountsFile, document);
  if (document.document_element()) return true;
  log_log(kWebLog, kLogWarning, "load broadsoft_calllog_list.xml error!\n");
  return false;
}

// Null when that element is no account.
pugi::xml_node accountAt(const pugi::xml_document& document, int position) {
  for (const pugi::xml_node node : document.document_element().children()) {
    if (!*node.name() || position-- > 0) continue;
    return std::string_view(node.name()) == "item" ? node : pugi::xml_node();
  }
  return {};
}

// Text that a file can hold.
bool isStorable(const char* text) {
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
  };
  return text && std::ranges::none_of(std::string_view(text), isControl);
}

// False, with the account untouched, when a field is missing.
bool storeFields(pugi::xml_node account, HttpRequest* request) {
  const auto hasField = [&](const AccountField& entry) { return isStorable(request->getParameter(entry.field)); };
  if (!account || !std::ranges::all_of(kFields, hasField) || !hasField(kPassword)) return false;
  for (const auto& [field, attribute] : kFields) account.attribute(attribute).set_value(request->getParameter(field));
  const char* password = request->getParameter(kPassword.field);
  if (std::string_view(password) != kSecretPlaceholder) account.attribute(kPassword.attribute).set_value(password);
  return true;
}
}  // namespace

class ContactsCalllogServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ContactsCalllogServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsCalllogServlet> kActions[] = {
      {"load", &ContactsCalllogServlet::loadConfig},
      {"write", &ContactsCalllogServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsCalllogServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const int position = std::max(0, parseInt(request->getParameter("z")).value_or(0));
  pugi::xml_document document;
  if (!loadAccounts(document)) return 1;
  const pugi::xml_node account = accountAt(document, position);
  const auto hasValue = [&](const AccountField& entry) { return !account.attribute(entry.attribute).empty(); };
  TMPL_varlist* list = nullptr;
  if (std::ranges::all_of(kFields, hasValue)) {
    for (const auto& [field, attribute] : kFields) {
      list = TMPL_add_var(list, field, account.attribute(attribute).value(), nullptr);
    }
  }
  list = TMPL_add_var(list, "var_calllogAccount", std::to_string(position).c_str(), nullptr);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-calllog.htm", showItemsByLevel(list, request));
  return 1;
}

int ContactsCalllogServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const int position = parseInt(request->getParameter("z")).value_or(-1);
  pugi::xml_document document;
  if (position >= 0 && !loadAccounts(document)) return 1;
  if (position < 0 || !storeFields(accountAt(document, position), request)) {
    SetNoticePage(response, false, "contacts-calllog", "Error:Item is wrong!");
    return 1;
  }
  if (!saveXml(kAccountsFile, document)) {
    log_log(kWebLog, kLogError, "save broadsoft_calllog_list.xml error!\n");
    response->sendError(500);
    return 1;
  }
  postConfigChanged(ConfigArea::kNetworkCallLog);
  response->sendRedirect(("/servlet?p=contacts-calllog&q=load&z=" + std::to_string(position)).c_str());
  return 1;
}

TMPL_varlist* ContactsCalllogServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsCalllogServlet, HttpServlet, ContactsCalllogServlet);
