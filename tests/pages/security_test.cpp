// The security page: who may change which password.
#include "framework/file_password.h"
#include "tests/support/page_test.h"

namespace {

using SecurityTest = PageTest;

TEST_F(SecurityTest, ListsTheAccountsThatMayBeManaged) {
  setConfig("UserNameUser", "joe");
  write("/config/data/htpasswd", "admin:x\nvar:x\njoe:x\nuser:x\n");
  const auto listed = [&](const std::string& user) {
    session.attributes["user"] = user;
    return load("security").column("userTypeLoop", "typeName") + " ";
  };
  EXPECT_EQ(joinedValues("var user joe nobody", listed), "var|joe|user |joe|user |joe|user |user ");
  EXPECT_EQ(listed(""), "user ");
  EXPECT_EQ(listed("admin"), "admin|var|joe|user ");
  setConfig("AdvancedVarEnabled", "0");
  write("/config/data/htpasswd", "admin:x\n:y\nnone\nvar:z\nextra:q\n");
  EXPECT_EQ(columns(load("security"), "userTypeLoop", "typeValue selected"), "admin|, selected|");
  std::filesystem::remove(file("/config/data/htpasswd"));
  EXPECT_TRUE(load("security").untouched());
  EXPECT_EQ(log.back(), "4 no Fount Files");
  session.attributes.clear();
  EXPECT_EQ(load("security").body, "Please login before the operator!");
}

TEST_F(SecurityTest, PasswordsChangeByRank) {
  const char denied[] = "setTimeout$security$Error:You don't have enough jurisdiction!";
  const char wrong[] = "setTimeout$security$Error:The password is error!";
  const char done[] = "setTimeout$Password$You have changed the password!";
  const std::tuple<std::string, std::string, std::string, std::string, std::string> rows[] = {
      {"var", "admin", "var", "x", denied},
      {"user", "var", "user", "x", denied},
      {"admin", "root", "admin", "x", denied},
      {"user", "user", "wrong", "x", wrong},
      // Sessions that an Action URI logged in hold a login name, which has its identity's rights at the most.
      {"joe", "admin", "", "x", denied},
      {"joe", "var", "", "x", denied},
      {"joe", "user", "", "x", wrong},
      {"boss", "admin", "", "x", denied},
      {"nobody", "user", "", "x", denied},
      {"", "user", "", "x", denied},
      {"", "", "", "x", denied},
      {"admin", "user", "", "long new password", done},
      {"var", "var", "var", "v2", done},
      {"var", "var", "v2", "v2", done},
  };
  std::string before = content("/config/data/htpasswd");
  for (const auto& [user, mode, old, fresh, expected] : rows) {
    const bool renamed = std::set<std::string>{"joe", "boss", "nobody"}.contains(user);
    setConfig(renamed ? "UserNameUser=joe&UserNameAdmin=boss" : "UserNameUser=user&UserNameAdmin=admin");
    session.attributes["user"] = user;
    const RecordingResponse answer =
        save("security", "mode=" + mode + "&editOldPassword=" + old + "&editNewPassword=" + fresh);
    EXPECT_EQ(answer.variable("noticeLabel"), expected) << user << ' ' << mode;
    if (expected == done) before = content("/config/data/htpasswd");
    EXPECT_EQ(content("/config/data/htpasswd"), before) << user << ' ' << mode;
  }
  const filePassword file(kPasswordFile);
  for (const auto& [user, password] : Values{{"user", "long new password"}, {"var", "v2"}, {"admin", "admin"}}) {
    EXPECT_TRUE(file.IsRightUserPassword(user.c_str(), password.c_str())) << user;
  }
  for (const std::string& line : log) EXPECT_EQ(line.find("long new"), std::string::npos) << line;
  EXPECT_TRUE(save("security", "mode=user").untouched());
  EXPECT_EQ(log.back(), "4 SecurityServlet::writeConfig para error");
}

}  // namespace
