// Logging in and out.
#include "servlet/login_servlet.h"
#include "tests/support/phone_test.h"

namespace {

constexpr char kLockedOut[] =
    "You are not authorized to access the web interface.\n\nPlease contact your support team or try again 3 minutes "
    "later.\n\n\nHTTP 401";

class LoginTest : public PhoneTest {
 protected:
  LoginTest() { page.init(); }

  RecordingResponse logIn(const std::string& user, const std::string& password,
                          std::multimap<std::string, std::string> more = {}) {
    request.fields = std::move(more);
    request.fields.insert({{"q", "login"}, {"username", user}, {"pwd", password}});
    return serve(page, request);
  }
  RecordingResponse form(std::multimap<std::string, std::string> more = {}) {
    request.fields = std::move(more);
    request.fields.emplace("q", "loginForm");
    return serve(page, request);
  }

  LoginServlet page;
  FakeRequest request;
};

TEST_F(LoginTest, RightPasswordOpensThePageAskedFor) {
  struct Row {
    std::multimap<std::string, std::string> fields;
    std::string target;
  };
  const Row rows[] = {
      {{}, "p=status&q=load"},
      {{{"jumpto", ""}}, "p=status&q=load"},
      {{{"jumpto", "status"}}, "p=status&q=load"},
      {{{"jumpto", "network"}}, "p=network&q=load"},
      {{{"jumpto", "account-basic"}}, "p=account-basic&q=load&acc=0"},
      {{{"jumpto", "account-register"}, {"acc", "2"}}, "p=account-register&q=load&acc=2"},
      {{{"jumpto", "contactsbasic"}}, "p=contactsbasic&q=load&num=1&group="},
      {{{"jumpto", "dsskey"}, {"model", "1"}}, "p=dsskey&q=load&model=1"},
      {{{"jumpto", "network&q=write&reboot=true"}}, "p=status&q=load"},
      {{{"jumpto", "account-register"}, {"acc", "0&q=write"}}, "p=account-register&q=load&acc=0%26q%3Dwrite"},
      {{{"jumpto", std::string(80, 'x')}}, "p=status&q=load"},
  };
  for (const Row& row : rows) {
    const RecordingResponse answer = logIn("admin", "admin", row.fields);
    EXPECT_EQ(answer.redirects, std::vector<std::string>{"/servlet?" + row.target});
    EXPECT_EQ(answer.status, 200);
  }
  EXPECT_EQ(request.ownSession.attributes["user"], "admin");
  EXPECT_EQ(request.ownSession.maxInactive, 600);
}

TEST_F(LoginTest, SessionHoldsTheIdentityOfTheLoginName) {
  setConfig("UserNameVar", "operator");
  write("/config/data/htpasswd", "operator:abhv/ZnAzL36k\nstranger:abhv/ZnAzL36k\n");
  setConfig("ReLogOffTime", "");
  logIn("operator", "secret12");
  EXPECT_EQ(request.ownSession.attributes["user"], "var");
  EXPECT_EQ(request.ownSession.maxInactive, -1);
  EXPECT_EQ(log.back(), "4 LoginServlet::login() setMaxInactiveInterval failed!");
  logIn("stranger", "secret12");
  EXPECT_EQ(request.ownSession.attributes["user"], "");
  EXPECT_EQ(logIn("admin", "admin").status, 401);
}

TEST_F(LoginTest, ThirdFailureLocksTheClientOutForThreeMinutes) {
  for (int i = 0; i < 2; ++i) {
    const RecordingResponse answer = logIn("admin", "nope<");
    EXPECT_EQ(answer.status, 401);
    EXPECT_EQ(answer.variable("notice"), "The username or password is error!");
    EXPECT_EQ(answer.variable("username"), "admin");
  }
  EXPECT_EQ(form().variable("notice"), "The username or password is error!");
  const RecordingResponse third = logIn("admin", "nope");
  EXPECT_EQ(third.body, kLockedOut);
  EXPECT_EQ(third.status, 200);
  EXPECT_EQ(logIn("admin", "admin").body, kLockedOut);
  EXPECT_EQ(form().body, kLockedOut);
  setState(R"({"clockOffset":178})");
  EXPECT_EQ(form().body, kLockedOut);
  request.address = "192.0.2.8";
  EXPECT_EQ(logIn("admin", "admin").redirects.size(), 1u);
  request.address = "192.0.2.7";
  setState(R"({"clockOffset":181})");
  EXPECT_EQ(form().variable("notice"), "(absent)");
  EXPECT_EQ(logIn("admin", "nope").status, 401);
  EXPECT_EQ(logIn("admin", "admin").redirects.size(), 1u);
}

TEST_F(LoginTest, SuccessForgetsFailures) {
  logIn("admin", "x");
  logIn("admin", "x");
  logIn("admin", "admin");
  EXPECT_EQ(form().variable("notice"), "(absent)");
  logIn("admin", "x");
  EXPECT_EQ(logIn("admin", "x").status, 401);
  page.init();
  EXPECT_EQ(form().variable("notice"), "(absent)");
}

TEST_F(LoginTest, VarMayBeSwitchedOff) {
  setConfig("AdvancedVarEnabled", "0");
  EXPECT_EQ(logIn("var", "var").status, 401);
  EXPECT_TRUE(request.ownSession.attributes.empty());
  setConfig("AdvancedVarEnabled", "1");
  EXPECT_EQ(logIn("var", "var").redirects.size(), 1u);
}

TEST_F(LoginTest, ActionUriGoesOnAfterTheLoginOnce) {
  request.uri = "/servlet?p=login&q=loginForm&jumpto=URI&key=OK&x=URI&y";
  form({{"jumpto", "URI"}});
  request.uri = "/servlet?p=login&q=loginForm&jumpto=URI&key=CANCEL";
  EXPECT_EQ(form({{"jumpto", "URI"}}).variable("jumpto"), "URI");
  request.uri = "/servlet?p=login&q=login";
  const std::multimap<std::string, std::string> jump = {{"jumpto", "URI"}};
  EXPECT_EQ(logIn("admin", "admin", jump).redirects[0], "/servlet?key=OK&x=URI&y");
  EXPECT_EQ(logIn("admin", "admin", jump).redirects[0], "/servlet?");
  request.uri = "/servlet?p=login&q=login&jumpto=URI&number=1";
  EXPECT_EQ(logIn("admin", "admin", jump).redirects[0], "/servlet?number=1");
  request.uri += std::string(80, '2');
  EXPECT_EQ(logIn("admin", "admin", jump).redirects[0], "/servlet?p=status&q=load");
}

TEST_F(LoginTest, FormCarriesWhatItNeeds) {
  EXPECT_EQ(form().variable("jumpto"), "status");
  EXPECT_EQ(form({{"jumpto", "account-adv"}, {"acc", "3"}}).variable("acc"), "3");
  EXPECT_EQ(form({{"jumpto", "account-adv"}}).variable("acc"), "");
  EXPECT_EQ(form({{"jumpto", "dsskey"}, {"model", "2"}}).variable("acc"), "2");
  EXPECT_EQ(form({{"jumpto", "network"}, {"acc", "3"}}).variable("acc"), "(absent)");
  EXPECT_EQ(form().variable("devtypeInfo"), "6 accounts");
  request.fields = {{"q", "login"}, {"username", "admin"}};
  EXPECT_EQ(serve(page, request).templates.size(), 1u);
  request.fields = {{"q", "Login"}};
  EXPECT_EQ(serve(page, request).status, 404);
}

TEST_F(LoginTest, LogoutEndsTheSession) {
  logIn("admin", "admin");
  request.fields = {{"q", "logout"}};
  EXPECT_EQ(serve(page, request).redirects[0], "/servlet?p=login&q=loginForm&jumpto=status");
  EXPECT_TRUE(request.ownSession.invalidated);
}

}  // namespace
