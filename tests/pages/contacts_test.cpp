// The directory pages.
#include "servlet/contacts/contacts_make_call.h"
#include "servlet/contacts/contacts_update_mark.h"
#include "tests/support/page_test.h"

namespace {

using ContactsPages = PageTest;

TEST_F(ContactsPages, AnnounceWhatChanged) {
  expectSaves({
      {"contacts-multicastIP", "ListenAddress7Label=<shop>", "broadcast 0x10007 42 0", "ListenAddress7Label=<shop>"},
      {"contacts-multicastIP", "ListenAddress7Label=<shop>", ""},
  });
}

TEST_F(ContactsPages, PagingHasTenRows) {
  setConfig("ListenAddress7Label=<shop>&ListenAddress10IPAddress=" + std::string(200, '1'));
  const RecordingResponse page = load("contacts-multicastIP");
  const std::pair<const char*, std::string> columns[] = {{"index", "1|2|3|4|5|6|7|8|9|10"},
                                                         {"classStyle", "0|1|0|1|0|1|0|1|0|1"},
                                                         {"Label", "||||||&lt;shop&gt;|||"},
                                                         {"IPAddress", "|||||||||" + std::string(127, '1')}};
  for (const auto& [name, values] : columns) EXPECT_EQ(page.column("multicastIPloop", name), values);
  EXPECT_EQ(page.loops.at("multicastIPloop")[9].at("section"), "ListenAddress10");
}

TEST_F(ContactsPages, DialsANumber) {
  messages();
  EXPECT_TRUE(sendMakeCallMsg(1101, 0, "12<3>", true));
  EXPECT_TRUE(sendMakeCallMsg(100, 0, "4", false));
  setState(R"({"answers":{"app_hostapp 0xa0002":0}})");
  EXPECT_FALSE(sendMakeCallMsg(100, 0, "5", true));
  EXPECT_EQ(messages(), (Messages{"send app_hostapp 0xa0002 1101 0 [12<3>]", "post app_hostapp 0xa0002 100 0 [4]",
                                  "send app_hostapp 0xa0002 100 0 [5]"}));
}

TEST_F(ContactsPages, OtherProgramsMarkTheirChanges) {
  int type = 42;
  EXPECT_FALSE(IsContactNeedUpdate(type));
  EXPECT_EQ(type, 42);
  write("/tmp/contact_update_mark.ini", "[update]\ntype=2\n");
  EXPECT_TRUE(IsContactNeedUpdate(type));
  EXPECT_EQ(type, 2);
  SetDefalutUpdate();
  EXPECT_FALSE(IsContactNeedUpdate(type));
  EXPECT_EQ(type, 0);
}

}  // namespace
