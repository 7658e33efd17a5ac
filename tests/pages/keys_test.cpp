// The page of keys: which keys it shows, what it tells of a type, and what a save stores.
#include <atomic>
#include <chrono>
#include <thread>

#include "platform/named_lock.h"
#include "tests/support/page_test.h"

namespace {

class KeyPages : public PageTest {
 protected:
  // The key model takes the phone's type when it is made.
  void restartPage(const char* state) {
    setState(state);
    pageHandler("dsskey").destory();
    pageHandler("dsskey").init();
  }
  ~KeyPages() override { restartPage(R"({"phoneType":46})"); }
};

constexpr char kFirstKeys[] =
    "<dsskey><item type='13'><itemdata value='50%&lt;b>' line='1' label='A&amp;amp;B' extension=''/></item>"
    "<item type='15'><itemdata value='2' line='0'/></item><item type='49'><itemdata extension='1234'/></item></dsskey>";

TEST_F(KeyPages, EachFamilyHasItsTemplateAndKeys) {
  setState(
      R"({"expansionModules":[{"type":0,"hardware":"1","firmware":"2"},{"type":0,"hardware":"1","firmware":"2"}]})");
  // Fields, template, keys, further rows.
  const std::tuple<const char*, std::string, std::size_t, const char*, const char*, const char*> rows[] = {
      {"", "linekey", 9, "1", "TRLoop", "1|2|3|4|5|6|7|8|9"},
      {"model=abc&linepage=3", "linekey", 9, "3", "TRLoop", "19|20|21|22|23|24|25|26|27"},
      {"model=1&linepage=4", "linekey", 0, "4", "TRLoop", ""},
      {"model=1&linepage=99999999999", "linekey", 0, "-1", "TRLoop", ""},
      {"model=2&linepage=3", "programkey", 13, "1", "TRLoop", "1|2|3|4|5|6|7|8|9|10|12|13|14"},
      {"model=3&extno=", "ext", 38, "1", "extLoop", "1|2"},
      {"model=3&extno=2", "ext", 38, "2", "extLoop", "1|2"},
      {"model=3&extno=3", "ext", 0, "3", "extLoop", "1|2"},
      {"model=3&extno=-1", "ext", 0, "-1", "extLoop", "1|2"},
      {"model=3&extno=..%2f1", "ext", 0, "0", "extLoop", "1|2"},
  };
  for (const auto& [fields, name, count, number, loop, numbers] : rows) {
    const RecordingResponse page = load("dsskey", fields);
    EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/dsskey-" + name + ".htm"}) << fields;
    EXPECT_EQ(page.loops.at("TRLoop").size(), count) << fields;
    EXPECT_EQ(page.variable("linepage"), number) << fields;
    EXPECT_EQ(page.column(loop, std::string_view(loop) == "TRLoop" ? "row" : "devValue"), numbers) << fields;
  }
  const RecordingResponse module = load("dsskey", "model=3&extno=2");
  EXPECT_EQ(module.column("extLoop", "selected"), "0|1");
  EXPECT_EQ(module.loops.at("TRLoop").at(19).at("middle"), "true");
  EXPECT_EQ(module.loops.at("TRLoop").at(18).at("middle"), "false");
  EXPECT_EQ(load("dsskey", "model=2").column("TRLoop", "ProgramKeyName"),
            "SoftKey1|SoftKey2|SoftKey3|SoftKey4|Up|Down|Left|Right|OK|Cancel|HOLD|MUTE|TRAN");
  EXPECT_EQ(load("dsskey", "model=0").status, 404);
  for (const char* family : {"model=4", "model=-1", "model=99999999999"}) {
    EXPECT_TRUE(load("dsskey", family).untouched()) << family;
  }
  restartPage(R"({"phoneType":26})");
  EXPECT_EQ(load("dsskey").status, 404);
  restartPage(R"({"phoneType":19})");
  EXPECT_EQ(load("dsskey", "model=3&extno=2").column("TRLoop", "row"), "1|2|3|4|5|6|7|8|9|10|12|13|14");
}

TEST_F(KeyPages, AKeyIsShownWithItsParametersAndChoices) {
  write("/config/data/linekey.xml", kFirstKeys);
  const RecordingResponse page = load("dsskey", "model=1");
  EXPECT_EQ(columns(page, "TRLoop", "selType selLine lineEnable valueEnable labelEnable extEnable linelock"),
            "13|15|0, 1|0|, true|true|false, true|true|false, true|false|false, false|false|false, false|true|false");
  EXPECT_EQ(columns(page, "TRLoop", "memValue memLabel withvaluelist"),
            "50%<b>|2|, A&amp;amp;B||, (absent)|true|(absent)");
  EXPECT_TRUE(page.column("TypeLoop", "selName").starts_with("N/A|Line|Speed Dial|BLF|Voice Mail|Direct Pickup|"));
  EXPECT_EQ(page.variable("EnablePageTips DsskeyLength AutoBlfListEnable"), "0|0|1");
  EXPECT_EQ(page.variable("ShowLevel"),
            "dsskey-programkey=1&dsskey-memorykey=3&dsskey-linekey=2&dsskey-extkey=2$DSSKeyLineKey=2");
}

TEST_F(KeyPages, TheBusyLampsAreAskedForAndForgotten) {
  setConfig("BSFTActive", "1");
  setState(R"({"expansionModules":[{"type":1,"hardware":"1","firmware":"2"}]})");
  const std::pair<const char*, const char*> rows[] = {
      {"model=1", "send app_hostapp 0x3001e 0 0"},
      {"model=2", ""},
      {"model=3&extno=1", "send app_hostapp 0x3001e 2 1; send app_hostapp 0x3000e 0 0"}};
  for (const auto& [fields, messages] : rows) {
    load("dsskey", fields);
    EXPECT_EQ(announced(), messages);
    EXPECT_FALSE(exists(file("/tmp/tmpBLFListValues")));
  }
}

TEST_F(KeyPages, TellWhatAChosenTypeNeeds) {
  write("/config/data/linekey.xml", kFirstKeys);
  write("/config/data/contact_group_list.xml", "<g><group display_name='A\",\"%s'/></g>");
  const std::string sixLines =
      R"({keys:["0","1","2","3","4","5"],values:["Line 1","Line 2","Line 3","Line 4","Line 5","Line 6"]})";
  const std::pair<const char*, std::string> rows[] = {
      {"model=1&dktype=16&keyindex=1",
       R"({controller:{keyindex:1,dktype:16,bValue:1,bLine:1,bLabel:1,bExt:1},attrvalue:{strvalue:"50%%<b>",)"
       R"(strline:"1",strlabel:"A&amp;B",strext:""},linelist:)" +
           sixLines + "}"},
      {"model=1&dktype=15&keyindex=3",
       R"({controller:{keyindex:3,dktype:15,bValue:1,bLine:1,bLabel:0,bExt:0},attrvalue:{strvalue:"",strline:"",)"
       R"(strlabel:"",strext:""},valuelist:{keys:["0","1","2"],values:["default","float","lock"]},linelist:)" +
           sixLines + "}"},
      {"model=1&dktype=55&keyindex=3",
       R"({controller:{keyindex:3,dktype:55,bValue:1,bLine:1,bLabel:1,bExt:1},attrvalue:{strvalue:"",strline:"",)"
       R"(strlabel:"",strext:"******"},linelist:)" +
           sixLines + "}"},
      {"model=1&dktype=45&keyindex=1",
       R"({controller:{keyindex:1,dktype:45,bValue:0,bLine:1,bLabel:1,bExt:0},attrvalue:{strvalue:"",strline:"1",)"
       R"(strlabel:"A&amp;B",strext:""},linelist:{keys:["0"],values:["A","%%s"]}})"},
  };
  for (const auto& [fields, text] : rows) {
    const RecordingResponse answer = run("dsskey", "typeChanged", fields);
    EXPECT_EQ(answer.body, text);
    EXPECT_EQ(answer.contentType, "text/json");
  }
  const std::pair<const char*, const char*> refused[] = {
      {"model=1&dktype=16", "KeyIndex, dktype or modeltype's value is null"},
      {"model=1&keyindex=1", "KeyIndex, dktype or modeltype's value is null"},
      {"dktype=1&keyindex=1", "KeyIndex, dktype or modeltype's value is null"},
      {"model=3&dktype=1&keyindex=0&extno=", "can't get extno"},
      {"model=3&dktype=1&keyindex=0&extno=-2147483648", "Get type change data error!"},
      {"model=3&dktype=1&keyindex=x&extno=1", "Get type change data error!"},
      {"model=7&dktype=1&keyindex=1", "Get type change data error!"},
      {"model=1&dktype=1&keyindex=-2147483648", "Get type change data error!"},
      {"model=1&dktype=1&keyindex=99999999999", "Get type change data error!"}};
  for (const auto& [fields, line] : refused) {
    EXPECT_TRUE(run("dsskey", "typeChanged", fields).untouched()) << fields;
    EXPECT_EQ(log.back(), std::string("4 ") + line) << fields;
  }
}

TEST_F(KeyPages, SavesStoreAndTellWhatChanged) {
  setState(R"({"expansionModules":[{"type":1,"hardware":"1","firmware":"2"}]})");
  // What is posted, where it leads, the messages, and the types and values that the page shows then.
  const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
      {"model=1&linepage=2&selType_10=13&memValue_10=10%25&selLine_10=1&EnablePageTips=1&DsskeyLength=0",
       "model=1&q=load&linepage=2", "broadcast 0x10007 91 0; broadcast 0x10007 10 0; broadcast 0x10007 2 0 [\n]",
       "13|0|0|0|0|0|0|0|0"},
      {"model=2&selType_14=5", "model=2&q=load", "broadcast 0x10007 31 0", "28|43|5|30|28|43|31|31|33|0|0|0|5"},
      {"model=3&extno=1&selType_1=16&memValue_1=7&EnablePageTips=0", "model=3&q=load&extno=1",
       "send app_hostapp 0x3000e 0 0; broadcast 0x10007 10 0; broadcast 0x10007 25 0 [\x02]", "0|16|0|"},
  };
  for (const auto& [fields, target, messages, types] : rows) {
    announced();
    EXPECT_EQ(save("dsskey", fields).redirects, Messages{std::string("/servlet?p=dsskey&") + target});
    EXPECT_EQ(announced(), messages);
    EXPECT_TRUE(load("dsskey", target).column("TRLoop", "selType").starts_with(types)) << fields;
  }
  EXPECT_EQ(config("EnablePageTips DsskeyLength"), "1|0");
  const std::string before = everythingStored();
  const std::pair<const char*, const char*> refused[] = {
      {"model=1&selType_1=5", "Get line page error!"},
      {"model=3&extno=&selType_1=5", "Get ext index error!"},
      {"selType_1=5", "Dsskey model write config data error!"},
      {"model=1&linepage=0&selType_1=5&EnablePageTips=0", "Dsskey model write config data error!"},
      {"model=1&linepage=99999999999&selType_1=5", "Dsskey model write config data error!"},
      {"model=3&extno=2&selType_1=5", "Dsskey model write config data error!"},
      {"model=99999999999&selType_1=5", "Dsskey model write config data error!"}};
  for (const auto& [fields, line] : refused) {
    EXPECT_TRUE(save("dsskey", fields).untouched()) << fields;
    EXPECT_EQ(log.back(), std::string("4 ") + line) << fields;
  }
  EXPECT_TRUE(everythingStored() == before);
}

