// What is let in, without a connection.
#include "host/admission.h"

#include <map>
#include <sstream>

#include "tests/host/host_test.h"

namespace host {
namespace {

// A request as text: "GET /target", then a header a line; "From" is the client's address.
RequestHead headOf(const std::string& text) {
  std::istringstream lines(text);
  std::string method, target, line;
  std::map<std::string, std::string> headers{{"Host", "127.0.0.1"}, {"From", "127.0.0.1"}};
  lines >> method >> target >> std::ws;
  while (std::getline(lines, line)) headers[line.substr(0, line.find(':'))] = line.substr(line.find(':') + 2);
  return readHead(method, target, headers["From"], [&](const char* name) {
    const auto at = headers.find(name);
    return at == headers.end() ? nullptr : at->second.c_str();
  });
}

// The route of what is let in, or the refusal's status and headers.
std::string admitted(const std::string& request, const AdmissionRules& rules, bool rebooting) {
  const Admission admission = admit(headOf(request), rules, rebooting);
  if (!admission.refusal) {
    static constexpr const char* kRoutes[] = {"static", "servlet", "simulator", "home"};
    return kRoutes[static_cast<int>(admission.route)];
  }
  std::string text = std::to_string(admission.refusal->status);
  for (const Header& header : admission.refusal->headers) text += " " + header.name + ": " + header.value;
  return text;
}

constexpr const char* kFromLink = "\nSec-Fetch-Site: cross-site\nSec-Fetch-Mode: navigate\nSec-Fetch-Dest: ";
constexpr const char* kForm = "\nContent-Type: Application/X-WWW-Form-Urlencoded; charset=utf-8\nContent-Length: ";

struct Row {
  std::string request;
  const char* expected;
};

const AdmissionRules kRules{3 << 20, true, {"phone.example.com"}};

void expectAdmitted(std::initializer_list<Row> rows, const AdmissionRules& rules = kRules, bool rebooting = false) {
  for (const Row& row : rows) {
    EXPECT_EQ(admitted(row.request, rules, rebooting), row.expected) << row.request.substr(0, 300);
  }
}

TEST(Admission, RoutesWhatIsAskedForRightly) {
  expectAdmitted({
      {"GET /", "home"},
      {"HEAD /servlet?p=a", "servlet"},
      {"POST /servlet", "servlet"},
      {"GET /servlet/", "static"},
      {"GET /%73ervlet?p=a", "static"},
      {"GET /js/app.js?p=a", "static"},
      {"GET /simulator", "static"},
      {"PATCH /simulator/state", "simulator"},
      {"POST /js/app.js", "405 Allow: GET, HEAD"},
      {"POST /", "405 Allow: GET, HEAD"},
      {"PUT /servlet?p=a", "405 Allow: GET, HEAD, POST"},
      {"TRACE /simulator/", "405 Allow: GET, HEAD, POST, PUT, PATCH, DELETE"},
      {"get /", "405 Allow: GET, HEAD"},
      {"GET *", "400"},
      {"GET servlet", "400"},
      {"GET http://127.0.0.1/servlet?p=a", "servlet"},
      {"GET http://127.0.0.1", "home"},
      {"GET /servlet?a=%00", "400"},
      {"GET /servlet?" + std::string(8 * 1024 - 9, 'x'), "servlet"},
      {"GET /servlet?" + std::string(8 * 1024 - 8, 'x'), "414"},
  });
}

TEST(Admission, KeepsOtherSitesOut) {
  expectAdmitted({
      {"POST /servlet\nSec-Fetch-Site: same-origin\nOrigin: null", "servlet"},  // a plain form of our own
      {"POST /servlet\nSec-Fetch-Site: same-origin\nOrigin: http://evil", "403"},
      {"POST /servlet\nSec-Fetch-Site: cross-site", "403"},
      {"GET /servlet?p=a&q=load\nSec-Fetch-Site: same-site", "403"},
      {"GET /js/app.js\nSec-Fetch-Site: cross-site", "static"},
      {"POST /servlet\nHost: phone.local\nOrigin: http://phone.local", "servlet"},
      {"POST /servlet\nHost: phone.local\nOrigin: http://PHONE.local:80", "servlet"},
      {"POST /servlet\nHost: phone.local:443\nOrigin: https://phone.local", "servlet"},
      {"POST /servlet\nHost: phone.local\nOrigin: http://phone.local:8080", "403"},
      {"POST /servlet\nHost: phone.local\nOrigin: http://phone.local.evil", "403"},
      {"POST /servlet\nHost: \nOrigin: http://", "400"},
      {"POST /servlet\nHost: phone.local\nOrigin: null", "403"},
      {std::string("GET /") + kFromLink + "document", "home"},
      {std::string("GET /servlet?p=a&q=load") + kFromLink, "servlet"},
      {std::string("GET /servlet?p=login&q=loginForm&jumpto=x") + kFromLink + "document", "servlet"},
      {std::string("GET /servlet?p=a&q=load") + kFromLink + "iframe", "403"},
      {std::string("GET /servlet?p=a&q=write") + kFromLink + "document", "403"},
      {std::string("GET /servlet?q=load") + kFromLink + "document", "403"},
      {std::string("GET /servlet?key=OK") + kFromLink + "document", "403"},
      {std::string("POST /servlet?p=a&q=load") + kFromLink + "document", "403"},
  });
}

TEST(Admission, OpensTheSimulatorToLocalPeopleOnly) {
  expectAdmitted({
      {"GET /simulator/\nHost: LOCALHOST", "simulator"},
      {"GET /simulator/\nHost: [::1]:80\nFrom: ::1", "simulator"},
      {"GET /simulator/\nFrom: 127.8.9.1", "simulator"},
      {"GET /simulator/\nFrom: 10.0.0.1", "403"},
      {"GET /simulator/\nFrom: ::2", "403"},
      {"GET /simulator/\nHost: 10.0.0.1", "403"},
      {"GET /simulator/\nHost: [::2]", "403"},
      {"GET /simulator/\nHost: phone.localhost", "403"},
      {"GET http://127.0.0.1/simulator/\nHost: 10.0.0.1", "400"},
      {"PUT /simulator/config\nOrigin: http://evil", "403"},
      {"GET /simulator/\nSec-Fetch-Site: cross-site\nSec-Fetch-Mode: cors", "403"},
      {std::string("GET /simulator/") + kFromLink + "document", "simulator"},
  });
  expectAdmitted({{"GET /simulator/", "404"}}, {3 << 20});
}

TEST(Admission, AnswersToItsNamesOnly) {
  for (const char* name :
       {"10.0.0.1", "10.0.0.1:8080", "10.0.0.1.", "[fe80::1]:80", "[::ffff:10.0.0.1]", "phone", "PHONE:", "phone.",
        "a.b.LOCAL:80", "phone.lan.", "phone.home.arpa", "phone.internal", "x_1.localhost", "phone.Example.com.:80"}) {
    for (const char* target : {"/", "/servlet?p=a", "/js/app.js"}) {
      EXPECT_FALSE(admit(headOf(std::string("GET ") + target + "\nHost: " + name), kRules, false).refusal) << name;
    }
  }
  for (const char* name :
       {"evil.com", "10.0.0.1.evil.com", "127.1", "1.2.3.4.5", "256.0.0.1", "0x7f.0.0.1", "local.evil", "evillocal.com",
        "xhome.arpa", "x.phone.example.com", "phone.example.com.evil:80"}) {
    for (const char* target : {"/", "/servlet?p=a", "/js/app.js", "/simulator/"}) {
      EXPECT_EQ(admitted(std::string("GET ") + target + "\nHost: " + name, kRules, false), "421") << name;
    }
  }
  for (const char* name : {"",
                           ".",
                           "..",
                           ".local",
                           "a..local",
                           "a b",
                           "phone, phone",
                           "phone,evil.com",
                           "u@phone",
                           "phone/x",
                           "phone:80x",
                           "phone:80:80",
                           "[::1",
                           "[::1]x",
                           "[]",
                           "[phone]",
                           "[fe80::1%25eth0]",
                           "::1",
                           "ph%6fne",
                           "ph\xc3\xb6ne",
                           "phone\t",
                           "phone#",
                           "phone?"}) {
    EXPECT_EQ(admitted(std::string("GET /\nHost: ") + name, kRules, false), "400") << name;
  }
  RequestHead old = headOf("GET /");
  old.host.reset();
  EXPECT_FALSE(admit(old, kRules, false).refusal);
  // An address that names a host of its own, as for a proxy.
  expectAdmitted({
      {"GET http://PHONE:80/servlet?p=a\nHost: phone.", "servlet"},
      {"GET http://evil.com/\nHost: 127.0.0.1", "400"},
      {"GET http://127.0.0.1/\nHost: evil.com", "400"},
      {"GET http://evil.com/\nHost: evil.com", "421"},
      {"GET http://u@127.0.0.1/", "400"},
      {"GET http:///", "400"},
      {"GET http://127.0.0.1?p=a", "home"},
      {"GET x/http://evil.com/", "400"},
  });
}

TEST(Admission, TakesALoginByFormOnly) {
  expectAdmitted({
      {"GET /servlet?p=login&q=login&username=admin&pwd=x", "405 Allow: POST"},
      {"HEAD /servlet?q=login&p=login", "405 Allow: POST"},
      {"GET /servlet?%70=log%69n&q=%6cogin", "405 Allow: POST"},
      {"GET /servlet?x&&p=login&q=login&p=status&q=load", "405 Allow: POST"},
      {"GET http://127.0.0.1/servlet?p=login&q=login", "405 Allow: POST"},
      {std::string("GET /servlet?p=login&q=login") + kFromLink + "document", "405 Allow: POST"},
      {"GET /servlet?p=status&q=load&p=login&q=login", "servlet"},
      {"GET /servlet?p=login&q=loginForm", "servlet"},
      {"GET /servlet?p=login&q=logout", "servlet"},
      {"GET /servlet?P=login&Q=login", "servlet"},
      {"POST /servlet?p=login&q=login", "servlet"},
  });
}

TEST(Admission, LimitsBodies) {
  const std::string form(kForm);
  expectAdmitted({
      {"POST /servlet" + form + "1048576", "servlet"},
      {"POST /servlet" + form + "1048577", "413"},
      {"POST /servlet\nContent-Length: 3145728", "servlet"},
      {"POST /servlet\nContent-Length: 3145729", "413"},
      {"POST /servlet?push\nContent-Length: 1048576", "servlet"},
      {"POST /servlet?pushx\nContent-Length: 1048577", "413"},
      {"POST /servlet?p=push\nContent-Length: 1048577", "servlet"},
      {"GET /servlet?p=a\nContent-Length: 1048577", "413"},
      {"PUT /simulator/config\nContent-Length: 1048577", "413"},
      {"GET /js/app.js\nContent-Length: 1048577", "413"},
  });
}

TEST(Admission, LetsNobodyInWhileThePhoneReboots) {
  expectAdmitted(
      {
          {"GET /", "503 Retry-After: 2"},
          {"GET /servlet?p=a", "503 Retry-After: 2"},
          {"GET /js/app.js", "static"},
          {"GET /simulator/", "simulator"},
      },
      kRules, true);
}

}  // namespace
}  // namespace host
