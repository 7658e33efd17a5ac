// The contacts page, before the phone's own directory.
#include <filesystem>

#include "tests/support/page_test.h"

namespace {

class LocalContacts : public PageTest {
 protected:
  // Adds contacts "c1", "c2", ... to a group.
  void addContacts(int count, const std::string& group) {
    for (int i = 1; i <= count; ++i) add("c" + std::to_string(i) + group, group);
    announced();
  }
  RecordingResponse add(const std::string& name, const std::string& group, const std::string& more = "") {
    return run("contactsbasic", "add",
               "DisplayName=" + name + "&OfficeNum=1" + name +
                   "&MobileNumber=&OtherNum=&RingTone=&Photo=&num=1&ConGroup=" + group + more);
  }
  // What an action answers: where it leads, the notice, the text or nothing.
  std::string answer(const std::string& action, const std::string& fields = "") {
    return answerOf(run("contactsbasic", action, fields));
  }
  static std::string answerOf(const RecordingResponse& response) {
    if (!response.redirects.empty()) return response.redirects.front().substr(response.redirects.front().find("&num"));
    const std::string notice = response.variable("noticeLabel");
    return notice != "(absent)" ? notice.substr(notice.rfind('$') + 1) : response.body;
  }
  // The names of a group, over all its pages.
  std::string names(const std::string& group) {
    std::string all;
    for (int page = 1, pages = 1; page <= pages; ++page) {
      const auto list = load("contactsbasic", "group=" + group + "&num=" + std::to_string(page));
      pages = static_cast<int>(list.loops.at("pageloop").size());
      for (const auto& row : list.loops.at("contactslistloop")) {
        if (!row.at("DisplayName").empty()) all += (all.empty() ? "" : " ") + row.at("DisplayName");
      }
    }
    return all;
  }
  // Uploads the phone's own picture, or the given bytes, under a name.
  std::string upload(const std::string& name, const std::string& bytes = "") {
    write("/tmp/fileupload_aB3-_9",
          bytes.empty() ? content("/phone/resource/sysdata/contact-image/Contact1.png") : bytes);
    FakeRequest request{{"q", "uploadphoto"}, {"uploadPhoto", "/tmp/fileupload_aB3-_9"}, {"uploadPhoto", name}};
    request.session = &session;
    const std::string result = answerOf(serve(pageHandler("contactsbasic"), request));
    EXPECT_FALSE(std::filesystem::exists(file("/tmp/fileupload_aB3-_9"))) << name;
    return result;
  }
};

TEST_F(LocalContacts, PagesHaveTenRows) {
  addContacts(11, "0");
  run("contactsbasic", "addgroup", "GroupInfo=Friends&GroupRing=Resource:Ring2.wav");
  add("<b>\"'", "2", "&varAccount=2");
  const RecordingResponse first = load("contactsbasic", "num=0&group=-4");
  EXPECT_EQ(columns(first, "contactslistloop", "index classStyle DisplayName"),
            "1|2|3|4|5|6|7|8|9|10, 0|1|0|1|0|1|0|1|0|1, c10|c20|c30|c40|c50|c60|c70|c80|c90|c100");
  EXPECT_EQ(columns(first, "pageloop", "index selected"), "1|2, 1|0");
  EXPECT_EQ(columns(first, "grouplistloop", "groupId groupName selected"),
            "0|1|2, All Contacts|Blacklist|Friends, 1|0|0");
  EXPECT_EQ(first.variable("varBlackPage group groupInfo ringInfo SelectPhoto"), "0|-4|All Contacts|Auto|(absent)");
  const RecordingResponse second = load("contactsbasic", "num=2&group=0&photo=x.png");
  EXPECT_EQ(columns(second, "contactslistloop", "index DisplayName Account Photo"),
            "11|12|13|14|15|16|17|18|19|20, c110|<b>\"'||||||||, -1|2||||||||, "
            "Default:default_contact_image.png|Default:default_contact_image.png|(absent)|(absent)|(absent)|(absent)|"
            "(absent)|(absent)|(absent)|(absent)");
  EXPECT_EQ(second.variable("SelectPhoto photoEnable"), "x.png|true");
  EXPECT_EQ(load("contactsbasic", "group=2&num=99999999999").variable("groupInfo ringInfo"),
            "Friends|Resource:Ring2.wav");
  EXPECT_EQ(columns(load("contactsbasic", "group=2&num=2147483647"), "pageloop", "index selected"), "1, 0");
  setState(R"({"directory":{"available":false},"phoneType":28})");
  const RecordingResponse none = load("contactsbasic");
  EXPECT_EQ(columns(none, "pageloop", "index") + none.column("contactslistloop", "index"), "1");
  EXPECT_EQ(none.variable("groupInfo photoEnable"), "|false");
}

TEST_F(LocalContacts, ChangesAreAnnounced) {
  const std::string groups = "post app_hostapp 0x10007 8 1", contacts = "post app_hostapp 0x10007 8 2";
  const std::string start = "&num=1&group=", all = start + "0";
  addContacts(3, "0");
  const struct {
    std::string action, fields, answer, messages;
  } rows[] = {
      {"addgroup", "GroupInfo=F&GroupRing=Auto", all, groups},
      {"addgroup", "GroupInfo=F&GroupRing=Auto", "Error:Group already existed!", ""},
      {"addgroup", "", "Error:Other error!", ""},
      {"editgroup", "oldGroupName=F&GroupInfo=G&GroupRing=Auto", all, groups + "; " + contacts},
      {"editgroup", "oldGroupName=F&GroupInfo=H&GroupRing=Auto", "Error:Group not existed!", ""},
      {"deletegroup", "GroupInfo=Blacklist", "Error:Group can not delete!", ""},
      {"add", "DisplayName=d&OfficeNum=&MobileNumber=&OtherNum=&num=3&ConGroup=2", "&num=3&group=2", contacts},
      {"add", "DisplayName=d&num=3&ConGroup=2", "Error:Contact already existed!", ""},
      {"add", "OfficeNum=1&num=1&ConGroup=0", "Error:Other error!", ""},
      {"edit", "OldName=d&DisplayName=e&OfficeNum=7&MobileNumber=&OtherNum=&num=%d\r\n&ConGroup=2",
       "&num=%25d%0D%0A&group=2", contacts},
      {"edit", "OldName=e&DisplayName=f", "Error:Other error!", ""},
      {"edit", "OldName=x&DisplayName=y&OfficeNum=&MobileNumber=&OtherNum=", "Error:Contact not existed!", ""},
      {"moveto", "record=1,3&oldgroup=0&newgroup=2", start + "2", contacts},
      {"moveto", "record=0&oldgroup=0&newgroup=2", "Error:Other error!", ""},
      {"moveto", "record=1&oldgroup=0&newgroup=7", "Error:Other error!", ""},
      {"moveto", "record=1&oldgroup=0", "", ""},
      {"deletegroup", "GroupInfo=G", all, groups + "; " + contacts},
      {"deleteallgroup", "", all, groups + "; " + contacts},
      {"delete", "record=1", all, ""},
      {"delete", "record=0&group=0", all, contacts},
      {"hangup", "", "hangup success", "post app_hostapp 0x30011 0 0"},
  };
  announced();
  for (const auto& [action, fields, expected, messages] : rows) {
    EXPECT_EQ(answer(action, fields), expected) << action << ' ' << fields;
    EXPECT_EQ(announced(), messages) << action << ' ' << fields;
  }
  EXPECT_EQ(names("0"), "c10 c20 c30 e");
  setState(R"({"talking":true})");
  for (const char* action : {"delete", "add", "edit", "moveto", "call", "deleteallgroup", "deletegroup", "addgroup",
                             "editgroup", "uploadphoto", "deletephoto"}) {
    EXPECT_EQ(answer(action, "record=*&group=0"), "Talking, Please wait...") << action;
  }
  EXPECT_EQ(answer("hangup") + names("0"), "hangup successc10 c20 c30 e");
}

TEST_F(LocalContacts, EachResultHasItsText) {
  const std::map<int, const char*> texts{{-1, "Group already existed!"}, {-2, "Contact already existed!"},
                                         {-3, "Invalid group id!"},      {-4, "Group not existed!"},
                                         {-5, "Contact not existed!"},   {-6, "Group can not delete!"},
                                         {-7, "Contact list is full!"},  {-8, "Black list is full!"},
                                         {-9, "Group  list is full!"},   {-10, "Contact is not local!"},
                                         {-11, "Other error!"},          {-12, "Contact is not black!"},
                                         {-13, "Contact is asyncing!"},  {-14, "Network error!"},
                                         {-15, "Photo name error!"},     {-16, "Other error!"}};
  for (const auto& [result, text] : texts) {
    setState(R"({"directory":{"refusal":)" + std::to_string(result) + "}}");
    EXPECT_EQ(answerOf(add("x", "0")), std::string("Error:") + text) << result;
  }
  setState(R"({"directory":{"refusal":0,"available":false}})");
  for (const char* action : {"add", "addgroup", "deleteallgroup", "delete", "moveto"}) {
    EXPECT_EQ(answer(action, "DisplayName=x&record=*&group=0&oldgroup=0&newgroup=0"), "Error:Other error!") << action;
  }
}

TEST_F(LocalContacts, SelectedRowsAreDeleted) {
  addContacts(23, "0");
  addContacts(2, "1");
  const struct {
    std::string record, group, left;
  } rows[] = {
      {"10", "0",
       "c10 c20 c30 c40 c50 c60 c70 c80 c90 c110 c120 c130 c140 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"11,13", "0", "c10 c20 c30 c40 c50 c60 c70 c80 c90 c110 c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"1,2,3,4,5,6,7,8,9,10,11,12,13", "0", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"x,1", "0", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"-1", "0", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"99999999999", "0", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"2147483647", "0", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"*", "all", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"*", "-1", "c130 c150 c160 c170 c180 c190 c200 c210 c220 c230"},
      {"*", "0", ""},
  };
  for (const auto& [record, group, left] : rows) {
    EXPECT_EQ(answer("delete", "record=" + record + "&group=" + group), "&num=1&group=" + group);
    EXPECT_EQ(names("0"), left) << record;
  }
  EXPECT_EQ(names("1"), "c11 c21");
}

TEST_F(LocalContacts, OtherProgramsMarkTheirChanges) {
  addContacts(1, "0");
  const std::string contact = "<root_contact><contact display_name=\"new\" group_id_name=\"5\"/></root_contact>";
  write("/config/data/contact_list.xml", contact);
  write("/config/data/contact_group_list.xml",
        "<root_group><group id=\"5\" display_name=\"G\" ring=\"Auto\"/></root_group>");
  EXPECT_EQ(names("0"), "c10");
  write("/tmp/contact_update_mark.ini", "[update]\ntype=3\n");
  EXPECT_EQ(names("5"), "new");
  EXPECT_NE(content("/tmp/contact_update_mark.ini").find("0"), std::string::npos);
}

TEST_F(LocalContacts, PhotosArePicturesOnly) {
  const std::string folder = "/data/userdata/contact-image/";
  announced();
  EXPECT_EQ(upload("C:\\pictures\\my photo.png"), "&num=1&group=&photo=my%20photo.png");
  EXPECT_EQ(messages().back(), "broadcast 0x10007 88 0 [" + folder + "my photo.png]");
  const std::string failed = "Fail to upload photo ! [Can not compress the picture]";
  write("/tmp/contact_update_mark.ini", "[update]\n");
  for (const std::string& name : {std::string("../../config/x.png"), std::string("contact_update_mark.ini"),
                                  std::string(".png"), std::string("a:b.png"), std::string(" .png"),
                                  std::string("a\nb.png"), std::string(252, 'x') + ".png", std::string()}) {
    const std::string result = upload(name);
    EXPECT_TRUE(result == failed || name == "../../config/x.png") << name << ": " << result;
  }
  EXPECT_EQ(upload("text.png", "no picture"), failed);
  EXPECT_EQ(content("/tmp/contact_update_mark.ini"), "[update]\n");
  EXPECT_TRUE(std::filesystem::exists(file(folder + "my photo.png")) &&
              std::filesystem::exists(file(folder + "x.png")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file(folder)), {}), 2);

