// The pages through the contract: what they show, store and announce.
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
    if (page == "login" || page == "status" || page == "account-register-lync") continue;
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

TEST_F(PageTest, AcdShowsItsKeysAndLevels) {
  setConfig("ACDAutoAvailableTime", "<b>");
  const RecordingResponse page = load("features-acd");
  EXPECT_EQ(page.contentType, "text/html");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/features-acd.htm"});
  EXPECT_EQ(page.variable("EnableACDAutoAvailable ACDAutoAvailableTime Identity"), "0|&lt;b&gt;|admin");
  EXPECT_EQ(page.variable("ShowLevel"),
            "features-acd=1&features-forward=2&features-general=1&features-audio=2&features-intercom=2&"
            "features-transfer=1&features-callpickup=1&features-remote=0&features-phonelock=1&features-sms=2&"
            "features-actionurl=0&features-bluetooth=2$FeaturesACDAutoAvailable=1&FeaturesACDAutoAvailableTimer=1");
}

TEST_F(PageTest, AcdAnnouncesAChangeOnce) {
  const char both[] = "EnableACDAutoAvailable=1&ACDAutoAvailableTime=90";
  expectSaves({{"features-acd", both, "post app_hostapp 0x10007 39 0", both},
               {"features-acd", both, "", both},
               {"features-acd"},
               {"features-acd", "ACDAutoAvailableTime=91", "post app_hostapp 0x10007 39 0"}});
  save("features-acd", both);
  EXPECT_EQ(messages(), (Messages{"send app_hostapp 0x30007 0 1", "post app_hostapp 0x10007 39 0"}));
}

TEST_F(PageTest, NetworkIsShownAgainAfterASaveAndNeverItsPin) {
  setConfig("NetworkPppoePin", "top secret");
  const RecordingResponse page =
      save("network",
           "ipv4type=2&ipv6type=1&NetworkWanStaticIp=192.0.2.1&NetworkWanType=9&NetworkPppoePin=no PPPoE&reboot=TRUE");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/network.htm"});
  EXPECT_TRUE(page.redirects.empty());
  EXPECT_EQ(page.variable("NetworkWanStaticIp NetworkWanType NetworkIPv6WANType"), "192.0.2.1|2|1");
  for (const auto& [name, value] : page.variables) EXPECT_EQ(value.find("secret"), std::string::npos) << name;
  EXPECT_EQ(config("NetworkPppoePin VlanDhcpSwitch"), "top secret|1");
  EXPECT_EQ(announced(), "");
}

TEST_F(PageTest, PppoeSwitchesVlansOffAndKeepsAMaskedPin) {
  setConfig("NetworkPppoePin=old&VlanWanSwitch=1&VlanPcSwitch=1&VlanDhcpSwitch=1");
  for (const auto& [pin, stored] : Values{{"********", "old"}, {"*********", "*********"}}) {
    save("network", "ipv4type=1&NetworkPppoePin=" + pin);
    EXPECT_EQ(config("VlanWanSwitch VlanPcSwitch VlanDhcpSwitch NetworkPppoePin"), "0|0|0|" + stored);
  }
  log.clear();
  save("network", "NetworkPppoeUser=u");
  EXPECT_EQ(log, (Messages{"4 Parameter is null", "4 Parameter is null"}));
}

