#include "servlet/contacts/contacts_basic_servlet.h"

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>

#include "framework/accounts.h"
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/media_lists.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/device.h"
#include "platform/log.h"
#include "servlet/access/trusted_clients.h"
#include "servlet/contacts/contacts_basic_lists.h"
#include "servlet/contacts/contacts_basic_results.h"
#include "servlet/contacts/contacts_make_call.h"
#include "servlet/contacts/contacts_tabs.h"
#include "servlet/contacts/contacts_update_mark.h"

namespace {
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-basic");
constexpr const char* kItems[] = {"LocalContactList",          "LocalAllContactsControl", "LocalOptContacts",
                                  "LocalImportExportContacts", "LocalbtnImportCSV",       "LocalbtnExportCSV",
                                  "LocalbtnImportXML",         "LocalbtnExportXML"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
constexpr const char* kNotWhileTalking[] = {"delete",         "add",         "edit",       "moveto",
                                            "call",           "deletegroup", "addgroup",   "editgroup",
                                            "deleteallgroup", "uploadphoto", "deletephoto"};
static_assert(allUnique(kItems) && allUnique(kNotWhileTalking));

constexpr int kCallOrigin = 100;  // of calls from this page

bool needsIdlePhone(const char* action) {
  return action && std::ranges::find(kNotWhileTalking, std::string_view(action)) != std::end(kNotWhileTalking);
}

int numberIn(HttpRequest* request, const char* field, int fallback) {
  return parseInt(request->getParameter(field)).value_or(fallback);
}

bool photoEnable() {
  const int type = GetPhoneType() & 0xff;
  return type == 32 || type == 38 || type == 46;
}
}  // namespace

int ContactsBasicServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsBasicServlet> kActions[] = {
      {"load", &ContactsBasicServlet::loadConfig},
      {"add", &ContactsBasicServlet::addContact},
      {"edit", &ContactsBasicServlet::editContact},
      {"delete", &ContactsBasicServlet::deleteRecord},
      {"moveto", &ContactsBasicServlet::moveContact},
      {"addgroup", &ContactsBasicServlet::addGroup},
      {"editgroup", &ContactsBasicServlet::editGroup},
      {"deletegroup", &ContactsBasicServlet::deleteGroup},
      {"deleteallgroup", &ContactsBasicServlet::deleteAllGroups},
      {"uploadphoto", &ContactsBasicServlet::uploadPhoto},
      {"deletephoto", &ContactsBasicServlet::deletePhoto},
      {"call", &ContactsBasicServlet::call},
      {"hangup", &ContactsBasicServlet::hangUp},
  };
  response->setContentType("text/html");
  if (needsIdlePhone(request->getParameter("q")) && IsInTalking(response)) return 1;
  reloadMarkedContacts();
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsBasicServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const int page = std::clamp(numberIn(request, "num", 1), 1, INT_MAX / kContactsPerPage);
  const int group = std::max(0, numberIn(request, "group", 0));
  log_log(kWebLog, kLogInfo, "GroupID = %d, PageNum = %d\n", group, page);
  TMPL_varlist* list = getCommonData(request, group, page);
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", list, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/contactsbasic.htm", showItemsByLevel(list, request));
  return 1;
}

TMPL_varlist* ContactsBasicServlet::getCommonData(HttpRequest* request, int group, int page) {
  const char* photo = request->getParameter("photo");
  TMPL_varlist* list = photo ? TMPL_add_var(nullptr, "SelectPhoto", photo, nullptr) : nullptr;
  list = TMPL_add_loop(list, "photoLoop", GetPhotoLoop());
  list = TMPL_add_loop(list, "accountLoop", GetAccountLoop("-1", true));
  list = TMPL_add_loop(list, "grouplistloop", getGroupListLoop(group));
  list = TMPL_add_loop(list, "contactslistloop", getContactListLoop(group, page));
  list = TMPL_add_loop(list, "pageloop", getPageListLoop(group, page));
  list = TMPL_add_loop(list, "ringTypeloop", GetRingToneLoop(nullptr, RING_CONTACT, true));
  NS_DIRECTORY::ContactGroupData shown;
  findGroup(group, shown);
  return TMPL_add_var(list, "varBlackPage", request->getParameter("num"), "group", request->getParameter("group"),
                      "groupInfo", templateText(shown.name).c_str(), "ringInfo", templateText(shown.ring).c_str(),
                      nullptr);
}

TMPL_varlist* ContactsBasicServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return TMPL_add_var(addVisibility(list, request, kVisibility), "photoEnable", photoEnable() ? "true" : "false",
                      nullptr);
}

int ContactsBasicServlet::call(HttpRequest* request, HttpResponse* response) {
  const char* number = request->getParameter("num");
  const char* account = request->getParameter("acc");
  const int index = parseInt(account).value_or(0);
  const bool dials = IsTrustIP(request->getRemoteAddr()) && number && account && index >= -1 &&
                     index < GetAccountMax() && sendMakeCallMsg(kCallOrigin + index, 0, number, true);
  response->print(dials ? "call success" : "call failed");
  return 1;
}

int ContactsBasicServlet::hangUp(HttpRequest*, HttpResponse* response) {
  postMessage(kPhoneApplication, kHangUp);
  response->print("hangup success");
  return 1;
}

PHONE_FACTORY(createContactsBasicServlet, HttpServlet, ContactsBasicServlet);
