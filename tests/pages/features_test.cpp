// The feature and setting pages that are tables, and what three of them do beyond.
#include "framework/file_password.h"
#include "servlet/contacts_multicast_ip_servlet.h"
#include "servlet/features_audio_servlet.h"
#include "servlet/features_bluetooth_servlet.h"
#include "servlet/features_callpickup_servlet.h"
#include "servlet/features_general_servlet.h"
#include "servlet/features_intercom_servlet.h"
#include "servlet/features_phonelock_servlet.h"
#include "servlet/features_transfer_servlet.h"
#include "servlet/settings_areacode_servlet.h"
#include "servlet/settings_auto_provision_servlet.h"
#include "servlet/settings_ring_servlet.h"
#include "servlet/settings_tones_servlet.h"
#include "servlet/settings_tr069_servlet.h"
#include "servlet/settings_voice_servlet.h"
#include "tests/support/page_test.h"

namespace {

using FeaturePages = PageTest;

TEST_F(FeaturePages, AnnounceWhatChanged) {
  EXPECT_EQ(saved<FeaturesAudioServlet>("features-audio", {}), Messages{"broadcast 0x10007 11 0"});
  EXPECT_EQ(saved<FeaturesCallpickupServlet>("features-callpickup", {{"GPickupSwitch", "1"}, {"BSFTActive", "9"}}),
            Messages{});
  EXPECT_EQ(config("GPickupSwitch") + config("BSFTActive"), "10");
  EXPECT_EQ(saved<FeaturesIntercomServlet>("features-intercom", {{"IntercomMuteSwitch", "1"}}),
            Messages{"post app_hostapp 0x10007 29 0"});
  EXPECT_EQ(saved<FeaturesIntercomServlet>("features-intercom", {{"IntercomMuteSwitch", "1"}}), Messages{});
  EXPECT_EQ(saved<FeaturesTransferServlet>("features-transfer", {{"TransferModeViaDsskey", "2"}}), Messages{});
  EXPECT_EQ(config("TransferModeViaDsskey"), "2");
  EXPECT_EQ(saved<FeaturesTransferServlet>("features-transfer", {{"SemiAttendedTranSwitch", "0"}}),
            Messages{"broadcast 0x10007 28 0"});
  EXPECT_EQ(saved<FeaturesBluetoothServlet>("features-bluetooth", {{"BluetoothSwitch", "1"}}),
            Messages{"post bluetooththread 0xa59 1 0"});
  EXPECT_EQ(saved<FeaturesBluetoothServlet>("features-bluetooth", {{"BluetoothSwitch", "1"}}), Messages{});
  EXPECT_EQ(saved<SettingsAreacodeServlet>("settings-areacode", {}), Messages{"post app_hostapp 0x10007 18 0"});
  EXPECT_EQ(saved<SettingsTonesServlet>("settings-tones", {}), Messages{"broadcast 0x10007 12 0"});
  EXPECT_EQ(saved<SettingsVoiceServlet>("settings-voice", {{"JitterType", "0"}, {"JitterAdaptive", "9"}}),
            Messages{"broadcast 0x10007 17 0"});
  EXPECT_EQ(config("JitterAdaptive"), "0");
}

TEST_F(FeaturePages, QuirksOfSingleTables) {
  EXPECT_TRUE(
      run<FeaturesBluetoothServlet>("load").variable("ShowLevel").ends_with("&features-bluetooth=2$GPickupSwitch=0"));
  EXPECT_EQ(run<FeaturesCallpickupServlet>("load").variable("BSFTActive"), "0");
  EXPECT_EQ(run<SettingsVoiceServlet>("load").variable("supportTR069"), "true");
  EXPECT_EQ(run<SettingsAreacodeServlet>("x").status, 404);
  EXPECT_TRUE(run<SettingsVoiceServlet>("x").untouched());
  EXPECT_TRUE(run<SettingsVoiceServlet>("write", {{"VPMVAD", "1"}}).untouched());
  EXPECT_EQ(config("VPMVAD"), "1");
  EXPECT_EQ(log.back(), "4 SettingsVoiceServlet::writeConfig() para error");
}

TEST_F(FeaturePages, RebootsGoThroughTheNotice) {
  const RecordingResponse audio = run<FeaturesAudioServlet>("write", {{"reboot", "true"}, {"RingerDevice", "2"}});
  EXPECT_EQ(audio.variable("noticeLabel"), "setInterval$features-audio$Rebooting , please wait ...");
  EXPECT_EQ(announced().front(), "post app_hostapp 0x10101 2 0");
  EXPECT_EQ(config("RingerDevice"), "2");
  const RecordingResponse general = run<FeaturesGeneralServlet>("write", {{"reboot", "true"}});
  EXPECT_EQ(general.variable("noticeLabel"), "setInterval$features-general$Rebooting , please wait ...");
}

TEST_F(FeaturePages, PhoneLockKeepsThePinAsAHash) {
  write("/config/user/user.ini", "[Phone_Lock]\nUnlock_PIN=abhv/ZnAzL36k\n[Other]\nkept=1\n");
  EXPECT_EQ(saved<FeaturesPhonelockServlet>("features-phonelock", {{"UnlockPIN", "********"}}), Messages{});
  EXPECT_NE(content("/config/user/user.ini").find("abhv/ZnAzL36k"), std::string::npos);
  EXPECT_EQ(saved<FeaturesPhonelockServlet>("features-phonelock", {{"UnlockPIN", "4711"}, {"LockTimeout", "60"}}),
            Messages{"post app_hostapp 0x10007 20 0"});
  const std::string file = content("/config/user/user.ini");
  EXPECT_NE(file.find(filePassword::GetEncryptedText("4711", "ab")), std::string::npos) << file;
  EXPECT_NE(file.find("kept"), std::string::npos);
  EXPECT_EQ(file.find("4711"), std::string::npos);
}

TEST_F(FeaturePages, TonesOfferCustomFirst) {
  write("/config/tone/CptToneCountry.cfg", "[Germany]\ndial=425\n[Austria]\n[" + std::string(70, 'x') + "]\n");
  setConfig("ToneCountry", "Austria");
  const RecordingResponse page = run<SettingsTonesServlet>("load");
  EXPECT_EQ(page.column("countryLoop", "selName"), "Custom|Germany|Austria|" + std::string(63, 'x'));
  EXPECT_EQ(page.column("countryLoop", "selected"), "false|false|true|false");
  std::filesystem::remove(file("/config/tone/CptToneCountry.cfg"));
  setConfig("ToneCountry", "Custom");
  EXPECT_EQ(run<SettingsTonesServlet>("load").column("countryLoop", "selected"), "true");
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
  Fields all;
  Messages expected;
  for (const auto& [key, message] : rows) {
    EXPECT_EQ(saved<FeaturesGeneralServlet>("features-general", {{key, "77"}}),
              *message ? Messages{message} : Messages{});
    EXPECT_EQ(config(key), "77");
    all.emplace(key, "78");
    if (*message) expected.emplace_back(message);
  }
  EXPECT_EQ(saved<FeaturesGeneralServlet>("features-general", all), expected);
  saved<FeaturesGeneralServlet>("features-general", {{"AccountAutoAnswerSwitch", "1"}, {"ReLogOffTime", "5"}});
  EXPECT_EQ(config("AccountAutoAnswerSwitch", 6) + config("AccountAutoAnswerSwitch", 0), "10");
  EXPECT_EQ(session.maxInactive, 300);
  for (const char* minutes : {"", "x", "-5"}) {
    saved<FeaturesGeneralServlet>("features-general", {{"ReLogOffTime", minutes}});
    EXPECT_EQ(session.maxInactive, 0) << minutes;
  }
}

class LogoTest : public PageTest {
 protected:
  // Uploads a logo of these bytes; the result that the page tells.
  std::string upload(const std::string& bytes) {
    write("/tmp/logofile_abc123", bytes);
    const RecordingResponse answer = run<FeaturesGeneralServlet>("uploadLogo", {{"logoFile", "/tmp/logofile_abc123"}});
    EXPECT_EQ(answer.templates, Messages{"/phone/www/WEB-INFO/template/upload-result.htm"});
    EXPECT_FALSE(std::filesystem::exists(file("/tmp/logo.dob")));
    return answer.variable("result");
  }
};

TEST_F(LogoTest, MustFitTheScreen) {
  struct Row {
    int phoneType;
    std::string bytes;
    const char* result;
  };
  const Row rows[] = {{41, "\xC0\x40", "success"},
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
  for (const Row& row : rows) {
    setState("{\"phoneType\":" + std::to_string(row.phoneType) + "}");
    write("/config/Pics/logo.dob", "old");
    announced();
    EXPECT_EQ(upload(row.bytes), row.result) << row.phoneType;
    const bool taken = std::string(row.result) == "success";
    EXPECT_EQ(content("/config/Pics/logo.dob"), taken ? row.bytes : "old");
    Messages told = announced();
    std::erase_if(told, [](const std::string& message) { return message.starts_with("system"); });
    EXPECT_EQ(told, taken ? Messages{"post app_hostapp 0x10007 21 0"} : Messages{});
  }
  EXPECT_EQ(config("LCDLogo"), "2");
}

TEST_F(LogoTest, TextsInPlaceOfAFileAreNoPaths) {
  const std::string passwords = content("/config/data/htpasswd");
  write("/tmp/logofile_/abcde", "x");
  for (const char* text : {"/config/data/htpasswd", "/tmp/../config/data/htpasswd", "/tmp/logofile_/abcde",
                           "/tmp/logofile_", "/tmp/logofile_abc1234", "/tmp/logofile_abc.12", ""}) {
    const RecordingResponse answer = run<FeaturesGeneralServlet>("uploadLogo", {{"logoFile", text}});
    EXPECT_EQ(answer.variable("result"), "(absent)") << text;
  }
  EXPECT_EQ(content("/config/data/htpasswd"), passwords);
  EXPECT_EQ(content("/tmp/logofile_/abcde"), "x");
}

TEST_F(LogoTest, IsShownAndDeleted) {
  EXPECT_EQ(run<FeaturesGeneralServlet>("load").variable("userLogoHide"), "true");
  setState(R"({"phoneType":28})");
  upload("\x10\x10");
  const RecordingResponse page = run<FeaturesGeneralServlet>("load");
  EXPECT_EQ(page.variable("userLogoHide") + page.variable("existLogo"), "falsetrue");
  setState(R"({"talking":true})");
  EXPECT_EQ(upload("\x10\x10"), "talking");
  EXPECT_EQ(run<FeaturesGeneralServlet>("delete").variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...");
  setState(R"({"talking":false})");
  EXPECT_EQ(run<FeaturesGeneralServlet>("delete").redirects, Messages{"/servlet?p=features-general&q=load"});
  EXPECT_TRUE(std::filesystem::is_empty(file("/config/Pics")));
  EXPECT_EQ(run<FeaturesGeneralServlet>("load").variable("existLogo"), "(absent)");
  EXPECT_EQ(run<FeaturesGeneralServlet>("uploadLogo").variable("result"), "(absent)");
}

TEST_F(FeaturePages, ProvisioningNow) {
  setConfig("AutoProvisionAESKey16", "old");
  EXPECT_TRUE(run<SettingsAutoProvisionServlet>("write", {{"AutoProvisionUser", "x"}}).untouched());
  EXPECT_EQ(config("AutoProvisionUser"), "");
  EXPECT_EQ(saved<SettingsAutoProvisionServlet>("settings-autop", {{"now", "false"},
                                                                   {"AutoProvisionUser", "u"},
                                                                   {"AutoProvisionAESKey16", "********"},
                                                                   {"AutoProvisionPassword", "p"},
                                                                   {"AutoProvisionPowerOn", "0"}}),
            Messages{});
  EXPECT_EQ(config("AutoProvisionUser") + config("AutoProvisionAESKey16") + config("AutoProvisionPassword") +
                config("AutoProvisionPowerOn"),
            "uoldp0");
  const RecordingResponse now =
      run<SettingsAutoProvisionServlet>("write", {{"now", "true"}, {"AutoProvisionAESKey16", ""}});
  EXPECT_EQ(now.variable("noticeLabel"), "setInterval$settings-autop$Configuration updating ...");
  EXPECT_EQ(announced(), Messages{"post autoServer 0xb0001 0 0"});
  EXPECT_EQ(config("AutoProvisionAESKey16"), "");
  for (const auto& [answer, text] : std::map<int, const char*>{{0, "idle"}, {1, "autoprovision"}, {-1, "idle"}}) {
    setState("{\"answers\":{\"autoServer 0xa0001\":" + std::to_string(answer) + "}}");
    EXPECT_EQ(run<SettingsAutoProvisionServlet>("result").body, text);
  }
  for (const std::string& name : run<SettingsAutoProvisionServlet>("load").names) {
    EXPECT_EQ(name.find("Password") + name.find("AESKey"), 2 * std::string::npos) << name;
  }
}

TEST_F(FeaturePages, Tr069FillsInItsUserName) {
  setConfig("TR069ServerUsername", "$ManufactureOUI-$ProductClass-$MAC");
  setConfig("TR069DeviceManufacturerOUI", "02005E");
  setConfig("TR069DeviceProductClass", "Desk");
  setState(R"({"mac":"02005e000046"})");
  EXPECT_EQ(run<SettingsTr069Servlet>("load").variable("TR069ServerUsername"), "02005E-Desk-02005e000046");
  setConfig("TR069ServerUsername", "<$MAC>");
  EXPECT_EQ(run<SettingsTr069Servlet>("load").variable("TR069ServerUsername"), "&lt;$MAC&gt;");
  EXPECT_EQ(saved<SettingsTr069Servlet>("settings-tr069", {{"TR069ServerPassword", "********"}}), Messages{});
  EXPECT_EQ(saved<SettingsTr069Servlet>("settings-tr069", {{"TR069ServerPassword", "secret"}}),
            Messages{"broadcast 0x10007 23 0"});
  EXPECT_EQ(saved<SettingsTr069Servlet>("settings-tr069", {{"TR069ServerURL", "http://acs"}}),
            Messages{"broadcast 0x10007 23 0"});
}

TEST_F(FeaturePages, PagingHasTenRows) {
  EXPECT_EQ(saved<ContactsMulticastIPServlet>("contacts-multicastIP", {{"ListenAddress7Label", "<shop>"}}),
            Messages{"broadcast 0x10007 42 0"});
  EXPECT_EQ(saved<ContactsMulticastIPServlet>("contacts-multicastIP", {{"ListenAddress7Label", "<shop>"}}), Messages{});
  setConfig("ListenAddress10IPAddress", std::string(200, '1'));
  const RecordingResponse page = run<ContactsMulticastIPServlet>("load");
  EXPECT_EQ(page.column("multicastIPloop", "index"), "1|2|3|4|5|6|7|8|9|10");
  EXPECT_EQ(page.column("multicastIPloop", "classStyle"), "0|1|0|1|0|1|0|1|0|1");
  EXPECT_EQ(page.column("multicastIPloop", "Label"), "||||||&lt;shop&gt;|||");
  EXPECT_EQ(page.column("multicastIPloop", "IPAddress"), "|||||||||" + std::string(127, '1'));
  EXPECT_EQ(page.loops.at("multicastIPloop")[9].at("section"), "ListenAddress10");
}

TEST_F(FeaturePages, RingsAreStoredByTheirPosition) {
  std::filesystem::remove_all(file("/phone/resource/sysdata/sound"));
  std::filesystem::remove_all(file("/data/userdata/sound"));
  for (const char* ring : {"Ring2.wav", "Ring1.WAV", ".svn"})
    write(std::string("/phone/resource/sysdata/sound/") + ring, "x");
  const std::string odd = "a b'\"$(x)\xC3\xA4.wav";
  write("/data/userdata/sound/" + odd, "x");
  Fields fields;
  const char* ringers[] = {"default-ring.wav", "Ring1.WAV", "Ring2.wav", odd.c_str(), "none.wav"};
  for (const char* ringer : ringers) {
    fields.emplace("Text", std::string("<") + ringer);
    fields.emplace("Ringer", ringer);
  }
  setConfig("AlertInfo9Text", "kept");
  EXPECT_EQ(saved<SettingsRingServlet>("settings-ring", fields), Messages{"broadcast 0x10007 57 0"});
  std::string positions;
  for (const char* key :
       {"AlertInfo0Ringer", "AlertInfo1Ringer", "AlertInfo2Ringer", "AlertInfo3Ringer", "AlertInfo4Ringer"}) {
    positions += config(key);
  }
  EXPECT_EQ(positions + config("AlertInfo9Text"), "01230kept");
  EXPECT_EQ(config("AlertInfo3Text"), "<" + odd);
  const RecordingResponse page = run<SettingsRingServlet>("load");
  EXPECT_EQ(page.column("TRLoop", "row"), "1|2|3|4|5|6|7|8|9|10");
  EXPECT_TRUE(run<SettingsRingServlet>("x").untouched());
}

}  // namespace
