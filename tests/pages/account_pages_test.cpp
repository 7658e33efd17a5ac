// The account pages behind registration, forwarding, and who may change which password.
#include "framework/file_password.h"
#include "servlet/account_adv_servlet.h"
#include "servlet/account_basic_servlet.h"
#include "servlet/account_codec_servlet.h"
#include "servlet/codec_list.h"
#include "servlet/features_forward_servlet.h"
#include "servlet/media_lists.h"
#include "servlet/security_servlet.h"
#include "tests/support/page_test.h"

namespace {

using AccountPages = PageTest;
using ForwardTest = PageTest;
using SecurityTest = PageTest;
using MediaTest = PageTest;

TEST_F(AccountPages, Basic) {
  const auto save = [this](Fields fields) {
    fields.emplace("var_accountID", "1");
    EXPECT_EQ(run<AccountBasicServlet>("write", fields).redirects, Messages{"/servlet?p=account-basic&q=load&acc=1"});
    return announced();
  };
  EXPECT_EQ(save({{"AccountMissCallLog", "0"}}), Messages{"broadcast 0x10007 3 1"});
  EXPECT_EQ(save({{"AccountAutoAnswerSwitch", "1"}, {"AccountRing", "Resource:Ring2.wav"}}),
            (Messages{"post app_hostapp 0x10007 13 0", "broadcast 0x10007 3 1"}));
  const RecordingResponse page = run<AccountBasicServlet>("load", {{"acc", "1"}});
  EXPECT_EQ(page.variable("AccountMissCallLog") + page.variable("AccountAutoAnswerSwitch"), "01");
  EXPECT_TRUE(page.column("ringTypeloop", "selValue").starts_with("Common|Resource:"));
  EXPECT_EQ(page.column("accountLoop", "selected"), "0|1|0|0|0|0");
  for (const char* account : {"6", "-1", "x", ""}) {
    EXPECT_TRUE(run<AccountBasicServlet>("write", {{"var_accountID", account}}).untouched()) << account;
    EXPECT_EQ(log.back(), "4 AccountBasicServlet::writeConfig() accountID is invail");
  }
  EXPECT_TRUE(run<AccountBasicServlet>("load").untouched());
  EXPECT_EQ(log.back(), "4 AccountBasicServlet::loadConfig(). accountID is null");
}

TEST_F(AccountPages, AdvancedAlwaysAnnounces) {
  const RecordingResponse answer = run<AccountAdvServlet>(
      "write", {{"var_accountID", "1"}, {"MessageVoiceNumber1", "500"}, {"MessageVoiceNumber0", "x"}});
  EXPECT_EQ(answer.redirects, Messages{"/servlet?p=account-adv&q=load&acc=1"});
  EXPECT_EQ(announced(), (Messages{"broadcast 0x10007 2 0", "broadcast 0x10007 3 1"}));
  const RecordingResponse page = run<AccountAdvServlet>("load", {{"acc", "1"}});
  EXPECT_EQ(page.variable("MessageVoiceNumber"), "500");
  EXPECT_EQ(page.names.size(), 49u + 5u + 4u);
  for (const char* account : {"6", "x", "-1"}) {
    EXPECT_EQ(run<AccountAdvServlet>("load", {{"acc", account}}).body, "no such account!") << account;
    EXPECT_EQ(run<AccountAdvServlet>("write", {{"var_accountID", account}}).body, "no such account!") << account;
  }
  EXPECT_TRUE(run<AccountAdvServlet>("load").untouched());
  EXPECT_TRUE(run<AccountAdvServlet>("write").untouched());
  EXPECT_EQ(log.back(), "4  AccountAdvServlet::writeConfig() accountID is NULL");
}

class CodecTest : public PageTest {
 protected:
  CodecTest() {
    for (int slot = 0; slot < 19; ++slot) set(slot, "", "0", "0");
    set(0, "PCMU", "1", "2");
    set(1, "PCMA", "1", "1");
    set(5, "G722", "0", "7");
    set(7, "iLBC_13_3", "1", "2");
  }
  void set(int slot, const char* type, const char* on, const char* priority) {
    const std::string key = "AccountAudio" + std::to_string(slot);
    setConfig((key + "Type").c_str(), 1, type);
    setConfig((key + "Switch").c_str(), 1, on);
    setConfig((key + "Priority").c_str(), 1, priority);
  }
  std::string slot(const std::string& number) {
    return config(("AccountAudio" + number + "Switch").c_str(), 1) + "/" +
           config(("AccountAudio" + number + "Priority").c_str(), 1);
  }
};

TEST_F(CodecTest, AreListedByPriority) {
  setConfig("ILBCEnable", "1");
  const RecordingResponse page = run<AccountCodecServlet>("load", {{"acc", "1"}});
  EXPECT_EQ(page.column("enabledLoop", "selName"), "PCMA|PCMU|iLBC_13_3");
  EXPECT_EQ(page.column("enabledLoop", "selValue"), "1|0|7");
  EXPECT_EQ(page.column("disabledLoop", "selName"), "G722");
  setConfig("ILBCEnable", "0");
  EXPECT_EQ(run<AccountCodecServlet>("load", {{"acc", "1"}}).column("enabledLoop", "selName"), "PCMA|PCMU");
  EXPECT_TRUE(run<AccountCodecServlet>("load", {{"acc", "-1"}}).untouched());
  EXPECT_EQ(log.back(), "4 Get codec config data error!");
  EXPECT_FALSE(GetCodecConfigData(nullptr, 0));
  EXPECT_FALSE(SortAudioByPriority(nullptr));
}

TEST_F(CodecTest, AreStoredInTheOrderPosted) {
  const RecordingResponse answer = run<AccountCodecServlet>(
      "write", {{"var_accountID", "1"}, {"enabled", "G722:5,,PCMU:0"}, {"disabled", "PCMA:1,x:99,x:-1,:3,PCMU,y:"}});
  EXPECT_EQ(answer.redirects, Messages{"/servlet?p=account-codec&q=load&acc=1"});
  EXPECT_EQ(slot("5") + " " + slot("0") + " " + slot("1") + " " + slot("7"), "1/1 1/3 0/1 1/2");
  EXPECT_EQ(config("AccountAudio99Switch", 1), "");
  EXPECT_EQ(announced(), Messages{"broadcast 0x10007 3 1"});
  run<AccountCodecServlet>("write", {{"var_accountID", "1"}, {"enabled", ""}, {"disabled", "G722:5"}});
  EXPECT_EQ(slot("5") + " " + slot("0"), "0/1 1/3");
  std::string many;
  for (int i = 0; i < 5000; ++i) many += "x:18,";
  run<AccountCodecServlet>("write", {{"var_accountID", "1"}, {"disabled", many}});
  EXPECT_EQ(slot("18"), "0/0");
  EXPECT_TRUE(run<AccountCodecServlet>("write", {{"var_accountID", "6"}, {"disabled", "PCMU:0"}}).untouched());
  EXPECT_EQ(slot("0"), "1/3");
}

TEST_F(MediaTest, RingChoices) {
  std::filesystem::remove_all(file("/phone/resource/sysdata"));
  std::filesystem::remove_all(file("/data/userdata"));
  for (const char* ring : {"b.wav", "a.WAV", "skip.mp3"})
    write(std::string("/phone/resource/sysdata/sound/") + ring, "");
  write("/data/userdata/sound/b.wav", "");
  const auto column = [](TMPL_loop* loop, const char* name) {
    RecordingResponse page;
    page.renderTemplate("x", TMPL_add_loop(nullptr, "rows", loop));
    return page.column("rows", name);
  };
  EXPECT_EQ(column(GetRingToneLoop("Config:b.wav", RING_CONTACT, true), "selValue"),
            "Auto|Resource:a.WAV|Resource:b.wav|Config:b.wav");
  EXPECT_EQ(column(GetRingToneLoop("Config:b.wav", RING_CONTACT, true), "selected"), "||selected|selected");
  EXPECT_EQ(column(GetRingToneLoop("/x/y:z/a.WAV", RING_PREFERENCE, false), "selected"), "selected||");
  EXPECT_EQ(column(GetRingToneLoop("Common", RING_ACCOUNT, false), "selected"), "selected|||");
  for (const auto& [number, selected] : std::map<std::string, const char*>{
           {"0", "||"}, {"1", "selected||"}, {"3", "|selected|selected"}, {"4", "||"}, {"x", "||"}}) {
    EXPECT_EQ(column(GetRingToneLoop(number.c_str(), RING_ALERT_INFO, false), "selected"), selected) << number;
  }
  write("/data/userdata/wallpaper/z.BMP", "");
  EXPECT_EQ(column(GetWallpaperLoop("Config:z.BMP"), "selValue"), "Default:Default.jpg|Config:z.BMP");
  EXPECT_EQ(column(GetWallpaperLoop("Config:z.BMP"), "selected"), "|selected");
  EXPECT_EQ(GetWallpaperLoop(nullptr), nullptr);
  EXPECT_EQ(column(GetPhotoLoop(), "selValue"), "Default:default_contact_image.png");
}

TEST_F(ForwardTest, PhoneMode) {
  setConfig("NoAnswerForwardDelayTime", "3");
  const RecordingResponse page = run<FeaturesForwardServlet>("load");
  EXPECT_EQ(page.variable("ForwardMode") + page.variable("NoAnswerForwardDelayTime"), "03");
  EXPECT_EQ(page.loops.at("delayTimeLoop").size(), 21u);
  EXPECT_EQ(page.loops.at("delayTimeLoop")[3].at("selName") + page.loops.at("delayTimeLoop")[3].at("selected"), "181");
  EXPECT_EQ(page.variable("FWDIndex") + page.variable("FWDNoAccount"), "(absent)(absent)");
  EXPECT_EQ(page.column("AccountLoop", "selName"), "1000");
  EXPECT_EQ(
      saved<FeaturesForwardServlet>(
          "features-forward", {{"ForwardMode", "0"}, {"DndMode", "0"}, {"BusyForwardTarget", "1"}, {"DndStatus", "1"}}),
      (Messages{"broadcast 0x10007 1 0", "broadcast 0x10007 30 0"}));
  EXPECT_EQ(saved<FeaturesForwardServlet>("features-forward", {{"ForwardMode", "0"}, {"BusyForwardTarget", "1"}}),
            Messages{});
  EXPECT_EQ(
      saved<FeaturesForwardServlet>("features-forward", {{"DNDEmergencySwitch", "1"}, {"BusyForwardTarget", "2"}}),
      Messages{});
  EXPECT_EQ(config("DNDEmergencySwitch") + config("BusyForwardTarget"), "11");
}

TEST_F(ForwardTest, CustomModeKeepsAnAccountsOwnSettings) {
  for (const int account : {0, 2}) setConfig("AccountEnable", account, "1");
  write("/config/user/user.ini", "[Account2]\nTimeout=5\nAF_Target=<7>\n[DNDAccount0]\nDND=1\n");
  const RecordingResponse page =
      run<FeaturesForwardServlet>("load", {{"ForwardMode", "1"}, {"DndMode", "1"}, {"fwd", "2"}});
  EXPECT_EQ(
      page.variable("AlwaysForwardTarget") + page.variable("NoAnswerForwardDelayTime") + page.variable("FWDIndex"),
      "&lt;7&gt;52");
  EXPECT_EQ(page.variable("DndStatus") + page.variable("DNDIndex") + page.variable("ForwardMode"), "101");
  EXPECT_EQ(page.loops.at("delayTimeLoop")[5].at("selected"), "1");
  EXPECT_EQ(page.column("AccountLoop", "selValue"), "0|2");
  EXPECT_EQ(run<FeaturesForwardServlet>("load", {{"ForwardMode", "1"}}).variable("FWDIndex"), "(absent)");
  announced();
  const RecordingResponse answer = run<FeaturesForwardServlet>("write", {{"ForwardMode", "1"},
                                                                         {"DndMode", "0"},
                                                                         {"ForwardAccount", "2"},
                                                                         {"AlwaysForwardTarget", "8"},
                                                                         {"AlwaysForwardSwitch", "1"}});
  EXPECT_EQ(answer.redirects, Messages{"/servlet?p=features-forward&q=load&fwd=2"});
  EXPECT_EQ(announced(), Messages{"broadcast 0x10007 1 0"});
  EXPECT_EQ(run<FeaturesForwardServlet>("load", {{"fwd", "2"}}).variable("AlwaysForwardTarget"), "8");
  EXPECT_EQ(config("AlwaysForwardTarget"), "");
}

TEST_F(ForwardTest, AccountsThatAreNoneAreRefused) {
  const std::string before = content("/config/user/user.ini");
  for (const char* account : {"x", "0]", "0\n[x", "../0", "123456789", "-1", "6", " 0"}) {
    const RecordingResponse answer = run<FeaturesForwardServlet>(
        "write",
        {{"ForwardMode", "1"}, {"ForwardAccount", account}, {"AlwaysForwardTarget", "8"}, {"DNDEmergencySwitch", "1"}});
    EXPECT_EQ(answer.variable("noticeLabel"), "setTimeout$features-forward$Error:There is no such account!") << account;
    const RecordingResponse dnd = run<FeaturesForwardServlet>("write", {{"DndMode", "1"}, {"DNDAccount", account}});
    EXPECT_TRUE(dnd.redirects.empty()) << account;
  }
  EXPECT_EQ(content("/config/user/user.ini"), before);
  EXPECT_EQ(config("ForwardMode") + config("DNDEmergencySwitch"), "00");
  setConfig("AccountEnable", 0, "0");
  const RecordingResponse page =
      run<FeaturesForwardServlet>("load", {{"ForwardMode", "1"}, {"DndMode", "1"}, {"fwd", "2"}});
  EXPECT_EQ(page.variable("FWDNoAccount") + page.variable("FWDIndex") + page.variable("DNDNoAccount") +
                page.variable("DNDIndex"),
            "true-1true-1");
}

TEST_F(SecurityTest, ListsTheAccountsThatMayBeManaged) {
  for (const auto& [user, names] :
       std::map<std::string, const char*>{{"admin", "admin|var|user"}, {"var", "var|user"}, {"user", "user"}}) {
    session.attributes["user"] = user;
    EXPECT_EQ(run<SecurityServlet>("load").column("userTypeLoop", "typeName"), names) << user;
  }
  session.attributes["user"] = "admin";
  setConfig("AdvancedVarEnabled", "0");
  write("/config/data/htpasswd", "admin:x\n:y\nnone\nvar:z\nextra:q\n");
  const RecordingResponse page = run<SecurityServlet>("load");
  EXPECT_EQ(page.column("userTypeLoop", "typeValue"), "admin|");
  EXPECT_EQ(page.column("userTypeLoop", "selected"), "selected|");
  std::filesystem::remove(file("/config/data/htpasswd"));
  EXPECT_TRUE(run<SecurityServlet>("load").untouched());
  EXPECT_EQ(log.back(), "4 no Fount Files");
  session.attributes.clear();
  EXPECT_EQ(run<SecurityServlet>("load").body, "Please login before the operator!");
}

TEST_F(SecurityTest, PasswordsChangeByRank) {
  const auto change = [this](const char* user, const char* mode, const char* old, const char* fresh) {
    session.attributes["user"] = user;
    return run<SecurityServlet>("write", {{"mode", mode}, {"editOldPassword", old}, {"editNewPassword", fresh}})
        .variable("noticeLabel");
  };
  const std::string done = "setTimeout$Password$You have changed the password!";
  const std::string denied = "setTimeout$security$Error:You don't have enough jurisdiction!";
  const std::string before = content("/config/data/htpasswd");
  EXPECT_EQ(change("var", "admin", "var", "x"), denied);
  EXPECT_EQ(change("user", "var", "user", "x"), denied);
  EXPECT_EQ(change("admin", "root", "admin", "x"), denied);
  EXPECT_EQ(change("user", "user", "wrong", "x"), "setTimeout$security$Error:The password is error!");
  // Sessions that an Action URI logged in hold a login name, which has its identity's rights at the most.
  setConfig("UserNameUser", "joe");
  setConfig("UserNameAdmin", "boss");
  EXPECT_EQ(change("joe", "admin", "", "x"), denied);
  EXPECT_EQ(change("joe", "var", "", "x"), denied);
  EXPECT_EQ(change("joe", "user", "", "x"), "setTimeout$security$Error:The password is error!");
  EXPECT_EQ(change("boss", "admin", "", "x"), denied);
  EXPECT_EQ(change("nobody", "user", "", "x"), denied);
  setConfig("UserNameUser", "user");
  setConfig("UserNameAdmin", "admin");
  EXPECT_EQ(content("/config/data/htpasswd"), before);
  EXPECT_EQ(change("admin", "user", "", "long new password"), done);
  EXPECT_EQ(change("var", "var", "var", "v2"), done);
  EXPECT_EQ(change("var", "var", "v2", "v2"), done);
  filePassword file(kPasswordFile);
  EXPECT_TRUE(file.IsRightUserPassword("user", "long new password"));
  EXPECT_TRUE(file.IsRightUserPassword("var", "v2"));
  EXPECT_TRUE(file.IsRightUserPassword("admin", "admin"));
  setState(R"({"talking":true})");
  EXPECT_EQ(change("admin", "user", "", "y"), "setTimeout$notice$Talking, Please wait...");
  for (const std::string& line : log) EXPECT_EQ(line.find("long new"), std::string::npos) << line;
  setState(R"({"talking":false})");
  EXPECT_TRUE(run<SecurityServlet>("write", {{"mode", "user"}}).untouched());
  EXPECT_EQ(log.back(), "4 SecurityServlet::writeConfig para error");
}

}  // namespace
