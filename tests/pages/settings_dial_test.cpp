// The dial plan: replace rules, dial-now rules and blocked numbers.
#include <algorithm>
#include <regex>

#include "tests/support/page_test.h"

namespace {

constexpr char kPlan[] = "/config/data/DialPlan.xml";
constexpr char kNow[] = "/config/data/DialNow.xml";
constexpr char kBlock[] = "/config/data/DialBlock.xml";
const std::string kFiles[] = {kPlan, kNow, kBlock};
const std::string kPages[] = {"settings-dialplan", "settings-dialnow", "settings-blackout"};

class DialPages : public PageTest {
 protected:
  // Rules named 1, 2, 3, ... in the file of each page.
  void haveRules(int count) {
    std::string rules;
    for (int i = 1; i <= count; ++i) {
      const std::string text = std::to_string(i);
      rules += "<Data Prefix='" + text + "' Replace='r' DialNowRule='" + text + "' LineID='1' rule='" + text + "'/>";
    }
    for (const std::string& path : kFiles) write(path, "<any>" + rules + "</any>");
  }
  // The values of an attribute in a file, joined by "|".
  std::string stored(const std::string& path, const std::string& attribute) const {
    std::string all;
    const std::string text = content(path);
    const std::regex pattern(" " + attribute + "=\"([^\"]*)\"");
    for (std::sregex_iterator found(text.begin(), text.end(), pattern), end; found != end; ++found) {
      all += (all.empty() ? "" : "|") + (*found)[1].str();
    }
    return all;
  }
  // Where an action leads, and what it tells the phone.
  std::string outcome(const std::string& page, const std::string& action, const std::string& fields) {
    announced();
    const RecordingResponse answer = run(page, action, fields);
    return (answer.redirects.empty() ? answer.variable("noticeLabel") : answer.redirects.at(0)) + " " + announced();
  }
};

const std::string kPlanChanged = "/servlet?p=settings-dialplan&q=load post app_hostapp 0x10007 4 0";
const std::string kNowChanged = "/servlet?p=settings-dialnow&q=load post app_hostapp 0x10007 6 0";

TEST_F(DialPages, ShortListsAreFilledUpAndLongOnesCut) {
  // Rules; rows of the pages of 100 and of that of 10; the number of rows that are empty in each.
  const std::tuple<int, long, long, long> table[] = {{0, 10, 10, 10},   {3, 10, 10, 7},    {8, 10, 10, 2},
                                                     {9, 9, 9, 0},      {10, 10, 10, 0},   {11, 11, 10, 0},
                                                     {100, 100, 10, 0}, {120, 100, 10, 0}, {10000, 100, 10, 0}};
  for (const auto& [rules, rows, entries, empty] : table) {
    haveRules(rules);
    const std::pair<std::string, std::string> names[] = {{"textPrefix", "2"}, {"textRule", "2"}, {"BlackOut", "10"}};
    for (std::size_t i = 0; i < 3; ++i) {
      const RecordingResponse page = load(kPages[i]);
      const auto& loop = page.loops.at("TRLoop");
      EXPECT_EQ(static_cast<long>(loop.size()), i < 2 ? rows : entries) << kPages[i] << " " << rules;
      EXPECT_EQ(std::ranges::count(loop, "", [&](const auto& row) { return row.at(names[i].first); }), empty);
      EXPECT_EQ(loop.back().at("row"), std::to_string(loop.size()));
      EXPECT_EQ(page.variable("max supportTR069"), i < 2 ? "100|true" : "(absent)|true");
    }
  }
  haveRules(2);
  EXPECT_EQ(columns(load("settings-dialplan"), "TRLoop", "setColor textPrefix textReplace textAccount"),
            "0|1|0|1|0|1|0|1|0|1, 1|2||||||||, r|r||||||||, 1|1||||||||");
  EXPECT_FALSE(load("settings-blackout").loops.at("TRLoop").at(0).contains("setColor"));
}

TEST_F(DialPages, RulesAreAddedAndEditedByTheirNumbers) {
  const std::string texts = "editPrefix=<a&editReplace=$1&editAccount=1,2";
  // Action and fields, the prefixes and the accounts that are stored then.
  const std::tuple<std::string, std::string, std::string, std::string> rows[] = {
      {"add", texts, "1|2|3|&lt;a", "1|1|1|1,2"},
      {"add", "", "1|2|3|", "1|1|1|"},
      {"edit", "currentIndex=1&" + texts, "&lt;a|2|3", "1,2|1|1"},
      {"edit", "currentIndex=3&editPrefix=", "1|2|", "1|1|1"},
      {"edit", texts, "1|2|3", "1|1|1"},
      {"edit", "currentIndex=0&" + texts, "1|2|3", "1|1|1"},
      {"edit", "currentIndex=4&" + texts, "1|2|3", "1|1|1"},
      {"edit", "currentIndex=-1&" + texts, "1|2|3", "1|1|1"},
      {"edit", "currentIndex=99999999999&" + texts, "1|2|3", "1|1|1"},
      {"edit", "currentIndex=1x&" + texts, "1|2|3", "1|1|1"}};
  for (const auto& [action, fields, prefixes, accounts] : rows) {
    haveRules(3);
    EXPECT_EQ(outcome("settings-dialplan", action, fields), kPlanChanged);
    EXPECT_EQ(stored(kPlan, "Prefix"), prefixes) << action << " " << fields;
    EXPECT_EQ(stored(kPlan, "LineID"), accounts) << action << " " << fields;
  }
  EXPECT_EQ(outcome("settings-dialnow", "edit", "currentIndex=2&editRule=[1-3]x&editAccount="), kNowChanged);
  EXPECT_EQ(stored(kNow, "DialNowRule") + " " + stored(kNow, "LineID"), "1|[1-3]x|3 1||1");
  // What a rule lacks it does not get.
  write(kNow, "<r>text<other DialNowRule='7'/><!-- --></r>");
  EXPECT_EQ(outcome("settings-dialnow", "edit", "currentIndex=1&editRule=8&editAccount=2"), kNowChanged);
  EXPECT_EQ(outcome("settings-dialnow", "add", "editRule=9&editAccount=1"), kNowChanged);
  EXPECT_EQ(content(kNow),
            "<?xml version=\"1.0\"?>\n<r>text<other DialNowRule=\"8\" />\n\t<Data DialNowRule=\"9\" "
            "LineID=\"1\" />\n</r>\n");
}

TEST_F(DialPages, DeletingFollowsTheListOfNumbers) {
  const std::pair<std::string, std::string> rows[] = {
      {"2,5", "1|3|4"},   {"5,2", "1|2|3|4"},   {"1,2,3,4,5", ""},    {"0,1", "1|2|3|4|5"}, {"1,,2", "2|3|4|5"},
      {",", "1|2|3|4|5"}, {"1,x,2", "2|3|4|5"}, {"1,1,2", "2|3|4|5"}, {"6", "1|2|3|4|5"},   {"-1,2", "1|2|3|4|5"}};
  for (const auto& [numbers, left] : rows) {
    haveRules(5);
    EXPECT_EQ(outcome("settings-dialplan", "del", "recountNum=" + numbers), kPlanChanged);
    EXPECT_EQ(outcome("settings-dialnow", "del", "recountNum=" + numbers), kNowChanged);
    EXPECT_EQ(stored(kPlan, "Prefix"), left) << numbers;
    EXPECT_EQ(stored(kNow, "DialNowRule"), left) << numbers;
  }
  const std::string before = content(kPlan);
  EXPECT_EQ(outcome("settings-dialplan", "del", ""), "/servlet?p=settings-dialplan&q=load ");
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(outcome("settings-dialplan", "del", "recountNum="), "/servlet?p=settings-dialplan&q=load ");
  EXPECT_EQ(log.back(), "4 pStrRecountNum is empty");
  EXPECT_EQ(content(kPlan), before);
}

TEST_F(DialPages, DialNowTakesAHundredRules) {
  haveRules(99);
  EXPECT_EQ(outcome("settings-dialnow", "add", "editRule=last"), kNowChanged);
  EXPECT_TRUE(run("settings-dialnow", "add", "editRule=more").untouched());
  EXPECT_EQ(log.back(), "4 SettingsDialnowServlet::Add() too many dialNow Rules");
  EXPECT_EQ(load("settings-dialnow").loops.at("TRLoop").back().at("textRule"), "last");
  haveRules(100);
  EXPECT_EQ(outcome("settings-dialplan", "add", "editPrefix=more"), kPlanChanged);
  EXPECT_TRUE(stored(kPlan, "Prefix").ends_with("|100|more"));
}

TEST_F(DialPages, PhonesWithOneAccountHaveNoChoiceOfIt) {
  const auto begin = [](const char* type) {
    setState(std::string(R"({"phoneType":)") + type + "}");
    for (const std::string& page : kPages) pageHandler(page).init();
  };
  begin("19");
  haveRules(1);
  for (const char* action : {"add", "edit"}) {
    run("settings-dialplan", action, "currentIndex=1&editPrefix=5&editReplace=6&editAccount=7");
    run("settings-dialnow", action, "currentIndex=1&editRule=5&editAccount=7");
  }
  for (const std::string page : {"settings-dialplan", "settings-dialnow"}) {
    EXPECT_FALSE(load(page).loops.at("TRLoop").at(0).contains("textAccount"));
  }
  EXPECT_EQ(stored(kPlan, "Prefix") + " " + stored(kPlan, "LineID"), "5|5 1");
  EXPECT_EQ(stored(kNow, "DialNowRule") + " " + stored(kNow, "LineID"), "5|5 1");
  EXPECT_EQ(load("settings-blackout").column("TRLoop", "Account"), "|||||||||");
  begin("46");
}

TEST_F(DialPages, BrokenFilesAreNotShownAndStay) {
  const std::tuple<int, std::string, std::string> rows[] = {
      {0, "load", "SettingsDialplanServlet::loadConfig() error"},    {0, "add", "SettingsDialplanServlet::Add() error"},
      {0, "edit", "SettingsDialplanServlet::Edit() error"},          {0, "del", "SettingsDialplanServlet::Del() error"},
      {1, "load", "SettingsDialnowServlet::loadConfig() End error"}, {1, "add", "SettingsDialnowServlet::Add() error"},
      {1, "edit", "SettingsDialnowServlet::Edit() error"},           {1, "del", "SettingsDialnowServlet::Del() error"},
      {2, "load", "SettingsBlackoutServlet::loadConfig() error"}};
  for (const auto& [index, action, line] : rows) {
    const auto page = static_cast<std::size_t>(index);
    for (const char* text : {"", "<?xml version='1.0'?>", "text", "<a><Data Prefix='1'/>", "\xff\xfe<"}) {
      write(kFiles[page], text);
      announced();
      EXPECT_TRUE(run(kPages[page], action, "recountNum=1&currentIndex=1").untouched()) << action << " of " << text;
      EXPECT_EQ(log.back(), "4 " + line + " to get root element");
      EXPECT_EQ(content(kFiles[page]) + announced(), text);
    }
    std::filesystem::remove(file(kFiles[page]));
    EXPECT_TRUE(run(kPages[page], action, "recountNum=1").untouched());
    EXPECT_FALSE(std::filesystem::exists(file(kFiles[page])));
  }
}

TEST_F(DialPages, ACallAndTextsThatCannotBeStoredLeaveTheFiles) {
  haveRules(2);
  const std::string before = content(kPlan) + content(kNow) + content(kBlock);
  const std::tuple<int, std::string, std::string> rows[] = {
      {0, "add", "DialPlan.xml"},   {0, "edit", "DialPlan.xml"}, {0, "del", ""},
      {1, "add", "DialNow.xml"},    {1, "edit", "DialNow.xml"},  {1, "del", ""},
      {2, "write", "DialBlock.xml"}};
  const std::string fields = "currentIndex=2&recountNum=1&editPrefix=a\x01&editRule=\x1f&BlackOut_3=\x02";
  for (const auto& [index, action, name] : rows) {
    const std::string& page = kPages[static_cast<std::size_t>(index)];
    setState(R"({"talking":true})");
    EXPECT_EQ(outcome(page, action, fields), "setTimeout$notice$Talking, Please wait... ");
    setState(R"({"talking":false})");
    if (!name.empty()) {
      EXPECT_EQ(outcome(page, action, fields), "setTimeout$" + page + "$Error:Write " + name + " error! ");
    }
    EXPECT_EQ(content(kPlan) + content(kNow) + content(kBlock), before) << page << " " << action;
  }
  setState(R"({"talking":true})");
  EXPECT_EQ(load("settings-dialplan").templates.size(), 1u);
  EXPECT_EQ(run("settings-dialplan", "Load").status + run("settings-blackout", "add").status, 808);
}

TEST_F(DialPages, BlockedNumbersAreStoredAllAtOnce) {
  std::filesystem::remove(file(kBlock));
  const std::string long_ = std::string(4096, 'x') + "\n\t'";
  const RecordingResponse page = save("settings-blackout", "BlackOut_1=0900.&Account_1=1,2&BlackOut_10=<\">" + long_ +
                                                               "&BlackOut_11=no&BlackOut_0=no&Account_02=no");
  EXPECT_EQ(announced(), "post app_hostapp 0x10007 19 0");
  EXPECT_EQ(page.templates, Messages{"/phone/www/WEB-INFO/template/settings-blackout.htm"});
  EXPECT_EQ(columns(page, "TRLoop", "BlackOut Account"), "0900.|||||||||<\">" + long_ + ", 1,2|||||||||");
  save("settings-blackout");
  std::string empty = "<?xml version=\"1.0\"?>\n<dialblock>\n";
  for (int i = 0; i < 10; ++i) empty += "\t<data rule=\"\" lines=\"\" />\n";
  EXPECT_EQ(content(kBlock), empty + "</dialblock>\n");
}

}  // namespace
