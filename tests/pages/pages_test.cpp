// The pages through the contract: what they show, store and announce.
#include "servlet/account_register_lync_servlet.h"
#include "servlet/account_register_servlet.h"
#include "servlet/features_acd_servlet.h"
#include "servlet/network_pcport_servlet.h"
#include "servlet/network_servlet.h"
#include "servlet/status_servlet.h"
#include "tests/support/page_test.h"

namespace {

const std::string kTalkingQuestion = "send app_hostapp 0x30007 0 1";

TEST_F(PageTest, UnknownActions) {
  for (const char* action : {"Load", "", "write "}) {
    EXPECT_EQ(run<StatusServlet>(action).status, 404) << action;
    EXPECT_EQ(run<NetworkServlet>(action).status, 404) << action;
    EXPECT_EQ(run<NetworkPCPortServlet>(action).status, 404) << action;
    EXPECT_EQ(run<AccountRegisterServlet>(action, {{"acc", "0"}}).status, 404) << action;
    EXPECT_EQ(run<AccountRegisterLyncServlet>(action, {{"acc", "0"}}).status, 404) << action;
    EXPECT_TRUE(run<FeaturesACDServlet>(action).untouched()) << action;
  }
  StatusServlet status;
  FeaturesACDServlet acd;
  EXPECT_EQ(serve(status, FakeRequest()).status, 404);
  EXPECT_TRUE(serve(acd, FakeRequest()).untouched());
}

TEST_F(PageTest, NothingIsSavedDuringACall) {
  setState(R"({"talking":true})");
  const std::multimap<std::string, std::string> fields = {
      {"EnableACDAutoAvailable", "9"}, {"ipv4type", "9"},      {"reboot", "true"},
      {"NetworkLanRouterIP", "9"},     {"var_accountID", "0"}, {"AccountLabel", "9"}};
  for (const RecordingResponse& answer :
       {run<FeaturesACDServlet>("write", fields), run<NetworkServlet>("write", fields),
        run<NetworkPCPortServlet>("write", fields), run<AccountRegisterServlet>("write", fields)}) {
    EXPECT_EQ(answer.variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...");
    EXPECT_TRUE(answer.redirects.empty());
  }
  EXPECT_EQ(announced(), Messages{});
  EXPECT_EQ(config("EnableACDAutoAvailable") + config("NetworkWanType") + config("AccountLabel", 0), "00Reception");
}

TEST_F(PageTest, AcdShowsItsKeysAndLevels) {
  setConfig("ACDAutoAvailableTime", "<b>");
  const RecordingResponse page = run<FeaturesACDServlet>("load");
  EXPECT_EQ(page.contentType, "text/html");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/features-acd.htm"});
  EXPECT_EQ(page.names, (Messages{"EnableACDAutoAvailable", "ACDAutoAvailableTime", "ShowLevel", "Identity",
                                  "devseries", "devtypeInfo"}));
  EXPECT_EQ(page.variable("ACDAutoAvailableTime"), "&lt;b&gt;");
  EXPECT_EQ(page.variable("Identity"), "admin");
  EXPECT_EQ(page.variable("ShowLevel"),
            "features-acd=1&features-forward=2&features-general=1&features-audio=2&features-intercom=2&"
            "features-transfer=1&features-callpickup=1&features-remote=0&features-phonelock=1&features-sms=2&"
            "features-actionurl=0&features-bluetooth=2$FeaturesACDAutoAvailable=1&FeaturesACDAutoAvailableTimer=1");
}

TEST_F(PageTest, AcdAnnouncesAChangeOnce) {
  const std::multimap<std::string, std::string> both = {{"EnableACDAutoAvailable", "1"},
                                                        {"ACDAutoAvailableTime", "90"}};
  EXPECT_EQ(run<FeaturesACDServlet>("write", both).redirects, Messages{"/servlet?p=features-acd&q=load"});
  EXPECT_EQ(messages(), (Messages{kTalkingQuestion, "post app_hostapp 0x10007 39 0"}));
  EXPECT_EQ(config("EnableACDAutoAvailable") + config("ACDAutoAvailableTime"), "190");
  run<FeaturesACDServlet>("write", both);
  run<FeaturesACDServlet>("write");
  EXPECT_EQ(announced(), Messages{});
  run<FeaturesACDServlet>("write", {{"ACDAutoAvailableTime", "91"}});
  EXPECT_EQ(announced(), Messages{"post app_hostapp 0x10007 39 0"});
}

TEST_F(PageTest, NetworkNeverShowsThePin) {
  setConfig("NetworkPppoePin", "top secret");
  const RecordingResponse page = run<NetworkServlet>("load");
  EXPECT_EQ(page.names, (Messages{"NetworkWanType", "NetworkWanStaticIp", "NetworkWanStaticMask",
                                  "NetworkWanStaticGateWay", "NetworkWanStaticPriDns", "NetworkWanStaticSecDns",
                                  "NetworkIPAddressMode", "NetworkIPv6WANType", "NetworkIPv6WanIP", "NetworkIPv6Prefix",
                                  "NetworkIPv6WanGateway", "NetworkIPv6WanPrimaryDNS", "NetworkIPv6WanSecondaryDNS",
                                  "NetworkPppoeUser", "ShowLevel", "Identity", "devseries", "devtypeInfo"}));
  for (const auto& [name, value] : page.variables) EXPECT_EQ(value.find("secret"), std::string::npos) << name;
}

TEST_F(PageTest, NetworkIsShownAgainAfterASave) {
  const RecordingResponse page = run<NetworkServlet>("write", {{"ipv4type", "2"},
                                                               {"ipv6type", "1"},
                                                               {"NetworkWanStaticIp", "192.0.2.1"},
                                                               {"NetworkWanType", "9"},
                                                               {"NetworkPppoePin", "no PPPoE"},
                                                               {"reboot", "TRUE"}});
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/network.htm"});
  EXPECT_TRUE(page.redirects.empty());
  EXPECT_EQ(page.variable("NetworkWanStaticIp"), "192.0.2.1");
  EXPECT_EQ(page.variable("NetworkWanType") + page.variable("NetworkIPv6WANType"), "21");
  EXPECT_EQ(config("NetworkPppoePin") + config("VlanDhcpSwitch"), "1");
  EXPECT_EQ(announced(), Messages{});
}

TEST_F(PageTest, PppoeSwitchesVlansOffAndKeepsAMaskedPin) {
  setConfig("NetworkPppoePin", "old");
  for (const char* key : {"VlanWanSwitch", "VlanPcSwitch", "VlanDhcpSwitch"}) setConfig(key, "1");
  run<NetworkServlet>("write", {{"ipv4type", "1"}});
  EXPECT_EQ(config("VlanWanSwitch") + config("VlanPcSwitch") + config("VlanDhcpSwitch"), "000");
  run<NetworkServlet>("write", {{"ipv4type", "1"}, {"NetworkPppoePin", "********"}});
  EXPECT_EQ(config("NetworkPppoePin"), "old");
  run<NetworkServlet>("write", {{"ipv4type", "1"}, {"NetworkPppoePin", "*********"}});
  EXPECT_EQ(config("NetworkPppoePin"), "*********");
  log.clear();
  run<NetworkServlet>("write", {{"NetworkPppoeUser", "u"}});
  EXPECT_EQ(log, (Messages{"4 Parameter is null", "4 Parameter is null"}));
}

TEST_F(PageTest, NetworkPagesAnnounceOnTheWayToAReboot) {
  const RecordingResponse network = run<NetworkServlet>("write", {{"reboot", "true"}, {"ipv4type", "0"}});
  EXPECT_EQ(network.variable("noticeLabel"), "setInterval$network$Rebooting , please wait ...");
  EXPECT_EQ(announced(), Messages{"broadcast 0x10007 9 0"});
  const RecordingResponse port = run<NetworkPCPortServlet>("write", {{"reboot", "true"}});
  EXPECT_EQ(port.variable("noticeLabel"), "setInterval$network-pcport$Rebooting , please wait ...");
  EXPECT_EQ(announced(), Messages{"broadcast 0x10007 9 0"});
}

TEST_F(PageTest, PcPort) {
  const RecordingResponse page = run<NetworkPCPortServlet>(
      "write", {{"NetworkLanRouterIP", "10.1.1.1"}, {"type", "0"}, {"NetworkPCPortSwitch", "0"}});
  EXPECT_EQ(page.names,
            (Messages{"NetworkLanType", "NetworkLanRouterIP", "NetworkLanSubnetMask", "NetworkLanEnableDHCP",
                      "NetworkLanDHCPStartIP", "NetworkLanDHCPEndIP", "NetworkWanType", "NetworkPCPortSwitch",
                      "ShowLevel", "Identity", "devseries", "devtypeInfo"}));
  EXPECT_EQ(page.variable("NetworkLanRouterIP"), "10.1.1.1");
  EXPECT_EQ(page.variable("NetworkLanType") + page.variable("NetworkPCPortSwitch"), "00");
  EXPECT_EQ(page.variable("ShowLevel"), "network-pcport=1&network-basic=1&network-advanced=0$");
  EXPECT_EQ(announced(), Messages{});
}

constexpr char kAccountFile[] = "/config/user/voip/sipAccount1.cfg";

TEST_F(PageTest, RegisterShowsTheAccountFile) {
  write(kAccountFile, "[sipserver1]\nserver=a<b\nport=5070\ntransport=1\n[sipserver2]\nexpires=60\ntransport=9\n");
  setConfig("AccountTransport", 1, "0");
  setConfig("AccountSIPServerHost", 1, "unused");
  setConfig("AccountPassword", 1, "secret");
  setState(R"({"registration":[0,3]})");
  const RecordingResponse page = run<AccountRegisterServlet>("load", {{"acc", "1"}});
  EXPECT_EQ(page.variable("server1") + " " + page.variable("port1") + " " + page.variable("expires1") + " " +
                page.variable("RetryCounts1") + " " + page.variable("AccountTransport"),
            "a&lt;b 5070 3600 3 1");
  EXPECT_EQ(page.variable("server2") + " " + page.variable("port2") + " " + page.variable("expires2"), " 5060 60");
  EXPECT_EQ(page.variable("AccountStatus"), "Register Failed");
  EXPECT_EQ(page.variable("var_accountID"), "1");
  EXPECT_EQ(page.column("accountLoop", "selected"), "0|1|0|0|0|0");
  EXPECT_EQ(page.variable("AccountPassword"), "(absent)");
  EXPECT_TRUE(page.variable("ShowLevel")
                  .starts_with("account-register=1&account-basic=1&account-codec=1&"
                               "account-adv=1$SwitchAccount=1&RegisterLineActive=1&"));
  EXPECT_EQ(messages(), Messages{"send app_hostapp 0x30006 1 0"});
}

TEST_F(PageTest, RegisterFallsBackToTheConfiguredServer) {
  setConfig("AccountSIPServerHost", 1, "pbx.example");
  setConfig("AccountSIPServerPort", 1, "5080");
  setConfig("AccountExpire", 1, "120");
  setConfig("AccountTransport", 1, "2");
  write(kAccountFile, "[sipserver1]\nRetryCounts=7\nexpires=60\ntransport=1\n");
  const RecordingResponse page = run<AccountRegisterServlet>("load", {{"acc", "1"}});
  EXPECT_EQ(page.variable("server1") + ":" + page.variable("port1") + " " + page.variable("expires1") + " " +
                page.variable("AccountTransport") + " " + page.variable("RetryCounts1"),
            "pbx.example:5080 120 2 7");
  EXPECT_EQ(page.variable("server2"), "");
}

TEST_F(PageTest, RegisterStoresKeysAndFile) {
  write(kAccountFile, "[sipserver1]\nserver=old\nport=1\n[other]\nkept=yes\n");
  setConfig("AccountPassword", 1, "secret");
  const RecordingResponse answer = run<AccountRegisterServlet>("write", {{"var_accountID", "1"},
                                                                         {"AccountLabel", "New"},
                                                                         {"AccountPassword", "********"},
                                                                         {"server1", "a"},
                                                                         {"server2", "b"},
                                                                         {"expires2", "99"},
                                                                         {"RetryCounts1", "4"},
                                                                         {"AccountTransport", "2"},
                                                                         {"AccountOutboundProxy", "proxy"}});
  EXPECT_EQ(answer.redirects, Messages{"/servlet?p=account-register&q=load&acc=1"});
  EXPECT_EQ(announced(), Messages{"broadcast 0x10007 3 1"});
  EXPECT_EQ(config("AccountLabel", 1) + config("AccountSIPServerHost", 1) + config("AccountPassword", 1), "Newasecret");
  const RecordingResponse page = run<AccountRegisterServlet>("load", {{"acc", "1"}});
  EXPECT_EQ(page.variable("server1") + page.variable("port1") + page.variable("RetryCounts1"), "a14");
  EXPECT_EQ(page.variable("server2") + page.variable("expires2"), "b99");
  const std::string file = content(kAccountFile);
  for (const char* text : {"kept", "outboundProxy1", "proxy"}) EXPECT_NE(file.find(text), std::string::npos) << text;
  std::size_t transports = 0;
  for (std::size_t at = 0; (at = file.find("transport", at)) != std::string::npos; ++at) ++transports;
  EXPECT_EQ(transports, 2u) << file;
  run<AccountRegisterServlet>("write", {{"var_accountID", "1"}, {"AccountPassword", "new"}});
  EXPECT_EQ(config("AccountPassword", 1), "new");
}

TEST_F(PageTest, RegisterRefusesAccountsThatAreNone) {
  const auto tree = [this] {
    std::string names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(file("/"))) names += entry.path().string();
    return names;
  };
  const std::string before = tree();
  for (const char* account : {"6", "-1", "1e9", "", "../../x", "0/../1", "99999999999", " 1", "1\n"}) {
    log.clear();
    EXPECT_TRUE(run<AccountRegisterServlet>("write", {{"var_accountID", account}, {"server1", "x"}}).untouched());
    EXPECT_EQ(log, Messages{"4  AccountRegisterServlet::writeConfig() accountID is invail"}) << account;
  }
  for (const char* account : {"1e9", "", "../../x", "0/../1"}) {
    EXPECT_TRUE(run<AccountRegisterServlet>("load", {{"acc", account}}).untouched()) << account;
    EXPECT_EQ(log.back(), "4 AccountRegisterServlet::loadConfig(). accountID is null");
    EXPECT_TRUE(run<AccountRegisterLyncServlet>("askstatus", {{"acc", account}}).untouched()) << account;
  }
  EXPECT_EQ(run<AccountRegisterServlet>("load", {{"acc", "-1"}}).variable("port1"), "5060");
  log.clear();
  EXPECT_TRUE(run<AccountRegisterServlet>("write").untouched());
  EXPECT_TRUE(run<AccountRegisterServlet>("load").untouched());
  EXPECT_TRUE(run<AccountRegisterServlet>("askstatus").untouched());
  EXPECT_EQ(log, (Messages{"4  AccountRegisterServlet::writeConfig() accountID is NULL",
                           "4 AccountRegisterServlet::loadConfig(). accountID is null",
                           "4 AccountRegisterServlet::askStatus() para error"}));
  EXPECT_EQ(tree(), before);
}

TEST_F(PageTest, RegistrationStatusForTheBrowser) {
  setState(R"({"registration":[2,2],"answers":{"app_hostapp 0x30006":-1}})");
  EXPECT_EQ(run<AccountRegisterServlet>("askstatus", {{"acc", "1"}}).body, "0");
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(run<AccountRegisterServlet>("askstatus", {{"acc", "0"}}).body, "-1");
  EXPECT_EQ(run<AccountRegisterServlet>("load", {{"acc", "0"}}).variable("AccountStatus"), "Unknown");
  setState(R"({"answers":{"app_hostapp 0x30006":123}})");
  EXPECT_EQ(run<AccountRegisterLyncServlet>("askstatus", {{"acc", "0"}}).body, "12");
  EXPECT_TRUE(run<AccountRegisterLyncServlet>("load", {{"acc", "0"}}).untouched());
  EXPECT_TRUE(run<AccountRegisterLyncServlet>("write", {{"var_accountID", "0"}}).untouched());
}

TEST_F(PageTest, StatusShowsTheRowsOfTheAddressMode) {
  setState(R"({"mac":"02005e001234","network":{"localIPv4":"192.0.2.10","localIPv6":"2001:db8::2","prefixIPv6":"64",
               "gatewayIPv6":"2001:db8::1","cableConnected":false,"lanIP":"10.0.0.1"}})");
  setConfig("NetworkIPAddressMode", "2");
  setConfig("NetworkWanType", "1");
  setConfig("NetworkLanEnableDHCP", "0");
  setConfig("NetworkLanType", "0");
  setConfig("PhoneFirmware", std::string(40, 'f'));
  const RecordingResponse both = run<StatusServlet>("load");
  EXPECT_EQ(both.variable("NetworkIPAddressMode"), "IPv4 & IPv6");
  EXPECT_EQ(both.variable("wanPortType") + both.variable("DHCPstatus") + both.variable("wanIPAddress"),
            "PPPoEStoped192.0.2.10");
  EXPECT_EQ(both.variable("NetworkIPv6WANType") + " " + both.variable("NetworkIPv6WanIP") + " " +
                both.variable("NetworkIPv6WanGateway"),
            "DHCP 2001:db8::2/64 2001:db8::1/64");
  EXPECT_EQ(both.variable("MACAddress") + both.variable("linkStatus") + both.variable("deviceType"),
            "02005e001234UnConnectedRouter");
  EXPECT_EQ(both.variable("firmware"), std::string(31, 'f'));
  EXPECT_EQ(both.variable("ShowLevel"),
            "StatusVersion=2&StatusNetwork=2&StatusAccountStatus=2&StatusIPv4=2&StatusIPv6=2&StatusNetworkCommon=2&"
            "StatusExttable=2");
  setConfig("NetworkIPAddressMode", "1");
  const RecordingResponse six = run<StatusServlet>("load");
  EXPECT_EQ(six.variable("NetworkIPAddressMode"), "IPv6");
  for (const char* name : {"wanPortType", "DHCPstatus", "wanIPAddress", "subnetMask"}) {
    EXPECT_EQ(six.variable(name), "(absent)") << name;
  }
  setConfig("NetworkIPAddressMode", "0");
  setConfig("NetworkWanType", "7");
  const RecordingResponse four = run<StatusServlet>("load");
  EXPECT_EQ(four.variable("NetworkIPv6WanIP") + four.variable("wanPortType"), "(absent)(absent)");
  setConfig("NetworkIPAddressMode", "3");
  EXPECT_EQ(run<StatusServlet>("load").variable("NetworkIPAddressMode"), "(absent)");
}

