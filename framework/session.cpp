#include "framework/session.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "framework/config_operate.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"

namespace {
bool isIdentity(const std::string& text) {
  return text == "admin" || text == "var" || text == "user";
}
}  // namespace

void setSessionIdleMinutes(HttpRequest* request, const char* minutes) {
  constexpr int kLongest = std::numeric_limits<int>::max() / 60;
  if (HttpSession* session = request->getSession(1)) {
    session->setMaxInactiveInterval(std::clamp(parseInt(minutes).value_or(0), 0, kLongest) * 60);
  }
}

bool logInSession(HttpRequest* request, const char* user) {
  HttpSession* session = request->getSession(1);
  if (!session) return false;
  session->setAttribute("user", strdup(user));
  const std::string minutes = readConfigText("ReLogOffTime", 64);
  if (minutes.empty()) return false;
  setSessionIdleMinutes(request, minutes.c_str());
  return true;
}

std::string sessionIdentity(HttpRequest* request) {
  HttpSession* session = request->getSession(1);
  const char* user = session ? session->getAttribute("user") : nullptr;
  return user ? user : "";
}

std::string identityOfUser(const std::string& user) {
  if (isIdentity(user)) return user;
  std::string identity;
  GetIdentityByName(user.c_str(), &identity);
  return identity;
}

std::string userOfLoginName(const std::string& name, const std::string& identity) {
  return isIdentity(name) ? identity : name;
}
