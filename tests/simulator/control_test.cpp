// The HTTP control: journal, state and configuration as JSON.
#include "platform/boot_environment.h"
#include "platform/device.h"
#include "platform/network.h"
#include "platform/os_services.h"
#include "tests/simulator/simulator_test.h"

namespace {

using ControlTest = PhoneTest;
using nlohmann::json;

std::string journalSince(const std::string& since) {
  return control("GET", "journal", "", {{"since", since}}).body;
}

TEST_F(ControlTest, JournalShowsEveryMessage) {
  MessageThread* phone = msgGetThreadByName("app_hostapp");
  const char text[] = "key=1&RIP=x\xff";
  msgPostMsgToThreadEx(phone, 0x30017, 1, -2, text, sizeof text);
  msgSendMsgToThreadTimeoutEx(phone, 0x30007, 0, 1, 3000, nullptr, 0);
  msgBroadpostThreadMsg(0x10007, 39, 5);
  osSleep(5000);
  osKill(12, 9);
  osSyslog(6, "%s\n");
  osSyslog(3, nullptr);
  EXPECT_EQ(
      control("GET", "journal").body,
      R"({"entries":[{"seq":1,"kind":"post","thread":"app_hostapp","message":196631,"wParam":1,"lParam":-2,)"
      "\"data\":\"key=1&RIP=x\xef\xbf\xbd\",\"answer\":0},"
      R"({"seq":2,"kind":"send","thread":"app_hostapp","message":196615,"wParam":0,"lParam":1,"data":"","answer":1},)"
      R"({"seq":3,"kind":"broadcast","thread":"","message":65543,"wParam":39,"lParam":5,"data":"","answer":0},)"
      R"({"seq":4,"kind":"system","call":"sleep","text":"5000 ms"},)"
      R"({"seq":5,"kind":"system","call":"kill","text":"process 12, signal 9"},)"
      R"({"seq":6,"kind":"system","call":"syslog","text":"6 %s\n"}]})");
  EXPECT_EQ(journalSince("5"), R"({"entries":[{"seq":6,"kind":"system","call":"syslog","text":"6 %s\n"}]})");
  EXPECT_EQ(journalSince("99"), R"({"entries":[]})");
  EXPECT_EQ(control("DELETE", "journal").status, 200);
  osSleep(1);
  EXPECT_EQ(control("GET", "journal").body, R"({"entries":[{"seq":7,"kind":"system","call":"sleep","text":"1 ms"}]})");
}

TEST_F(ControlTest, JournalIsBounded) {
  for (int i = 0; i < 10'100; ++i) osSleep(i);
  const json entries = json::parse(control("GET", "journal").body)["entries"];
  EXPECT_EQ(entries.size(), 10'000);
  EXPECT_EQ(entries[0]["seq"], 101);
  const std::string large(5 << 20, 'x');
  for (int i = 0; i < 5; ++i) {
    msgPostMsgToThreadEx(msgGetThreadByName("smGui"), 1, 0, 0, large.data(), static_cast<int>(large.size()));
  }
  EXPECT_EQ(json::parse(control("GET", "journal").body)["entries"].size(), 3);
}

TEST_F(ControlTest, StateOfAFreshPhone) {
  EXPECT_EQ(control("GET", "state").body,
            R"({"phoneType":46,"hardwareVersion":"46.0.0.1","mac":"02005e000046","talking":false,)"
            R"("registration":[2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0],"network":{"cableConnected":true,)"
            R"("localIPv4":"192.0.2.46","netmaskIPv4":"255.255.255.0","gatewayIPv4":"192.0.2.1",)"
            R"("primaryDNSIPv4":"192.0.2.53","secondaryDNSIPv4":"192.0.2.54","localIPv6":"2001:db8::46",)"
            R"("prefixIPv6":"64","gatewayIPv6":"2001:db8::1","primaryDNSIPv6":"2001:db8::53",)"
            R"("secondaryDNSIPv6":"2001:db8::54","lanIP":"10.0.0.1"},"expansionModules":[],"bootEnvironment":{},)"
            R"("clockOffset":0,"rebootSeconds":0,"answers":{}})");
}

TEST_F(ControlTest, PatchMerges) {
  const auto reply = control("PATCH", "state",
                             R"({"phoneType":28,"mac":"","talking":true,"registration":[3,-1],"clockOffset":-100,
    "network":{"cableConnected":false,"localIPv4":"10.1.1.1"},"bootEnvironment":{"BOOTMODE":"safemode","x":"1"},
    "expansionModules":[{"type":5,"hardware":"h"}]})");
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(json::parse(reply.body), state());
  char text[64];
  netGetLocalIPv4(text, sizeof text);
  EXPECT_STREQ(text, "10.1.1.1");
  netGetWanGatewayIPv4(text, 8);
  EXPECT_STREQ(text, "192.0.2");
  userenv_get("BOOTMODE", text, sizeof text);
  EXPECT_STREQ(text, "safemode");
  EXPECT_EQ(GetPhoneType(), 28);
  EXPECT_FALSE(netGetMACText(text, sizeof text) || netIsCableConnected());
  EXPECT_LT(osTime(), std::time(nullptr) - 90);
  EXPECT_EQ(ask("app_hostapp", 0x30007), 0);
  EXPECT_EQ(ask("app_hostapp", 0x30006, 0) * 100 + ask("app_hostapp", 0x30006, 2), 306);
  EXPECT_EQ(ask("app_hostapp", 0x30006, 1), -1);
  EXPECT_EQ(ask("app_hostapp", 0x3000e), 0x21);

  control("PATCH", "state", R"({"registration":null,"talking":null,"network":{"localIPv4":null},
    "bootEnvironment":{"x":null},"expansionModules":null})");
  const json now = state();
  EXPECT_EQ(now["registration"][0], 2);
  EXPECT_EQ(now["talking"], false);
  EXPECT_EQ(now["network"]["localIPv4"], "192.0.2.46");
  EXPECT_EQ(now["network"]["cableConnected"], false);
  EXPECT_EQ(now["bootEnvironment"], json({{"BOOTMODE", "safemode"}}));
  EXPECT_EQ(now["expansionModules"], json::array());
}

TEST_F(ControlTest, WrongPatchesNameTheKeyAndChangeNothing) {
  const json before = state();
  const std::pair<const char*, const char*> patches[] = {
      {R"({"talkin":true})", "\"talkin\" is not known"},
      {R"({"phoneType":28,"talking":1})", "\"talking\" is to be true or false"},
      {R"({"phoneType":"46"})", "\"phoneType\" is to be an integer from -2147483648 to 2147483647"},
      {R"({"phoneType":4294967296})", "\"phoneType\" is to be an integer from -2147483648 to 2147483647"},
      {R"({"phoneType":46.0})", "\"phoneType\" is to be an integer from -2147483648 to 2147483647"},
      {R"({"clockOffset":18446744073709551615})", "\"clockOffset\" is to be an integer from -3162240000 to 3162240000"},
      {R"({"rebootSeconds":-1})", "\"rebootSeconds\" is to be an integer from 0 to 3600"},
      {R"({"mac":"02-00"})", "\"mac\" is to be 12 hexadecimal digits"},
      {R"({"hardwareVersion":"a\u0000"})", "\"hardwareVersion\" is to be a text without NUL"},
      {R"({"registration":[2,"x"]})", "\"registration[1]\" is to be an integer from -2147483648 to 2147483647"},
      {R"({"registration":{}})", "\"registration\" is to be a list of at most 16 integers"},
      {R"({"network":{"lanIp":"x"}})", "\"network.lanIp\" is not known"},
      {R"({"network":{"lanIP":5}})", "\"network.lanIP\" is to be a text without NUL"},
      {R"({"network":[]})", "\"network\" is to be an object"},
      {R"({"expansionModules":[{"type":0},{"kind":0}]})", "\"expansionModules[1].kind\" is not known"},
      {R"({"expansionModules":[{"type":"1"}]})",
       "\"expansionModules[0].type\" is to be an integer from 0 to 2147483647"},
      {R"({"bootEnvironment":{"x":1}})", "\"bootEnvironment.x\" is to be a text without NUL"},
      {R"({"answers":{"app_hostapp 0x30007":"1"}})",
       "\"answers.app_hostapp 0x30007\" is to be an integer from -2147483648 to 2147483647"},
      {R"({"answers":{"app_hostapp 0x3001F":1}})",
       "\"answers.app_hostapp 0x3001F\" is to be named like \"app_hostapp 0x30007\""},
      {R"({"answers":{"nobody 0x1":1}})", "\"answers.nobody 0x1\" is to be named like \"app_hostapp 0x30007\""},
      {R"({"answers":{"smGui 0x01":1}})", "\"answers.smGui 0x01\" is to be named like \"app_hostapp 0x30007\""},
      {"[]", "the state is to be an object"},
      {"{", "the body is not JSON"},
      {"", "the body is not JSON"},
  };
  for (const auto& [patch, error] : patches) {
    const auto reply = control("PATCH", "state", patch);
    EXPECT_EQ(reply.status, 400) << patch;
    EXPECT_EQ(json::parse(reply.body), json({{"error", error}})) << patch;
  }
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
  const std::pair<const char*, const char*> wrong[] = {
      {R"({"global":{"K":"new","N":1}})", "\"global.N\" is to be a text without NUL"},
      {R"({"global":{"K":"a\u0000b"}})", "\"global.K\" is to be a text without NUL"},
      {R"({"global":"K"})", "\"global\" is to be an object"},
      {R"({"accounts":{"0":{"K":null}}})", "\"accounts.0.K\" is to be a text without NUL"},
      {R"({"accounts":{"x":{}}})", "\"accounts.x\" is not the number of an account"},
      {R"({"Global":{}})", "\"Global\" is not known"},
      {"null", "the body is to be an object"},
      {"{\"global\":{\"K\":\"\xff\"}}", "the body is not JSON"},
  };
  for (const auto& [body, error] : wrong) {
    const auto reply = control("PUT", "config", body);
    EXPECT_EQ(reply.status, 400) << body;
    EXPECT_EQ(json::parse(reply.body), json({{"error", error}})) << body;
  }
  EXPECT_EQ(get({{"key", "K"}}), R"({"value":"v"})");
}

TEST_F(ControlTest, OtherRequestsAreRefused) {
  const std::tuple<const char*, const char*, int> requests[] = {
      {"GET", "", 200},       {"HEAD", "", 200},      {"GET", "simulator.css", 200}, {"GET", "simulator.js", 200},
      {"GET", "x", 404},      {"PUT", "state", 405},  {"POST", "journal", 405},      {"PATCH", "config", 405},
      {"DELETE", "", 405},    {"GET", "config", 400}, {"GET", "reboot", 405},        {"DELETE", "state", 405},
      {"GET", "state/", 404},
  };
  for (const auto& [method, path, status] : requests) {
    EXPECT_EQ(control(method, path).status, status) << method << ' ' << path;
  }
  EXPECT_EQ(control("GET", "").contentType, "text/html; charset=utf-8");
  EXPECT_EQ(control("GET", "config", "", {{"key", "K"}, {"account", "1x"}}).status, 400);
  for (const char* since : {"x", "-1", "", "1 ", "99999999999999999999"}) {
    EXPECT_EQ(control("GET", "journal", "", {{"since", since}}).status, 400) << since;
  }
}

}  // namespace