  EXPECT_EQ(answerOf(add("p", "0", "")), "&num=1&group=0");
  answer("edit", "OldName=p&DisplayName=p&OfficeNum=1&MobileNumber=&OtherNum=&RingTone=Auto&Photo=Config:my photo.png");
  announced();
  for (const char* photo :
       {"Resource:Contact1.png", "Config:../../../config/data/contact_list.xml", "Config:", "Config", ""}) {
    EXPECT_EQ(answer("deletephoto", std::string("Photo=") + photo) + announced(), "") << photo;
  }
  EXPECT_EQ(answer("deletephoto", "Photo=Config:my photo.png"), "&num=1&group=");
  EXPECT_EQ(announced(), "broadcast 0x10007 88 0 [" + folder + "my photo.png]");
  EXPECT_FALSE(std::filesystem::exists(file(folder + "my photo.png")));
  EXPECT_EQ(load("contactsbasic").loops.at("contactslistloop")[0].at("Photo"), "Default:default_contact_image.png");
}

TEST_F(LocalContacts, CallsForTrustedClientsOnly) {
  setConfig("AURILimitIP", "192.0.2.7");
  EXPECT_EQ(answer("call", "num=12%s&acc=-1"), "call success");
  EXPECT_EQ(announced(), "send app_hostapp 0xa0002 99 0 [12%s]");
  for (const char* fields : {"num=1", "acc=1", "num=1&acc=-2", "num=1&acc=99"})
    EXPECT_EQ(answer("call", fields), "call failed");
  setConfig("AURILimitIP", "192.0.2.8");
  EXPECT_EQ(answer("call", "num=1&acc=0") + announced(), "call failed");
}

}  // namespace
