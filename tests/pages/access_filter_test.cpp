// Who may have a page: the request filter.
#include "platform/web_debug.h"
#include "tests/support/page_test.h"

namespace {

class FilterTest : public PhoneTest {
 protected:
  FilterTest() { pageHandler("login").init(); }

  // The filter's decision over a request for `query`, its fields taken from it as they stand.
  int run(const std::string& query) {
    request.uri = "/servlet?" + query;
    request.fields = fieldsOf(query);
    response = RecordingResponse();
    return pageFilter().onRequest(&request, &response);
  }

  FakeRequest request;
  RecordingResponse response;
};

TEST_F(FilterTest, StrangersAreSentToTheLoginFormAndBack) {
  const std::string form = "/servlet?p=login&q=loginForm&jumpto=";
  const Values rows = {
      {"p=network&q=load", "network"},
      {"q=load&x=1", "URI&q=load&x=1"},
      {"", "URI&"},
      {"a\rb c\"\xC3\xA4%zz%41#", "URI&a%0Db%20c%22%C3%A4%25zz%41%23"},
      {"p=account-register&q=load&acc=2", "account-register&acc=2"},
      {"p=account-register-x&q=load", "account-register-x&acc=0"},
      {"p=account-codec&acc=", "account-codec&acc=0"},
      {"p=phone-features-line&acc=3", "phone-features-line&acc=3"},
      {"p=contacts-preview&q=load", "contactsbasic"},
      {"p=dsskey&model=1", "dsskey&model=1"},
  };
  for (const auto& [query, target] : rows) {
    EXPECT_EQ(run(query), 0) << query;
    EXPECT_EQ(response.redirects, std::vector<std::string>{form + target}) << query;
  }
  request.fields = {{"p", "a&q=write\r\nX: y"}};
  request.uri = "/servlet?p=a%26q";
  response = RecordingResponse();
  EXPECT_EQ(pageFilter().onRequest(&request, &response), 0);
  EXPECT_EQ(response.redirects[0], form + "a%26q%3Dwrite%0D%0AX%3A%20y");
}

TEST_F(FilterTest, OpenPagesAndLoggedInSessionsPass) {
  EXPECT_EQ(run("p=login&q=loginForm"), 1);
  EXPECT_EQ(run("p=command"), 1);
  EXPECT_EQ(run("push&p=x"), 1);
  EXPECT_EQ(log.back(), "4 pushXML() don't have remoteIP, or ip don't match, or xmlvalue is error.");
  EXPECT_EQ(run("p=Login"), 0);
  request.ownSession.attributes["user"] = "user";
  EXPECT_EQ(run("p=network&q=load"), 1);
  EXPECT_TRUE(response.untouched());
  EXPECT_EQ(run(""), 1);
  EXPECT_EQ(run("key=OK"), 1);
  EXPECT_EQ(response.status, 401);
  setConfig("AURILimitIP", "any");
  messages();
  EXPECT_EQ(run("key=OK&@nobody:nothing"), 1);
  EXPECT_TRUE(response.untouched());
  EXPECT_EQ(messages().back(), "post app_hostapp 0x30017 0 0 [key=OK&RIP=192.0.2.7]");
}

TEST_F(FilterTest, SafeModeOpensEveryNamedPage) {
  setState(R"({"bootEnvironment":{"BOOTMODE":"safemode"}})");
  EXPECT_EQ(run("p=network&q=load"), 1);
  EXPECT_EQ(run("q=load"), 0);
  setState(R"({"bootEnvironment":{"BOOTMODE":"safemode2"}})");
  EXPECT_EQ(run("p=network&q=load"), 0);
}

TEST_F(FilterTest, ActionUriNeedsCredentials) {
  setConfig("AURILimitIP", "any");
  for (const char* query : {"key=OK", "key=OK&@admin:wrong", "key=OK&@admin", "key=OK&@:admin", "number=1&@x:y",
                            "phonecfg=get", "redirectcall=1", "forward=1", "Server=x"}) {
    pageHandler("login").init();
    EXPECT_EQ(run(query), 0) << query;
    EXPECT_EQ(response.status, 401) << query;
    EXPECT_EQ(response.headers,
              (std::vector<std::pair<std::string, std::string>>{{"WWW-Authenticate", "Basic realm=\"VOIP PHONE\""}}));
    EXPECT_TRUE(request.ownSession.attributes.empty()) << query;
  }
  pageHandler("login").init();
  setConfig("ReLogOffTime", "5");
  EXPECT_EQ(run("key=OK&@admin:admin"), 1);
  EXPECT_EQ(request.ownSession.attributes["user"], "admin");
  EXPECT_EQ(request.ownSession.maxInactive, 300);
  request.ownSession = FakeSession();
  setConfig("ReLogOffTime", "");
  EXPECT_EQ(run("key=OK&@var:var"), 1);
  EXPECT_EQ(request.ownSession.maxInactive, -1);
}

TEST_F(FilterTest, CredentialsOfACommandGoThroughTheDoorOfTheLogin) {
  setConfig("AURILimitIP=any&AdvancedVarEnabled=0");
  const auto logIn = [&](const std::string& password) {
    request.fields = {{"q", "login"}, {"username", "admin"}, {"pwd", password}};
    return serve(pageHandler("login"), request);
  };
  EXPECT_EQ(run("key=OK&@var:var"), 0);  // switched off
  EXPECT_EQ(logIn("wrong").status, 401);
  EXPECT_EQ(run("key=OK&@admin:wrong"), 0);
  for (const char* query : {"key=OK&@admin:admin", "key=OK&@user:user"}) {
    EXPECT_EQ(run(query), 0) << query;
    EXPECT_EQ(response.status, 401);
  }
  EXPECT_TRUE(logIn("admin").body.starts_with("You are not authorized"));
  EXPECT_TRUE(request.ownSession.attributes.empty());
  setState(R"({"clockOffset":181})");
  EXPECT_EQ(run("key=OK&@admin:wrong"), 0);
  EXPECT_EQ(run("key=OK&@admin:admin"), 1);  // a success forgets the failures
  for (int i = 0; i < 2; ++i) EXPECT_EQ(run("key=OK"), 1);
  request.ownSession = FakeSession();
  for (int i = 0; i < 2; ++i) EXPECT_EQ(run("key=OK&@admin:wrong"), 0);
  EXPECT_EQ(run("key=OK&@admin:admin"), 1);
}

TEST_F(FilterTest, ClientsThatAreNotTrustedAreNotLoggedIn) {
  setConfig("AURILimitIP", "10.0.0.1");
  messages();
  EXPECT_EQ(run("key=OK&@admin:admin"), 1);
  EXPECT_EQ(response.status, 401);
  EXPECT_TRUE(request.ownSession.attributes.empty());
  EXPECT_EQ(messages(),
            std::vector<std::string>{"system syslog 6 Action URI: IP(192.0.2.7) Action(Permission Denied !)"});
}

TEST_F(FilterTest, ALoginNameIsNeverTakenForAnotherIdentity) {
  setConfig("AURILimitIP=any&UserNameAdmin=root&UserNameVar=user&UserNameUser=joe");
  const std::string hash = ":abhv/ZnAzL36k\n";
  write("/config/data/htpasswd", "root" + hash + "user" + hash + "joe" + hash + "admin" + hash);
  for (const auto& [name, user] : Values{{"root", "root"}, {"joe", "joe"}, {"user", "var"}, {"admin", ""}}) {
    request.ownSession = FakeSession();
    EXPECT_EQ(run("key=OK&@" + name + ":secret12"), 1) << name;
    EXPECT_EQ(request.ownSession.attributes.at("user"), user) << name;
  }
}

TEST_F(FilterTest, QueryIsCutAndLoggedWithoutSecrets) {
  const Values rows = {{"p=network&" + std::string(300, 'x'), "p=network&" + std::string(245, 'x')},
                       {"key=OK&@admin:admin", "key=OK"},
                       {"Server=a&UserName=b&Password=c&x=1", "Server=a&UserName=b&Password=********&x=1"},
                       {"p=x&AutoProvisionAESKey16=k&%70wd=c&a%53ecret=&",
                        "p=x&AutoProvisionAESKey16=********&%70wd=********&a%53ecret=********&"},
                       {"key=OK&%40admin:admin&x=1", "key=OK&********&x=1"},
                       {"@admin:admin", "********"},
                       {"key=%26%40admin:admin", "********"}};
  for (const auto& [query, logged] : rows) {
    log.clear();
    run(query);
    EXPECT_EQ(log.front(), "3 uri = " + logged);
  }
  request.ownSession = FakeSession();
  request.uri = "/";
  EXPECT_EQ(pageFilter().onRequest(&request, &response), 0);
}

TEST_F(FilterTest, DebugLevelFollowsTheConfiguration) {
  const std::pair<const char*, WebDebug::LEVER> rows[] = {
      {"3", WebDebug::LEVER(2)}, {"5", WebDebug::LEVER(1)},  {"6", WebDebug::LEVER(0)}, {"9", WebDebug::LEVER(0)},
      {"x", WebDebug::LEVER(2)}, {"-1", WebDebug::LEVER(2)}, {"4", WebDebug::LEVER(1)}, {"7", WebDebug::LEVER(1)}};
  for (const auto& [configured, level] : rows) {
    setConfig("ServerLogLevel", configured);
    run("p=login");
    EXPECT_EQ(WebDebug::getInstance().debugLevel(), level) << configured;
  }
}

TEST_F(FilterTest, LanguageAndModelReachTheRenderer) {
  std::filesystem::remove_all(file("/phone/www/htdocs/language"));
  const struct {
    const char *added, *configured, *language;
  } rows[] = {{"", "English", ""}, {"German.JS", "Klingon", "German"}, {"English.js", "English", "English"}};
  for (const auto& [added, configured, language] : rows) {
    if (*added) write(std::string("/phone/www/htdocs/language/") + added, "");
    setConfig("LanguageWebLang", configured);
    run("p=login");
    EXPECT_EQ(request.language, language);
    EXPECT_EQ(response.phoneType, "46");
    write("/phone/www/htdocs/language/.js", "");
  }
}

}  // namespace
