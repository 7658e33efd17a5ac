// The directory pages.
#include "servlet/contacts/contacts_make_call.h"
#include "servlet/contacts/contacts_update_mark.h"
#include "tests/support/page_test.h"

namespace {

using ContactsPages = PageTest;

TEST_F(ContactsPages, PagingHasTenRows) {
  setConfig("ListenAddress7Label=<shop>&ListenAddress10IPAddress=" + std::string(200, '1'));
  const RecordingResponse page = load("contacts-multicastIP");
  EXPECT_EQ(columns(page, "multicastIPloop", "index classStyle Label IPAddress"),
            "1|2|3|4|5|6|7|8|9|10, 0|1|0|1|0|1|0|1|0|1, ||||||&lt;shop&gt;|||, |||||||||" + std::string(127, '1'));
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
  EXPECT_TRUE(!IsContactNeedUpdate(type) && type == 42);
  write("/tmp/contact_update_mark.ini", "[update]\ntype=2\n");
  EXPECT_TRUE(IsContactNeedUpdate(type) && type == 2);
  SetDefalutUpdate();
  EXPECT_TRUE(!IsContactNeedUpdate(type) && type == 0);
}

}  // namespace
