// Commands and documents that other systems send, and the pages that say who may.
#include "servlet/access/action_uri.h"
#include "servlet/access/push_xml.h"
#include "servlet/access/trusted_clients.h"
#include "tests/support/page_test.h"

namespace {

class ActionUriTest : public PageTest {
 protected:
  ActionUriTest() { setConfig("AURILimitIP", "any"); }

  // Runs a command; what the phone's applications received, syslog lines aside.
  Messages command(const std::string& query, const std::string& fields = "") {
    messages();
    FakeRequest request;
    request.fields = fieldsOf(fields);
    response = RecordingResponse();
    result = proccessActionURI(&request, &response, getURIType(query), query);
    Messages received = messages();
    std::erase_if(received, [](const std::string& line) { return line.starts_with("system "); });
    return received;
  }
  bool push(const std::string& body, const char* address = "192.0.2.7") {
    FakeRequest request;
    request.body = body;
    request.address = address;
    return ProcessPushXml(&request, false);
  }

  RecordingResponse response;
  int result = -1;
};

TEST_F(ActionUriTest, TypesAreTakenFromTheStart) {
  const auto type = [](const std::string& query) { return std::string(getURIType(query)); };
  EXPECT_EQ(joinedValues("key=OK keyboard number=1 phonecfg forward= Server redirectcall server p=key ke", type),
            "key|key|number|phonecfg|forward|Server|redirectcall|||");
  EXPECT_EQ(getURIType(""), "");
}

TEST_F(ActionUriTest, CommandsReachThePhoneWithTheClientsAddress) {
  const std::string many = "&a=1&a=2&a=3&a=4&a=5&a=6&a=7&a=8&a=9";
  const std::pair<std::string, std::string> rows[] = {
      {"key=SPEAKER", "0x30017 0 0 [key=SPEAKER&RIP=192.0.2.7]"},
      {"key=IP:10.0.0.1:5060", "0x30017 0 0 [key=IP:10.0.0.1:5060&RIP=192.0.2.7]"},
      {"number=12&outgoing_uri=a@b", "0x30017 0 0 [number=12&outgoing_uri=a@b&RIP=192.0.2.7]"},
      {"redirectcall=5", "0x30020 0 0 [redirectcall=5&RIP=192.0.2.7]"},
      {"redirectcall&a=1&b&c=", "0x30020 0 0 [&a=1&c=&RIP=192.0.2.7]"},
      {"forward=1" + many + "&a=10", "0x30021 0 0 [forward=1" + many + "&RIP=192.0.2.7]"},
      {"redirectcall=1" + many + "&a=10", "0x30020 0 0 [redirectcall=1" + many + "&RIP=192.0.2.7]"},
      {"redirectcall=" + std::string(200, 'x') + "&a=1",
       "0x30020 0 0 [redirectcall=" + std::string(114, 'x') + "&a=1&RIP=192.0.2.7]"},
  };
  for (const auto& [query, message] : rows) {
    EXPECT_EQ(command(query), Messages{"post app_hostapp " + message}) << query;
    EXPECT_TRUE(result == 1 && response.untouched()) << query;
  }
  setConfig("ISUME", "1");  // keys by address stand for the client
  for (const auto& [query, sent] : Values{{"IP:10.0.0.1:5060", "IP:192.0.2.7:5060"}, {"OK:5060", "OK:5060"}}) {
    EXPECT_EQ(command("key=" + query), Messages{"post app_hostapp 0x30017 0 0 [key=" + sent + "&RIP=192.0.2.7]"});
  }
  EXPECT_EQ(command("nothing"), Messages{});
  EXPECT_EQ(response.status, 404);
}

TEST_F(ActionUriTest, ConfigurationIsSentAndForgotten) {
  setState(R"({"answers":{"app_hostapp 0x3001f":1}})");
  write("/tmp/phonecfg.ini", "[a]\nb=" + std::string(3000, 'c'));
  EXPECT_EQ(command("phonecfg=get&1=1&2=2&3=3&4=4&5=5&6=6&7=7&8=8&9=9"),
            Messages{"send app_hostapp 0x3001f 0 0 [phonecfg=get&1=1&2=2&3=3&4=4&5=5&6=6&7=7&8=8&RIP=192.0.2.7]"});
  EXPECT_EQ(response.body, "[a]\nb=" + std::string(3000, 'c'));
  EXPECT_EQ(response.contentType, "text/xml");
  EXPECT_EQ(response.headers.front().second, "attachment; filename=phonecfg.ini");
  EXPECT_FALSE(std::filesystem::exists(file("/tmp/phonecfg.ini")));
  command("phonecfg=get");
  EXPECT_EQ(result, 0);
  EXPECT_EQ(log.back(), "4 export phonecfg.ini End. failed to open file");
  setState(R"({"answers":{"app_hostapp 0x3001f":-1}})");
  command("phonecfg=get");
  EXPECT_TRUE(result == 1 && response.untouched());
}

TEST_F(ActionUriTest, ServerIsStored) {
  setConfig("AutoProvisionPassword", "old");
  const char keys[] = "AutoProvisionServerURL AutoProvisionUser AutoProvisionPassword";
  EXPECT_EQ(command("Server=x", "Server=http://a&UserName=u&Password=********"),
            Messages{"post app_hostapp 0x1000b 0 0"});
  EXPECT_EQ(config(keys), "http://a|u|old");
  command("Server=x", "Server=http://b&Password=new");
  EXPECT_EQ(config(keys), "http://b|u|old");
  EXPECT_EQ(command("Serverless"), Messages{});
  EXPECT_EQ(result, 0);
}

TEST_F(ActionUriTest, StrangersAreRefusedAndNoted) {
  const auto trusts = [](const std::string& trusted) {
    setConfig("AURILimitIP", trusted);
    return std::string(IsTrustIP("192.0.2.7") ? "yes" : "");
  };
  EXPECT_EQ(joinedValues("192.0.2.* 2.0.2.7 ANY x,,192.0.2.7 (,192.0.2.7", trusts), "yes|yes|yes|yes|yes");
  EXPECT_EQ(joinedValues("((1{255}){255}){255},192.0.2.7 1++++++++++++++++++++,192.0.2.7", trusts), "yes|yes");
  EXPECT_EQ(joinedValues("10.0.*.* anyone 19..0", trusts) + trusts(""), "||");
  setConfig("AURILimitIP", "(,x");
  log.clear();
  IsTrustIP("192.0.2.7");
  EXPECT_EQ(log, (Messages{"6 regexec error", "6 ip no match.", "4 ip is not trust."}));
  EXPECT_FALSE(IsTrustIP(nullptr));
  setConfig("ServerLogLevel", "3");
  messages();
  FakeRequest request;
  EXPECT_EQ(proccessActionURI(&request, &response, "key", "key=OK"), 0);
  EXPECT_EQ(response.status, 401);
  EXPECT_EQ(messages(), Messages{"system syslog 6 Action URI: IP(192.0.2.7) Action(Permission Denied !)"});
  setConfig("AURILimitIP", "any");
  proccessActionURI(&request, &response, "key", "key=%s%n");
  EXPECT_EQ(messages().front(), "system syslog 6 Action URI: IP(192.0.2.7) Action(key=%s%n)");
  setConfig("ServerLogLevel", "2");
  proccessActionURI(&request, &response, "key", "key=OK");
  EXPECT_EQ(messages().size(), 1u);
}

TEST_F(ActionUriTest, PushedDocuments) {
  setConfig("PushXMLServerIP", "192.0.2.1 , 192.0.2.7");
  messages();
  EXPECT_TRUE(push("xml=<a>%20&amp;</a>"));
  EXPECT_EQ(content("/tmp/XmlBrowserFile.xml"), "<a>%20&amp;</a>");
  EXPECT_EQ(std::filesystem::status(file("/tmp/XmlBrowserFile.xml")).permissions(), std::filesystem::perms(0644));
  EXPECT_EQ(messages(), Messages{"post app_hostapp 0x3001a 0 0"});
  const std::string large = "<a>" + std::string(3'000'000, 'x') + std::string(1, '\0') + "</a>";
  EXPECT_TRUE(push("xml=" + large));
  messages();
  for (const char* body : {"", "xml=", "<a/>", "XML=<a/>"}) EXPECT_FALSE(push(body)) << body;
  EXPECT_FALSE(push("xml=<a/>", "192.0.2.70"));
  EXPECT_EQ(log.back(), "4 pushXML() don't have remoteIP, or ip don't match, or xmlvalue is error.");
  EXPECT_EQ(content("/tmp/XmlBrowserFile.xml"), large);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(run("hidden", "pushXML", "editPushXML=<b/>").body, "success");
  EXPECT_EQ(content("/tmp/XmlBrowserFile.xml"), "<b/>");
  EXPECT_EQ(run("hidden", "pushXML").body, "failed");
  EXPECT_EQ(log.back(), "4 pushXML() get value error");
}

}  // namespace