TEST_F(PageTest, StatusListsAccounts) {
  setState(R"({"phoneType":22,"registration":[2,0,1]})");
  setConfig("AccountUserName", 1, "<1001>");
  const RecordingResponse page = run<StatusServlet>("load");
  EXPECT_EQ(page.column("AccountLoop", "row"), "1|2|3");
  EXPECT_EQ(page.column("AccountLoop", "enabled"), "1|0|0");
  EXPECT_EQ(page.column("AccountLoop", "number"), "1000|&lt;1001&gt;|");
  EXPECT_EQ(page.column("AccountLoop", "host"), "sip.example.com|0.0.0.0|0.0.0.0");
  EXPECT_EQ(page.column("AccountLoop", "status"), "Registered|Disabled|Registering");
}

TEST_F(PageTest, StatusListsExpansionModules) {
  struct Row {
    const char* modules;
    const char *count, *names, *indexes;
  };
  const Row rows[] = {
      {"", "0", "", ""},
      {R"({"type":1},{"type":1})", "2", "XMOD2|XMOD2", "1|2"},
      {R"({"type":1},{"type":0})", "2", "XMOD2", "1"},
      {R"({"type":0},{"type":2},{"type":0})", "3", "XMOD1|EHS|XMOD1", "1||3"},
      {R"({"type":2},{"type":1})", "2", "EHS", ""},
      {R"({"type":5})", "1", "XMOD3", "1"},
      {R"({"type":77})", "1", "EXP", "1"},
  };
  for (const Row& row : rows) {
    setState("{\"expansionModules\":[" + std::string(row.modules) + "]}");
    const RecordingResponse page = run<StatusServlet>("load");
    EXPECT_EQ(page.variable("extNum"), row.count) << row.modules;
    EXPECT_EQ(page.column("extLoop", "extName"), row.names) << row.modules;
    EXPECT_EQ(page.column("extLoop", "index"), row.indexes) << row.modules;
  }
  setState(R"({"expansionModules":[{"type":0,"hardware":"1.0","firmware":")" + std::string(200, 'v') + R"("}]})");
  const RecordingResponse page = run<StatusServlet>("load");
  EXPECT_EQ(page.column("extLoop", "hardware"), "1.0");
  EXPECT_EQ(page.column("extLoop", "firmware"), std::string(127, 'v'));
}

}  // namespace
