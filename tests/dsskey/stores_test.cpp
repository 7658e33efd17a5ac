// Keys in their files: what is shown, what is stored, what is told.
#include <gmock/gmock.h>

#include "dsskey/page_files.h"
#include "tests/dsskey/key_model_test.h"

namespace {

using ::testing::HasSubstr;
using StoresTest = KeyModelTest;
using Lines = std::vector<std::string>;

TEST_F(StoresTest, ALockedLineKeyRepeats) {
  EXPECT_TRUE(save(DSSK_LINE, {"2 15 0/1//", "3 15 2/1/cut/no", "4 13 100/2/Ann & Bob/no"}));
  EXPECT_EQ(items("linekey.xml", {2, 3, 4, 12, 21, 22}),
            "2 15 0/1//, 3 15 2/1//, 4 13 100/2/Ann & Bob/, 12 15 2/1//, 21 15 2/1//, 22 0 /-1//");
  EXPECT_EQ(content("/config/user/hostapp.ini"),
            "[memory12]\nDKtype=15\nValue=2\nLine=1\n\n\n[memory21]\nDKtype=15\nValue=2\nLine=1\n\n\n"
            "[memory2]\nDKtype=15\nValue=0\nLine=1\n\n\n[memory3]\nDKtype=15\nValue=2\nLine=1\n\n\n"
            "[memory4]\nDKtype=13\nValue=100\nLine=2\nLabel=Ann & Bob\n");
  EXPECT_EQ(messages(), (Lines{"broadcast 0x10007 10 0", "broadcast 0x10007 2 0 [\x03\x0c\x15\x04]"}));
  EXPECT_EQ(shown(DSSK_LINE, {12}, 2), "12 15 2*/1*//");
  EXPECT_TRUE(model.IsLineKeyLocked(DSSK_LINE, nullptr, 21));
  EXPECT_FALSE(model.IsLineKeyLocked(DSSK_LINE, nullptr, 22) || model.IsLineKeyLocked(DSSK_EXT, nullptr, 3) ||
               model.IsLineKeyLocked(DSSK_LINE, nullptr, -1) || model.IsLineKeyLocked(DSSK_LINE, nullptr, 0));

  log.clear();
  EXPECT_TRUE(save(DSSK_LINE, {"3 -1 ///", "3 -1 0/0//"}));
  EXPECT_EQ(items("linekey.xml", {3, 12, 21}), "3 15 2/1//, 12 15 2/1//, 21 15 2/1//");
  EXPECT_EQ(messages(), Lines());
  const std::string none = "4 keyIndex = 3, dktype = -1";
  const std::string noneInIni = "4 DssKey_Model_Base::SetDsskey... pdsskey = null or dktype = -1";
  const std::string base = "6 call base model process dsskey data...";
  EXPECT_EQ(log, (Lines{none, none, base, noneInIni, noneInIni}));

  log.clear();
  EXPECT_TRUE(save(DSSK_LINE, {"3 15 0/1//"}));
  EXPECT_EQ(items("linekey.xml", {3, 12, 21}), "3 15 0/1//, 12 0 /-1//, 21 0 /-1//");
  EXPECT_THAT(content("/config/user/hostapp.ini"), HasSubstr("[memory21]\nDKtype=0\nValue=\nLine=-1\n"));
  EXPECT_EQ(messages(), (Lines{"broadcast 0x10007 10 0", "broadcast 0x10007 2 0 [\x03\x0c\x15]"}));
  const std::string unlocked = "6 write unlocked line : xml defalue value... iKeyIndex = ";
  const std::string line = "4 write ini file...DT_SIPTRUND", cleared = "4 write ini file...DT_NA";
  EXPECT_EQ(log, (Lines{unlocked + "12, value = ", line, cleared, unlocked + "21, value = ", line, cleared, base}));
}

TEST_F(StoresTest, WhatALockOnTheFirstPageMeansForTheOthers) {
  EXPECT_TRUE(save(DSSK_LINE, {"12 15 2/4//", "13 21 2/4//", "14 13 5/1//"}, 2));
  EXPECT_EQ(shown(DSSK_LINE, {12, 13, 14}, 2), "12 15 0*/4*//, 13 0 /-1//, 14 13 5*/1*/*/");
  DssKey key;
  key.keyIndex = 12;
  key.dktype = DT_BLF;
  EXPECT_TRUE(model.GetDsskey(&key, DSSK_LINE, 2, true));
  EXPECT_EQ(key.dktype, DT_BLF);
  EXPECT_EQ(choices(key.line.choices), "0=Line 1, 1=Line 2, 2=Line 3, 3=Line 4, 4=Line 5, 5=Line 6");
  EXPECT_TRUE(save(DSSK_LINE, {"3 15 2/4//"}));
  EXPECT_TRUE(model.GetDsskey(&key, DSSK_LINE, 2, true));
  EXPECT_EQ(key.dktype, DT_SIPTRUND);
  EXPECT_EQ(choices(key.value.choices), "0=default, 1=float, 2=lock");
}

TEST_F(StoresTest, KeysOfModulesAndProgrammableKeys) {
  setConfig("BSFTActive", "1");
  setState(R"({"expansionModules":[{"type":5},{"type":5}]})");
  Key_Display display;
  model.GetKeyIndexList(&display, DSSK_EXT, 2);
  messages();
  EXPECT_TRUE(save(DSSK_EXT, {"0 55 9/0/Meet/1234", "39 22 v/1/Books/"}, 2));
  EXPECT_TRUE(save(DSSK_EXT, {"0 55 8/0/Meet/******"}, 2));
  EXPECT_TRUE(save(DSSK_EXT, {"0 55 8/0/Meet/******"}, 2));
  EXPECT_EQ(items("expkey1.xml", {1, 40}), "1 55 8/0/Meet/1234, 40 22 /1/Books/");
  EXPECT_EQ(content("/config/user/Xm38_00000000000002.cfg"),
            "[key0]\nDKtype=55\nValue=8\nLine=0\nLabel=Meet\nPickupValue=1234\n\n\n[key39]\nDKtype=22\nXMLPhoneBook=1\n"
            "Label=Books\n");
  EXPECT_EQ(messages(), (Lines{"broadcast 0x10007 10 0", "broadcast 0x10007 25 1 [\x01\x28]", "broadcast 0x10007 10 0",
                               "broadcast 0x10007 25 1 [\x01]"}));
  EXPECT_TRUE(save(DSSK_PROGRAM, {"2 28 x/1/Calls/", "5 13 7/2/none/"}));
  EXPECT_EQ(items("programkey.xml", {2, 5}), "2 28 /1/Calls/, 5 13 7/2//");
  EXPECT_FALSE(std::filesystem::exists(file("/config/user/hostapp.ini")));
  EXPECT_FALSE(model.SetFactoryDsskeyList(DSSK_LINE));
  EXPECT_TRUE(model.SetFactoryDsskeyList(DSSK_PROGRAM));
  EXPECT_EQ(content("/config/data/programkey.xml"), content("/phone/factory/data/programkey.xml"));
  const std::string root = file("/").parent_path().string();
  EXPECT_EQ(messages(),
            (Lines{"broadcast 0x10007 31 0",
                   "system shell cp '-pf' '" + root + "/phone/factory/data/programkey.xml' '" + root + "/config/data/'",
                   "broadcast 0x10007 31 0"}));
  std::vector<std::string> many;
  for (int i = 0; i < 70; ++i) many.push_back(std::to_string(i) + " 5 ///");
  EXPECT_TRUE(save(DSSK_EXT, many, 1));
  EXPECT_EQ(messages()[1].size(), std::string("broadcast 0x10007 25 0 []").size() + 63);
}

TEST_F(StoresTest, BadKeyFilesStayAsTheyAre) {
  std::string manyItems = "<dsskey>";
  for (int i = 0; i < 10000; ++i) manyItems += "<item type='5'/>";
  manyItems += "</dsskey>";
  const std::string itemless =
      "<?xml version=\"1.0\"?>\n<dsskey>\n\t<item />\n\t<item type=\"5\">\n\t\t<itemdata value=\"\" "
      "line=\"-1\" label=\"\" extension=\"\" />\n\t</item>\n</dsskey>\n";
  const struct {
    std::string stored, shown, saved;  // saved: empty when a save is refused
  } kRows[] = {
      {"", "none, none", itemless},
      {" \n", "none, none", itemless},
      {"<dsskey/>", "none, none", itemless},
      {"<dsskey><item type='13'><itemdata value='1' line=", "none, none", ""},
      {"<programkey><item type='5'/></programkey>", "none, none", ""},
      {"no xml", "none, none", ""},
      {"<dsskey><item type='13'/><item type='x'><itemdata value='v'/></item></dsskey>", "1 13 */0*/*/, 2 0 ///",
       "<?xml version=\"1.0\"?>\n<dsskey>\n\t<item type=\"13\" />\n\t<item type=\"5\">\n\t\t<itemdata value=\"v\" "
       "line=\"-1\" label=\"\" extension=\"\" />\n\t</item>\n</dsskey>\n"},
      {"<dsskey><item type='14'><itemdata value='&lt;\"&#10;%s?$' label='&amp;amp;'/></item></dsskey>",
       "1 14 <\"\n%s?$*/*/&amp;*/, none",
       "<?xml version=\"1.0\"?>\n<dsskey>\n\t<item type=\"14\">\n\t\t<itemdata value=\"&lt;&quot;&#10;%s?$\" "
       "label=\"&amp;amp;\" />\n\t</item>\n\t<item type=\"5\">\n\t\t<itemdata value=\"\" line=\"-1\" label=\"\" "
       "extension=\"\" />\n\t</item>\n</dsskey>\n"},
      {manyItems, "1 5 /0/*/, 2 5 /0/*/", "*"},
  };
  for (const auto& row : kRows) {
    write("/config/data/linekey.xml", row.stored);
    EXPECT_EQ(shown(DSSK_LINE, {1, 2}), row.shown);
    EXPECT_EQ(save(DSSK_LINE, {"2 5 ///"}), !row.saved.empty());
    const std::string expected = row.saved.empty() ? row.stored : row.saved;
    EXPECT_TRUE(row.saved == "*" || content("/config/data/linekey.xml") == expected)
        << content("/config/data/linekey.xml");
  }
  std::filesystem::remove(file("/config/data/linekey.xml"));
  messages();
  log.clear();
  EXPECT_EQ(shown(DSSK_LINE, {1}), "none");
  EXPECT_FALSE(save(DSSK_LINE, {"2 5 ///"}) || save(DSSK_MEMORY, {"1 5 ///"}) || save(DSSK_LINE, {"28 5 ///"}, 4) ||
               save(DSSK_EXT, {"0 5 ///"}, 0) || save(DSSK_EXT, {"0 5 ///"}, 2147483647));
  const std::string open = "4 Open the dsskey xml error!", data = "4 paramer data error!";
  EXPECT_EQ(log, (Lines{open, "4 Can't find the item node! iKeyIndex = 1", open, data, data, open, open}));
  EXPECT_EQ(messages(), Lines());
}

TEST_F(StoresTest, APageEndsAtTheFirstKeyThatCannotBeRead) {
  write("/config/data/linekey.xml", "<dsskey><item type='5'/><item type='49'/></dsskey>");
  OrbList<DssKey> list;
  Key_Display display{kKeyRange, 1, 3, {}};
  EXPECT_FALSE(model.GetDsskeyList(&list, DSSK_LINE, &display, 1));
  for (const int index : {1, 9}) display.keyIndexList.push_back(index);
  EXPECT_FALSE(model.GetDsskeyList(&list, DSSK_LINE, &display, 1));
  EXPECT_EQ(list.size(), 2u);
  EXPECT_EQ(list.back().dktype, 0);
  EXPECT_FALSE(model.GetDsskeyList(nullptr, DSSK_LINE, &display, 1) ||
               model.GetDsskeyList(&list, DSSK_LINE, nullptr, 1) || model.GetDsskey(nullptr, DSSK_LINE, 1, false) ||
               model.SetDsskeyList(DSSK_LINE, nullptr, 1, true) || model.GetBlfListDssKey(nullptr, DSSK_LINE) ||
               model.SendMessage(DSSK_LINE, nullptr, 1));
}

TEST_F(StoresTest, AKeyWithoutAPlaceIsSkipped) {
  EXPECT_TRUE(save(DSSK_LINE, {"2 5 ///", "-3 5 ///", "3 5 ///"}));
  EXPECT_EQ(items("linekey.xml", {1, 2, 3, 4}), "1 15 0/0//, 2 5 0/1//, 3 5 0/2//, 4 15 0/3//");
  EXPECT_THAT(log, ::testing::Contains("4 Get item node error! iKeyIndex = -3"));
}

TEST_F(StoresTest, FilesArePartOfOnePage) {
  write("/tmp/a.xml", "<a/>");
  {
    const PageFiles outer;
    EXPECT_TRUE(PageFiles::xml("/tmp/a.xml")->child("a"));
    write("/tmp/a.xml", "<b/>");
    const PageFiles inner;
    EXPECT_TRUE(PageFiles::xml("/tmp/a.xml")->child("a"));
  }
  EXPECT_TRUE(PageFiles::xml("/tmp/a.xml")->child("b"));
  EXPECT_EQ(PageFiles::xml("/tmp/none.xml"), nullptr);
}

TEST_F(StoresTest, BusyLamps) {
  const struct {
    const char* list;
    DSSK_MODEL_TYPE family;
    int keyIndex;
    const char* key;
  } kRows[] = {
      {"2?v1?l2?e3$3?x100?xBob?x", DSSK_LINE, 3, "3 39 100/2*/Bob/"},
      {"2?v1?l2?e3$3?x100?xBob?x", DSSK_EXT, 2, "2 39 100/2*/Bob/"},
      {"3??lB$3?v2?l2?e2", DSSK_LINE, 3, "3 39 /2*/B/"},
      {"3?v1?l2?e3?more?", DSSK_EXT, 2, "2 39 1/2*/2/3"},
      {"3", DSSK_LINE, 3, "3 39 /2*//"},
      {"x?v$99999999999?v$-3?v$", DSSK_LINE, 3, "3 39 /2*//"},
      {"", DSSK_LINE, 3, "3 39 /2*//"},
  };
  setConfig("BSFTActive", "1");
  const std::string item = "<item type='39'><itemdata value='own' line='2' label='own' extension='own'/></item>";
  for (const char* name : {"/config/data/linekey.xml", "/config/data/expkey0.xml"})
    write(name, "<dsskey>" + item + item + item + "</dsskey>");
  for (const auto& row : kRows) {
    write("/tmp/tmpBLFListValues", row.list);
    EXPECT_EQ(shown(row.family, {row.keyIndex}), row.key) << row.list;
  }
}

}  // namespace
