// The feature and setting pages that are tables, and what some of them do beyond.
#include "framework/file_password.h"
#include "tests/support/page_test.h"

namespace {

using FeaturePages = PageTest;

TEST_F(FeaturePages, AnnounceWhatChanged) {
  setConfig("JitterAdaptive=1&AURILimitIP=any");
  expectSaves({
      {"features-audio", "", "broadcast 0x10007 11 0"},
      {"features-callpickup", "GPickupSwitch=1&BSFTActive=9", "", "GPickupSwitch=1&BSFTActive=0"},
      {"features-intercom", "IntercomMuteSwitch=1", "post app_hostapp 0x10007 29 0", "IntercomMuteSwitch=1"},
      {"features-intercom", "IntercomMuteSwitch=1", ""},
      {"features-transfer", "TransferModeViaDsskey=2", "", "TransferModeViaDsskey=2"},
      {"features-transfer", "SemiAttendedTranSwitch=0", "broadcast 0x10007 28 0", "SemiAttendedTranSwitch=0"},
      {"features-bluetooth", "BluetoothSwitch=1", "post bluetooththread 0xa59 1 0", "BluetoothSwitch=1"},
      {"features-bluetooth", "BluetoothSwitch=1", ""},
      {"contacts-multicastIP", "ListenAddress7Label=<shop>", "broadcast 0x10007 42 0", "ListenAddress7Label=<shop>"},
      {"contacts-multicastIP", "ListenAddress7Label=<shop>", ""},
      {"settings-areacode", "AreaCode=7", "post app_hostapp 0x10007 18 0", "AreaCode=7"},
      {"settings-areacode", "", "post app_hostapp 0x10007 18 0"},
      {"settings-tones", "ToneDial=425/0", "broadcast 0x10007 12 0", "ToneDial=425/0"},
      {"settings-tones", "", "broadcast 0x10007 12 0"},
      {"settings-voice", "JitterType=0&JitterAdaptive=9", "broadcast 0x10007 17 0", "JitterAdaptive=0"},
      {"settings-tr069", "TR069ServerPassword=********", "", "TR069ServerPassword="},
      {"settings-tr069", "TR069ServerPassword=secret", "broadcast 0x10007 23 0", "TR069ServerPassword=secret"},
      {"settings-tr069", "TR069ServerURL=http://acs", "broadcast 0x10007 23 0", "TR069ServerURL=http://acs"},
      {"features-actionurl", "AUMute=http://a/$ip&AURemoteIP=x", "broadcast 0x10007 38 0",
       "AUMute=http://a/$ip&AURemoteIP="},
      {"features-remotecontrl", "AURILimitIP=any", "", "AURIShowMsgBoxEnable=0"},
      {"features-remotecontrl", "AURILimitIP=10.*.*.*", "", "AURIShowMsgBoxEnable=1"},
      {"hidden", "HeadsetSend=7&BSFTActive=1", "broadcast 0x10007 28 0", "HeadsetSend=7&BSFTActive=0"},
  });
}

TEST_F(FeaturePages, QuirksOfSingleTables) {
  EXPECT_TRUE(load("features-bluetooth").variable("ShowLevel").ends_with("&features-bluetooth=2$GPickupSwitch=0"));
  EXPECT_EQ(load("features-callpickup").variable("BSFTActive"), "0");
  EXPECT_EQ(load("settings-voice").variable("supportTR069"), "true");
  EXPECT_TRUE(save("settings-voice", "VPMVAD=1").untouched());
  EXPECT_EQ(config("VPMVAD"), "1");
  EXPECT_EQ(log.back(), "4 SettingsVoiceServlet::writeConfig() para error");
}

TEST_F(FeaturePages, PhoneLockKeepsThePinAsAHash) {
  const std::string old = "[Phone_Lock]\nUnlock_PIN=abhv/ZnAzL36k\n[Other]\nkept=1\n";
  write("/config/user/user.ini", old);
  expectSaves({{"features-phonelock", "UnlockPIN=********"}});
  EXPECT_EQ(content("/config/user/user.ini"), old);
  expectSaves(
      {{"features-phonelock", "UnlockPIN=4711&LockTimeout=60", "post app_hostapp 0x10007 20 0", "LockTimeout=60"}});
  const std::string file = content("/config/user/user.ini");
  EXPECT_NE(file.find(filePassword::GetEncryptedText("4711", "ab")), std::string::npos) << file;
  EXPECT_NE(file.find("kept"), std::string::npos);
  EXPECT_EQ(file.find("4711"), std::string::npos);
}

TEST_F(FeaturePages, TonesOfferCustomFirst) {
  write("/config/tone/CptToneCountry.cfg", "[Germany]\ndial=425\n[Austria]\n[" + std::string(70, 'x') + "]\n");
  setConfig("ToneCountry", "Austria");
  const RecordingResponse page = load("settings-tones");
  EXPECT_EQ(page.column("countryLoop", "selName"), "Custom|Germany|Austria|" + std::string(63, 'x'));
  EXPECT_EQ(page.column("countryLoop", "selected"), "false|false|true|false");
  std::filesystem::remove(file("/config/tone/CptToneCountry.cfg"));
  setConfig("ToneCountry", "Custom");
  EXPECT_EQ(load("settings-tones").column("countryLoop", "selected"), "true");
}

TEST_F(FeaturePages, GeneralAnnouncesEachGroupOnItsOwn) {
  const std::pair<const char*, const char*> rows[] = {
      {"HotlineNumber", ""},
      {"ForwardInternationalEnable", "broadcast 0x10007 1 0"},
      {"CallWaitingOffCode", "post app_hostapp 0x10007 11 0"},
      {"BroadsoftFeatureKeySync", "broadcast 0x10007 37 0"},
      {"LCDLogo", "post app_hostapp 0x10007 21 0"},
      {"TextLogo", "post app_hostapp 0x10007 21 0"},
      {"CallCompletionSwitch", "post app_hostapp 0x10007 32 0"},
      {"SaveCallLogSwitch", "post app_hostapp 0x10007 40 0"},
      {"ClosePowerLight", "post app_hostapp 0x10007 90 0"},
      {"LogonWizard", "broadcast 0x10007 28 0"},
      {"PayloadType", "broadcast 0x10007 42 0"},
      {"AutoRedialTimes", "post app_hostapp 0x10007 26 0"},
      {"Dtmfrep", "broadcast 0x10007 17 0"},
      {"BLFLedOffInIdle", "post app_hostapp 0x30029 0 0"},
  };
  std::string fields, messages;
  for (const auto& [name, message] : rows) {
    const std::string key = name;
    expectSaves({{"features-general", key + "=77", message, key + "=77"}});
    fields += key + "=78&";
    messages += (messages.empty() || !*message ? "" : "; ") + std::string(message);
  }
  expectSaves({{"features-general", fields, messages},
               {"features-general", "AccountAutoAnswerSwitch=1", "",
                "AccountAutoAnswerSwitch@6=1&AccountAutoAnswerSwitch@0=0"}});
  for (const auto& [minutes, seconds] : std::map<std::string, int>{{"5", 300}, {"", 0}, {"x", 0}, {"-5", 0}}) {
    save("features-general", "ReLogOffTime=" + minutes);
    EXPECT_EQ(session.maxInactive, seconds) << minutes;
  }
}

class LogoTest : public PageTest {
 protected:
  // Uploads a logo of these bytes; the result that the page tells.
  std::string upload(const std::string& bytes) {
    write("/tmp/logofile_abc123", bytes);
    const RecordingResponse answer = run("features-general", "uploadLogo", "logoFile=/tmp/logofile_abc123");
    EXPECT_EQ(answer.templates, Messages{"/phone/www/WEB-INFO/template/upload-result.htm"});
    EXPECT_FALSE(std::filesystem::exists(file("/tmp/logo.dob")));
    return answer.variable("result");
  }
};

TEST_F(LogoTest, MustFitTheScreen) {
  const struct {
    int phoneType;
    std::string bytes;
    const char* result;
  } rows[] = {{41, "\xC0\x40", "success"},
              {42, "\xC8\x3C", "big"},
              {22, "\xC8\x3C", "big"},
              {19, "\x84\x40", "success"},
              {28, "\xEC\x52", "success"},
              {28, "\xED\x52", "big"},
              {28, "\xEC\x53", "big"},
              {46, "\xFF\xFF", "success"},
              {41, "", "big"},
              {41, "\x01", "big"},
              {46, "", "big"}};
  for (const auto& [phoneType, bytes, result] : rows) {
    setState("{\"phoneType\":" + std::to_string(phoneType) + "}");
    write("/config/Pics/logo.dob", "old");
    announced();
    EXPECT_EQ(upload(bytes), result) << phoneType;
    const bool taken = result == std::string("success");
    EXPECT_EQ(content("/config/Pics/logo.dob"), taken ? bytes : "old");
    EXPECT_EQ(announced().ends_with("; post app_hostapp 0x10007 21 0"), taken);
  }
  EXPECT_EQ(config("LCDLogo"), "2");
}

TEST_F(LogoTest, TextsInPlaceOfAFileAreNoPaths) {
  write("/tmp/logofile_/abcde", "x");
  run("features-general", "uploadLogo");
  const std::string before = everythingStored();
  for (const char* text : {"/config/data/htpasswd", "/tmp/../config/data/htpasswd", "/tmp/logofile_/abcde",
                           "/tmp/logofile_", "/tmp/logofile_abc1234", "/tmp/logofile_abc.12", ""}) {
    EXPECT_EQ(run("features-general", "uploadLogo", std::string("logoFile=") + text).variable("result"), "(absent)")
        << text;
  }
  EXPECT_TRUE(everythingStored() == before);
}

TEST_F(LogoTest, IsShownAndDeleted) {
  EXPECT_EQ(load("features-general").variable("userLogoHide"), "true");
  setState(R"({"phoneType":28})");
  upload("\x10\x10");
  EXPECT_EQ(load("features-general").variable("userLogoHide existLogo"), "false|true");
  setState(R"({"talking":true})");
  EXPECT_EQ(upload("\x10\x10"), "talking");
  EXPECT_EQ(run("features-general", "delete").variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...");
  setState(R"({"talking":false})");
  EXPECT_EQ(run("features-general", "delete").redirects, Messages{"/servlet?p=features-general&q=load"});
  EXPECT_TRUE(std::filesystem::is_empty(file("/config/Pics")));
  EXPECT_EQ(load("features-general").variable("existLogo"), "(absent)");
  EXPECT_EQ(run("features-general", "uploadLogo").variable("result"), "(absent)");
}

TEST_F(FeaturePages, ProvisioningNow) {
  setConfig("AutoProvisionAESKey16", "old");
  EXPECT_TRUE(save("settings-autop", "AutoProvisionUser=x").untouched());
  EXPECT_EQ(config("AutoProvisionUser"), "");
  expectSaves({{"settings-autop",
                "now=false&AutoProvisionUser=u&AutoProvisionAESKey16=********&AutoProvisionPassword=p&"
                "AutoProvisionPowerOn=0",
                "", "AutoProvisionUser=u&AutoProvisionAESKey16=old&AutoProvisionPassword=p&AutoProvisionPowerOn=0"}});
  EXPECT_EQ(save("settings-autop", "now=true&AutoProvisionAESKey16=").variable("noticeLabel"),
            "setInterval$settings-autop$Configuration updating ...");
  EXPECT_EQ(announced(), "post autoServer 0xb0001 0 0");
  EXPECT_EQ(config("AutoProvisionAESKey16"), "");
  for (const auto& [answer, text] : std::map<int, const char*>{{0, "idle"}, {1, "autoprovision"}, {-1, "idle"}}) {
    setState("{\"answers\":{\"autoServer 0xa0001\":" + std::to_string(answer) + "}}");
    EXPECT_EQ(run("settings-autop", "result").body, text);
  }
  for (const std::string& name : load("settings-autop").names) {
    EXPECT_EQ(name.find("Password") + name.find("AESKey"), 2 * std::string::npos) << name;
  }
}

TEST_F(FeaturePages, Tr069FillsInItsUserName) {
  setConfig("TR069DeviceManufacturerOUI=02005E&TR069DeviceProductClass=Desk");
  setState(R"({"mac":"02005e000046"})");
  for (const auto& [stored, shown] :
       Values{{"$ManufactureOUI-$ProductClass-$MAC", "02005E-Desk-02005e000046"}, {"<$MAC>", "&lt;$MAC&gt;"}}) {
    setConfig("TR069ServerUsername", stored);
    EXPECT_EQ(load("settings-tr069").variable("TR069ServerUsername"), shown);
  }
}

TEST_F(FeaturePages, CommandServerIsForPhonesThatFollowOne) {
  EXPECT_EQ(load("features-actionurl").variable("umeactive"), "(absent)");
  setConfig("ISUME", "1");
  save("features-actionurl", "AURemoteIP=x");
  EXPECT_EQ(load("features-actionurl").variable("AURemoteIP umeactive"), "x|1");
}

TEST_F(FeaturePages, PagingHasTenRows) {
  setConfig("ListenAddress7Label=<shop>&ListenAddress10IPAddress=" + std::string(200, '1'));
  const RecordingResponse page = load("contacts-multicastIP");
  const std::pair<const char*, std::string> columns[] = {{"index", "1|2|3|4|5|6|7|8|9|10"},
                                                         {"classStyle", "0|1|0|1|0|1|0|1|0|1"},
                                                         {"Label", "||||||&lt;shop&gt;|||"},
                                                         {"IPAddress", "|||||||||" + std::string(127, '1')}};
  for (const auto& [name, values] : columns) EXPECT_EQ(page.column("multicastIPloop", name), values);
  EXPECT_EQ(page.loops.at("multicastIPloop")[9].at("section"), "ListenAddress10");
}

TEST_F(FeaturePages, RingsAreStoredByTheirPosition) {
  std::filesystem::remove_all(file("/phone/resource/sysdata/sound"));
  std::filesystem::remove_all(file("/data/userdata/sound"));
  for (const char* ring : {"Ring2.wav", "Ring1.WAV", ".svn"})
    write(std::string("/phone/resource/sysdata/sound/") + ring, "x");
  const std::string odd = "a b'\"$(x)\xC3\xA4.wav";
  write("/data/userdata/sound/" + odd, "x");
  const std::string fields =
      "Text=<a>&Ringer=default-ring.wav&Text=b&Ringer=Ring1.WAV&Text=c&Ringer=Ring2.wav&Text=d&Ringer=" + odd +
      "&Text=e&Ringer=none.wav";
  setConfig("AlertInfo9Text", "kept");
  expectSaves({{"settings-ring", fields, "broadcast 0x10007 57 0", "AlertInfo0Text=<a>&AlertInfo3Text=d"}});
  EXPECT_EQ(config("AlertInfo0Ringer AlertInfo1Ringer AlertInfo2Ringer AlertInfo3Ringer AlertInfo4Ringer "
                   "AlertInfo9Text"),
            "0|1|2|3|0|kept");
  EXPECT_EQ(load("settings-ring").column("TRLoop", "row"), "1|2|3|4|5|6|7|8|9|10");
}

}  // namespace
