// The local directory in and out as files.
#include <filesystem>

#include "framework/encoding.h"
#include "servlet/contacts/contacts_csv.h"
#include "tests/support/page_test.h"

namespace {

constexpr char kExchange[] = "/config/data/contact_xported.xml";

class ContactFiles : public PageTest {
 protected:
  RecordingResponse act(const std::string& action, const std::string& fields = "") {
    return run("contacts-preview", action, fields);
  }
  RecordingResponse upload(const std::string& text, const std::string& fields = "", FakeSession* own = nullptr) {
    write("/tmp/CSVFile_aB3-_9", text);
    FakeRequest request;
    request.fields =
        fieldsOf(fields + "&frameUploadCVSFile=/tmp/CSVFile_aB3-_9&frameUploadCVSFile=C:\\dir\\my <b>.csv");
    request.fields.emplace("q", "uploadcvs");
    request.session = own ? own : &session;
    RecordingResponse response = serve(pageHandler("contacts-preview"), request);
    EXPECT_FALSE(std::filesystem::exists(file("/tmp/CSVFile_aB3-_9")));
    return response;
  }
  RecordingResponse uploadXml(const std::string& text) {
    write("/config/fileupload_aB3-_9", text);
    return act("importxml", "frameUploadXMLFile=/config/fileupload_aB3-_9");
  }
  static std::string notice(const RecordingResponse& response) {
    const std::string label = response.variable("noticeLabel");
    return label.starts_with("setTimeout$contactsbasic$") ? label.substr(25) : label;
  }
  // What the phone application is given when this CSV text is imported.
  std::string document(const std::string& text, const std::string& fields) {
    upload(text);
    setState(R"({"answers":{"app_hostapp 0x10007":1}})");
    EXPECT_EQ(notice(act("importcsv", fields)), "Error:Invalid file!");
    setState(R"({"answers":null})");
    return content(kExchange);
  }
  std::string contacts() { return act("exportcvs").body; }
  std::string picture() const { return content("/phone/resource/sysdata/contact-image/Contact1.png"); }
  static std::string base64(const std::string& bytes) {
    std::string text;
    Base64Enc(text, bytes.data(), static_cast<int>(bytes.size()));
    return text;
  }
};

const std::string kHeader =
    "\xEF\xBB\xBF"
    "display_name,office_number,mobile_number,other_number,line,ring,group_id_name,default_photo,photo_data\r\n";

TEST(CsvTest, FieldsAndRows) {
  const auto shown = [](const std::string& text) {
    CsvRows rows;
    EXPECT_TRUE(rows.parse(text));
    std::string all;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t i = 0; i < rows.width(row); ++i) (all += rows.field(row, i)) += '|';
      all += ';';
    }
    return all;
  };
  const std::pair<std::string, std::string> cases[] = {
      {"a,\"b,c\",d", "a|b,c|d|;"},
      {"a,b\n\n,,\n c ,\n", "a|b|; c ||;"},
      {"a,b\nc\r\nd\re,f\r\n", "a|b\nc|;d\re|f|;"},
      {"a\r,b\nc", "a\r|b|;c|;"},
      {"\"a\nb\",c\nd", "a\nb|c|;d|;"},
      {"\"a\r\nb\"\r\nc", "a\r\nb|;c|;"},
      {"\"say \"\"hi\"\"\",x", "say \"\"hi\"\"|x|;"},
      {"x\"y\"z,\"\",\"\"\"\"", "y\"z||\"\"|;"},
      {"a,\"b,c\nd", "a|b,c\nd|;"},
      {"a,\"", "a||;"},
      {"\"", ""},
      {"", ""},
      {"\r\n", ""},
      {"\xEF\xBB\xBFname,1", "name|1|;"},
      {std::string("a\0b,c", 5), std::string("a\0b|c|;", 7)},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(shown(text), expected) << text;
  CsvRows rows;
  EXPECT_FALSE(rows.parse(std::string(400'001, ',')));
  std::string wide = std::string(1000, 'a') + std::string(999, ',') + "\n";
  for (int i = 0; i < 400; ++i) wide += "b\n";
  EXPECT_FALSE(rows.parse(wide));
  EXPECT_EQ(rows.size(), 0u);
}

TEST_F(ContactFiles, ThePreviewShowsWhatWillBeImported) {
  const std::string text = "Name,\"<Office>\"\nann,1,2\nbob\n" + std::string(48, 'x') + "\xC3\xBC,&lt;";
  const RecordingResponse page = upload(text, "showtitle=1");
  EXPECT_EQ(page.variable("showtitle colcount filename"), "1|2|my <b>.csv");
  EXPECT_EQ(page.column("titleloop", "optionName") + page.column("cvsoptionloop", "colname"), "Name|<Office>col1|col2");
  EXPECT_EQ(columns(page, "phoneoptionloop", "index value"),
            "0|1|2|3|4|5|6|7|8|9, ignore|display_name|office_number|mobile_number|other_number|line|ring|group_id_name|"
            "default_photo|photo_data");
  EXPECT_EQ(page.column("recordloop", "lineindex"), "1|2|3");
  const RecordingResponse plain = upload(text);
  EXPECT_EQ(plain.variable("showtitle") + plain.column("recordloop", "lineindex"), "01|2|3|4");
  EXPECT_EQ(plain.loops.count("titleloop"), 0u);
  EXPECT_EQ(upload("").variable("colcount"), "0");
  EXPECT_EQ(notice(upload(std::string(400'001, ','))), "Error:Too many local contact!");
  EXPECT_EQ(notice(act("uploadcvs", "frameUploadCVSFile=/config/data/htpasswd")), "Get CSVFile data error!");
  EXPECT_FALSE(content("/config/data/htpasswd").empty());
}

TEST_F(ContactFiles, ColumnsBecomeAttributes) {
  const std::string head = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  EXPECT_EQ(document("t,t\nann,1\n\"b,\"\"&<\",2,3\nc", "arrcol=1,2,0&showtitle=1&delOld=0"),
            head +
                "<root_contact>\n\t<contact display_name=\"ann\" office_number=\"1\" />\n"
                "\t<contact display_name=\"b,&quot;&quot;&amp;&lt;\" office_number=\"2\" />\n"
                "\t<contact display_name=\"c\" />\n</root_contact>\n");
  EXPECT_EQ(document("a,b,c,d,e,f,g", "arrcol=7,6,5,4,3,x,99"),
            head +
                "<root_contact>\n\t<contact group_id_name=\"a\" ring=\"b\" line=\"c\" other_number=\"d\" "
                "mobile_number=\"e\" />\n</root_contact>\n");
  EXPECT_EQ(document("title", "arrcol=1&showtitle=1"), head + "<root_contact />\n");
}

TEST_F(ContactFiles, WhatIsMissingChangesNothing) {
  upload("ann\n");
  const std::string before = contacts();
  for (const char* fields : {"", "arrcol=1&showtitle=1&delOld=1"}) {
    announced();
    EXPECT_EQ(notice(act("importcsv", fields)), "Get CSVFile data error!") << fields;
    EXPECT_EQ(announced(), "");
  }
  act("exportxml");
  EXPECT_EQ(notice(act("importcsv", "arrcol=&delOld=1")), "Error:Invalid file!");
  EXPECT_EQ(notice(act("importxml")), "Error:Import contact file error!");
  EXPECT_EQ(contacts(), before);
  setState(R"({"talking":true})");
  for (const char* action : {"exportxml", "importxml", "uploadcvs", "importcsv", "exportcvs", "else"}) {
    EXPECT_EQ(act(action).variable("noticeLabel"), "setTimeout$notice$Talking, Please wait...") << action;
  }
}

TEST_F(ContactFiles, RowsBelongToTheSessionThatBroughtThem) {
  FakeSession others[4];
  upload("mine\n");
  for (FakeSession& other : others) {
    other.attributes["user"] = "admin";
    upload("theirs\n", "", &other);
    upload("theirs again\n", "", &other);
  }
  EXPECT_EQ(notice(act("importcsv", "arrcol=1&delOld=1")), "Get CSVFile data error!");  // four others came since
  std::swap(session, others[0]);
  EXPECT_EQ(act("importcsv", "arrcol=1&delOld=0").redirects, Messages{"/servlet?p=contactsbasic&q=load&num=1&group="});
  EXPECT_EQ(contacts(), kHeader + "theirs again,,,,-1,Auto,All Contacts,Default:default_contact_image.png,\r\n");
  pageHandler("contacts-preview").destory();
  EXPECT_EQ(notice(act("importcsv", "arrcol=1&delOld=1")), "Get CSVFile data error!");
}

TEST_F(ContactFiles, PicturesTravelWithTheirContacts) {
  const std::string folder = "/data/userdata/contact-image/";
  write(folder + "there.png", "stored");
  const std::string data = base64(picture());
  const auto photo = [&](const std::string& row, const std::string& columns) {
    const std::string text = document(row, "arrcol=" + columns);
    const std::size_t begin = text.find("default_photo=\"");
    return begin == std::string::npos ? "" : text.substr(begin + 15, text.find('"', begin + 15) - begin - 15);
  };
  const struct {
    std::string row, columns, photo;
  } rows[] = {
      {"ann,Resource:Contact1.png", "1,8", "Resource:Contact1.png"},
      {"ann,Config:there.png", "1,8", "Config:there.png"},
      {"ann,Config:../there.png", "1,8", ""},
      {"ann,Config:missing.png", "1,8", ""},
      {"ann,Config:there.png,", "1,8,9", "Config:there.png"},
      {"ann,Config:new one.png," + data, "1,8,9", "Config:new one.png"},
      {"ann,Config:bad.png," + base64("text"), "1,8,9", ""},
      {"ann,Config:bad.png,abc", "1,8,9", ""},
      {"ann,," + data, "1,8,9", "Config:ann.png"},
      {"an n," + data, "1,9", "Config:an n.png"},
      {data + ",ann", "9,1", ""},
      {"../ann," + data, "1,9", ""},
      {"x," + base64("text"), "1,9", ""},
  };
  for (const auto& [row, columns, expected] : rows) EXPECT_EQ(photo(row, columns), expected) << row.substr(0, 60);
  std::string names;
  for (const auto& entry : std::filesystem::directory_iterator(file(folder)))
    names += entry.path().filename().string() + "|";
  EXPECT_EQ(names.size(), std::string("there.png|new one.png|ann.png|an n.png|").size()) << names;
  EXPECT_NE(content(folder + "new one.png").find("PNG"), std::string::npos);

  upload("=1+1,Config:there.png\n");
  act("importcsv", "arrcol=1,8");
  EXPECT_EQ(contacts(), kHeader + "=1+1,,,,-1,Auto,All Contacts,Config:there.png," + base64("stored") + "\r\n");
}

TEST_F(ContactFiles, TheDirectoryAsFiles) {
  write(
      "/config/data/contact_list.xml",
      "<root_contact><contact display_name=\"a\" group_id_name=\"1\"/><contact display_name=\"b\" group_id_name=\"77\" "
      "line=\"2\"/></root_contact>");
  const RecordingResponse csv = act("exportcvs");
  EXPECT_EQ(csv.body, kHeader + "a,,,,,,Blacklist,,\r\nb,,,,2,,,,\r\n");
  EXPECT_EQ(csv.contentType, "text/xml;charset=UTF-8");
  EXPECT_EQ(csv.headers[0].second, "attachment; filename=contact.csv");
  for (const char* broken : {"", "<root_contact><contact display_name=\"a\"/>", "text"}) {
    write("/config/data/contact_list.xml", broken);
    EXPECT_EQ(contacts(), "\xEF\xBB\xBF") << broken;
  }
  setState(R"({"phoneType":19})");
  write("/config/data/contact_list.xml", "<root_contact/>");
  pageHandler("contacts-preview").init();
  EXPECT_EQ(contacts().substr(3),
            "display_name,office_number,mobile_number,other_number,ring,group_id_name,default_photo,photo_data\r\n");
  EXPECT_EQ(upload("a").column("phoneoptionloop", "index"), "0|1|2|3|4|6|7|8|9");
  setState(R"({"phoneType":46})");
  pageHandler("contacts-preview").init();
}

TEST_F(ContactFiles, XmlFilesReplaceTheDirectory) {
  EXPECT_EQ(uploadXml("<root_contact><group display_name=\"G\"/><contact display_name=\"ann\" office_number=\"1\" "
                      "group_id_name=\"G\"/></root_contact>")
                .redirects,
            Messages{"/servlet?p=contactsbasic&q=load&num=1&group=0"});
  const RecordingResponse exported = act("exportxml");
  EXPECT_EQ(exported.contentType + exported.headers[0].second, "text/xmlattachment; filename=contact.xml");
  EXPECT_EQ(exported.body, content(kExchange));
  EXPECT_NE(exported.body.find("ann"), std::string::npos);
  const std::string before = contacts();
  for (const auto& [text, why] : std::map<std::string, const char*>{
           {"", "Error:Invalid file!"},
           {"<root_contact>", "Error:Invalid file!"},
           {"<root_contact><contact display_name=\"x\"/><contact display_name=\"x\"/></root_contact>",
            "Error:Duplcate contact!"},
           {"<root_contact><contact office_number=\"1\"/></root_contact>", "Error:Contact name empty!"}}) {
    EXPECT_EQ(notice(uploadXml(text)), why) << text;
    EXPECT_FALSE(std::filesystem::exists(file(kExchange)));
    EXPECT_EQ(contacts(), before);
  }
  for (const auto& [code, text] : std::map<int, const char*>{{2, "Error:Duplicate group!"},
                                                             {4, "Error:Too many group!"},
                                                             {6, "Error:Too many blacklist!"},
                                                             {7, "Error:Invalid path!"},
                                                             {8, "Error:Group empty!"},
                                                             {10, "Error:No default group!"},
                                                             {11, "Error:No contact group!"},
                                                             {12, "Error:Contact is asyncing!"},
                                                             {13, "Error:Upload error!"},
                                                             {-1, "Error:Upload error!"}}) {
    setState(R"({"answers":{"app_hostapp 0x10007":)" + std::to_string(code) + "}}");
    EXPECT_EQ(notice(uploadXml("<root_contact/>")), text) << code;
    EXPECT_EQ(notice(act("exportxml")), "Error:Export contact file error!");
  }
}

}  // namespace
