// The page "login": logging in and out, and the lock-out of clients that guess passwords.
#include <string>
#include <string_view>
#include <utility>

#include "framework/action_dispatch.h"
#include "framework/orb_hash_map.h"
#include "framework/page_factory.h"
#include "framework/servlet_base.h"
#include "framework/session.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/access/credentials.h"
#include "servlet/access/login_targets.h"

namespace {

constexpr std::size_t kBuckets = 100;
constexpr std::size_t kMostCommands = 1000;  // beyond, the clients have to ask again: memory stays bounded
constexpr char kLockedOut[] =
    "You are not authorized to access the web interface.\n\nPlease contact your support team or try again 3 minutes "
    "later.\n\n\nHTTP 401";

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
  void saveCommand(HttpRequest* request);
  std::string takeCommand(HttpRequest* request);

  bool failed_ = false;                                 // the next form shows the error notice
  OrbHashMap<std::string, std::string> savedCommands_;  // by client: the command to go on with after the login
};

LoginServlet::LoginServlet() : savedCommands_(kBuckets) {}

int LoginServlet::init() {
  failed_ = false;
  savedCommands_.clear();
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
  const std::string_view jumpto = wantedPage(request);
  TMPL_varlist* list = nullptr;
  if (isAccountPage(jumpto)) list = TMPL_add_var(list, "acc", request->getParameter("acc"), nullptr);
  if (jumpto == kKeyPage) list = TMPL_add_var(list, "acc", request->getParameter("model"), nullptr);
  list = TMPL_add_var(list, "jumpto", jumpto.empty() ? "status" : jumpto.data(), nullptr);
  if (jumpto == kCommand) saveCommand(request);
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
  const std::string command = wantedPage(request) == kCommand ? takeCommand(request) : "";
  response->sendRedirect(targetAfterLogin(request, command).c_str());
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
void LoginServlet::saveCommand(HttpRequest* request) {
  const std::string client = request->getRemoteAddr();
  const std::string command = wantedCommand(request);
  const std::string* saved = savedCommands_.find(client);
  if (commandTarget(command).empty() || (saved && !saved->empty())) return;
  if (savedCommands_.size() >= kMostCommands) savedCommands_.clear();
  savedCommands_.set(client, command);
}

std::string LoginServlet::takeCommand(HttpRequest* request) {
  std::string* saved = savedCommands_.find(request->getRemoteAddr());
  return saved && !saved->empty() ? std::exchange(*saved, "") : wantedCommand(request);
}

int LoginServlet::logout(HttpRequest* request, HttpResponse* response) {
  if (HttpSession* session = request->getSession(1)) session->invalidate();
  response->sendRedirect("/servlet?p=login&q=loginForm&jumpto=status");
  return 1;
}

PHONE_FACTORY(createLoginServlet, HttpServlet, LoginServlet);
