// The status page.
#include "tests/support/page_test.h"

namespace {

using StatusPages = PageTest;

TEST_F(StatusPages, ShowsTheRowsOfTheAddressMode) {
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

TEST_F(StatusPages, ListsAccounts) {
  setState(R"({"phoneType":22,"registration":[2,0,1]})");
  setConfig("AccountUserName@1", "<1001>");
  EXPECT_EQ(columns(load("status"), "AccountLoop", "row enabled number host status"),
            "1|2|3, 1|0|0, 1000|&lt;1001&gt;|, sip.example.com|0.0.0.0|0.0.0.0, Registered|Disabled|Registering");
}

TEST_F(StatusPages, ListsExpansionModules) {
  const std::string version(200, 'v');
  // The modules; their number, names, indexes and firmware.
  const Values rows = {
      {"", "0: , , "},
      {R"({"type":1},{"type":1})", "2: XMOD2|XMOD2, 1|2, |"},
      {R"({"type":1},{"type":0})", "2: XMOD2, 1, "},
      {R"({"type":0},{"type":2},{"type":0})", "3: XMOD1|EHS|XMOD1, 1||3, ||"},
      {R"({"type":2},{"type":1})", "2: EHS, , "},
      {R"({"type":5})", "1: XMOD3, 1, "},
      {R"({"type":77,"firmware":")" + version + "\"}", "1: EXP, 1, " + version.substr(0, 127)},
  };
  for (const auto& [modules, shown] : rows) {
    setState("{\"expansionModules\":[" + modules + "]}");
    const RecordingResponse page = load("status");
    EXPECT_EQ(page.variable("extNum") + ": " + columns(page, "extLoop", "extName index firmware"), shown) << modules;
  }
}

}  // namespace
