// Reading of what clients send, without a connection.
#include "host/access_log.h"
#include "host/admission.h"
#include "host/fields.h"
#include "host/http_text.h"
#include "host/log.h"
#include "host/rate_guard.h"
#include "tests/host/host_test.h"

namespace host {
namespace {

using Texts = std::initializer_list<const char*>;

template <class Judge>
void expectJudged(const Judge& judge, Texts yes, Texts no) {
  for (const char* text : yes) EXPECT_TRUE(judge(text)) << text;
  for (const char* text : no) EXPECT_FALSE(judge(text)) << text;
}

TEST(Fields, AreReadAndCounted) {
  const struct {
    std::string_view text, expected;
  } kCases[] = {
      {"p=status&q=load", "[p|status][q|load]"},
      {"a+b=c%20d%2B&e", "[a b|c d+][e|]"},
      {"x=1&x=2&&=v", "[x|1][x|2][|v]"},
      {"a=100%&b=%zz&c=%4&d=%41%e4", "[a|100%][b|%zz][c|%4][d|A\xe4]"},
      {"key=OK&@admin:a=b", "[key|OK][@admin:a|b]"},
  };
  for (const auto& row : kCases) {
    Fields fields;
    EXPECT_EQ(parseUrlEncoded(row.text, fields), FieldResult::kOk) << row.text;
    std::string shown;
    for (const auto& field : fields.all()) shown += "[" + field.name + "|" + field.values.front() + "]";
    EXPECT_EQ(shown, row.expected);
  }
  std::string many;
  for (int i = 0; i < 10'001; ++i) many += "a&";
  Fields counted;
  EXPECT_EQ(parseUrlEncoded(many, counted), FieldResult::kTooLarge);
  EXPECT_EQ(counted.all().size(), 10'000U);
}

TEST(HttpText, WeighsWhatABrowserAccepts) {
  expectJudged(acceptsGzip, {"gzip", "br, gzip;q=0.5", "*", "GZIP", "deflate;q=1, *;q=0.1"},
               {"", "br", "gzip;q=0", "gzip; q=0.000, *", "*;q=0"});
  expectJudged(prefersJson, {"application/json", "text/html;q=0.5, application/json", "application/json;q=0.3"},
               {"", "*/*", "text/html, application/json;q=0.9", "application/json;q=0", "application/jsonx"});
  expectJudged([](std::string_view text) { return matchesEtag(text, "\"x\""); },
               {"\"x\"", "W/\"x\"", "\"a\", \"x\"", "*"}, {"", "x", "\"xy\"", "\"a,x\""});
}

TEST(HttpText, ReadsParametersAndCookies) {
  EXPECT_EQ(headerParameter("multipart/form-data; boundary=X; charset=utf-8", "boundary"), "X");
  EXPECT_EQ(headerParameter("multipart/form-data; charset=\"a;b\" ;BOUNDARY = \"x y\"", "boundary"), "x y");
  EXPECT_EQ(headerParameter("multipart/form-data; xboundary=X", "boundary"), "");
  EXPECT_EQ(mediaType(" Text/HTML ;charset=x"), "text/html");
  EXPECT_EQ(cookieValue("a=1; PHONESESSION=abc; PHONESESSION=later", "PHONESESSION"), "abc");
  EXPECT_EQ(cookieValue("XPHONESESSION=abc; PHONESESSIONX=1", "PHONESESSION"), "");
}

RequestHead headOf(std::string method, std::string target) {
  RequestHead head;
  head.method = std::move(method);
  head.path = target.substr(0, target.find('?'));
  if (head.path.size() < target.size()) parseUrlEncoded(target.substr(head.path.size() + 1), head.query);
  head.remoteAddress = "10.0.0.1";
  return head;
}

TEST(AccessRules, TellForeignRequests) {
  const struct {
    const char *site, *origin, *host;
    bool foreign;
  } kCases[] = {
      {"", "", "phone.local", false},
      {"same-origin", "", "phone.local", false},
      {"none", "", "phone.local", false},
      {"cross-site", "", "phone.local", true},
      {"same-site", "", "phone.local", true},
      {"", "http://phone.local", "phone.local", false},
      {"", "http://PHONE.local:80", "phone.local", false},
      {"", "https://phone.local", "phone.local:443", false},
      {"", "http://phone.local:8080", "phone.local", true},
      {"", "http://phone.local.evil", "phone.local", true},
      {"same-origin", "http://evil", "phone.local", true},
      {"", "null", "phone.local", true},
      {"same-origin", "null", "phone.local", false},  // a plain form of our own
      {"", "http://", "", true},
  };
  for (const auto& row : kCases) {
    RequestHead head = headOf("POST", "/servlet");
    head.fetchSite = row.site;
    head.origin = row.origin;
    head.host = row.host;
    EXPECT_EQ(isForeign(head), row.foreign) << row.site << " " << row.origin << " " << row.host;
  }
}

TEST(AccessRules, LetLinksFromElsewhereOpenPagesOnly) {
  const struct {
    const char *method, *target, *mode, *dest;
    bool link;
  } kCases[] = {
      {"GET", "/", "navigate", "document", true},
      {"GET", "/servlet?p=status&q=load", "navigate", "", true},
      {"GET", "/servlet?p=login&q=loginForm&jumpto=x", "navigate", "document", true},
      {"GET", "/servlet?p=status&q=load", "navigate", "iframe", false},
      {"GET", "/servlet?p=status&q=load", "no-cors", "", false},
      {"GET", "/servlet?p=status&q=write", "navigate", "document", false},
      {"GET", "/servlet?q=load", "navigate", "document", false},
      {"GET", "/servlet?key=OK", "navigate", "document", false},
      {"POST", "/servlet?p=status&q=load", "navigate", "document", false},
  };
  for (const auto& row : kCases) {
    RequestHead head = headOf(row.method, row.target);
    head.fetchMode = row.mode;
    head.fetchDest = row.dest;
    EXPECT_EQ(isPlainLink(head), row.link) << row.method << " " << row.target << " " << row.dest;
  }
}

TEST(AccessRules, KnowLoopback) {
  expectJudged(isLoopbackAddress, {"127.0.0.1", "127.8.9.1", "::1"}, {"128.0.0.1", "10.0.0.1", "::2", "127.evil", ""});
  expectJudged(namesLoopback, {"localhost:80", "LOCALHOST", "127.0.0.1:1", "[::1]:80"},
               {"evil", "127.0.0.1.evil", "localhost.evil:80", "[::2]", ""});
}

TEST(Log, KeepsALineALineAndSecretsOut) {
  const RequestHead head = headOf("GET", "/servlet?p=login%0a%22&q=login&pwd=secret&key=OK&@admin:secret");
  EXPECT_EQ(accessLine(head, 302, 17, std::chrono::microseconds(1234)),
            "10.0.0.1 GET /servlet?p=login\\x0a\\x22&q=login 302 17 1.2ms");
  const host_test::LogCapture log;
  logLine({"a\nb", "\x1b[31m"});
  EXPECT_EQ(log.text(), "a\\x0ab\\x1b[31m\n");
}

TEST(RateGuard, WantsSixteenKibibytesAWindow) {
  using std::chrono::milliseconds;
  RateGuard guard(kDefaultRateWindow);
  EXPECT_TRUE(guard.add(1, milliseconds(9999)));
  EXPECT_TRUE(guard.add(16 * 1024 - 1, milliseconds(1)));
  EXPECT_TRUE(guard.add(16 * 1024 - 1, milliseconds(9000)));
  EXPECT_FALSE(guard.add(0, milliseconds(1000)));
}

}  // namespace
}  // namespace host
