// The account pages.
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <set>

#include "servlet/account/account_codec_list.h"
#include "tests/support/page_test.h"

namespace {

using AccountPages = PageTest;

TEST_F(AccountPages, ShowTheAccountThatIsAskedFor) {
  setConfig("AccountMissCallLog@1=0&AccountAutoAnswerSwitch@1=1&AccountVoiceMailNumber@1=500");
  const RecordingResponse basic = load("account-basic", "acc=1");
  EXPECT_EQ(basic.variable("AccountMissCallLog AccountAutoAnswerSwitch"), "0|1");
  EXPECT_TRUE(basic.column("ringTypeloop", "selValue").starts_with("Common|Resource:"));
  EXPECT_EQ(basic.column("accountLoop", "selected"), "0|1|0|0|0|0");
  EXPECT_EQ(load("account-adv", "acc=1").variable("MessageVoiceNumber"), "500");
}

TEST_F(AccountPages, AccountsThatAreNoneAreRefused) {
  // What each page logs without an account and with one that is none, and what it answers.
  const std::tuple<std::string, std::string, std::string, std::string, std::string> rows[] = {
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
    EXPECT_EQ(log.back(), "4 " + missing);
    for (const std::string account : {"6", "-1", "1e9", "", "../../x", "0/../1", "99999999999", " 1", "1\n"}) {
      log.clear();
      RecordingResponse answer =
          run(page, action, "server1=x&disabled=PCMU:0&var_accountID=" + account + "&acc=" + account);
      EXPECT_EQ(std::exchange(answer.body, ""), text) << page << ' ' << account;
      EXPECT_TRUE(answer.untouched()) << page << ' ' << account;
      EXPECT_EQ(log, Messages{"4 " + wrong}) << account;
    }
  }
  EXPECT_TRUE(everythingStored() == before);
  for (const std::string account : {"acc=1e9", "acc=", "acc=../../x", "acc=0/../1"}) {
    for (const auto& [page, name] : Values{{"account-basic", "Basic"}, {"account-register", "Register"}}) {
      EXPECT_TRUE(load(page, account).untouched()) << account;
      EXPECT_EQ(log.back(), "4 Account" + name + "Servlet::loadConfig(). accountID is null");
    }
    EXPECT_TRUE(run("account-register-lync", "askstatus", account).untouched()) << account;
  }
  EXPECT_EQ(load("account-register", "acc=-1").variable("port1"), "5060");
  EXPECT_TRUE(run("account-register", "askstatus").untouched());
  EXPECT_EQ(log.back(), "4 AccountRegisterServlet::askStatus() para error");
}

class CodecTest : public PageTest {
 protected:
  CodecTest() {
    using Codec = std::tuple<const char*, const char*, const char*>;
    const std::map<int, Codec> codecs = {
        {0, {"PCMU", "1", "2"}}, {1, {"PCMA", "1", "1"}}, {5, {"G722", "0", "7"}}, {7, {"iLBC_13_3", "1", "2"}}};
    for (int slot = 0; slot < 19; ++slot) {
      const auto& [type, on, priority] = codecs.contains(slot) ? codecs.at(slot) : Codec{"", "0", "0"};
      const std::string key = "AccountAudio" + std::to_string(slot);
      setConfig(key + "Type@1=" + type + "&" + key + "Switch@1=" + on + "&" + key + "Priority@1=" + priority);
    }
  }
};

TEST_F(CodecTest, AreListedByPriority) {
  setConfig("ILBCEnable", "1");
  const RecordingResponse page = load("account-codec", "acc=1");
  EXPECT_EQ(columns(page, "enabledLoop", "selName selValue"), "PCMA|PCMU|iLBC_13_3, 1|0|7");
  EXPECT_EQ(page.column("disabledLoop", "selName"), "G722");
  setConfig("ILBCEnable", "0");
  EXPECT_EQ(load("account-codec", "acc=1").column("enabledLoop", "selName"), "PCMA|PCMU");
  EXPECT_TRUE(load("account-codec", "acc=-1").untouched());
  EXPECT_EQ(log.back(), "4 Get codec config data error!");
  EXPECT_FALSE(GetCodecConfigData(nullptr, 0));
  EXPECT_FALSE(SortAudioByPriority(nullptr));
}

TEST_F(CodecTest, EachSlotIsStoredOnce) {
  const int watcher = inotify_init1(IN_NONBLOCK);
  ASSERT_GE(inotify_add_watch(watcher, file("/config").c_str(), IN_MOVED_TO), 0);
  std::string lists = "var_accountID=1&disabled=PCMA:1,PCMU:0&enabled=";
  for (int i = 0; i < 1000; ++i) lists += "PCMU:0,G722:5,";
  save("account-codec", lists);
  EXPECT_EQ(config("AccountAudio0Switch@1 AccountAudio0Priority@1 AccountAudio5Priority@1 AccountAudio1Switch@1"),
            "1|1999|2000|0");
  alignas(inotify_event) std::array<char, 65536> events;
  EXPECT_LE(read(watcher, events.data(), events.size()), 8 * static_cast<ssize_t>(sizeof(inotify_event) + 16));
  close(watcher);
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

constexpr char kAccountFile[] = "/config/user/voip/sipAccount1.cfg";
constexpr char kServers[] =
    "server1 port1 expires1 RetryCounts1 AccountTransport server2 port2 expires2 AccountPassword AccountStatus "
    "var_accountID";

TEST_F(AccountPages, RegisterShowsTheAccountFile) {
  write(kAccountFile, "[sipserver1]\nserver=a<b\nport=5070\ntransport=1\n[sipserver2]\nexpires=60\ntransport=9\n");
  setConfig("AccountTransport@1=0&AccountSIPServerHost@1=unused&AccountPassword@1=secret");
  setState(R"({"registration":[0,3]})");
  const RecordingResponse page = load("account-register", "acc=1");
  EXPECT_EQ(page.variable(kServers), "a&lt;b|5070|3600|3|1||5060|60|(absent)|Register Failed|1");
  EXPECT_EQ(page.column("accountLoop", "selected"), "0|1|0|0|0|0");
  EXPECT_TRUE(page.variable("ShowLevel")
                  .starts_with("account-register=1&account-basic=1&account-codec=1&"
                               "account-adv=1$SwitchAccount=1&RegisterLineActive=1&"));
  EXPECT_EQ(messages(), Messages{"send app_hostapp 0x30006 1 0"});
}

TEST_F(AccountPages, RegisterFallsBackToTheConfiguredServer) {
  setConfig("AccountSIPServerHost@1=pbx.example&AccountSIPServerPort@1=5080&AccountExpire@1=120&AccountTransport@1=2");
  write(kAccountFile, "[sipserver1]\nRetryCounts=7\nexpires=60\ntransport=1\n");
  EXPECT_EQ(load("account-register", "acc=1").variable(kServers),
            "pbx.example|5080|120|7|2||5060|3600|(absent)|Disabled|1");
}

TEST_F(AccountPages, RegisterStoresKeysAndFile) {
  write(kAccountFile, "[sipserver1]\nserver=old\nport=1\n[other]\nkept=yes\n");
  setConfig("AccountPassword@1", "secret");
  expectSaves({{"account-register",
                "var_accountID=1&AccountLabel=New&AccountPassword=********&server1=a&server2=b&expires2=99&"
                "RetryCounts1=4&AccountTransport=2&AccountOutboundProxy=proxy",
                "broadcast 0x10007 3 1", "AccountLabel@1=New&AccountSIPServerHost@1=a&AccountPassword@1=secret"}});
  EXPECT_EQ(load("account-register", "acc=1").variable(kServers), "a|1|3600|4|2|b|5060|99|(absent)|Disabled|1");
  const std::string file = content(kAccountFile);
  for (const char* text : {"kept", "outboundProxy1", "proxy"}) EXPECT_NE(file.find(text), std::string::npos) << text;
  const std::size_t transport = file.find("transport", file.find("transport") + 1);
  EXPECT_EQ(file.find("transport", transport + 1), std::string::npos) << file;
  expectSaves(
      {{"account-register", "var_accountID=1&AccountPassword=new", "broadcast 0x10007 3 1", "AccountPassword@1=new"}});
}

TEST_F(AccountPages, RegistrationStatusForTheBrowser) {
  setState(R"({"registration":[2,2],"answers":{"app_hostapp 0x30006":-1}})");
  EXPECT_EQ(run("account-register", "askstatus", "acc=1").body, "0");
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(run("account-register", "askstatus", "acc=0").body, "-1");
  EXPECT_EQ(load("account-register", "acc=0").variable("AccountStatus"), "Unknown");
  setState(R"({"answers":{"app_hostapp 0x30006":123}})");
  EXPECT_EQ(run("account-register-lync", "askstatus", "acc=0").body, "12");
  EXPECT_TRUE(load("account-register-lync", "acc=0").untouched());
  EXPECT_TRUE(save("account-register-lync", "var_accountID=0").untouched());
}

}  // namespace
