// The HTTP control: journal, state and configuration as JSON.
#include "platform/boot_environment.h"
#include "platform/device.h"
#include "platform/network.h"
#include "platform/os_services.h"
#include "tests/simulator/simulator_test.h"

namespace {

using ControlTest = PhoneTest;
using nlohmann::json;

// Sends each body of [[KEY, BODY], ...]; every one is to be refused with an error that begins with the key.
void expectRefused(const char* method, const char* path, const char* rows) {
  for (const json& row : json::parse(rows)) {
    const auto reply = control(method, path, row[1].dump());
    EXPECT_EQ(reply.status, 400) << row;
    const std::string error = json::parse(reply.body)["error"];
    EXPECT_TRUE(error.starts_with("\"" + row[0].get<std::string>() + "\" is ")) << error;
  }
}

TEST_F(ControlTest, JournalShowsEveryMessage) {
  MessageThread* phone = msgGetThreadByName("app_hostapp");
  const char text[] = "key=1&RIP=x\xff";
  msgPostMsgToThreadEx(phone, 0x30017, 1, -2, text, sizeof text);
  msgSendMsgToThreadTimeoutEx(phone, 0x30007, 0, 1, 3000, nullptr, 0);
  msgBroadpostThreadMsg(0x10007, 39, 5);
  osSleep(5000);
  osKill(12, 9);
  osSyslog(3, nullptr);
  osSyslog(6, "%s\n");
  const std::string last = R"({"seq":6,"kind":"system","call":"syslog","text":"6 %s\n"}]})";
  EXPECT_EQ(
      control("GET", "journal").body,
      R"({"entries":[{"seq":1,"kind":"post","thread":"app_hostapp","message":196631,"wParam":1,"lParam":-2,)"
      "\"data\":\"key=1&RIP=x\xef\xbf\xbd\",\"answer\":0},"
      R"({"seq":2,"kind":"send","thread":"app_hostapp","message":196615,"wParam":0,"lParam":1,"data":"","answer":1},)"
      R"({"seq":3,"kind":"broadcast","thread":"","message":65543,"wParam":39,"lParam":5,"data":"","answer":0},)"
      R"({"seq":4,"kind":"system","call":"sleep","text":"5000 ms"},)"
      R"({"seq":5,"kind":"system","call":"kill","text":"process 12, signal 9"},)" +
          last);
  EXPECT_EQ(control("GET", "journal", "", {{"since", "5"}}).body, R"({"entries":[)" + last);
  EXPECT_EQ(control("GET", "journal", "", {{"since", "99"}}).body, R"({"entries":[]})");
  EXPECT_EQ(control("DELETE", "journal").status, 200);
  osSleep(1);
  EXPECT_EQ(control("GET", "journal").body, R"({"entries":[{"seq":7,"kind":"system","call":"sleep","text":"1 ms"}]})");
}

TEST_F(ControlTest, JournalIsBounded) {
  const auto entries = [] { return json::parse(control("GET", "journal").body)["entries"]; };
  for (int i = 0; i < 10'100; ++i) osSleep(i);
  EXPECT_EQ(entries().size(), 10'000);
  EXPECT_EQ(entries()[0]["seq"], 101);
  const std::string large(5 << 20, 'x');
  for (int i = 0; i < 5; ++i) osSyslog(6, large.c_str());
  EXPECT_EQ(entries().size(), 3);
}

TEST_F(ControlTest, StateOfAFreshPhone) {
  EXPECT_EQ(
      control("GET", "state").body,
      R"({"phoneType":46,"hardwareVersion":"46.0.0.1","mac":"02005e000046","talking":false,)"
      R"("registration":[2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0],"network":{"cableConnected":true,)"
      R"("localIPv4":"192.0.2.46","netmaskIPv4":"255.255.255.0","gatewayIPv4":"192.0.2.1",)"
      R"("primaryDNSIPv4":"192.0.2.53","secondaryDNSIPv4":"192.0.2.54","localIPv6":"2001:db8::46",)"
      R"("prefixIPv6":"64","gatewayIPv6":"2001:db8::1","primaryDNSIPv6":"2001:db8::53",)"
      R"("secondaryDNSIPv6":"2001:db8::54","lanIP":"10.0.0.1"},"expansionModules":[],"bootEnvironment":{},)"
      R"("clockOffset":0,"rebootSeconds":0,"answers":{},)"
      R"("directory":{"available":true,"busy":false,"refusal":0},"blfList":[],"networkDirectories":["Sales","Support"],)"
      R"("networkDirectoryError":"","missingApplications":[],"bootEnvironmentLocked":false,"upgrading":false,"capturing":false})");
}

TEST_F(ControlTest, PatchMerges) {
  const auto reply = control("PATCH", "state",
                             R"({"phoneType":28,"mac":"","talking":true,"registration":[3,-1],"clockOffset":-100,
    "network":{"cableConnected":false,"localIPv4":"10.1.1.1"},"bootEnvironment":{"BOOTMODE":"safemode","x":"1"},
    "expansionModules":[{"type":5,"hardware":"h"}]})");
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(json::parse(reply.body), state());
  char text[64], shortText[8], mode[64];
  netGetLocalIPv4(text, sizeof text);
  netGetWanGatewayIPv4(shortText, sizeof shortText);
  userenv_get("BOOTMODE", mode, sizeof mode);
  EXPECT_EQ(std::string(text) + " " + shortText + " " + mode, "10.1.1.1 192.0.2 safemode");
  EXPECT_EQ(GetPhoneType(), 28);
  EXPECT_FALSE(netGetMACText(text, sizeof text) || netIsCableConnected());
  EXPECT_LT(osTime(), std::time(nullptr) - 90);
  const auto registration = [](int account) { return ask("app_hostapp", 0x30006, account); };
  EXPECT_EQ((std::vector{registration(0), registration(1), registration(2)}), (std::vector{3, -1, 6}));
  EXPECT_EQ((std::pair{ask("app_hostapp", 0x30007), ask("app_hostapp", 0x3000e)}), (std::pair{0, 0x21}));
  setState(R"({"registration":null,"talking":null,"network":{"localIPv4":null},"bootEnvironment":{"x":null},
    "expansionModules":null})");
  json expected = json::parse(reply.body);
  expected.merge_patch(json::parse(R"({"registration":[2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0],"talking":false,
    "network":{"localIPv4":"192.0.2.46"},"bootEnvironment":{"x":null},"expansionModules":[]})"));
  EXPECT_EQ(state(), expected);
}

TEST_F(ControlTest, WrongPatchesNameTheKeyAndChangeNothing) {
  const json before = state();
  expectRefused("PATCH", "state", R"([["talkin", {"talkin":true}], ["talking", {"phoneType":28, "talking":1}],
    ["phoneType", {"phoneType":"46"}], ["phoneType", {"phoneType":4294967296}], ["phoneType", {"phoneType":46.0}],
    ["clockOffset", {"clockOffset":18446744073709551615}], ["rebootSeconds", {"rebootSeconds":-1}],
    ["mac", {"mac":"02-00"}], ["hardwareVersion", {"hardwareVersion":"a\u0000"}], ["registration", {"registration":{}}],
    ["registration[1]", {"registration":[2,"x"]}], ["network.lanIp", {"network":{"lanIp":"x"}}],
    ["network.lanIP", {"network":{"lanIP":5}}], ["network", {"network":[]}], ["bootEnvironment.x", {"bootEnvironment":{"x":1}}],
    ["expansionModules[1].kind", {"expansionModules":[{"type":0},{"kind":0}]}],
    ["expansionModules[0].type", {"expansionModules":[{"type":null}]}], ["answers.nobody 0x1", {"answers":{"nobody 0x1":1}}],
    ["answers.app_hostapp 0x30007", {"answers":{"app_hostapp 0x30007":"1"}}], ["answers.smGui 0x01", {"answers":{"smGui 0x01":1}}],
    ["answers.app_hostapp 0x3001F", {"answers":{"app_hostapp 0x3001F":1}}]])");
  for (const char* body : {"[]", "{", ""}) EXPECT_EQ(control("PATCH", "state", body).status, 400) << body;
  EXPECT_EQ(simulator::setState(R"({"rebootSeconds":3601})"), "\"rebootSeconds\" is to be an integer from 0 to 3600");
  EXPECT_EQ(state(), before);
}

