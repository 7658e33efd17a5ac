// Who may have a page: the request filter.
#include "platform/web_debug.h"
#include "tests/support/page_test.h"

namespace {

using namespace std::string_literals;

class FilterTest : public PhoneTest {
 protected:
  FilterTest() { pageHandler("login").init(); }

  // The filter's decision over a request for `query`, its fields taken from it as they stand: 1 or 0, and behind it an
  // error's number or the address of a redirect.
  std::string run(const std::string& query) { return run(query, fieldsOf(query)); }
  std::string run(const std::string& query, const Fields& fields) {
    request.uri = "/servlet?" + query;
    request.fields = fields;
    response = RecordingResponse();
    std::string decision = std::to_string(pageFilter().onRequest(&request, &response));
    if (response.status != 200) decision += " " + std::to_string(response.status);
    for (const std::string& address : response.redirects) decision += " " + address;
    return decision;
  }

  FakeRequest request;
  RecordingResponse response;
};

TEST_F(FilterTest, StrangersAreSentToTheLoginFormAndBack) {
  const std::string form = "0 /servlet?p=login&q=loginForm&jumpto=";
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
  for (const auto& [query, target] : rows) EXPECT_EQ(run(query), form + target) << query;
  EXPECT_EQ(run("p=a%26q", {{"p", "a&q=write\r\nX: y"}}), form + "a%26q%3Dwrite%0D%0AX%3A%20y");
}

TEST_F(FilterTest, OpenPagesAndLoggedInSessionsPass) {
  for (const char* query : {"p=login&q=loginForm", "p=command", "push&p=x"}) EXPECT_EQ(run(query), "1") << query;
  EXPECT_EQ(log.back(), "4 pushXML() don't have remoteIP, or ip don't match, or xmlvalue is error.");
  EXPECT_NE(run("p=Login"), "1");
  request.ownSession.attributes["user"] = "user";
  EXPECT_EQ(run("key=OK"), "1 401");
  setConfig("AURILimitIP", "any");
  for (const char* query : {"p=network&q=load", "", "key=OK&@nobody:nothing"}) {
    EXPECT_EQ(run(query), "1") << query;
    EXPECT_TRUE(response.untouched()) << query;
  }
  EXPECT_EQ(messages().back(), "post app_hostapp 0x30017 0 0 [key=OK&RIP=192.0.2.7]");
}

TEST_F(FilterTest, SafeModeOpensEveryNamedPage) {
  setState(R"({"bootEnvironment":{"BOOTMODE":"safemode"}})");
  EXPECT_EQ(run("p=network&q=load"), "1");
  EXPECT_NE(run("q=load"), "1");
  setState(R"({"bootEnvironment":{"BOOTMODE":"safemode2"}})");
  EXPECT_NE(run("p=network&q=load"), "1");
}

TEST_F(FilterTest, ActionUriNeedsCredentials) {
  setConfig("AURILimitIP", "any");
  for (const char* query : {"key=OK", "key=OK&@admin:wrong", "key=OK&@admin", "key=OK&@:admin", "number=1&@x:y",
                            "phonecfg=get", "redirectcall=1", "forward=1", "Server=x"}) {
    pageHandler("login").init();
    EXPECT_EQ(run(query), "0 401") << query;
    ASSERT_EQ(response.headers.size(), 1u);
    EXPECT_EQ(response.headers[0], std::pair("WWW-Authenticate"s, "Basic realm=\"VOIP PHONE\""s));
    EXPECT_TRUE(request.ownSession.attributes.empty()) << query;
  }
  pageHandler("login").init();
  for (const auto& [minutes, seconds] : {std::pair("5", 300), {"", -1}}) {
    setConfig("ReLogOffTime", minutes);
    request.ownSession = FakeSession();
    EXPECT_EQ(run("key=OK&@admin:admin"), "1");
    EXPECT_EQ(request.ownSession.attributes["user"], "admin");
    EXPECT_EQ(request.ownSession.maxInactive, seconds);
  }
}

TEST_F(FilterTest, CredentialsOfACommandGoThroughTheDoorOfTheLogin) {
  setConfig("AURILimitIP=any&AdvancedVarEnabled=0");
  const auto logIn = [&](const std::string& password) {
    request.fields = {{"q", "login"}, {"username", "admin"}, {"pwd", password}};
    return serve(pageHandler("login"), request);
  };
  EXPECT_EQ(run("key=OK&@var:var"), "0 401");  // switched off
  EXPECT_EQ(logIn("wrong").status, 401);
  for (const char* user : {"admin:wrong", "admin:admin", "user:user"}) {
    EXPECT_EQ(run("key=OK&@"s + user), "0 401") << user;
  }
  EXPECT_TRUE(logIn("admin").body.starts_with("You are not authorized"));
  EXPECT_TRUE(request.ownSession.attributes.empty());
  setState(R"({"clockOffset":181})");
  for (const char* wrongs : {"x", "xx"}) {  // a success forgets the failures
    request.ownSession = FakeSession();
    for (const char* wrong = wrongs; *wrong; ++wrong) EXPECT_EQ(run("key=OK&@admin:wrong"), "0 401");
    EXPECT_EQ(run("key=OK&@admin:admin"), "1");
    for (int i = 0; i < 2; ++i) EXPECT_EQ(run("key=OK"), "1");
  }
}

TEST_F(FilterTest, ClientsThatAreNotTrustedAreNotLoggedIn) {
  setConfig("AURILimitIP", "10.0.0.1");
  messages();
  EXPECT_EQ(run("key=OK&@admin:admin"), "0 401");
  EXPECT_TRUE(request.ownSession.attributes.empty());
  EXPECT_EQ(messages(), Messages{"system syslog 6 Action URI: IP(192.0.2.7) Action(Permission Denied !)"});
}

TEST_F(FilterTest, ALoginNameIsNeverTakenForAnotherIdentity) {
  setConfig("AURILimitIP=any&UserNameAdmin=root&UserNameVar=user&UserNameUser=joe");
  const std::string hash = ":abhv/ZnAzL36k\n";
  write("/config/data/htpasswd", "root" + hash + "user" + hash + "joe" + hash + "admin" + hash);
  for (const auto& [name, user] : Values{{"root", "root"}, {"joe", "joe"}, {"user", "var"}, {"admin", ""}}) {
    request.ownSession = FakeSession();
    EXPECT_EQ(run("key=OK&@" + name + ":secret12"), "1") << name;
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
  const auto level = [&](const std::string& configured) {
    setConfig("ServerLogLevel", configured);
    run("p=login");
    return std::to_string(static_cast<int>(WebDebug::getInstance().debugLevel()));
  };
  EXPECT_EQ(joinedValues("3 5 6 9 x -1 4 7", level), "2|1|0|0|2|2|1|1");
}

TEST_F(FilterTest, LanguageAndModelReachTheRenderer) {
  std::filesystem::remove_all(file("/phone/www/htdocs/language"));
  using Row = std::tuple<const char*, const char*, const char*>;
  for (const auto& [added, configured, language] :
       {Row{"", "English", ""}, {"German.JS", "Klingon", "German"}, {"English.js", "English", "English"}}) {
    if (*added) write("/phone/www/htdocs/language/"s + added, "");
    setConfig("LanguageWebLang", configured);
    run("p=login");
    EXPECT_EQ(request.language, language);
    EXPECT_EQ(response.phoneType, "46");
    write("/phone/www/htdocs/language/.js", "");
  }
}

}  // namespace
