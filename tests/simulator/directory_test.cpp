// The local directory with its files, and the call history.
#include "platform/local_directory.h"
#include "tests/simulator/simulator_test.h"

namespace {

using namespace NS_DIRECTORY;
using Words = std::vector<std::string>;

constexpr char kContacts[] = "/config/data/contact_list.xml";
constexpr char kGroups[] = "/config/data/contact_group_list.xml";
constexpr char kExchange[] = "/config/data/contact_xported.xml";
constexpr char kHistory[] = "/config/data/call_data.xml";

CContactLocalManager& store() {
  return *CContactLocalManager::GetInstance();
}

// What a group lists, "NAME:GROUP" each, and how many it has.
std::string listed(int group, int start = 0, int count = 20) {
  ContactGeneralItemListData data{{}, start, count};
  std::string text = store().GetContactListById(data, group) ? "" : "none ";
  for (const auto& one : data.contacts) text += one.displayName + ":" + one.groupName + " ";
  return text + std::to_string(data.total);
}

// The own groups, "ID:NAME" each.
std::string groups() {
  ContactGroupSimpleListData data{{}, 2, 60};
  store().GetGroupSimpleList(data);
  std::string text;
  for (const auto& one : data.groups) text += " " + std::to_string(one.id) + ":" + one.name;
  return text;
}

Words split(const std::string& text, char separator) {
  Words words;
  std::istringstream stream(text);
  for (std::string word; std::getline(stream, word, separator);) words.push_back(word);
  return words;
}

OrbList<std::string> names(const std::string& text) {
  OrbList<std::string> result;
  for (const std::string& name : split(text, ',')) result.push_back(name);
  return result;
}

int send(unsigned message, const std::string& wParam, const std::string& lParam, const std::string& text) {
  return msgSendMsgToThreadEx(msgGetThreadByName("app_hostapp"), message, std::stoi(wParam), std::stoi(lParam),
                              text.c_str(), static_cast<int>(text.size()) + 1);
}

int result(const std::string& what, const std::string& a, const std::string& b = "", const std::string& c = "") {
  if (what == "add") return store().AddContact(b, {a, "", "", "", "", c, "", -1, 0});
  if (what == "edit") return store().UpdateContactData(a, {b, c, "", "", "", "", "", -1, 0});
  if (what == "remove") return store().RemoveContactList(names(a));
  if (what == "clear") return store().RemoveAllContacts(std::stoi(a));
  if (what == "move") return store().MoveListToGroup(names(a), b);
  if (what == "photo") return store().SetDefaultPhoto(a);
  if (what == "group") return store().AddGroup({a, b});
  if (what == "rename") return store().UpdateGroupData(a, {b, ""});
  if (what == "ungroup") return a.empty() ? store().RemoveAllGroup() : store().RemoveGroup(a);
  return what == "call" ? send(0xa0002, a, "0", b) : send(0x10007, "46", a, "");
}

// Takes the steps "OPERATION|ARGUMENT|ARGUMENT=ANSWER" of a text, divided by "; ".
void play(const std::string& script) {
  for (const std::string& step : split(script, ';')) {
    const std::size_t end = step.find('=');
    Words word = split(step.substr(0, end), '|');
    word.resize(4);
    const std::string what = word[0].substr(word[0].find_first_not_of(" \n"));
    const std::string answer = what == "groups" ? groups()
                               : what == "list" ? listed(std::stoi(word[1]))
                                                : std::to_string(result(what, word[1], word[2], word[3]));
    EXPECT_EQ(answer, step.substr(end + 1)) << step;
  }
}

std::string repeated(int count, const std::string& before, const std::string& after) {
  std::string text;
  for (int i = 0; i < count; ++i) text += before + std::to_string(i) + after;
  return "<root_contact>" + text + "</root_contact>";
}

// The contacts "n0", "n1", ... in one group.
std::string contacts(int count, const std::string& group) {
  return repeated(count, "<contact group_id_name='" + group + "' display_name='n", "'/>");
}

class DirectoryTest : public PhoneTest {
 protected:
  void load(const std::string& contactFile, const std::string& groupFile) const {
    write(kContacts, contactFile);
    write(kGroups, groupFile);
    reload();
  }
  static void reload() {
    store().ReloadGroupXml();
    store().ReloadContactXml();
  }
};

TEST_F(DirectoryTest, ChangesFollowTheRules) {
  play(R"(group|Work=0; group|Home|Config:a.wav=0; group|Work=-1; group|=-11; group|Blacklist=-1;
    add|Ann|Work=0; add|Bob|nobody's=0; add|Eve|Blacklist=0; add|Ann=-2; add|=-11; add|ann|Home=0;
    list|0=Ann:Work Bob:All Contacts ann:Home 3; list|1=Eve:Blacklist 1; list|2=Ann:Work 1; list|9=none 0;
    add|x||Config:../a=-15; add|x||Config:a\b=-15; add|x||Config:..=-15; add|x||Config:=-15; add|x||a:b=-15; add|x||a=-15;
    add|p||Config:my photo.jpg=0; photo|Config:my photo.jpg=0; photo|a=-15; remove|p=0;
    edit|x|Ann=-5; edit|Ann|Bob=-2; edit|Ann|=-11; edit|Ann|Zoe|gone=0; edit|Bob|Bob|Home=0;
    rename|Blacklist|x=-6; rename|x|y=-4; rename|Home|Work=-1; rename|Home|=-11; rename|Home|House=0;
    move|Bob,x|Work=-5; move|Bob|x=-4; move|Bob,Eve|Work=0; remove|Bob,x=-5; groups= 2:Work 3:House;
    list|0=Zoe:Work Bob:Work Eve:Work ann:House 4;
    ungroup|Work=0; ungroup|Work=-4; ungroup|All Contacts=-6; group|New=0; groups= 3:House 2:New;
    move|Eve|Blacklist=0; list|0=Zoe:All Contacts Bob:All Contacts ann:House 3;
    clear|9=-3; ungroup=0; clear|0=0; list|0=0; list|1=Eve:Blacklist 1; groups=)");
  const std::string photo = "Config:" + std::string(255, 'a');
  play("add|x||" + photo + "a=-15; add|x||" + photo + "=0; add|y=0; add|a\x01=-11");
  for (const std::string& name : {std::string("a\0b", 3), std::string(2'000'000, '='), std::string(12 << 20, '"')})
    EXPECT_EQ(result("add", name), -11);
  EXPECT_EQ(listed(0, -3, 1) + listed(0, 1, 1) + listed(0, 2, 1) + listed(0, 0, -1),
            "x:All Contacts 2y:All Contacts 222");
}

TEST_F(DirectoryTest, LimitsHold) {
  load(contacts(10'000, "0"), "");
  play("add|x=-7; add|n1=-2; remove|n9999=0; add|x=0; add|y=-7");
  load(contacts(99, "1"), "");
  play("add|a=0; add|b=0; move|a,b,n1|Blacklist=-8; move|a,n1|Blacklist=0; add|c|Blacklist=-8");
  play("edit|b|b|Blacklist=-8; edit|a|A=0");
  for (int i = 2; i < 50; ++i) play("group|" + std::to_string(i) + "=0");
  play("group|50=-9");
}

TEST_F(DirectoryTest, FilesKeepWhatIsStored) {
  play("group|A&B=0");
  store().AddContact("A&B", {"\"<ü>\" \t\r\n'", "", "1", "2", "3", "", "r", 2, 0});
  store().AddContact("", {"Second", "", "3", "", "\xff", "Resource:p.png", "", -1, 0});
  EXPECT_THAT(content(kGroups),
              HasSubstr("\t<group id=\"2\" display_name=\"A&amp;B\" ring=\"Auto\" />\n</root_group>\n"));
  EXPECT_THAT(content(kContacts), HasSubstr(R"(<root_contact>
	<contact display_name="&quot;&lt;ü>&quot; &#09;&#13;&#10;'" office_number="1" mobile_number="2" other_number="3" line="2" ring="r" group_id_name="2" default_photo="Default:default_contact_image.png" />
)"));
  const std::string before = listed(0);
  setState(R"({"rebootSeconds":1})");
  control("POST", "reboot");
  EXPECT_EQ(listed(0), before);
  const auto nameOf = [](const char* number) { return store().GetContactNameByPhoneNumber(number); };
  EXPECT_EQ(nameOf("3") + "|" + nameOf("\xff") + "|" + nameOf("") + "|" + nameOf("4"), "\"<ü>\" \t\r\n'|Second||");
}

TEST_F(DirectoryTest, BrokenFilesCountAsEmptyAndStay) {
  for (const std::string text : {"<root_contact><contact display_name='a'/>", "<x><contact display_name='a'/></x>",
                                 "<root_contact/><root_contact/>", "<root_contact><contact/></root_contact>"}) {
    load(text, text);
    play("list|0=0; groups=; clear|0=0; remove|a=-5");
    EXPECT_EQ(content(kContacts) + content(kGroups), text + text);
  }
}

TEST_F(DirectoryTest, AFailedSaveChangesNothing) {
  play("group|G=0; add|a|G=0");
  const std::string before = content(kContacts);
  fs::remove(file(kGroups));
  fs::create_directories(file(kGroups) / "x");
  play("group|H=-11; ungroup|G=-11; list|0=a:G 1");
  EXPECT_EQ(content(kContacts), before);
  fs::remove_all(file("/config/data"));
  write("/config/data", "");
  play("add|b=-11; exchange|1=7; exchange|0=1; list|0=a:G 1");
}

TEST_F(DirectoryTest, AnInterruptedChangeOfBothFilesIsFinished) {
  const std::string next = std::string(kGroups) + ".next";
  setState(R"({"rebootSeconds":1})");
  for (const bool contactsWait : {true, false}) {
    write(next, "<root_group><group id='5' display_name='New'/></root_group>");
    if (contactsWait) write(std::string(kContacts) + ".next", "<root_contact>");
    control("POST", "reboot");
    play(contactsWait ? "groups=" : "groups= 5:New");
    EXPECT_FALSE(fs::exists(file(next)));
  }
}

TEST_F(DirectoryTest, ImportsTakeAllOrNothing) {
  const auto import = [this](const std::string& request, const std::string& text, const std::string& after) {
    SCOPED_TRACE(text.substr(0, 99));
    load(contacts(2, "2"), "<root_group><group id='2' display_name='Old'/></root_group>");
    write(kExchange, text);
    play("exchange|" + request);
    reload();
    play(after);
  };
  const std::string same = "list|0=n0:Old n1:Old 2; groups= 2:Old", root = "<root_contact>", end = "</root_contact>";
  for (const std::string& row : split(R"(1
    1<root/>
    1<root_contact/><root_contact/>
    1<root_contact><contact display_name='a'/>
    1<root_contact><contact display_name='a&#1;'/></root_contact>
    2<root_contact><group display_name='g'/><group display_name='g'/></root_contact>
    3<root_contact><contact display_name='n'/><contact display_name='n'/></root_contact>
    8<root_contact><group ring='r'/></root_contact>
    9<root_contact><contact/></root_contact>)",
                                      '\n')) {
    const std::string code = row.substr(row.find_first_not_of(' '), 1), text = row.substr(row.find(code) + 1);
    for (const char* request : {"0=", "2=", "3="}) import(request + code, text, same);
  }
  std::string deep;
  for (int i = 0; i < 300'000; ++i) deep += "<a>";
  import("0=1", deep, same);
  import("0=1", repeated(1'000'001, "<a", "/><b/>"), same);
  import("0=4", repeated(49, "<group display_name='", "'/>"), same);
  import("2=5", contacts(10'001, ""), same);
  import("0=6", contacts(101, "Blacklist"), same);
  import("7=-11", root + end, same);
  const std::string some = R"(<contact display_name='n0' group_id_name='2' default_photo='x'/>
    <contact display_name='Zoe' group_id_name='New'/><contact display_name='Max' group_id_name='9'/>
    <contact display_name='Eve' group_id_name='1'/></root_contact>)";
  import("2=0", root + some, "list|0=n0:Old n1:Old Zoe:New Max:9 4; list|1=Eve:Blacklist 1; groups= 2:Old 3:New 4:9");
  import("3=0", root + "<group display_name='G'/>" + some, "list|0=n0:G Zoe:New Max:9 3; groups= 2:G 3:New 4:9");
  import("0=0", root + end, "list|0=0; list|1=0; groups=");
}

TEST_F(DirectoryTest, AnExportIsWhatAnImportTakes) {
  play("group|G|r=0; add|Ann|G=0; add|Eve|Blacklist=0; add|Bob=0; exchange|1=0");
  const std::string groupsFile = content(kGroups), contactsFile = content(kContacts), exported = content(kExchange);
  for (const char* part : {"<root_contact>\n\t<group display_name=\"G\" ring=\"r\" />\n\t<contact display_name=\"Ann\"",
                           "=\"G\" default", "=\"Blacklist\" default", "=\"All Contacts\" default"})
    EXPECT_THAT(exported, HasSubstr(part));
  play("ungroup=0; clear|0=0; exchange|3=0");
  EXPECT_EQ(content(kGroups) + content(kContacts), groupsFile + contactsFile);
}

TEST_F(DirectoryTest, TheStateRefusesChanges) {
  write(kExchange, "<root_contact/>");
  setState(R"({"directory":{"busy":true,"refusal":-14}})");
  play("add|a=-13; ungroup|x=-13; exchange|1=12; exchange|2=12");
  setState(R"({"directory":{"busy":null}})");
  play("add|a=-14; ungroup|x=-14; exchange|1=0; exchange|2=-14");
  setState(R"({"directory":{"available":false}})");
  EXPECT_EQ(CContactLocalManager::GetInstance(), nullptr);
  setState(R"({"directory":null})");
  play("add|a=0; ungroup|x=-4; exchange|1=0");
}

TEST_F(DirectoryTest, PlacedCallsComeLastInTheHistory) {
  setConfig("AccountUserName@1=u&AccountSIPServerHost@1=s.example.com");
  setState(R"({"clockOffset":-3100000000})");
  fs::remove(file(kHistory));
  for (const char* text : {"", "<cut>", "<calls><!-- mine --><item type=\"3\"/></calls>"}) {
    if (*text) write(kHistory, text);
    EXPECT_EQ(ask("app_hostapp", 0x50004), 0);
    EXPECT_THAT(content(kHistory), HasSubstr(*text ? text : "<root_call />"));
  }
  play("call|1101|12=1; call|101|a<@h=1; call|99|1=1; call|116|1=0; call|98|1=0; call|100|=0");
  EXPECT_THAT(content(kHistory), ::testing::ContainsRegex(R"(<calls>
	<!-- mine -->
	<item type="3" />
	<item type="1" local_sip_name="u" local_sip_server="s.example.com" remote_sip_name="12" remote_sip_server="" born_tick="-[0-9]+" />
	<item type="1" local_sip_name="u" local_sip_server="s.example.com" remote_sip_name="a&lt;" remote_sip_server="h" born_tick="-)"));
  write(kHistory, "<cut>");
  for (int i = 0; i <= 400; ++i) play("call|100|n" + std::to_string(i) + "=1");
  EXPECT_THAT(content(kHistory), AllOf(HasSubstr("<root_call>"), Not(HasSubstr("\"n0\"")), HasSubstr("\"n1\"")));
}

}  // namespace
