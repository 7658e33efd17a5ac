// The call history and the accounts of the network call log.
#include "tests/support/page_test.h"

namespace {

using CallPages = PageTest;

constexpr char kHistory[] = "/config/data/call_data.xml";
constexpr char kAccounts[] = "/config/data/broadsoft_calllog_list.xml";
constexpr char kHistoryPage[] = "contacts-callinfo";
constexpr char kAccountPage[] = "contacts-calllog";

TEST_F(CallPages, ShowsTheHistoryByType) {
  write("/config/data/contact_list.xml",
        R"(<root_contact><contact display_name="Ann" office_number="200"/></root_contact>)");
  write(kHistory,
        R"(<h><item type="1" local_sip_name="10" local_sip_server="pbx" remote_sip_name="200" remote_sip_server="pbx"/>
        text<note type="1"/><item type="9"/><item/>
        <item type="3x" local_sip_name="10" remote_sip_name="a&lt;b" born_tick="1372896000"/>
        <item type="1" remote_sip_name="201" born_tick="9223372036854775807"/>
        <item type="2" born_tick="67768036191000000"/><item type="4"/></h>)");
  write("/tmp/contact_update_mark.ini", "[update]\ntype=1\n");
  setConfig("LocalTimeDateFormatType=3&LocalTimeTimeFormatType=1");
  const RecordingResponse page = load(kHistoryPage);
  EXPECT_EQ(columns(page, "callloop", "index Name Number LocalIdentity"), "1|2, Ann|201, 200@pbx|201, 10@pbx|@");
  EXPECT_EQ(columns(page, "callloop", "First Sep Time"), "01|, /|, 00:00|");
  EXPECT_EQ(columns(page, "missloop", "index Name Number LocalIdentity"), "1, a<b, a<b, 10@");
  EXPECT_EQ(columns(page, "missloop", "First Second Third Sep Time"), "04, 07, 2013, /, 00:00");
  EXPECT_EQ(columns(page, "receiveloop", "Name Third"), ", 2147485547");
  EXPECT_EQ(columns(page, "forwardloop", "index"), "1");
  EXPECT_EQ(content("/tmp/contact_update_mark.ini"), "[update]\ntype=0\n");
  setConfig("CalllogShowNumEnable=1");
  EXPECT_EQ(load(kHistoryPage).column("callloop", "Name"), "200|201");
  setConfig("CalllogShowNumEnable=0");
  setState(R"({"directory":{"available":false}})");
  EXPECT_EQ(load(kHistoryPage).column("callloop", "Name"), "200|201");
}

TEST_F(CallPages, OffersTheAccountsThatAreRegistered) {
  setConfig("AccountUserName@2=1<2");
  setState(R"({"answers":{"app_hostapp 0x30006":3}})");
  messages();
  EXPECT_EQ(load(kHistoryPage).column("accountloop", "index"), "");
  EXPECT_EQ(messages().front(), "send app_hostapp 0x50004 0 0");
  for (const char* state : {"2", "5"}) {
    setState(R"({"answers":{"app_hostapp 0x30006":)" + std::string(state) + "}}");
    EXPECT_EQ(columns(load(kHistoryPage), "accountloop", "index value"),
              "0|1|2|3|4|5, 1000@sip.example.com|@0.0.0.0|1&lt;2@0.0.0.0|@0.0.0.0|@0.0.0.0|@0.0.0.0");
  }
}

TEST_F(CallPages, AFileWithoutARootShowsNoPage) {
  struct {
    const char *page, *file, *line;
  } rows[] = {{kHistoryPage, kHistory, "4 ContactsCallInfoServlet::init() error to get root element"},
              {kAccountPage, kAccounts, "4 load broadsoft_calllog_list.xml error!"}};
  for (const auto& [page, path, line] : rows) {
    for (const char* text : {"", "<a><item>", "no xml"}) {
      write(path, text);
      log.clear();
      EXPECT_TRUE(load(page).untouched()) << page << text;
      EXPECT_EQ(log.front(), line);
      EXPECT_EQ(content(path), text);
    }
  }
}

TEST_F(CallPages, DialsForTrustedClientsAlone) {
  struct {
    const char *trusted, *fields, *answer, *sent;
  } rows[] = {
      {"", "num=200&acc=0", "call failed", ""},
      {"any", "num=200&acc=0", "call success", "send app_hostapp 0xa0002 1100 0 [200]"},
      {"any", "num=2%s@pbx&acc=5", "call success", "send app_hostapp 0xa0002 1105 0 [2%s@pbx]"},
      {"any", "num=200", "call failed", ""},
      {"any", "acc=1", "call failed", ""},
      {"any", "num=1&acc=6", "call failed", ""},
      {"any", "num=1&acc=-2147483648", "call failed", ""},
  };
  for (const auto& [trusted, fields, answer, sent] : rows) {
    setConfig("AURILimitIP", trusted);
    announced();
    EXPECT_EQ(run(kHistoryPage, "call", fields).body, answer) << fields;
    EXPECT_EQ(announced(), sent) << fields;
  }
  EXPECT_EQ(run(kHistoryPage, "hangup").body, "hangup success");
  EXPECT_EQ(announced(), "post app_hostapp 0x30011 0 0");
}

constexpr char kTwoAccounts[] = R"(<l><!-- x --><item name="a" server="s" port="1" user_name="u" password="p"/>
<other/><item name="b" server="t" user_name="v"/></l>)";
constexpr char kFields[] = "&DisplayName=A&Server=<&Port=2&UserName=U&PassWord=";

