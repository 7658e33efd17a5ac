// Reading of what clients send, without a connection.
#include "host/access_log.h"
#include "host/fields.h"
#include "host/http_text.h"
#include "host/log.h"
#include "host/rate_guard.h"
#include "tests/host/host_test.h"

namespace host {
namespace {

template <class Judge>
void expectJudged(const Judge& judge, std::initializer_list<const char*> yes, std::initializer_list<const char*> no) {
  for (const char* text : yes) EXPECT_TRUE(judge(text)) << text;
  for (const char* text : no) EXPECT_FALSE(judge(text)) << text;
}

TEST(Fields, AreReadAndCounted) {
  const std::pair<std::string_view, std::string_view> kCases[] = {
      {"p=status&q=load", "[p|status][q|load]"},
      {"a+b=c%20d%2B&e", "[a b|c d+][e|]"},
      {"x=1&x=2&&=v", "[x|1][x|2][|v]"},
      {"a=100%&b=%zz&c=%4&d=%41%e4", "[a|100%][b|%zz][c|%4][d|A\xe4]"},
      {"key=OK&@admin:a=b", "[key|OK][@admin:a|b]"},
  };
  for (const auto& [text, expected] : kCases) {
    Fields fields;
    EXPECT_EQ(parseUrlEncoded(text, fields), FieldResult::kOk) << text;
    std::string shown;
    for (const auto& field : fields.all()) shown += "[" + field.name + "|" + field.values.front() + "]";
    EXPECT_EQ(shown, expected);
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

TEST(Log, KeepsALineALineAndSecretsOut) {
  const RequestHead head = readHead("GET", "/servlet?p=login%0a%22&q=login&pwd=secret&key=OK&@admin:secret",
                                    {"10.0.0.1"}, [](const char*) { return nullptr; });
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
