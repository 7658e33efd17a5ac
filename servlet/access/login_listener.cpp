// The request filter: decides for every request whether its page may have it.
#include <algorithm>
#include <list>
#include <string>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/page_factory.h"
#include "framework/query_text.h"
#include "framework/servlet_base.h"
#include "framework/session.h"
#include "framework/text_utils.h"
#include "platform/boot_environment.h"
#include "platform/device.h"
#include "platform/log.h"
#include "platform/web_debug.h"
#include "servlet/access/action_uri.h"
#include "servlet/access/credentials.h"
#include "servlet/access/login_targets.h"
#include "servlet/access/push_xml.h"

namespace {

constexpr std::string_view kServletPath = "/servlet?";
constexpr std::size_t kQuerySize = 256;
constexpr char kLanguageFolder[] = "/phone/www/htdocs/language";

// What follows "/servlet?" in the request target, and the credentials behind its "&@".
struct Query {
  std::string text;
  std::string user;
  std::string password;
  bool hasCredentials = false;
};

Query queryOf(HttpRequest* request) {
  const std::string_view target = request->getRequestURI();
  Query query;
  query.text = target.substr(std::min(kServletPath.size(), target.size()));
  cutText(query.text, kQuerySize);
  const std::size_t cut = query.text.find("&@");
  if (cut == std::string::npos) return query;
  const std::string credentials = query.text.substr(cut + 2);
  query.text.resize(cut);
  const std::size_t colon = std::min(credentials.find(':'), credentials.size());
  query.user = credentials.substr(0, colon);
  query.password = credentials.substr(std::min(colon + 1, credentials.size()));
  query.hasCredentials = true;
  return query;
}

void setDebugLevel() {
  const int level = readConfigNumber("ServerLogLevel");
  if (level > 6) return;
  WebDebug::getInstance().setDebugLevel(level <= 3   ? WebDebug::kErrors
                                        : level <= 5 ? WebDebug::kNormal
                                                     : WebDebug::kDetail);
}

// The configured language when the phone has it, otherwise the first it has.
void setPageLanguage(HttpRequest* request) {
  const std::string configured = readConfigText("LanguageWebLang", 64);
  std::list<std::string> languages;
  ReadFiles::FindFiles(languages, kLanguageFolder, ".js", false, false);
  std::erase(languages, "");
  const auto found = std::ranges::find(languages, configured);
  const auto chosen = found == languages.end() ? languages.begin() : found;
  request->setLanguage(chosen == languages.end() ? "" : chosen->c_str());
}

bool inSafeMode() {
  char mode[256] = "";
  userenv_get("BOOTMODE", mode, sizeof mode);
  mode[sizeof mode - 1] = '\0';
  return std::string_view(mode) == "safemode";
}

std::string fieldForQuery(HttpRequest* request, const char* name, const char* fallback) {
  const char* value = request->getParameter(name);
  return encodeQueryValue(value && *value ? value : fallback);
}

// The login form, which is to come back to what was asked for.
std::string loginTarget(HttpRequest* request, const char* page, const std::string& query) {
  const std::string form = "/servlet?p=login&q=loginForm&jumpto=";
  if (!page) return form + "URI&" + encodeQuery(query);
  const std::string name = encodeQueryValue(page);
  if (isAccountPage(page)) return form + name + "&acc=" + fieldForQuery(request, "acc", "0");
  if (std::string_view(page) == "contacts-preview") return form + "contactsbasic";
  if (page == kKeyPage) return form + name + "&model=" + fieldForQuery(request, "model", "0");
  return form + name;
}

bool isLoggedIn(HttpRequest* request) {
  HttpSession* session = request->getSession(1);
  return session && session->getAttribute("user");
}

// An Action URI from a client without a session runs with the credentials that it brought along.
int runWithCredentials(HttpRequest* request, HttpResponse* response, const Query& query, std::string_view type) {
  std::string identity;
  if (query.hasCredentials && credentialsDoor().enter(request->getRemoteAddr(), query.user.c_str(),
                                                      query.password.c_str(), identity) == Entry::kGranted) {
    proccessActionURI(request, response, type, query.text, userOfLoginName(query.user, identity).c_str());
    return isLoggedIn(request) ? 1 : 0;  // a client that is not trusted has its answer, and no page beside it
  }
  response->addHeader("WWW-Authenticate", "Basic realm=\"VOIP PHONE\"");
  response->sendError(401);
  return 0;
}

}  // namespace

class LoginListener : public HttpListener {
 public:
  // 1: the request goes on to its page. 0: it was answered here, by the way to the login form or a refusal.
  int onRequest(HttpRequest* request, HttpResponse* response) override;
};

int LoginListener::onRequest(HttpRequest* request, HttpResponse* response) {
  const Query query = queryOf(request);
  log_log(kWebLog, kLogError, "uri = %s\n", withoutSecrets(query.text).c_str());
  const char* page = request->getParameter("p");
  setDebugLevel();
  response->setPhoneType(std::to_string(GetPhoneType()).c_str());
  setPageLanguage(request);
  const std::string_view name = page ? page : "";
  if (page && (name == "login" || name == "command" || inSafeMode())) return 1;
  if (query.text.starts_with("push")) {
    ProcessPushXml(request, false);
    return 1;
  }
  const bool loggedIn = isLoggedIn(request);
  const std::string_view type = getURIType(query.text);
  if (!loggedIn && !type.empty()) return runWithCredentials(request, response, query, type);
  if (!loggedIn) {
    response->sendRedirect(loginTarget(request, page, query.text).c_str());
    return 0;
  }
  if (!type.empty()) proccessActionURI(request, response, type, query.text);
  return 1;
}

PHONE_FACTORY(createLoginListener, HttpListener, LoginListener);
