// What holds for all pages.
#include <set>
#include <utility>

#include "tests/support/page_test.h"

namespace {

TEST_F(PageTest, UnknownActions) {
  const std::set<std::string> ignoring = {
      "features-acd",       "features-audio",    "features-bluetooth", "features-callpickup",   "features-forward",
      "features-general",   "features-intercom", "features-phonelock", "features-remotecontrl", "features-transfer",
      "features-actionurl", "features-sms",      "settings-ring",      "settings-voice"};
  for (const auto& [page, factory] : pageList()) {
    for (const char* action : {"Load", "", "write "}) {
      RecordingResponse answer = run(page, action, "acc=0");
      EXPECT_EQ(std::exchange(answer.status, 200), ignoring.contains(page) ? 200 : 404) << page;
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
    if (page == "login" || page == "status" || !record.noForm.empty() || record.save.empty()) continue;
    std::string fields =
        "var_accountID=0&reboot=true&mode=user&editNewPassword=9&now=true&ipv4type=1&server1=9&AccountPassword=9&"
        "UnlockPIN=9&Text=9&Ringer=9&ListenAddress1Label=9&JitterType=9&AutoProvisionPassword=9";
    for (const std::string& name : load(page, "acc=0").names) fields += "&" + name + "=9";
    announced();
    const std::string before = everythingStored();
    const RecordingResponse answer = run(page, record.save, fields);
    EXPECT_EQ(answer.variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...") << page;
    EXPECT_TRUE(answer.redirects.empty() && everythingStored() == before) << page;
    EXPECT_EQ(announced(), "") << page;
  }
}

TEST_F(PageTest, SavesAreStoredAndAnnounced) {
  setConfig("AURILimitIP=any&JitterAdaptive=1");
  const char acd[] = "EnableACDAutoAvailable=1&ACDAutoAvailableTime=90", paging[] = "ListenAddress7Label=<shop>";
  expectSaves({
      {"account-basic", "var_accountID=1&AccountMissCallLog=0", "broadcast 0x10007 3 1"},
      {"account-basic", "var_accountID=1&AccountAutoAnswerSwitch=1&AccountRing=Resource:Ring2.wav",
       "post app_hostapp 0x10007 13 0; broadcast 0x10007 3 1",
       "AccountRing@1=Resource:Ring2.wav&AccountAutoAnswerSwitch@0=0"},
      {"account-adv", "var_accountID=1&MessageVoiceNumber1=500&MessageVoiceNumber0=x",
       "broadcast 0x10007 2 0; broadcast 0x10007 3 1", "AccountVoiceMailNumber@1=500&AccountVoiceMailNumber@0="},
      {"contacts-multicastIP", paging, "broadcast 0x10007 42 0", paging},
      {"contacts-multicastIP", paging, ""},
      {"features-acd", acd, "post app_hostapp 0x10007 39 0", acd},
      {"features-acd", acd, "", acd},
      {"features-acd"},
      {"features-audio", "", "broadcast 0x10007 11 0"},
      {"features-callpickup", "GPickupSwitch=1&BSFTActive=9", "", "GPickupSwitch=1&BSFTActive=0"},
      {"features-intercom", "IntercomMuteSwitch=1", "post app_hostapp 0x10007 29 0", "IntercomMuteSwitch=1"},
      {"features-intercom", "IntercomMuteSwitch=1", ""},
      {"features-transfer", "TransferModeViaDsskey=2", "", "TransferModeViaDsskey=2"},
      {"features-transfer", "SemiAttendedTranSwitch=0", "broadcast 0x10007 28 0", "SemiAttendedTranSwitch=0"},
      {"features-bluetooth", "BluetoothSwitch=1", "post bluetooththread 0xa59 1 0", "BluetoothSwitch=1"},
      {"features-bluetooth", "BluetoothSwitch=1", ""},
      {"features-actionurl", "AUMute=a/$ip&AURemoteIP=x", "broadcast 0x10007 38 0", "AUMute=a/$ip&AURemoteIP="},
      {"features-remotecontrl", "AURILimitIP=any", "", "AURIShowMsgBoxEnable=0"},
      {"features-remotecontrl", "AURILimitIP=10.*.*.*", "", "AURIShowMsgBoxEnable=1"},
      {"hidden", "HeadsetSend=7&BSFTActive=1", "broadcast 0x10007 28 0", "HeadsetSend=7&BSFTActive=0"},
      {"settings-areacode", "AreaCode=7", "post app_hostapp 0x10007 18 0", "AreaCode=7"},
      {"settings-areacode", "", "post app_hostapp 0x10007 18 0"},
      {"settings-tones", "ToneDial=425/0", "broadcast 0x10007 12 0", "ToneDial=425/0"},
      {"settings-tones", "", "broadcast 0x10007 12 0"},
      {"settings-voice", "JitterType=0&JitterAdaptive=9", "broadcast 0x10007 17 0", "JitterAdaptive=0"},
      {"settings-tr069", "TR069ServerPassword=********", "", "TR069ServerPassword="},
      {"settings-tr069", "TR069ServerPassword=secret", "broadcast 0x10007 23 0", "TR069ServerPassword=secret"},
      {"settings-tr069", "TR069ServerURL=http://acs", "broadcast 0x10007 23 0", "TR069ServerURL=http://acs"},
  });
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
