// Logging in and out.
#include "tests/support/page_test.h"

namespace {

constexpr char kLockedOut[] =
    "You are not authorized to access the web interface.\n\nPlease contact your support team or try again 3 minutes "
    "later.\n\n\nHTTP 401";
constexpr char kWrong[] = "The username or password is error!";

class LoginTest : public PhoneTest {
 protected:
  LoginTest() { page.init(); }

  RecordingResponse logIn(const std::string& user, const std::string& password, Fields more = {}) {
    request.fields = std::move(more);
    request.fields.insert({{"q", "login"}, {"username", user}, {"pwd", password}});
    return serve(page, request);
  }
  RecordingResponse form(Fields more = {}) {
    request.fields = std::move(more);
    request.fields.emplace("q", "loginForm");
    return serve(page, request);
  }

  HttpServlet& page = pageHandler("login");
  FakeRequest request;
};

TEST_F(LoginTest, RightPasswordOpensThePageAskedFor) {
  const std::pair<Fields, std::string> rows[] = {
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
  for (const auto& [fields, target] : rows) {
    const RecordingResponse answer = logIn("admin", "admin", fields);
    EXPECT_EQ(answer.redirects, Messages{"/servlet?" + target});
    EXPECT_EQ(answer.status, 200);
  }
  EXPECT_EQ(request.ownSession.attributes["user"], "admin");
  EXPECT_EQ(request.ownSession.maxInactive, 600);
}

TEST_F(LoginTest, SessionHoldsTheIdentityOfTheLoginName) {
  setConfig("UserNameVar=operator&ReLogOffTime=");
  write("/config/data/htpasswd", "operator:abhv/ZnAzL36k\nstranger:abhv/ZnAzL36k\n");
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
    EXPECT_EQ(answer.variable("notice username"), std::string(kWrong) + "|admin");
  }
  EXPECT_EQ(form().variable("notice"), kWrong);
  const RecordingResponse third = logIn("admin", "nope");
  EXPECT_EQ(third.body, kLockedOut);
  EXPECT_EQ(third.status, 200);
  EXPECT_EQ(logIn("admin", "admin").body, kLockedOut);
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
  const Fields jump = {{"jumpto", "URI"}};
  request.uri = "/servlet?p=login&q=loginForm&jumpto=URI&key=OK&x=URI&y";
  form(jump);
  request.uri = "/servlet?p=login&q=loginForm&jumpto=URI&key=CANCEL";
  EXPECT_EQ(form(jump).variable("jumpto"), "URI");
  const std::string login = "/servlet?p=login&q=login";
  const std::pair<std::string, const char*> rows[] = {
      {"", "/servlet?key=OK&x=URI&y"},
      {"", "/servlet?p=status&q=load"},
      {"&jumpto=URI&number=1", "/servlet?number=1"},
      {"&jumpto=URI&number=1" + std::string(80, '2'), "/servlet?p=status&q=load"}};
  for (const auto& [more, target] : rows) {
    request.uri = login + more;
    EXPECT_EQ(logIn("admin", "admin", jump).redirects, Messages{target});
  }
}

TEST_F(LoginTest, OnlyItsOwnClientGoesOnWithACommandAndNeverToAPage) {
  const Fields jump = {{"jumpto", "URI"}};
  const std::string front = "/servlet?p=login&q=loginForm&jumpto=URI&";
  const std::string status = "/servlet?p=status&q=load";
  request.uri = front + "key=OK";
  form(jump);
  request.address = "192.0.2.8";
  request.uri = "/servlet?p=login&q=login";
  EXPECT_EQ(logIn("admin", "admin", jump).redirects, Messages{status});
  request.address = "192.0.2.7";
  EXPECT_EQ(logIn("admin", "admin", jump).redirects, Messages{"/servlet?key=OK"});
  for (const char* planted :
       {"p=security&q=write&mode=var", "x=1&p=security", "x&%70=security", "x&%70", "p", "x=1&&p=1&", "x=1&p", ""}) {
    request.uri = front + planted;
    form(jump);
    request.uri = "/servlet?p=login&q=login";
    EXPECT_EQ(logIn("admin", "admin", jump).redirects, Messages{status}) << planted;
    request.uri = front + planted;
    EXPECT_EQ(logIn("admin", "admin", jump).redirects, Messages{status}) << planted;
  }
  request.uri = front + "key=\r\nSet-Cookie: a=b\"%";
  EXPECT_EQ(logIn("admin", "admin", jump).redirects, Messages{"/servlet?key=%0D%0ASet-Cookie:%20a=b%22%25"});
}

TEST_F(LoginTest, FormCarriesWhatItNeeds) {
  const std::pair<Fields, const char*> rows[] = {
      {{}, "status|(absent)|6 accounts"},
      {{{"jumpto", "account-adv"}, {"acc", "3"}}, "account-adv|3|6 accounts"},
      {{{"jumpto", "account-adv"}}, "account-adv||6 accounts"},
      {{{"jumpto", "dsskey"}, {"model", "2"}}, "dsskey|2|6 accounts"},
      {{{"jumpto", "network"}, {"acc", "3"}}, "network|(absent)|6 accounts"},
  };
  for (const auto& [fields, shown] : rows) EXPECT_EQ(form(fields).variable("jumpto acc devtypeInfo"), shown);
  request.fields = {{"q", "login"}, {"username", "admin"}};
  EXPECT_EQ(serve(page, request).templates.size(), 1u);
}

TEST_F(LoginTest, LogoutEndsTheSession) {
  logIn("admin", "admin");
  request.fields = {{"q", "logout"}};
  EXPECT_EQ(serve(page, request).redirects[0], "/servlet?p=login&q=loginForm&jumpto=status");
  EXPECT_TRUE(request.ownSession.invalidated);
}

}  // namespace
