// The page "login": logging in and out, and the lock-out of clients that guess passwords.
#include <ctime>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_password.h"
#include "framework/orb_hash_map.h"
#include "framework/page_factory.h"
#include "framework/servlet_base.h"
#include "framework/session.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "platform/os_services.h"
#include "servlet/access/login_targets.h"

namespace {

constexpr std::size_t kBuckets = 100;
constexpr std::size_t kMostClients = 10'000;  // beyond, the counts begin anew: memory stays bounded
constexpr int kAllowedFailures = 2;
constexpr std::time_t kLockSeconds = 179;
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

bool isVarSwitchedOff(const std::string& identity) {
  return identity == "var" && readConfigText("AdvancedVarEnabled", 4) == "0";
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
  bool isLockedOut(HttpRequest* request);
  std::string loginTarget(HttpRequest* request);

  OrbHashMap<std::string, int> failures_;  // failed attempts by client address
  std::time_t lockTime_ = 0;               // when a client was last locked out; shared by all
  bool failed_ = false;                    // the next form shows the error notice
  std::string savedUri_;                   // the Action URI to go on with after the login
};

LoginServlet::LoginServlet() : failures_(kBuckets) {}

int LoginServlet::init() {
  failed_ = false;
  lockTime_ = 0;
  failures_.clear();
  savedUri_.clear();
  return 0;
}

int LoginServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<LoginServlet> kActions[] = {
      {"loginForm", &LoginServlet::loginForm},
      {"login", &LoginServlet::login},
      {"logout", &LoginServlet::logout},
  };
  response->setContentType("text/html");
  if (isLockedOut(request)) {
    response->print("%s", kLockedOut);
    return 1;
  }
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

bool LoginServlet::isLockedOut(HttpRequest* request) {
  int* failures = failures_.find(request->getRemoteAddr());
  if (!failures || *failures == 0) failed_ = false;
  if (!failures || *failures <= kAllowedFailures) return false;
  if (osTime() - lockTime_ <= kLockSeconds) return true;
  log_log(kWebLog, kLogInfo, "LoginServlet::onRequest() Lock already 3 min.\n");
  *failures = 0;
  return false;
}

int LoginServlet::loginForm(HttpRequest* request, HttpResponse* response) {
  const std::string_view jumpto = field(request, "jumpto");
  TMPL_varlist* list = nullptr;
  if (isAccountPage(jumpto)) list = TMPL_add_var(list, "acc", request->getParameter("acc"), nullptr);
  if (jumpto == kKeyPage) list = TMPL_add_var(list, "acc", request->getParameter("model"), nullptr);
  list = TMPL_add_var(list, "jumpto", jumpto.empty() ? "status" : jumpto.data(), nullptr);
  if (jumpto == "URI" && savedUri_.empty()) savedUri_ = uriOf(request);
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
  GetIdentityByName(user, &identity);
  const bool right = filePassword(kPasswordFile).IsRightUserPassword(user, password);
  if (!right || isVarSwitchedOff(identity)) return refuse(request, response);

  log_log(kWebLog, kLogInfo, "password is right\n");
  failed_ = false;
  if (int* failures = failures_.find(request->getRemoteAddr())) *failures = 0;
  if (!logInSession(request, identity.c_str())) {
    log_log(kWebLog, kLogWarning, "LoginServlet::login() setMaxInactiveInterval failed!\n");
  }
  response->sendRedirect(loginTarget(request).c_str());
  return 1;
}

int LoginServlet::refuse(HttpRequest* request, HttpResponse* response) {
  failed_ = true;
  log_log(kWebLog, kLogWarning, "The password is error!\n");
  const std::string client = request->getRemoteAddr();
  if (int* failures = failures_.find(client)) {
    if (++*failures == kAllowedFailures + 1) {
      lockTime_ = osTime();
      response->print("%s", kLockedOut);
      return 1;
    }
  } else {
    if (failures_.size() >= kMostClients) failures_.clear();
    failures_.set(client, 1);
  }
  loginForm(request, response);
  response->sendError(401);
  return 1;
}

std::string LoginServlet::loginTarget(HttpRequest* request) {
  const std::string_view page = field(request, "jumpto");
  std::string target = kStatusTarget;
  if (page == "URI") {
    target = "/servlet?" + (savedUri_.empty() ? uriOf(request) : savedUri_);
    savedUri_.clear();
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
  if (target.size() < kTargetSize) return target;
  log_log(kWebLog, kLogWarning,
          "LoginServlet::login() target is too long\n");  // half a command could mean something else
  return kStatusTarget;
}

int LoginServlet::logout(HttpRequest* request, HttpResponse* response) {
  if (HttpSession* session = request->getSession(1)) session->invalidate();
  response->sendRedirect("/servlet?p=login&q=loginForm&jumpto=status");
  return 1;
}

PHONE_FACTORY(createLoginServlet, HttpServlet, LoginServlet);
