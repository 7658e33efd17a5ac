// The features pages.
#include "framework/file_password.h"
#include "tests/support/page_test.h"

namespace {

using FeaturePages = PageTest;
using ForwardTest = PageTest;

TEST_F(FeaturePages, QuirksOfSingleTables) {
  EXPECT_TRUE(load("features-bluetooth").variable("ShowLevel").ends_with("&features-bluetooth=2$GPickupSwitch=0"));
  EXPECT_EQ(load("features-callpickup").variable("BSFTActive"), "0");
  EXPECT_EQ(load("features-actionurl").variable("umeactive"), "(absent)");
  setConfig("ISUME", "1");  // the phone follows a command server
  save("features-actionurl", "AURemoteIP=x");
  EXPECT_EQ(load("features-actionurl").variable("AURemoteIP umeactive"), "x|1");
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
  EXPECT_EQ(file.find("4711"), std::string::npos) << file;
}

TEST_F(FeaturePages, GeneralAnnouncesEachGroupOnItsOwn) {
  const std::string post = "post app_hostapp 0x10007 ", broadcast = "broadcast 0x10007 ";
  const std::pair<std::string, std::string> rows[] = {{"HotlineNumber", ""},
                                                      {"ForwardInternationalEnable", broadcast + "1 0"},
                                                      {"CallWaitingOffCode", post + "11 0"},
                                                      {"BroadsoftFeatureKeySync", broadcast + "37 0"},
                                                      {"LCDLogo", post + "21 0"},
                                                      {"TextLogo", post + "21 0"},
                                                      {"CallCompletionSwitch", post + "32 0"},
                                                      {"SaveCallLogSwitch", post + "40 0"},
                                                      {"ClosePowerLight", post + "90 0"},
                                                      {"LogonWizard", broadcast + "28 0"},
                                                      {"PayloadType", broadcast + "42 0"},
                                                      {"AutoRedialTimes", post + "26 0"},
                                                      {"Dtmfrep", broadcast + "17 0"},
                                                      {"BLFLedOffInIdle", "post app_hostapp 0x30029 0 0"}};
  std::string fields, messages;
  for (const auto& [key, message] : rows) {
    expectSaves({{"features-general", key + "=77", message, key + "=77"}});
    fields += key + "=78&";
    messages += (messages.empty() ? "" : "; ") + message;
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
  const std::tuple<int, std::string, std::string> rows[] = {{41, "\xC0\x40", "success"},
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
    const bool taken = result == "success";
    EXPECT_EQ(content("/config/Pics/logo.dob"), taken ? bytes : "old");
    EXPECT_EQ(announced().ends_with("; post app_hostapp 0x10007 21 0"), taken);
  }
  EXPECT_EQ(config("LCDLogo"), "2");
}

TEST_F(LogoTest, TextsInPlaceOfAFileAreNoPaths) {
  write("/tmp/logofile_/abcde", "x");
  run("features-general", "uploadLogo");
  const std::string before = everythingStored();
  for (const std::string path : {"/config/data/htpasswd", "/tmp/../config/data/htpasswd", "/tmp/logofile_/abcde",
                                 "/tmp/logofile_", "/tmp/logofile_abc1234", "/tmp/logofile_abc.12", ""}) {
    EXPECT_EQ(run("features-general", "uploadLogo", "logoFile=" + path).variable("result"), "(absent)") << path;
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

TEST_F(FeaturePages, AcdShowsItsKeysAndLevels) {
  setConfig("ACDAutoAvailableTime", "<b>");
  const RecordingResponse page = load("features-acd");
  EXPECT_EQ(page.contentType, "text/html");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/features-acd.htm"});
  EXPECT_EQ(page.variable("EnableACDAutoAvailable ACDAutoAvailableTime Identity ShowLevel"),
            "0|&lt;b&gt;|admin|"
            "features-acd=1&features-forward=2&features-general=1&features-audio=2&features-intercom=2&"
            "features-transfer=1&features-callpickup=1&features-remote=0&features-phonelock=1&features-sms=2&"
            "features-actionurl=0&features-bluetooth=2$FeaturesACDAutoAvailable=1&FeaturesACDAutoAvailableTimer=1");
  save("features-acd", "ACDAutoAvailableTime=91");
  EXPECT_EQ(messages(), (Messages{"send app_hostapp 0x30007 0 1", "post app_hostapp 0x10007 39 0"}));
}

TEST_F(ForwardTest, PhoneMode) {
  setConfig("NoAnswerForwardDelayTime", "3");
  const RecordingResponse page = load("features-forward");
  EXPECT_EQ(page.variable("ForwardMode NoAnswerForwardDelayTime FWDIndex FWDNoAccount"), "0|3|(absent)|(absent)");
  EXPECT_EQ(page.column("delayTimeLoop", "selName"),
            "0|6|12|18|24|30|36|42|48|54|60|66|72|78|84|90|96|102|108|114|120");
  EXPECT_TRUE(page.column("delayTimeLoop", "selected").starts_with("0|0|0|1|0|"));
  EXPECT_EQ(page.column("AccountLoop", "selName"), "1000");
  const std::string busy = "ForwardMode=0&BusyForwardTarget=1";
  expectSaves({{"features-forward", busy + "&DndMode=0&DndStatus=1", "broadcast 0x10007 1 0; broadcast 0x10007 30 0",
                "BusyForwardTarget=1&DndStatus=1"},
               {"features-forward", busy},
               {"features-forward", "DNDEmergencySwitch=1&BusyForwardTarget=2", "",
                "DNDEmergencySwitch=1&BusyForwardTarget=1"}});
}

TEST_F(ForwardTest, CustomModeKeepsAnAccountsOwnSettings) {
  setConfig("AccountEnable@0=1&AccountEnable@2=1");
  write("/config/user/user.ini", "[Account2]\nTimeout=5\nAF_Target=<7>\n[DNDAccount0]\nDND=1\n");
  const RecordingResponse page = load("features-forward", "ForwardMode=1&DndMode=1&fwd=2");
  EXPECT_EQ(page.variable("AlwaysForwardTarget NoAnswerForwardDelayTime FWDIndex DndStatus DNDIndex ForwardMode"),
            "&lt;7&gt;|5|2|1|0|1");
  EXPECT_TRUE(page.column("delayTimeLoop", "selected").starts_with("0|0|0|0|0|1|0|"));
  EXPECT_EQ(page.column("AccountLoop", "selValue"), "0|2");
  EXPECT_EQ(load("features-forward", "ForwardMode=1").variable("FWDIndex"), "(absent)");
  announced();
  const RecordingResponse answer =
      save("features-forward", "ForwardMode=1&DndMode=0&ForwardAccount=2&AlwaysForwardTarget=8&AlwaysForwardSwitch=1");
  EXPECT_EQ(answer.redirects, Messages{"/servlet?p=features-forward&q=load&fwd=2"});
  EXPECT_EQ(announced(), "broadcast 0x10007 1 0");
  EXPECT_EQ(load("features-forward", "fwd=2").variable("AlwaysForwardTarget"), "8");
  EXPECT_EQ(load("features-forward", "fwd=0").variable("AlwaysForwardTarget"), "");
  EXPECT_EQ(config("AlwaysForwardTarget"), "");
}

TEST_F(ForwardTest, AccountsThatAreNoneAreRefused) {
  const std::string before = everythingStored();
  for (const std::string account : {"x", "0]", "0\n[x", "../0", "123456789", "-1", "6", " 0"}) {
    for (const char* front :
         {"ForwardMode=1&AlwaysForwardTarget=8&DNDEmergencySwitch=1&ForwardAccount=", "DndMode=1&DNDAccount="}) {
      EXPECT_EQ(save("features-forward", front + account).variable("noticeLabel"),
                "setTimeout$features-forward$Error:There is no such account!")
          << account;
    }
  }
  EXPECT_TRUE(everythingStored() == before);
  setConfig("AccountEnable@0", "0");
  EXPECT_EQ(
      load("features-forward", "ForwardMode=1&DndMode=1&fwd=2").variable("FWDNoAccount FWDIndex DNDNoAccount DNDIndex"),
      "true|-1|true|-1");
}

}  // namespace