TEST_F(KeyPages, ALockedKeyStandsOnAllPagesAndThatShows) {
  save("dsskey", "model=1&linepage=1&selType_3=15&memValue_3=2&selLine_3=4");
  for (const char* page : {"model=1&linepage=1", "model=1&linepage=2", "model=1&linepage=3"}) {
    const RecordingResponse shown = load("dsskey", page);
    EXPECT_EQ(shown.column("TRLoop", "linelock"), "false|false|true|false|false|false|false|false|false") << page;
    EXPECT_EQ(shown.loops.at("TRLoop").at(2).at("selLine"), "4") << page;
  }
}

TEST_F(KeyPages, OnlyProgrammableKeysAreRestored) {
  save("dsskey", "model=2&selType_1=5");
  EXPECT_EQ(run("dsskey", "reset", "model=2").redirects, Messages{"/servlet?p=dsskey&model=2&q=load"});
  EXPECT_TRUE(load("dsskey", "model=2").column("TRLoop", "selType").starts_with("28|43|"));
  for (const char* fields : {"", "model=1", "model=x"}) {
    EXPECT_EQ(run("dsskey", "reset", fields).variable("noticeLabel"),
              "setTimeout$dsskey$Error: Write dsskey config error!");
  }
  setState(R"({"talking":true})");
  for (const char* action : {"reset", "write"}) {
    EXPECT_EQ(run("dsskey", action, "model=2&selType_1=5").variable("noticeLabel"),
              "setTimeout$notice$Talking, Please wait...");
  }
  EXPECT_EQ(run("dsskey", "delete").status, 404);
}

TEST_F(KeyPages, WaitWhileAnotherProcessHoldsTheKeys) {
  for (const char* action : {"load", "write"}) {
    ETL_BaseHelper::chMutex mutex;
    ASSERT_TRUE(mutex.OpenMutex("DsskeyFile") && mutex.Lock(-1));
    std::atomic<bool> isDone = false;
    std::thread request([&] {
      const TemplateArena arena;
      run("dsskey", action, "model=1&linepage=1");
      isDone = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(isDone) << action;
    mutex.Unlock();
    request.join();
    EXPECT_TRUE(mutex.Lock(0)) << action << " gave the lock back";
  }
}

}  // namespace
