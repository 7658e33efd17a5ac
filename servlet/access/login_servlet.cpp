// The page "login": logging in and out, and the lock-out of clients that guess passwords.
#include <string>
#include <string_view>
#include <utility>

#include "framework/action_dispatch.h"
#include "framework/orb_hash_map.h"
#include "framework/page_factory.h"
#include "framework/query_text.h"
#include "framework/servlet_base.h"
#include "framework/session.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/access/credentials.h"
#include "servlet/access/login_targets.h"

namespace {

constexpr std::size_t kBuckets = 100;
constexpr std::size_t kMostSavedUris = 1000;  // beyond, the clients have to ask again: memory stays bounded
constexpr std::size_t kTargetSize = 64;
constexpr char kStatusTarget[] = "/servlet?p=status&q=load";
constexpr char kLockedOut[] =
    "You are not authorized to access the web interface.\n\nPlease contact your support team or try again 3 minutes "
    "later.\n\n\nHTTP 401";

std::string_view field(HttpRequest* request, const char* name) {
  const char* value = request->getParameter(name);
  return value ? value : "";
}

// What follows the first "URI&" of the request target: the Action URI that the request filter put there.
std::string uriOf(HttpRequest* request) {
  const std::string_view target = request->getRequestURI();
  const std::size_t start = target.find("URI&");
  return start == std::string_view::npos ? "" : std::string(target.substr(start + 4));
}

// Where to go on with such a text. Only a command may follow, never a page: what a planted link brings would run with
// the rights of whoever logs in. Empty when the text is not to be followed; half a command could mean something else.
std::string targetOfUri(const std::string& uri) {
  const std::string target = "/servlet?" + encodeQuery(uri);
  return uri.empty() || hasField(uri, "p") || target.size() >= kTargetSize ? "" : target;
}

}  // namespace

// One object serves all clients, one request at a time.
class LoginServlet : public HttpServlet {
 public:
  LoginServlet();

  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loginForm(HttpRequest* request, HttpResponse* response);
  int login(HttpRequest* request, HttpResponse* response);
  int logout(HttpRequest* request, HttpResponse* response);

  int refuse(HttpRequest* request, HttpResponse* response);
  void saveUri(HttpRequest* request);
  std::string takeUri(HttpRequest* request);
  std::string loginTarget(HttpRequest* request);

  bool failed_ = false;                             // the next form shows the error notice
  OrbHashMap<std::string, std::string> savedUris_;  // by client: the command to go on with after the login
};

LoginServlet::LoginServlet() : savedUris_(kBuckets) {}

int LoginServlet::init() {
  failed_ = false;
  savedUris_.clear();
  credentialsDoor().reset();
  return 0;
}

int LoginServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<LoginServlet> kActions[] = {
      {"loginForm", &LoginServlet::loginForm},
      {"login", &LoginServlet::login},
      {"logout", &LoginServlet::logout},
  };
  response->setContentType("text/html");
  const std::string client = request->getRemoteAddr();
  if (credentialsDoor().failuresOf(client) == 0) failed_ = false;
  if (credentialsDoor().isLockedOut(client)) {
    response->print("%s", kLockedOut);
    return 1;
  }
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int LoginServlet::loginForm(HttpRequest* request, HttpResponse* response) {
  const std::string_view jumpto = field(request, "jumpto");
  TMPL_varlist* list = nullptr;
  if (isAccountPage(jumpto)) list = TMPL_add_var(list, "acc", request->getParameter("acc"), nullptr);
  if (jumpto == kKeyPage) list = TMPL_add_var(list, "acc", request->getParameter("model"), nullptr);
  list = TMPL_add_var(list, "jumpto", jumpto.empty() ? "status" : jumpto.data(), nullptr);
  if (jumpto == "URI") saveUri(request);
  if (failed_) {
    list = TMPL_add_var(list, "notice", "The username or password is error!", "username",
                        request->getParameter("username"), "password", request->getParameter("pwd"), nullptr);
  }
  response->renderTemplate("/phone/www/WEB-INFO/template/loginForm.htm", AddDevType(list));
  return 1;
}

int LoginServlet::login(HttpRequest* request, HttpResponse* response) {
  const char* user = request->getParameter("username");
  const char* password = request->getParameter("pwd");
  if (!user || !password) return loginForm(request, response);
  std::string identity;
  switch (credentialsDoor().enter(request->getRemoteAddr(), user, password, identity)) {
    case Entry::kRefused:
      return refuse(request, response);
    case Entry::kLockedOut:
      failed_ = true;
      log_log(kWebLog, kLogWarning, "The password is error!\n");
      response->print("%s", kLockedOut);
      return 1;
    case Entry::kGranted:
      break;
  }
  log_log(kWebLog, kLogInfo, "password is right\n");
  failed_ = false;
  if (!logInSession(request, identity.c_str())) {
    log_log(kWebLog, kLogWarning, "LoginServlet::login() setMaxInactiveInterval failed!\n");
  }
  response->sendRedirect(loginTarget(request).c_str());
  return 1;
}

int LoginServlet::refuse(HttpRequest* request, HttpResponse* response) {
  failed_ = true;
  log_log(kWebLog, kLogWarning, "The password is error!\n");
  loginForm(request, response);
  response->sendError(401);
  return 1;
}

// The first that a client brings counts, until it is taken.
void LoginServlet::saveUri(HttpRequest* request) {
  const std::string client = request->getRemoteAddr();
  const std::string uri = uriOf(request);
  const std::string* saved = savedUris_.find(client);
  if (targetOfUri(uri).empty() || (saved && !saved->empty())) return;
  if (savedUris_.size() >= kMostSavedUris) savedUris_.clear();
  savedUris_.set(client, uri);
}

std::string LoginServlet::takeUri(HttpRequest* request) {
  std::string* saved = savedUris_.find(request->getRemoteAddr());
  return saved && !saved->empty() ? std::exchange(*saved, "") : uriOf(request);
}

std::string LoginServlet::loginTarget(HttpRequest* request) {
  const std::string_view page = field(request, "jumpto");
  std::string target = kStatusTarget;
  if (page == "URI") {
    const std::string uri = takeUri(request);
    if (uri.empty()) return target;
    target = targetOfUri(uri);
  } else if (!isPlainName(page) || page == "status") {
    return target;  // a name that is none could smuggle further fields into the address
  } else if (isAccountPage(page)) {
    const std::string_view account = field(request, "acc");
    target = "/servlet?p=" + std::string(page) + "&q=load&acc=" + encodeQueryValue(account.empty() ? "0" : account);
  } else if (page == "contactsbasic") {
    target = "/servlet?p=contactsbasic&q=load&num=1&group=";
  } else if (page == kKeyPage) {
    target = "/servlet?p=dsskey&q=load&model=" + encodeQueryValue(field(request, "model"));
  } else {
    target = "/servlet?p=" + std::string(page) + "&q=load";
  }
  if (!target.empty() && target.size() < kTargetSize) return target;
  log_log(kWebLog, kLogWarning, "LoginServlet::login() target is refused\n");
  return kStatusTarget;
}

int LoginServlet::logout(HttpRequest* request, HttpResponse* response) {
  if (HttpSession* session = request->getSession(1)) session->invalidate();
  response->sendRedirect("/servlet?p=login&q=loginForm&jumpto=status");
  return 1;
}

PHONE_FACTORY(createLoginServlet, HttpServlet, LoginServlet);
