// The page "contacts-remote": phone books that the phone fetches from web servers.
#include <array>
#include <string>

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
constexpr const char* kKeys[] = {"SearchNameFromRemoteSwitch", "SRemoteNameFlashTime"};
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-remote");
constexpr const char* kItems[] = {"RemotePhonebookList", "CoantactsSRemoteNameEnable", "CoantactsSRemoteNameFlashTime"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kKeys) && allUnique(kItems));

constexpr char kListFile[] = "/config/data/remote_phonebook_list.xml";
constexpr std::size_t kPhoneBooks = 5;
constexpr int kNameTimeChanged = 1;  // detail of the message that tells of a change

// The list's first phone books; what stands between them has no position of its own.
using PhoneBooks = std::array<pugi::xml_node, kPhoneBooks>;
PhoneBooks phoneBooksIn(pugi::xml_node root) {
  PhoneBooks books;
  std::size_t count = 0;
  for (const pugi::xml_node item : root.children("item")) {
    if (count == kPhoneBooks) break;
    books.at(count++) = item;
  }
  return books;
}

std::string nameField(std::size_t position) {
  return "RemotePhoneBook" + std::to_string(position) + "Name";
}
std::string urlField(std::size_t position) {
  return "RemotePhoneBook" + std::to_string(position) + "URL";
}

// True when the attribute is there and had another value.
bool replaceValue(pugi::xml_node item, const char* attribute, const char* value) {
  pugi::xml_attribute stored = item.attribute(attribute);
  return stored && std::string(stored.as_string()) != value && stored.set_value(value);
}

// Takes the form's names and addresses over; true when one differs from the list's.
bool takeOver(const PhoneBooks& books, HttpRequest* request) {
  bool changed = false;
  for (std::size_t i = 0; i < books.size(); ++i) {
    const char* name = request->getParameter(nameField(i).c_str());
    const char* url = request->getParameter(urlField(i).c_str());
    if (!name || !url) continue;
    changed |= replaceValue(books.at(i), "name", name);
    changed |= replaceValue(books.at(i), "url", url);
  }
  return changed;
}
}  // namespace

class ContactsRemoteServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ContactsRemoteServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsRemoteServlet> kActions[] = {
      {"load", &ContactsRemoteServlet::loadConfig},
      {"write", &ContactsRemoteServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsRemoteServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  pugi::xml_document document;
  if (!loadXml(kListFile, document) || !document.first_child()) {
    log_log(kWebLog, kLogWarning, "load remote_phonebook_list.xml error!\n");
    return 1;
  }
  const PhoneBooks books = phoneBooksIn(document.first_child());
  TMPL_varlist* list = nullptr;
  for (std::size_t i = 0; i < books.size(); ++i) {
    const std::string url = templateText(books.at(i).attribute("url").as_string());
    const std::string name = templateText(books.at(i).attribute("name").as_string());
    list = TMPL_add_var(list, urlField(i).c_str(), url.c_str(), nameField(i).c_str(), name.c_str(), nullptr);
  }
  list = readConfigOperate(GLOBAL_FILE, kKeys, list, 0);
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", list, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-remote.htm", showItemsByLevel(list, request));
  return 1;
}

int ContactsRemoteServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  pugi::xml_document document;
  const bool readable = loadXml(kListFile, document) && document.first_child();
  const bool changed = readable && takeOver(phoneBooksIn(document.first_child()), request);
  if (!readable || (changed && !saveXml(kListFile, document))) {
    SetNoticePage(response, false, "contacts-remote", "Error:Write remote_phonebook_list.xml error!");
    return 1;
  }
  if (changed) postConfigChanged(ConfigArea::kRemotePhoneBooks);
  writeConfigOperate(GLOBAL_FILE, "SearchNameFromRemoteSwitch", request, 0);
  const bool isOtherTime = writeConfigOperate(GLOBAL_FILE, "SRemoteNameFlashTime", request, 0) > 0;
  if (isOtherTime) postConfigChanged(ConfigArea::kRemotePhoneBooks, kNameTimeChanged);
  response->sendRedirect("/servlet?p=contacts-remote&q=load");
  return 1;
}

TMPL_varlist* ContactsRemoteServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsRemoteServlet, HttpServlet, ContactsRemoteServlet);
