// Logging in and out.
#include "tests/support/page_test.h"

namespace {

constexpr char kLockedOut[] =
    "You are not authorized to access the web interface.\n\nPlease contact your support team or try again 3 minutes "
    "later.\n\n\nHTTP 401";
constexpr char kStatus[] = "/servlet?p=status&q=load";
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
  // Brings an Action URI to the form, from where the login is to go on.
  std::string ask(const std::string& uri) {
    request.uri = "/servlet?p=login&q=loginForm&jumpto=URI&" + uri;
    return form({{"jumpto", "URI"}}).variable("jumpto");
  }
  // Where a login goes on whose own address ends like that.
  std::string landing(const std::string& more = "") {
    request.uri = "/servlet?p=login&q=login" + more;
    const Messages redirects = logIn("admin", "admin", {{"jumpto", "URI"}}).redirects;
    return redirects.size() == 1 ? redirects[0] : "";
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
    EXPECT_EQ(logIn("admin", "admin", fields).redirects, Messages{"/servlet?" + target});
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
  for (const char* password : {"nope", "admin"}) {
    const RecordingResponse answer = logIn("admin", password);
    EXPECT_EQ(answer.body, kLockedOut);
    EXPECT_EQ(answer.status, 200);
  }
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
  for (const char* password : {"x", "x", "admin"}) logIn("admin", password);
  EXPECT_EQ(form().variable("notice"), "(absent)");
  logIn("admin", "x");
  EXPECT_EQ(logIn("admin", "x").status, 401);
  page.init();
  EXPECT_EQ(form().variable("notice"), "(absent)");
}

TEST_F(LoginTest, VarMayBeSwitchedOff) {
  for (const auto& [enabled, status] : {std::pair("0", 401), {"1", 200}}) {
    setConfig("AdvancedVarEnabled", enabled);
    EXPECT_EQ(logIn("var", "var").status, status);
    EXPECT_EQ(request.ownSession.attributes.empty(), status == 401);
  }
}

TEST_F(LoginTest, ActionUriGoesOnAfterTheLoginOnce) {
  for (const char* uri : {"key=OK&x=URI&y", "key=CANCEL"}) EXPECT_EQ(ask(uri), "URI");
  EXPECT_EQ(landing(), "/servlet?key=OK&x=URI&y");
  EXPECT_EQ(landing(), kStatus);
  EXPECT_EQ(landing("&jumpto=URI&number=1"), "/servlet?number=1");
  EXPECT_EQ(landing("&jumpto=URI&number=1" + std::string(80, '2')), kStatus);
}

TEST_F(LoginTest, OnlyItsOwnClientGoesOnWithACommandAndNeverToAPage) {
  ask("key=OK");
  request.address = "192.0.2.8";
  EXPECT_EQ(landing(), kStatus);
  request.address = "192.0.2.7";
  EXPECT_EQ(landing(), "/servlet?key=OK");
  for (const std::string planted :
       {"p=security&q=write&mode=var", "x=1&p=security", "x&%70=security", "x&%70", "p", "x=1&&p=1&", "x=1&p", ""}) {
    ask(planted);
    EXPECT_EQ(landing(), kStatus) << planted;
    EXPECT_EQ(landing("&jumpto=URI&" + planted), kStatus) << planted;
  }
  EXPECT_EQ(landing("&jumpto=URI&key=\r\nSet-Cookie: a=b\"%"), "/servlet?key=%0D%0ASet-Cookie:%20a=b%22%25");
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
