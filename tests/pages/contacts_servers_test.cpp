// The directories on servers, and which directories the phone offers.
#include <algorithm>

#include "tests/support/page_test.h"

namespace {

constexpr char kFavorites[] = "/config/data/favorite_setting.xml";
constexpr char kSearch[] = "/config/data/super_search.xml";
constexpr char kPhoneBooks[] = "/config/data/remote_phonebook_list.xml";

class ContactsServers : public PageTest {
 protected:
  // Answers a save of the network directories: the messages and what is then in use.
  std::string saveNetwork(const std::string& fields) {
    announced();
    EXPECT_EQ(save("contacts-broadsoft", fields).redirects, Messages{"/servlet?p=contacts-broadsoft&q=load&ask=1"});
    return announced() + "; " + config("BsftCustomListUse");
  }
  // What of a list is in use and what is not, by ids and by names.
  std::string favorites(const std::string& items) {
    write(kFavorites, "<any>" + items + "</any>");
    return favoritesShown();
  }
  std::string favoritesShown() {
    const RecordingResponse page = load("contacts-favorite");
    return columns(page, "enabledLoop", "selValue selName") + "; " + columns(page, "disabledLoop", "selValue selName");
  }
};

TEST_F(ContactsServers, FavoritesAreSortedByTheirPriorityAsText) {
  const std::string on = R"( enable="1"/>)", twelve = R"(<item id_name="x"/><item id_name="y" enable="01"/>)";
  EXPECT_EQ(favorites(R"(<item id_name="c" display_name="C" priority="2")" + on + R"(<item id_name="a" priority="1")" +
                      on + R"(<other id_name="o"/><item id_name="ldap")" + on + R"(<item id_name="b" priority="10")" +
                      on + R"(<item id_name="history" priority="2")" + on +
                      R"(<item id_name="&lt;&amp;lt;&quot;" enable="0"/><item/>)"),
            "ldap|a|b|c|history, LDAP|||C|History; <&amp;lt;\"|, |");
  EXPECT_EQ(favorites(twelve + twelve + twelve + twelve + twelve + twelve), ", ; x|y|x|y|x|y|x|y|x|y, |||||||||");
}

TEST_F(ContactsServers, WhatTheServiceBringsIsHeldBackWhileItIsOff) {
  const std::string items = R"(<item id_name="ldap" display_name="People"/><item id_name="networkcalllog" enable="1")"
                            R"( priority="7" display_name="Log"/><item id_name="broadsoftdirectory"/>)";
  const std::string ofSearch = R"(<r><item id_name="BroadSoft_directory_search" enable="1" priority="3"/></r>)";
  write(kSearch, ofSearch);
  EXPECT_EQ(favorites(items), ", ; ldap, People");
  EXPECT_EQ(load("contacts-favorite").column("enabledSearchLoop", "selValue"), "");
  expectSaves({{"contacts-favorite", "disabled=<\"&enabled=ldap&enabled=history&FeaturesRecentCallEnable=0",
                "broadcast 0x10007 56 0; broadcast 0x10007 52 0", "FeaturesRecentCallEnable=0"}});
  EXPECT_EQ(content(kFavorites), R"(<?xml version="1.0"?>
<root_favorite_set>
	<item id_name="&lt;&quot;" display_name="" priority="" enable="0" />
	<item id_name="ldap" display_name="People" priority="1" enable="1" />
	<item id_name="history" display_name="" priority="2" enable="1" />
	<item id_name="networkcalllog" display_name="Log" priority="7" enable="1" />
	<item id_name="broadsoftdirectory" display_name="Network Directories" priority="" enable="0" />
</root_favorite_set>
)");
  EXPECT_EQ(content(kSearch), ofSearch);  // nothing was posted for it
  save("contacts-favorite", "searchenabled=x");
  EXPECT_EQ(content(kSearch), R"(<?xml version="1.0"?>
<root_super_search>
	<item id_name="x" display_name="" priority="1" enable="1" />
	<item id_name="BroadSoft_directory_search" display_name="" priority="3" enable="1" />
</root_super_search>
)");
  setConfig("BSFTActive", "1");
  EXPECT_EQ(favorites(items), "networkcalllog, Log; ldap|broadsoftdirectory, People|Network Directories");
  save("contacts-favorite", "searchenabled=x");
  EXPECT_EQ(content(kSearch).find("BroadSoft"), std::string::npos);
}

TEST_F(ContactsServers, BrokenFilesAreNotShown) {
  const std::tuple<const char*, std::string, const char*, const char*> rows[] = {
      {"contacts-favorite", kFavorites, "<a><item></a>", "4 load favorite_setting.xml error!"},
      {"contacts-favorite", kFavorites, nullptr, "4 load XML file failed!!!"},
      {"contacts-favorite", kSearch, "", "4 load favorite_setting.xml error!"},
      {"contacts-remote", kPhoneBooks, "<a><item", "4 load remote_phonebook_list.xml error!"},
      {"contacts-remote", kPhoneBooks, nullptr, "4 load remote_phonebook_list.xml error!"}};
  for (const auto& [page, path, text, line] : rows) {
    const std::string before = content(path);
    std::filesystem::remove(file(path));
    if (text) write(path, text);
    EXPECT_TRUE(load(page).untouched()) << page;
    EXPECT_EQ(log.back(), line);
    write(path, before);
  }
  write(kFavorites, "<a>");
  save("contacts-favorite", "disabled=ldap");
  EXPECT_EQ(favoritesShown(), ", ; ldap, LDAP");
  write(kPhoneBooks, "<a>");
  EXPECT_EQ(save("contacts-remote", "SRemoteNameFlashTime=7").variable("noticeLabel"),
            "setTimeout$contacts-remote$Error:Write remote_phonebook_list.xml error!");
  EXPECT_EQ(content(kPhoneBooks) + config("SRemoteNameFlashTime"), "<a>3600");
  // What XML cannot carry would make the whole file unreadable for others.
  const std::string one = "<a><item name=\"\" url=\"\"/></a>";
  write(kPhoneBooks, one);
  EXPECT_EQ(save("contacts-remote", "RemotePhoneBook0URL=u&RemotePhoneBook0Name=a\x01").variable("noticeLabel"),
            "setTimeout$contacts-remote$Error:Write remote_phonebook_list.xml error!");
  EXPECT_EQ(content(kPhoneBooks), one);
  save("contacts-remote", "RemotePhoneBook0URL=u&RemotePhoneBook0Name=a\n\t");
  EXPECT_EQ(load("contacts-remote").variable("RemotePhoneBook0Name"), "a\n\t");
}

TEST_F(ContactsServers, FivePhoneBooksAreShownAndChanged) {
  const auto shown = [this] {
    const RecordingResponse page = load("contacts-remote");
    return page.variable("RemotePhoneBook0Name RemotePhoneBook1Name RemotePhoneBook2Name RemotePhoneBook3Name") + " " +
           page.variable("RemotePhoneBook1URL RemotePhoneBook4URL RemotePhoneBook5URL");
  };
  write(kPhoneBooks, R"(<r><x/><item name="A"/><item url="http://b?c=1&amp;d"/><item name="C" url=""/></r>)");
  const std::string before = content(kPhoneBooks);
  EXPECT_EQ(shown(), "A||C| http://b?c=1&d||(absent)");
  const std::string same = "RemotePhoneBook0Name=A&RemotePhoneBook0URL=&RemotePhoneBook3Name=x&RemotePhoneBook3URL=y";
  expectSaves({{"contacts-remote", same + "&RemotePhoneBook2Name=alone&SRemoteNameFlashTime=3600", "", ""}});
  EXPECT_EQ(content(kPhoneBooks), before);
  expectSaves({{"contacts-remote", "RemotePhoneBook2Name=<\"&RemotePhoneBook2URL=&SRemoteNameFlashTime=600",
                "post app_hostapp 0x10007 47 0; post app_hostapp 0x10007 47 1", "SRemoteNameFlashTime=600"},
               {"contacts-remote", "RemotePhoneBook1Name=new&RemotePhoneBook1URL=u&SearchNameFromRemoteSwitch=1",
                "post app_hostapp 0x10007 47 0", "SearchNameFromRemoteSwitch=1"}});
  EXPECT_EQ(content(kPhoneBooks), R"(<?xml version="1.0"?>
<r>
	<x />
	<item name="A" />
	<item url="u" />
	<item name="&lt;&quot;" url="" />
</r>
)");
  const std::string seven = R"(<item name="A" url=""/><item name="" url="x"/><item name="C" url=""/>)";
  write(kPhoneBooks, "<r>" + seven + seven + seven + "</r>");
  EXPECT_EQ(shown(), "A||C|A x|x|(absent)");
}

TEST_F(ContactsServers, TheDirectoryPasswordIsNeverShown) {
  setConfig("LDAPpswd=kept-secret&LDAPSort=<b>&AccountBroadsoftXSIPassword@0=kept-secret");
  const RecordingResponse page = load("contacts-LDAP");
  EXPECT_EQ(page.variable("LDAPpswd LDAPSort bK7xType"), "********|&lt;b&gt;|true");
  EXPECT_EQ(std::ranges::count(page.names, "LDAPpswd"), 1);
  EXPECT_EQ(load("contacts-broadsoft").variable("AccountBroadsoftXSIPassword"), "(absent)");
  const std::string message = "post app_hostapp 0x10007 35 0";
  expectSaves({{"contacts-LDAP", "", message, "LDAPpswd=kept-secret&LDAPSort=<b>"},
               {"contacts-LDAP", "LDAPpswd=********&LDAPhost=h", message, "LDAPpswd=kept-secret&LDAPhost=h"},
               {"contacts-LDAP", "LDAPpswd=new", message, "LDAPpswd=new"}});
}

TEST_F(ContactsServers, TheBrowserIsToldWhetherToAskForTheCustomList) {
  setConfig("BsftCustomListAll=a<b,,Sales,Sal&BsftCustomListUse=Sales,a<b");
  const std::string rows = " 4 0|1|2|3, a&lt;b||Sales|Sal, 1|0|1|0", none = " 0 , , ";
  // Switch, status, "ask", what is shown, what a question is answered.
  const std::tuple<std::string, std::string, std::string, std::string, std::string> table[] = {
      {"1", "3", "", "false" + rows, "3"},      {"1", "3", "ask=1", "true" + none, "3"},
      {"1", "3", "ask=0", "false" + none, "3"}, {"0", "2", "", "false" + none, "2"},
      {"0", "2", "ask=1", "true" + none, "2"},  {"1", "2", "", "true" + none, "2"},
      {"1", "", "", "true" + none, ""},         {"1", "4", "", "fail" + none, "4,no %s &lt;b&gt;"}};
  setConfig("BsftCustomListFailReason=no %s <b>");
  for (const auto& [custom, status, ask, shown, answer] : table) {
    setConfig("BsftCustom=" + custom + "&BsftCustomListStatus=" + status);
    const RecordingResponse page = load("contacts-broadsoft", ask);
    EXPECT_EQ(page.variable("bNeedtoAskStatus") + " " + page.variable("customcount") + " " +
                  columns(page, "CustomLoop", "row selname checked"),
              shown);
    EXPECT_EQ(run("contacts-broadsoft", "askstatus").body, answer);
  }
  setConfig("BsftCustomListAll=&BsftCustomListStatus=3");
  load("contacts-broadsoft");
  EXPECT_EQ(log.back(), "4 read custom list error");
}

TEST_F(ContactsServers, TheNetworkDirectoriesAnnounceWhatChanged) {
  const std::string fetched = "post app_hostapp 0x10007 55 0", login = "post app_hostapp 0x10007 54 0; " + fetched;
  setConfig("BsftCustomListUse=old&AccountBroadsoftXSIPassword@0=kept-secret");
  // Fields, messages and the custom directories that are then in use, what is stored.
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"BsftGroup=1&NetworkCalllogSwitch=1&AccountBroadsoftXSIPort=443",
       "post app_hostapp 0x10007 49 0; post app_hostapp 0x10007 48 0; " + login + "; old",
       "BsftGroup=1&NetworkCalllogSwitch=1&AccountBroadsoftXSIPort@0=443"},
      {"BsftGroup=1&AccountBroadsoftXSIPassword=********", fetched + "; old",
       "AccountBroadsoftXSIPassword@0=kept-secret"},
      {"AccountBroadsoftXSIPassword=new", login + "; old", "AccountBroadsoftXSIPassword@0=new"},
      {"z=no&activeCustomList=x,", fetched + "; old", ""},
      {"activeCustomList=x,", fetched + "; old", ""},
      {"z=yes", fetched + "; old", ""},
      {"z=yes&activeCustomList=<b>,Sales,", fetched + "; <b>,Sales", ""},
      {"z=yes&activeCustomList=,", fetched + "; ", ""},
      {"z=yes&activeCustomList=" + std::string(2000, 'x'), fetched + "; " + std::string(1023, 'x'), ""}};
  for (const auto& [fields, expected, stored] : rows) {
    EXPECT_EQ(saveNetwork(fields), expected) << fields;
    expectStored(stored);
  }
  EXPECT_EQ(log[log.size() - 2], "6 getParameter : isCustomUsed=yes");
}

}  // namespace
