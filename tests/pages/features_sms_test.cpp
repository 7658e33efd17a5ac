// Text messages: what the SIP client and the list of messages get, and what nobody gets.
#include "tests/support/page_test.h"

namespace {

constexpr char kList[] = "/config/data/text_message_list.xml";
constexpr char kAnnounced[] = "broadcast 0x10007 24 0; system sleep 1000 ms";

class TextMessages : public PageTest {
 protected:
  TextMessages() {
    setConfig("AccountEnable@0=1&AccountUserName@0=1000&AccountDisplayName@0=Reception&AccountEnable@1=1");
    setState(R"({"registration":[2,5,2,4]})");
    announced();
  }
  RecordingResponse send(const std::string& fields) { return run("features-sms", "send", fields); }
  std::string notice(const std::string& fields) { return send(fields).variable("noticeLabel"); }
};

TEST_F(TextMessages, OnlyAccountsThatCanSendAreOffered) {
  setConfig("AccountEnable@2=1&AccountUserName@2=&AccountEnable@3=1&AccountUserName@3=1003&AccountUserName@1=<1001>");
  write("/config/user/voip/sipAccount1.cfg", "[sipserver2]\nserver=pbx\n");
  EXPECT_EQ(columns(load("features-sms"), "selectAccount", "selValue selName"),
            "0|1, 1000@sip.example.com|&lt;1001&gt;@pbx");
  setConfig("AccountEnable@0=0&AccountEnable@1=2");
  EXPECT_EQ(load("features-sms").column("selectAccount", "selValue"), "");
  EXPECT_TRUE(run("features-sms", "write").untouched());
}

TEST_F(TextMessages, IsListedAndHandedOver) {
  EXPECT_EQ(send("acc=0&editMsgTarget=bob@pbx&editMsgTxt=hi").redirects, Messages{"/servlet?p=features-sms&q=load"});
  EXPECT_EQ(announced(),
            std::string(kAnnounced) + "; post app_sipClient0 0x4000b 2 11 [hisip:bob@pbx]; broadcast 0x10007 24 1");
  EXPECT_NE(content(kList).find("\n\t<item from_name=\"Reception\" from_user_name=\"1000\" from_server=\"pbx\" "
                                "text=\"hi\" to_name=\"bob\" to_user_name=\"bob\" to_server=\"pbx\" status_type=\"2\" "
                                "group_type=\"3\" time=\"1"),
            std::string::npos)
      << content(kList);
  const std::string odd = "<b a='\"'>&#10;\r\n\t%s\xC3\xA4";
  setConfig("AccountDisplayName@0", std::string(126, 'x') + "\xC3\xA4");
  FakeRequest request{{"q", "send"}, {"acc", "0"}, {"editMsgTarget", "bob"}, {"editMsgTxt", odd}};
  serve(pageHandler("features-sms"), request);
  EXPECT_NE(announced().find("post app_sipClient0 0x4000b 21 5 [" + odd + "sip:@]"), std::string::npos);
  for (const std::string& part :
       {std::string("<item from_name=\"") + std::string(126, 'x') + "\"",
        std::string("from_server=\"sip.example.com\""),
        std::string("text=\"&lt;b a='&quot;'>&amp;#10;&#13;&#10;&#09;%s\xC3\xA4\" to_name=\"\"")})
    EXPECT_NE(content(kList).find(part), std::string::npos) << part << content(kList);
}

TEST_F(TextMessages, WhatIsTooLongIsRefusedAsItIs) {
  const std::string before = content(kList), label = "setTimeout$features-sms$Error:";
  const std::string target = "bob@" + std::string(252, 's');
  EXPECT_EQ(notice("acc=0&editMsgTxt=hi&editMsgTarget=" + target), label + "The recipient is too long!");
  EXPECT_EQ(notice("acc=0&editMsgTxt=hi&editMsgTarget=" + std::string(4096, 's')),
            label + "The recipient is too long!");
  for (const auto& [recipient, room] : {std::pair{std::string("bob@pbx"), 1012}, {target.substr(0, 255), 764}}) {
    const std::string fields = "acc=0&editMsgTarget=" + recipient + "&editMsgTxt=";
    const std::string text(static_cast<std::size_t>(room), 'x');
    EXPECT_EQ(notice(fields + text + "x"), label + "The message is too long!");
    EXPECT_EQ(content(kList), before);
    EXPECT_EQ(announced(), "");
    EXPECT_EQ(send(fields + text).redirects.size(), 1u);
    EXPECT_NE(announced().find("[" + text + "sip:" + recipient + "]"), std::string::npos);
    write(kList, before);
  }
  for (const char* fields :
       {"acc=0&editMsgTarget=bob@pbx&editMsgTxt=a\x01", "acc=0&editMsgTarget=bob@pbx\r\n&editMsgTxt=a"})
    EXPECT_EQ(notice(fields), label + "The message holds control characters!");
  EXPECT_EQ(content(kList) + announced(), before);
}

TEST_F(TextMessages, Failures) {
  const std::string before = content(kList);
  for (const char* account : {"", "acc=", "acc=6", "acc=-1", "acc=0x", "acc=../0"}) {
    EXPECT_TRUE(send(std::string(account) + "&editMsgTarget=bob@pbx&editMsgTxt=hi").untouched()) << account;
    EXPECT_EQ(log.back() + announced(), std::string("4 FeaturesSMSServlet::send() no account.") + kAnnounced);
  }
  EXPECT_EQ(content(kList), before);
  for (const char* broken : {"", "<root_message>", "<!-- -->"}) {
    write(kList, broken);
    EXPECT_TRUE(send("acc=0&editMsgTarget=bob@pbx&editMsgTxt=hi").untouched());
    EXPECT_EQ(log.back(), "4 FeaturesSMSServlet::send() error to get root element");
    EXPECT_EQ(content(kList) + announced(), std::string(broken) + kAnnounced);
  }
  write(kList, "<m/>");
  setState(R"({"answers":{"app_sipClient0 0x4000b":-1}})");
  EXPECT_EQ(notice("acc=0&editMsgTarget=bob@pbx&editMsgTxt=hi"),
            "setTimeout$features-sms$Error:The message was not sent!");
  EXPECT_EQ(log.back(), "4 Send_Message_Failed");
  EXPECT_NE(content(kList).find("text=\"hi\""), std::string::npos);
  setState(R"({"talking":true})");
  EXPECT_EQ(notice("acc=0&editMsgTarget=bob@pbx&editMsgTxt=hi"), "setTimeout$notice$Talking, Please wait...");
}

}  // namespace
