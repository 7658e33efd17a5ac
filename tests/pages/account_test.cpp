// The account pages, forwarding, and who may change which password.
#include <set>

#include "framework/file_password.h"
#include "framework/media_lists.h"
#include "servlet/account/account_codec_list.h"
#include "tests/support/page_test.h"

namespace {

using AccountPages = PageTest;
using ForwardTest = PageTest;
using SecurityTest = PageTest;
using MediaTest = PageTest;

TEST_F(AccountPages, SavesAreAnnouncedForTheAccount) {
  expectSaves(
      {{"account-basic", "var_accountID=1&AccountMissCallLog=0", "broadcast 0x10007 3 1"},
       {"account-basic", "var_accountID=1&AccountAutoAnswerSwitch=1&AccountRing=Resource:Ring2.wav",
        "post app_hostapp 0x10007 13 0; broadcast 0x10007 3 1",
        "AccountRing@1=Resource:Ring2.wav&AccountAutoAnswerSwitch@0=0"},
       {"account-adv", "var_accountID=1&MessageVoiceNumber1=500&MessageVoiceNumber0=x",
        "broadcast 0x10007 2 0; broadcast 0x10007 3 1", "AccountVoiceMailNumber@1=500&AccountVoiceMailNumber@0="}});
  const RecordingResponse basic = load("account-basic", "acc=1");
  EXPECT_EQ(basic.variable("AccountMissCallLog AccountAutoAnswerSwitch"), "0|1");
  EXPECT_TRUE(basic.column("ringTypeloop", "selValue").starts_with("Common|Resource:"));
  EXPECT_EQ(basic.column("accountLoop", "selected"), "0|1|0|0|0|0");
  EXPECT_EQ(load("account-adv", "acc=1").variable("MessageVoiceNumber"), "500");
}

TEST_F(AccountPages, AccountsThatAreNoneAreRefused) {
  // What each page logs without an account and with one that is none, and what it answers.
  const struct {
    const char *page, *action, *missing, *wrong, *answer;
  } rows[] = {
      {"account-basic", "write", "AccountBasicServlet::writeConfig() accountID is NULL",
       "AccountBasicServlet::writeConfig() accountID is invail", ""},
      {"account-adv", "load", "AccountAdvServlet::loadConfig(). accountID is null",
       "AccountAdvServlet::loadConfig(). accountID is illegal", "no such account!"},
      {"account-adv", "write", " AccountAdvServlet::writeConfig() accountID is NULL",
       "AccountAdvServlet::loadConfig(). accountID is illegal", "no such account!"},
      {"account-codec", "write", "AccountCodecServlet::writeConfig() accountID is null.",
       "AccountCodecServlet::loadConfig(). accountID is illegal", ""},
      {"account-register", "write", " AccountRegisterServlet::writeConfig() accountID is NULL",
       " AccountRegisterServlet::writeConfig() accountID is invail", ""},
  };
  const std::string before = everythingStored();
  for (const auto& [page, action, missing, wrong, text] : rows) {
    EXPECT_TRUE(run(page, action).untouched()) << page;
    EXPECT_EQ(log.back(), "4 " + std::string(missing));
    for (const char* account : {"6", "-1", "1e9", "", "../../x", "0/../1", "99999999999", " 1", "1\n"}) {
      log.clear();
      RecordingResponse answer =
          run(page, action, "server1=x&disabled=PCMU:0&var_accountID=" + std::string(account) + "&acc=" + account);
      EXPECT_EQ(answer.body, text) << page << ' ' << account;
      answer.body.clear();
      EXPECT_TRUE(answer.untouched()) << page << ' ' << account;
      EXPECT_EQ(log, Messages{"4 " + std::string(wrong)}) << account;
    }
  }
  EXPECT_TRUE(everythingStored() == before);
  for (const char* account : {"1e9", "", "../../x", "0/../1"}) {
    for (const auto& [page, name] :
         Values{{"account-basic", "AccountBasicServlet"}, {"account-register", "AccountRegisterServlet"}}) {
      EXPECT_TRUE(load(page, std::string("acc=") + account).untouched()) << account;
      EXPECT_EQ(log.back(), "4 " + name + "::loadConfig(). accountID is null");
    }
    EXPECT_TRUE(run("account-register-lync", "askstatus", std::string("acc=") + account).untouched()) << account;
  }
  EXPECT_EQ(load("account-register", "acc=-1").variable("port1"), "5060");
  EXPECT_TRUE(run("account-register", "askstatus").untouched());
  EXPECT_EQ(log.back(), "4 AccountRegisterServlet::askStatus() para error");
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
  static void set(int slot, const char* type, const char* on, const char* priority) {
    const std::string key = "AccountAudio" + std::to_string(slot);
    setConfig(key + "Type@1", type);
    setConfig(key + "Switch@1", on);
    setConfig(key + "Priority@1", priority);
  }
};

TEST_F(CodecTest, AreListedByPriority) {
  setConfig("ILBCEnable", "1");
  const RecordingResponse page = load("account-codec", "acc=1");
  EXPECT_EQ(page.column("enabledLoop", "selName"), "PCMA|PCMU|iLBC_13_3");
  EXPECT_EQ(page.column("enabledLoop", "selValue"), "1|0|7");
  EXPECT_EQ(page.column("disabledLoop", "selName"), "G722");
  setConfig("ILBCEnable", "0");
  EXPECT_EQ(load("account-codec", "acc=1").column("enabledLoop", "selName"), "PCMA|PCMU");
  EXPECT_TRUE(load("account-codec", "acc=-1").untouched());
  EXPECT_EQ(log.back(), "4 Get codec config data error!");
  EXPECT_FALSE(GetCodecConfigData(nullptr, 0));
  EXPECT_FALSE(SortAudioByPriority(nullptr));
}

TEST_F(CodecTest, AreStoredInTheOrderPosted) {
  std::string many;
  for (int i = 0; i < 5000; ++i) many += "x:18,";
  const char stored[] =
      "AccountAudio5Switch@1 AccountAudio5Priority@1 AccountAudio0Switch@1 AccountAudio0Priority@1 "
      "AccountAudio1Switch@1 AccountAudio1Priority@1 AccountAudio7Switch@1 AccountAudio18Switch@1 "
      "AccountAudio99Switch@1";
  const std::pair<std::string, const char*> rows[] = {
      {"enabled=G722:5,,PCMU:0&disabled=PCMA:1,x:99,x:-1,:3,PCMU,y:", "1|1|1|3|0|1|1|0|"},
      {"enabled=&disabled=G722:5", "0|1|1|3|0|1|1|0|"},
      {"enabled=x:18", "0|1|1|3|0|1|1|1|"},
      {"disabled=" + many, "0|1|1|3|0|1|1|0|"}};
  for (const auto& [lists, values] : rows) {
    expectSaves({{"account-codec", "var_accountID=1&" + lists, "broadcast 0x10007 3 1"}});
    EXPECT_EQ(config(stored), values) << lists.substr(0, 80);
  }
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
  const struct {
    const char* value;
    RING_OPERATOR_TYPE kind;
    bool withSource;
    const char *values, *selected;
  } rows[] = {
      {"Config:b.wav", RING_CONTACT, true, "Auto|Resource:a.WAV|Resource:b.wav|Config:b.wav", "||selected|selected"},
      {"/x/y:z/a.WAV", RING_PREFERENCE, false, "a.WAV|b.wav|b.wav", "selected||"},
      {"Common", RING_ACCOUNT, false, "Common|a.WAV|b.wav|b.wav", "selected|||"},
      {"0", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "||"},
      {"1", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "selected||"},
      {"3", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "|selected|selected"},
      {"4", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "||"},
      {"x", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "||"},
  };
  for (const auto& [value, kind, withSource, values, selected] : rows) {
    EXPECT_EQ(column(GetRingToneLoop(value, kind, withSource), "selValue"), values) << value;
    EXPECT_EQ(column(GetRingToneLoop(value, kind, withSource), "selected"), selected) << value;
  }
  write("/data/userdata/wallpaper/z.BMP", "");
  EXPECT_EQ(column(GetWallpaperLoop("Config:z.BMP"), "selValue"), "Default:Default.jpg|Config:z.BMP");
  EXPECT_EQ(column(GetWallpaperLoop("Config:z.BMP"), "selected"), "|selected");
  EXPECT_EQ(GetWallpaperLoop(nullptr), nullptr);
  EXPECT_EQ(column(GetPhotoLoop(), "selValue"), "Default:default_contact_image.png");
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
    const RecordingResponse answer =
        save("features-forward", "ForwardMode=1&AlwaysForwardTarget=8&DNDEmergencySwitch=1&ForwardAccount=" + account);
    EXPECT_EQ(answer.variable("noticeLabel"), "setTimeout$features-forward$Error:There is no such account!") << account;
    EXPECT_TRUE(save("features-forward", "DndMode=1&DNDAccount=" + account).redirects.empty()) << account;
  }
  EXPECT_TRUE(everythingStored() == before);
  setConfig("AccountEnable@0", "0");
  EXPECT_EQ(
      load("features-forward", "ForwardMode=1&DndMode=1&fwd=2").variable("FWDNoAccount FWDIndex DNDNoAccount DNDIndex"),
      "true|-1|true|-1");
}

TEST_F(SecurityTest, ListsTheAccountsThatMayBeManaged) {
  for (const auto& [user, names] : Values{{"admin", "admin|var|user"}, {"var", "var|user"}, {"user", "user"}}) {
    session.attributes["user"] = user;
    EXPECT_EQ(load("security").column("userTypeLoop", "typeName"), names) << user;
  }
  session.attributes["user"] = "admin";
  setConfig("AdvancedVarEnabled", "0");
  write("/config/data/htpasswd", "admin:x\n:y\nnone\nvar:z\nextra:q\n");
  const RecordingResponse page = load("security");
  EXPECT_EQ(page.column("userTypeLoop", "typeValue"), "admin|");
  EXPECT_EQ(page.column("userTypeLoop", "selected"), "selected|");
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
  const struct {
    std::string user, mode, old, fresh, notice;
  } rows[] = {
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
