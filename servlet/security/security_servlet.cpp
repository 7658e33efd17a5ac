// The page "security": changing the passwords of the web interface.
#include <algorithm>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_password.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/servlet_base.h"
#include "framework/session.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/security/security_tabs.h"

namespace {

constexpr const auto& kMenu = kSecurityTabs;
constexpr Visibility kVisibility{.menu = kMenu};

constexpr std::size_t kLineSize = 256;

// Whether somebody with the rights of `own` sees the account of that identity. Names that are no identity are
// everybody's, and whoever has none himself sees no more than they.
bool isListed(std::string_view own, std::string_view identity, bool varEnabled) {
  if (own != "admin" && own != "var" && own != "user") return identity.empty();
  if (identity == "var" && (!varEnabled || own == "user")) return false;
  return identity != "admin" || own == "admin";
}

// Whether the password of `mode` is the user's to change. The administrator's is so to a session of that very identity
// alone, not to one with the administrator's login name.
bool mayChange(const std::string& user, const std::string& identity, std::string_view mode) {
  if (user == "admin") return true;
  return mode != "admin" && (mode == identity || identity == "admin" || (identity == "var" && mode == "user"));
}

TMPL_loop* userRows(std::string_view passwords, const std::string& user) {
  const std::string own = identityOfUser(user);
  const bool varEnabled = readConfigText("AdvancedVarEnabled", 4) != "0";
  TMPL_loop* rows = nullptr;
  while (!passwords.empty()) {
    const std::size_t end = std::min(passwords.find('\n'), passwords.size());
    std::string name(passwords.substr(0, end));
    passwords.remove_prefix(std::min(end + 1, passwords.size()));
    cutText(name, kLineSize);
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos || colon == 0) continue;
    name.resize(colon);
    std::string identity;
    GetIdentityByName(name.c_str(), &identity);
    if (!isListed(own, identity, varEnabled)) continue;
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "typeName", name.c_str(), "typeValue", identity.c_str(),
                                               "selected", name == user ? "selected" : "", nullptr));
  }
  return rows;
}

bool isOwnPassword(const filePassword& passwords, const std::string& name, HttpRequest* request) {
  if (passwords.IsRightUserPassword(name.c_str(), request->getParameter("editOldPassword"))) return true;
  log_log(kWebLog, kLogInfo, "The password is error!\n");
  return false;
}

}  // namespace

class SecurityServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SecurityServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SecurityServlet> kActions[] = {
      {"load", &SecurityServlet::loadConfig},
      {"write", &SecurityServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SecurityServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  HttpSession* session = request->getSession(1);
  if (!session) {
    response->sendRedirect("/servlet?p=security&q=load");
    return 1;
  }
  const char* user = session->getAttribute("user");
  if (!user) {
    response->print("Please login before the operator!");
    return 1;
  }
  std::string passwords;
  if (!readFile(kPasswordFile, passwords)) {
    log_log(kWebLog, kLogWarning, "no Fount Files\n");
    return 1;
  }
  log_log(kWebLog, kLogInfo, "Start getting userType...\n");
  TMPL_varlist* list = TMPL_add_loop(nullptr, "userTypeLoop", userRows(passwords, user));
  response->renderTemplate("/phone/www/WEB-INFO/template/security.htm", showItemsByLevel(list, request));
  return 1;
}

int SecurityServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  HttpSession* session = request->getSession(1);
  const char* loggedIn = session ? session->getAttribute("user") : nullptr;
  const char* mode = request->getParameter("mode");
  const char* password = request->getParameter("editNewPassword");
  if (!loggedIn || !mode || !password) {
    log_log(kWebLog, kLogWarning, "SecurityServlet::writeConfig para error\n");
    return 1;
  }
  const std::string user = loggedIn;
  log_log(kWebLog, kLogInfo, "userType = %s, user=%s\n", mode, user.c_str());
  const std::string identity = identityOfUser(user);
  std::string name;
  GetNameByIdentity(&name, mode);
  if (name.empty() || !mayChange(user, identity, mode)) {
    SetNoticePage(response, false, "security", "Error:You don't have enough jurisdiction!");
    return 1;
  }
  filePassword passwords(kPasswordFile);
  if (mode == identity && !isOwnPassword(passwords, name, request)) {
    SetNoticePage(response, false, "security", "Error:The password is error!");
    return 1;
  }
  passwords.SetUserPassword(name.c_str(), password);
  passwords.SaveToFile(kPasswordFile);
  SetNoticePage(response, false, "Password", "You have changed the password!");
  return 1;
}

TMPL_varlist* SecurityServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSecurityServlet, HttpServlet, SecurityServlet);
