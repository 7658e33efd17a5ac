// What holds for all pages.
#include <set>

#include "tests/support/page_test.h"

namespace {

TEST_F(PageTest, UnknownActions) {
  const std::set<std::string> ignoring = {
      "features-acd",       "features-audio",    "features-bluetooth", "features-callpickup",   "features-forward",
      "features-general",   "features-intercom", "features-phonelock", "features-remotecontrl", "features-transfer",
      "features-actionurl", "settings-ring",     "settings-voice"};
  for (const auto& [page, factory] : pageList()) {
    for (const char* action : {"Load", "", "write "}) {
      RecordingResponse answer = run(page, action, "acc=0");
      EXPECT_EQ(answer.status, ignoring.contains(page) ? 200 : 404) << page;
      answer.status = 200;
      EXPECT_TRUE(answer.untouched()) << page;
    }
  }
  EXPECT_EQ(serve(pageHandler("status"), FakeRequest()).status, 404);
  EXPECT_TRUE(serve(pageHandler("features-acd"), FakeRequest()).untouched());
}

TEST_F(PageTest, NothingIsSavedDuringACall) {
  setState(R"({"talking":true})");
  for (const auto& [page, factory] : pageList()) {
    const WalkRecord record = walkRecord(page);
    if (page == "login" || page == "status" || !record.noForm.empty()) continue;
    std::string fields =
        "var_accountID=0&reboot=true&mode=user&editNewPassword=9&now=true&ipv4type=1&server1=9&AccountPassword=9&"
        "UnlockPIN=9&Text=9&Ringer=9&ListenAddress1Label=9&JitterType=9&AutoProvisionPassword=9";
    for (const std::string& name : load(page, "acc=0").names) fields += "&" + name + "=9";
    announced();
    const std::string before = everythingStored();
    const RecordingResponse answer = save(page, fields);
    EXPECT_EQ(answer.variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...") << page;
    EXPECT_TRUE(answer.redirects.empty()) << page;
    EXPECT_EQ(announced(), "") << page;
    EXPECT_TRUE(everythingStored() == before) << page;
  }
}

// What each page that can restart the phone tells on the way, and what it stores before.
TEST_F(PageTest, RestartsGoThroughTheNotice) {
  const Save rows[] = {
      {"network", "NetworkPppoeUser=u", "broadcast 0x10007 9 0", "NetworkPppoeUser=u"},
      {"network-pcport", "type=0", "broadcast 0x10007 9 0", "NetworkLanType=0"},
      {"features-audio", "RingerDevice=2", "post app_hostapp 0x10101 2 0", "RingerDevice=2"},
      {"features-general", "HotlineNumber=5", "post app_hostapp 0x10101 2 0", "HotlineNumber=5"},
      {"hidden", "BSFTActive=1", "post app_hostapp 0x10101 2 0", "BSFTActive=1"},
  };
  for (const auto& [page, fields, message, stored] : rows) {
    const RecordingResponse answer = save(page, fields + "&reboot=true");
    EXPECT_EQ(answer.variable("noticeLabel"), "setInterval$" + page + "$Rebooting , please wait ...");
    EXPECT_TRUE(answer.redirects.empty()) << page;
    EXPECT_TRUE(announced().starts_with(message)) << page;
    expectStored(stored);
  }
}

}  // namespace
