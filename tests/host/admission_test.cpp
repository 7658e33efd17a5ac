// What is let in, without a connection.
#include "host/admission.h"

#include <map>
#include <sstream>

#include "tests/host/host_test.h"

namespace host {
namespace {

using Headers = std::map<std::string, std::string>;
using Texts = std::initializer_list<std::string>;

// A request as text: "GET /target", then a header a line; "From" is the client's address, "TLS" has it come over TLS,
// "Link" stands for a link on another site to what the browser fetches as that.
RequestHead headOf(const std::string& text) {
  std::istringstream lines(text);
  std::string method, target, line;
  Headers headers{{"Host", "127.0.0.1"}, {"From", "127.0.0.1"}};
  lines >> method >> target >> std::ws;
  while (std::getline(lines, line)) headers[line.substr(0, line.find(':'))] = line.substr(line.find(':') + 2);
  if (const auto link = headers.find("Link"); link != headers.end()) {
    headers.merge(Headers{{"Sec-Fetch-Site", "cross-site"}, {"Sec-Fetch-Mode", "navigate"}});
    headers["Sec-Fetch-Dest"] = link->second;
  }
  return readHead(method, target, {headers["From"], headers.contains("TLS")}, [&](const char* name) {
    const auto at = headers.find(name);
    return at == headers.end() ? nullptr : at->second.c_str();
  });
}

const AdmissionRules kRules{3 << 20, true, {"phone.example.com"}, {"/media/user/"}};

// The route of what is let in, or the refusal's status and headers.
std::string admitted(const std::string& request, const AdmissionRules& rules = kRules, bool rebooting = false) {
  const Admission admission = admit(headOf(request), rules, rebooting);
  if (!admission.refusal) {
    static constexpr const char* kRoutes[] = {"static", "servlet", "simulator", "home", "user file", "settings"};
    return kRoutes[static_cast<int>(admission.route)];
  }
  std::string text = std::to_string(admission.refusal->status);
  for (const Header& header : admission.refusal->headers) text += " " + header.name + ": " + header.value;
  return text;
}

void expectAll(const char* expected, Texts requests) {
  for (const std::string& request : requests) EXPECT_EQ(admitted(request), expected) << request.substr(0, 300);
}

// What a client that calls the phone by these names gets: the refusal, or what it asked for.
void expectNames(const std::string& refusal, Texts names) {
  for (const auto& [target, route] :
       {std::pair{"/", "home"}, {"/servlet?p=a", "servlet"}, {"/js/app.js", "static"}, {"/simulator/", "403"}}) {
    for (const std::string& name : names) {
      EXPECT_EQ(admitted(std::string("GET ") + target + "\nHost: " + name), refusal.empty() ? route : refusal) << name;
    }
  }
}

TEST(Admission, RoutesWhatIsAskedForRightly) {
  const std::string longest = "GET /servlet?" + std::string(8 * 1024 - 9, 'x');
  expectAll("home", {"GET /", "GET http://127.0.0.1"});
  expectAll("servlet", {"HEAD /servlet?p=a", "POST /servlet", "GET http://127.0.0.1/servlet?p=a", longest});
  expectAll("static", {"GET /servlet/", "GET /%73ervlet?p=a", "GET /js/app.js?p=a", "GET /simulator"});
  expectAll("simulator", {"PATCH /simulator/state"});
  expectAll("settings", {"HEAD /settings.json?x"});
  expectAll("user file", {"HEAD /media/user/a.wav?p=a"});
  expectAll("405 Allow: GET, HEAD", {"POST /js/app.js", "POST /media/user/a", "POST /", "get /"});
  expectAll("405 Allow: GET, HEAD, POST", {"PUT /servlet?p=a"});
  expectAll("405 Allow: GET, HEAD, POST, PUT, PATCH, DELETE", {"TRACE /simulator/"});
  expectAll("400", {"GET *", "GET servlet", "GET /servlet?a=%00"});
  expectAll("414", {longest + "x"});
}

TEST(Admission, KeepsOtherSitesOut) {
  const std::string post = "POST /servlet\nHost: phone.local\nOrigin: ";
  expectAll("servlet",
            {"POST /servlet\nSec-Fetch-Site: same-origin\nOrigin: null",  // a plain form of our own
             post + "http://phone.local", post + "http://PHONE.local:80",
             post + "https://phone.local\nTLS: ", "POST /servlet\nHost: phone.local:443\nOrigin: https://phone.local"});
  expectAll("403",
            {post + "null", post + "http://phone.local:8080", post + "http://phone.local.evil",
             post + "http://phone.local\nTLS: ", "POST /servlet\nSec-Fetch-Site: same-origin\nOrigin: http://evil",
             "POST /servlet\nSec-Fetch-Site: cross-site", "GET /servlet?p=a&q=load\nSec-Fetch-Site: same-site"});
  expectAll("static", {"GET /js/app.js\nSec-Fetch-Site: cross-site"});
  expectAll("403", {"GET /media/user/a.wav\nSec-Fetch-Site: same-site", "GET /media/user/a.wav\nLink: document"});
  expectAll("400", {"POST /servlet\nHost: \nOrigin: http://"});
  expectAll("home", {"GET /\nLink: document"});
  expectAll("servlet",
            {"GET /servlet?p=a&q=load\nLink: ", "GET /servlet?p=login&q=loginForm&jumpto=x\nLink: document"});
  expectAll("403", {"GET /servlet?p=a&q=load\nLink: iframe", "GET /servlet?p=a&q=write\nLink: document",
                    "GET /servlet?q=load\nLink: document", "GET /servlet?key=OK\nLink: document",
                    "POST /servlet?p=a&q=load\nLink: document"});
}

TEST(Admission, OpensTheSimulatorToLocalPeopleOnly) {
  const std::string get = "GET /simulator/\n";
  expectAll("simulator", {get + "Host: LOCALHOST", get + "Host: [::1]:80\nFrom: ::1", get + "From: 127.8.9.1",
                          get + "Link: document"});
  expectAll("403", {get + "From: 10.0.0.1", get + "From: ::2", get + "Host: 10.0.0.1", get + "Host: [::2]",
                    get + "Host: phone.localhost", get + "Sec-Fetch-Site: cross-site\nSec-Fetch-Mode: cors",
                    "PUT /simulator/config\nOrigin: http://evil"});
  expectAll("400", {"GET http://127.0.0.1/simulator/\nHost: 10.0.0.1"});
  EXPECT_EQ(admitted(get, {3 << 20}), "404");
}

TEST(Admission, AnswersToItsNamesOnly) {
  expectNames("", {"10.0.0.1", "10.0.0.1:8080", "10.0.0.1.", "[fe80::1]:80", "[::ffff:10.0.0.1]", "phone",
                   "PHONE:", "phone.", "a.b.LOCAL:80", "phone.lan.", "phone.home.arpa", "phone.internal",
                   "x_1.localhost", "phone.Example.com.:80"});
  expectNames("421", {"evil.com", "10.0.0.1.evil.com", "127.1", "1.2.3.4.5", "256.0.0.1", "0x7f.0.0.1", "local.evil",
                      "evillocal.com", "xhome.arpa", "x.phone.example.com", "phone.example.com.evil:80"});
  std::istringstream malformed(
      ".|..|.local|a..local|a b|phone, phone|phone,evil.com|u@phone|phone/x|phone:80x|phone:80:80|[::1|[::1]x|[]|"
      "[phone]|[fe80::1%25eth0]|::1|ph%6fne|ph\xc3\xb6ne|phone\t|phone#|phone?");
  for (std::string name; std::getline(malformed, name, '|');) expectNames("400", {name});
  expectNames("400", {""});
  RequestHead old = headOf("GET /");
  old.host.reset();
  EXPECT_FALSE(admit(old, kRules, false).refusal);
  // An address that names a host of its own, as for a proxy.
  expectAll("servlet", {"GET http://PHONE:80/servlet?p=a\nHost: phone."});
  expectAll("400", {"GET http://evil.com/\nHost: 127.0.0.1", "GET http://127.0.0.1/\nHost: evil.com",
                    "GET http://u@127.0.0.1/", "GET http:///", "GET x/http://evil.com/"});
  expectAll("421", {"GET http://evil.com/\nHost: evil.com"});
  expectAll("home", {"GET http://127.0.0.1?p=a"});
}

TEST(Admission, TakesALoginByFormOnly) {
  expectAll("405 Allow: POST",
            {"GET /servlet?p=login&q=login&username=admin&pwd=x", "HEAD /servlet?q=login&p=login",
             "GET /servlet?%70=log%69n&q=%6cogin", "GET /servlet?x&&p=login&q=login&p=status&q=load",
             "GET http://127.0.0.1/servlet?p=login&q=login", "GET /servlet?p=login&q=login\nLink: document"});
  expectAll("servlet",
            {"GET /servlet?p=status&q=load&p=login&q=login", "GET /servlet?p=login&q=loginForm",
             "GET /servlet?p=login&q=logout", "GET /servlet?P=login&Q=login", "POST /servlet?p=login&q=login"});
}

TEST(Admission, LimitsBodies) {
  const std::string form =
      "POST /servlet\nContent-Type: Application/X-WWW-Form-Urlencoded; charset=utf-8\nContent-Length: ";
  const std::string mebibyte = "\nContent-Length: 1048576", more = "\nContent-Length: 1048577";
  expectAll("servlet", {form + "1048576", "POST /servlet\nContent-Length: 3145728", "POST /servlet?push" + mebibyte,
                        "POST /servlet?p=push" + more});
  expectAll("413", {form + "1048577", "POST /servlet\nContent-Length: 3145729", "POST /servlet?pushx" + more,
                    "GET /servlet?p=a" + more, "PUT /simulator/config" + more, "GET /js/app.js" + more});
}

TEST(Admission, LetsNobodyInWhileThePhoneReboots) {
  for (const auto& [target, expected] : {std::pair{"/", "503 Retry-After: 2"},
                                         {"/servlet?p=a", "503 Retry-After: 2"},
                                         {"/js/app.js", "static"},
                                         {"/simulator/", "simulator"}}) {
    EXPECT_EQ(admitted(std::string("GET ") + target, kRules, true), expected);
  }
}

}  // namespace
}  // namespace host