TEST_F(CallPages, ShowsAnAccountOfTheCallLogWithoutItsPassword) {
  write(kAccounts, kTwoAccounts);
  for (const auto& [fields, shown] : {std::pair{"", "a|s|1|u|0|(absent)"},
                                      {"z=-3", "a|s|1|u|0|(absent)"},
                                      {"z=1", "(absent)|(absent)|(absent)|(absent)|1|(absent)"},
                                      {"z=2", "(absent)|(absent)|(absent)|(absent)|2|(absent)"}}) {
    const RecordingResponse page = load(kAccountPage, fields);
    EXPECT_EQ(page.variable("DisplayName Server Port UserName var_calllogAccount PassWord"), shown);
  }
}

TEST_F(CallPages, StoresAnAccountOfTheCallLog) {
  const std::string fields = kFields;
  struct {
    std::string fields, stored;
  } rows[] = {
      {"z=0" + fields + "********", R"(<item name="A" server="&lt;" port="2" user_name="U" password="p" />)"},
      {"z=0" + fields, R"(<item name="A" server="&lt;" port="2" user_name="U" password="" />)"},
      {"z=2" + fields + "q", R"(<item name="A" server="&lt;" user_name="U" />)"},
  };
  for (const auto& [posted, stored] : rows) {
    write(kAccounts, kTwoAccounts);
    announced();
    EXPECT_EQ(save(kAccountPage, posted).redirects,
              Messages{"/servlet?p=contacts-calllog&q=load&" + posted.substr(0, 3)});
    EXPECT_NE(content(kAccounts).find("\n\t" + stored + "\n"), std::string::npos) << content(kAccounts);
    EXPECT_EQ(announced(), "post app_hostapp 0x10007 48 0");
  }
}

TEST_F(CallPages, LeavesTheCallLogAloneWhenSomethingIsWrong) {
  write(kAccounts, kTwoAccounts);
  announced();
  const std::string fields = kFields;
  for (const std::string& posted :
       {"y=0" + fields, "z=-1" + fields, "z=1" + fields, "z=3" + fields, "z=9x" + fields,
        std::string("z=0&DisplayName=A&Server=s&Port=2&UserName=U"), "z=0" + fields + "\x01"}) {
    EXPECT_EQ(save(kAccountPage, posted).variable("noticeLabel"), "setTimeout$contacts-calllog$Error:Item is wrong!");
  }
  setState(R"({"talking":true})");
  EXPECT_EQ(save(kAccountPage, "z=0" + fields).variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...");
  EXPECT_EQ(content(kAccounts) + announced(), kTwoAccounts);
}

}  // namespace
