// The page "contacts-callinfo": the calls of the phone, and calls that the browser has the phone make.
#include <string>

#include "framework/accounts.h"
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "framework/xml_file.h"
#include "platform/log.h"
#include "servlet/access/trusted_clients.h"
#include "servlet/contacts/contacts_callinfo_calls.h"
#include "servlet/contacts/contacts_make_call.h"
#include "servlet/contacts/contacts_tabs.h"

namespace {
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-callinfo");
constexpr const char* kItems[] = {"PhoneCallControl",        "CallDialedListTitle",    "CallDialedListContent",
                                  "CallMissedListTitle",     "CallMissedListContent",  "CallReceivedListTitle",
                                  "CallReceivedListContent", "CallForwardedListTitle", "CallForwardedListContent"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems};
static_assert(allUnique(kItems));

constexpr char kHistoryFile[] = "/config/data/call_data.xml";
constexpr std::size_t kUserNameSize = 128;
constexpr int kCallOrigin = 1100;  // of calls from this page, to which the account's index is added

// The accounts that can call.
TMPL_loop* accountRows() {
  TMPL_loop* rows = nullptr;
  for (int account = 0; account < GetAccountMax(); ++account) {
    const int state = queryRegistrationState(account);
    if (state != kRegistered && state != kRegisteredAgain) continue;
    std::string user, host, port;
    readConfigOperate(ACCOUNT_FILE, "AccountUserName", user, kUserNameSize, account);
    GetSipServerHost(host, port, account);
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "index", std::to_string(account).c_str(), "value",
                                               (user + "@" + host).c_str(), nullptr));
  }
  return rows;
}

bool dial(const char* number, const char* accountText) {
  if (!number || !accountText) {
    log_log(kWebLog, kLogWarning, "number or account is null\n");
    return false;
  }
  const int account = parseInt(accountText).value_or(0);
  const bool exists = account >= 0 && account < GetAccountMax();
  return exists && sendMakeCallMsg(kCallOrigin + account, 0, number, true);
}
}  // namespace

class ContactsCallInfoServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int call(HttpRequest* request, HttpResponse* response);
  int hangUp(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ContactsCallInfoServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsCallInfoServlet> kActions[] = {
      {"load", &ContactsCallInfoServlet::loadConfig},
      {"call", &ContactsCallInfoServlet::call},
      {"hangup", &ContactsCallInfoServlet::hangUp},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsCallInfoServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  sendMessage(kPhoneApplication, kWriteCallHistory);
  TMPL_varlist* list = TMPL_add_loop(nullptr, "accountloop", accountRows());
  pugi::xml_document document;
  loadXml(kHistoryFile, document);
  const pugi::xml_node history = document.document_element();
  if (!history) {
    log_log(kWebLog, kLogWarning, "ContactsCallInfoServlet::init() error to get root element\n");
    return 1;
  }
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", addCalls(list, history), 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-callinfo.htm", showItemsByLevel(list, request));
  return 1;
}

int ContactsCallInfoServlet::call(HttpRequest* request, HttpResponse* response) {
  const bool dials =
      IsTrustIP(request->getRemoteAddr()) && dial(request->getParameter("num"), request->getParameter("acc"));
  response->print("%s", dials ? "call success" : "call failed");
  return 1;
}

int ContactsCallInfoServlet::hangUp(HttpRequest*, HttpResponse* response) {
  postMessage(kPhoneApplication, kHangUp);
  response->print("hangup success");
  return 1;
}

TMPL_varlist* ContactsCallInfoServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsCallInfoServlet, HttpServlet, ContactsCallInfoServlet);