TEST_F(PageTest, PcPort) {
  const RecordingResponse page = save("network-pcport", "NetworkLanRouterIP=10.1.1.1&type=0&NetworkPCPortSwitch=0");
  EXPECT_EQ(page.variable("NetworkLanRouterIP NetworkLanType NetworkPCPortSwitch ShowLevel"),
            "10.1.1.1|0|0|network-pcport=1&network-basic=1&network-advanced=0$");
  EXPECT_EQ(announced(), "");
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

constexpr char kAccountFile[] = "/config/user/voip/sipAccount1.cfg";
constexpr char kServers[] =
    "server1 port1 expires1 RetryCounts1 AccountTransport server2 port2 expires2 AccountPassword AccountStatus "
    "var_accountID";

TEST_F(PageTest, RegisterShowsTheAccountFile) {
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

TEST_F(PageTest, RegisterFallsBackToTheConfiguredServer) {
  setConfig("AccountSIPServerHost@1=pbx.example&AccountSIPServerPort@1=5080&AccountExpire@1=120&AccountTransport@1=2");
  write(kAccountFile, "[sipserver1]\nRetryCounts=7\nexpires=60\ntransport=1\n");
  EXPECT_EQ(load("account-register", "acc=1").variable(kServers),
            "pbx.example|5080|120|7|2||5060|3600|(absent)|Disabled|1");
}

TEST_F(PageTest, RegisterStoresKeysAndFile) {
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

TEST_F(PageTest, RegistrationStatusForTheBrowser) {
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

TEST_F(PageTest, StatusShowsTheRowsOfTheAddressMode) {
  setState(R"({"mac":"02005e001234","network":{"localIPv4":"192.0.2.10","localIPv6":"2001:db8::2","prefixIPv6":"64",
               "gatewayIPv6":"2001:db8::1","cableConnected":false,"lanIP":"10.0.0.1"}})");
  setConfig("NetworkLanEnableDHCP=0&NetworkLanType=0&PhoneFirmware=" + std::string(40, 'f'));
  const Values rows = {
      {"Mode=0&NetworkWanType=2", "IPv4|Static IP|Stoped|192.0.2.10|(absent)|(absent)|(absent)"},
      {"Mode=1&NetworkWanType=1", "IPv6|(absent)|(absent)|(absent)|DHCP|2001:db8::2/64|2001:db8::1/64"},
      {"Mode=2&NetworkWanType=1", "IPv4 & IPv6|PPPoE|Stoped|192.0.2.10|DHCP|2001:db8::2/64|2001:db8::1/64"},
      {"Mode=0&NetworkWanType=7", "IPv4|(absent)|Stoped|192.0.2.10|(absent)|(absent)|(absent)"},
      {"Mode=3&NetworkWanType=1", "(absent)|(absent)|(absent)|(absent)|(absent)|(absent)|(absent)"}};
  for (const auto& [modes, shown] : rows) {
    setConfig("NetworkIPAddress" + modes);
    const RecordingResponse page = load("status");
    EXPECT_EQ(page.variable("NetworkIPAddressMode wanPortType DHCPstatus wanIPAddress NetworkIPv6WANType "
                            "NetworkIPv6WanIP NetworkIPv6WanGateway"),
              shown);
    EXPECT_EQ(page.variable("MACAddress linkStatus deviceType firmware"),
              "02005e001234|UnConnected|Router|" + std::string(31, 'f'));
  }
  EXPECT_EQ(load("status").variable("ShowLevel"),
            "StatusVersion=2&StatusNetwork=2&StatusAccountStatus=2&StatusIPv4=2&StatusIPv6=2&StatusNetworkCommon=2&"
            "StatusExttable=2");
}

TEST_F(PageTest, StatusListsAccounts) {
  setState(R"({"phoneType":22,"registration":[2,0,1]})");
  setConfig("AccountUserName@1", "<1001>");
  const RecordingResponse page = load("status");
  for (const auto& [name, values] : Values{{"row", "1|2|3"},
                                           {"enabled", "1|0|0"},
                                           {"number", "1000|&lt;1001&gt;|"},
                                           {"host", "sip.example.com|0.0.0.0|0.0.0.0"},
                                           {"status", "Registered|Disabled|Registering"}}) {
    EXPECT_EQ(page.column("AccountLoop", name), values);
  }
}

TEST_F(PageTest, StatusListsExpansionModules) {
  const std::string version(200, 'v');
  const struct {
    std::string modules;
    std::string count, names, indexes, firmware;
  } rows[] = {
      {"", "0", "", "", ""},
      {R"({"type":1},{"type":1})", "2", "XMOD2|XMOD2", "1|2", "|"},
      {R"({"type":1},{"type":0})", "2", "XMOD2", "1", ""},
      {R"({"type":0},{"type":2},{"type":0})", "3", "XMOD1|EHS|XMOD1", "1||3", "||"},
      {R"({"type":2},{"type":1})", "2", "EHS", "", ""},
      {R"({"type":5})", "1", "XMOD3", "1", ""},
      {R"({"type":77,"firmware":")" + version + "\"}", "1", "EXP", "1", version.substr(0, 127)},
  };
  for (const auto& [modules, count, names, indexes, firmware] : rows) {
    setState("{\"expansionModules\":[" + modules + "]}");
    const RecordingResponse page = load("status");
    EXPECT_EQ(page.variable("extNum"), count) << modules;
    EXPECT_EQ(page.column("extLoop", "extName"), names) << modules;
    EXPECT_EQ(page.column("extLoop", "index"), indexes) << modules;
    EXPECT_EQ(page.column("extLoop", "firmware"), firmware) << modules;
  }
}

}  // namespace