TEST_F(ControlTest, ConfigIsReadAndStored) {
  const auto get = [](const std::map<std::string, std::string>& query) {
    return control("GET", "config", "", query).body;
  };
  EXPECT_EQ(control("PUT", "config", R"({"global":{"K":"v","":"x"},"accounts":{"0":{"AccountLabel":" ü\n"}}})").body,
            R"({"stored":3})");
  EXPECT_EQ(get({{"key", "K"}}) + get({{"key", ""}}), R"({"value":"v"}{"value":"x"})");
  EXPECT_EQ(get({{"key", "AccountLabel"}, {"account", "0"}}), R"({"value":" ü\n"})");
  EXPECT_EQ(get({{"key", "AccountPort"}, {"account", "-1"}}), R"({"value":""})");
  EXPECT_EQ(control("GET", "journal").body, R"({"entries":[]})");
  expectRefused("PUT", "config",
                R"([["global.N", {"global":{"K":"new","N":1}}], ["global.K", {"global":{"K":"a\u0000b"}}],
    ["global", {"global":"K"}], ["accounts.0.K", {"accounts":{"0":{"K":null}}}], ["accounts.x", {"accounts":{"x":{}}}],
    ["Global", {"Global":{}}]])");
  for (const char* body : {"null", "{\"global\":{\"K\":\"\xff\"}}"})
    EXPECT_EQ(control("PUT", "config", body).status, 400);
  EXPECT_EQ(get({{"key", "K"}}), R"({"value":"v"})");
}

TEST_F(ControlTest, OtherRequestsAreRefused) {
  const std::pair<int, std::vector<const char*>> requests[] = {
      {200, {"GET ", "HEAD ", "GET simulator.css", "GET simulator.js"}},
      {400, {"GET config"}},
      {404, {"GET x", "GET state/"}},
      {405, {"PUT state", "POST journal", "PATCH config", "DELETE ", "GET reboot", "DELETE state"}}};
  for (const auto& [status, all] : requests) {
    for (const std::string request : all) {
      const std::size_t blank = request.find(' ');
      EXPECT_EQ(control(request.substr(0, blank), request.substr(blank + 1)).status, status) << request;
    }
  }
  EXPECT_EQ(control("GET", "").contentType, "text/html; charset=utf-8");
  EXPECT_EQ(control("GET", "config", "", {{"key", "K"}, {"account", "1x"}}).status, 400);
  for (const char* since : {"x", "-1", "", "1 ", "99999999999999999999"}) {
    EXPECT_EQ(control("GET", "journal", "", {{"since", since}}).status, 400) << since;
  }
}

}  // namespace
