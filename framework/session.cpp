#include "framework/session.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "framework/config_operate.h"
#include "framework/text_utils.h"

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
