// The page "contacts-broadsoft": the directories and the call log of the network's call server. The list of custom
// directories is fetched by the phone application; the page follows that.
#include <algorithm>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/contacts/contacts_tabs.h"

namespace {
constexpr const char* kDirectoryKeys[] = {"BsftGroup",
                                          "BsftEnterprise",
                                          "BsftPersonal",
                                          "BsftCustom",
                                          "BsftGroupCommon",
                                          "BsftEnterpriseCommon",
                                          "NetworkDirectoryGroupDisplayname",
                                          "NetworkDirectoryEnterpriseDisplayname",
                                          "NetworkDirectoryGroupCommonDisplayname",
                                          "NetworkDirectoryEnterpriseCommonDisplayname",
                                          "NetworkDirectoryPersonalDisplayname"};
constexpr const char* kLoginKeys[] = {"AccountBroadsoftXSIUserID", "AccountBroadsoftXSIHostAddr",
                                      "AccountBroadsoftXSIServerType", "AccountBroadsoftXSIPort"};
constexpr char kPassword[] = "AccountBroadsoftXSIPassword";
constexpr char kCallLogSwitch[] = "NetworkCalllogSwitch";
constexpr auto kMenu = ownTabFirst(kContactsTabs, "contacts-broadsoft");
constexpr const char* kItems[] = {"BroadsoftXSI", "BroadsoftDirectotries"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kDirectoryKeys) && allUnique(kLoginKeys) && allUnique(kItems));

constexpr int kAccount = 0;  // whose login the phone uses
constexpr char kUsedKey[] = "BsftCustomListUse";
constexpr std::size_t kListSize = 1024;
constexpr std::size_t kReasonSize = 256;
constexpr std::string_view kLoaded = "3", kFailed = "4";  // any other status: still loading

std::string loadStatus() {
  return readConfigText("BsftCustomListStatus", 8);
}

// Whether the browser is to ask for the status: "true", "false", or "fail" when there is nothing to wait for.
const char* needToAsk(const char* ask, const std::string& custom, const std::string& status) {
  if (ask && std::string_view(ask) == "1") return "true";
  if (custom == "0" || status == kLoaded) return "false";
  return status == kFailed ? "fail" : "true";
}

// The rows of the custom directories; their number goes to `count`.
TMPL_loop* getCustomLoop(int& count) {
  OrbList<std::string> all, used;
  if (!String2List(all, readConfigPlain("BsftCustomListAll", kListSize), ',')) {
    log_log(kWebLog, kLogWarning, "read custom list error\n");
    return nullptr;
  }
  String2List(used, readConfigPlain(kUsedKey, kListSize), ',');
  TMPL_loop* rows = nullptr;
  for (std::string name : all) {
    const char* checked = std::ranges::find(used, name) == used.end() ? "0" : "1";
    ReplaceSpecailStrs(name);
    const std::string row = std::to_string(count++);
    rows = TMPL_add_varlist(
        rows, TMPL_add_var(nullptr, "row", row.c_str(), "selname", name.c_str(), "checked", checked, nullptr));
  }
  return rows;
}

// Stores which custom directories are in use, when the form says so.
void writeCustomList(HttpRequest* request) {
  const char* field = request->getParameter("z");
  const std::string_view isUsed = field ? field : "";
  log_log(kWebLog, kLogInfo, "getParameter : isCustomUsed=%s\n", isUsed.data());
  const char* posted = isUsed == "yes" ? request->getParameter("activeCustomList") : nullptr;
  if (!posted) return;
  std::string list = posted;
  cutUtf8(list, kListSize);
  if (list.ends_with(',')) list.pop_back();
  log_log(kWebLog, kLogInfo, "(get from request : list = %s\n", list.c_str());
  if (list != readConfigPlain(kUsedKey, kListSize)) writeConfigOperate(GLOBAL_FILE, kUsedKey, list.c_str(), 0);
}
}  // namespace

class ContactsBroadsoftServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int askStatus(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int ContactsBroadsoftServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<ContactsBroadsoftServlet> kActions[] = {
      {"load", &ContactsBroadsoftServlet::loadConfig},
      {"write", &ContactsBroadsoftServlet::writeConfig},
      {"askstatus", &ContactsBroadsoftServlet::askStatus},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int ContactsBroadsoftServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kCallLogSwitch, nullptr, 0);
  list = readConfigOperate(GLOBAL_FILE, kDirectoryKeys, list, 0);
  list = readConfigOperate(GLOBAL_FILE, "BSFTActive", list, 0);
  list = readConfigOperate(ACCOUNT_FILE, kLoginKeys, list, kAccount);
  list = showItemsByLevel(list, request);
  const char* ask = request->getParameter("ask");
  const std::string custom = readConfigText("BsftCustom", 4);
  const std::string status = loadStatus();
  int count = 0;
  TMPL_loop* rows = !ask && custom == "1" && status == kLoaded ? getCustomLoop(count) : nullptr;
  list = TMPL_add_loop(list, "CustomLoop", rows);
  list = TMPL_add_var(list, "customcount", std::to_string(count).c_str(), "bNeedtoAskStatus",
                      needToAsk(ask, custom, status), nullptr);
  response->renderTemplate("/phone/www/WEB-INFO/template/contacts-broadsoft.htm", list);
  return 1;
}

int ContactsBroadsoftServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (writeConfigOperate(GLOBAL_FILE, kDirectoryKeys, request, 0) > 0) {
    postConfigChanged(ConfigArea::kNetworkDirectories);
  }
  const bool isOtherPassword = writeSecret(ACCOUNT_FILE, kPassword, request->getParameter(kPassword), kAccount);
  if (writeConfigOperate(GLOBAL_FILE, kCallLogSwitch, request, 0) > 0) postConfigChanged(ConfigArea::kNetworkCallLog);
  if (writeConfigOperate(ACCOUNT_FILE, kLoginKeys, request, kAccount) > 0 || isOtherPassword) {
    postConfigChanged(ConfigArea::kNetworkDirectoryLogin);
  }
  writeCustomList(request);
  postConfigChanged(ConfigArea::kCustomDirectories);
  response->sendRedirect("/servlet?p=contacts-broadsoft&q=load&ask=1");
  return 1;
}

int ContactsBroadsoftServlet::askStatus(HttpRequest*, HttpResponse* response) {
  const std::string status = loadStatus();
  if (status == kFailed) {
    response->print("4,%s", readConfigText("BsftCustomListFailReason", kReasonSize).c_str());
  } else {
    response->print("%s", status.c_str());
  }
  return 1;
}

TMPL_varlist* ContactsBroadsoftServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createContactsBroadsoftServlet, HttpServlet, ContactsBroadsoftServlet);
