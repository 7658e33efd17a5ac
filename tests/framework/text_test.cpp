// Texts, lists, Base64 and dates.
#include <gtest/gtest.h>

#include <cstdlib>

#include "framework/action_dispatch.h"
#include "framework/date_text.h"
#include "framework/encoding.h"
#include "framework/file_utils.h"
#include "framework/orb_hash_map.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "tests/support/phone_test.h"

namespace {

std::string escaped(std::string text) {
  ReplaceSpecailStrs(text);
  return text;
}

std::string pieces(std::string_view text) {
  OrbList<std::string> list;
  list.push_back("old");
  String2List(list, text, ',');
  std::string joined;
  for (const std::string& piece : list) joined += "[" + piece + "]";
  return joined;
}

TEST(Text, EscapesEachCharacterOnceAndBoundsTheResult) {
  EXPECT_EQ(escaped("a<b>&\"c\""), "a&lt;b&gt;&amp;&quot;c&quot;");
  EXPECT_EQ(escaped("&amp;"), "&amp;amp;");
  EXPECT_EQ(escaped(std::string(600, 'a')), std::string(600, 'a'));
  EXPECT_EQ(escaped("&" + std::string(600, 'a')), "&amp;" + std::string(506, 'a'));
  EXPECT_EQ(escaped(std::string(1000, '"')).size(), 511u);
}

TEST(Text, Replaces) {
  std::string text = "aaa";
  EXPECT_EQ(ReplaceStr(&text, "aa", "b"), 0);
  EXPECT_EQ(text, "ba");
  EXPECT_EQ(ReplaceStr(&text, "x", "y"), -1);
  EXPECT_EQ(ReplaceStr(nullptr, "x", "y"), -1);
  EXPECT_EQ(ReplaceStr(&text, "", "y"), -1);
  text = "abab";
  ReplaceStrByStr(text, "ab", "xabx");
  EXPECT_EQ(text, "xabxxabx");
  ReplaceStrByStr(text, "", "endless");
  EXPECT_EQ(text, "xabxxabx");
  std::string output = ">";
  restructureString('"', "a\"b", output);
  restructureString('\'', "ignored", output);
  EXPECT_EQ(output, ">a\\\"b");
}

TEST(Text, NumbersAreWholeDecimalsOnly) {
  EXPECT_EQ(parseInt("-12"), -12);
  EXPECT_EQ(parseInt("2147483647"), 2147483647);
  for (const char* text : {"", " 1", "1 ", "+1", "1e9", "0x1", "2147483648", "1\n", "--1"}) {
    EXPECT_FALSE(parseInt(text)) << text;
  }
  EXPECT_FALSE(parseInt(static_cast<const char*>(nullptr)));
}

TEST(Text, QuotingLeavesNothingToTheShellOrTheQuery) {
  const std::string nasty = "a'b $(touch x) `y`\n\"\\;*";
  EXPECT_EQ(shellQuote(nasty), "'a'\\''b $(touch x) `y`\n\"\\;*'");
  EXPECT_EQ(encodeQueryValue("a-b_c.d~e &=+%\r\n/\xC3\xA4"), "a-b_c.d~e%20%26%3D%2B%25%0D%0A%2F%C3%A4");
  EXPECT_TRUE(isPlainName("features-acd"));
  for (const char* name : {"", "a&b", "a/b", "a b", "a\n", "\xC3\xA4"}) EXPECT_FALSE(isPlainName(name)) << name;
}

TEST(Text, TakesNamesApart) {
  std::string text = "  a b  ";
  removeSpace(text);
  EXPECT_EQ(text, "a b");
  text = "   ";
  removeSpace(text);
  EXPECT_EQ(text, "");
  std::string name;
  EXPECT_TRUE(GetSimpleUpdateFileName("C:\\fake\\path\\a.rom", &name));
  EXPECT_EQ(name, "a.rom");
  GetSimpleUpdateFileName("/tmp/a\\b/c.rom", &name);
  EXPECT_EQ(name, "c.rom");
  GetSimpleUpdateFileName("plain", &name);
  EXPECT_EQ(name, "plain");
  EXPECT_FALSE(GetSimpleUpdateFileName(nullptr, &name));
  std::string label = "kept";
  EXPECT_EQ(GetRealRingName("Ring1.wav", &label), "");
  EXPECT_EQ(label, "kept");
  EXPECT_EQ(GetRealRingName("Config:a:b.wav", &label), "a:b.wav");
  EXPECT_EQ(label, "Config");
  EXPECT_EQ(GetRealRingName((std::string(300, 'x') + ":f").c_str(), &label), "f");
  EXPECT_EQ(label.size(), 255u);
}

TEST(Lists, SplitAndPick) {
  EXPECT_EQ(pieces("a,,b"), "[a][][b]");
  EXPECT_EQ(pieces("a,b,"), "[a][b]");
  EXPECT_EQ(pieces(",a"), "[][a]");
  EXPECT_EQ(pieces("whole"), "[whole]");
  EXPECT_EQ(pieces(""), "[old]");
  std::list<std::string> names{"b", "\xC3\xA4", "B", ""};
  EXPECT_EQ(GetStringListByIndex(names, 2), "B");
  EXPECT_EQ(GetStringListByIndex(names, 4), "");
  EXPECT_EQ(GetStringListByIndex(names, -1), "");
  sortStringListByName(&names, true);
  EXPECT_EQ(names, (std::list<std::string>{"", "B", "b", "\xC3\xA4"}));
  sortStringListByName(&names, false);
  EXPECT_EQ(names.front(), "\xC3\xA4");
  sortStringListByName(nullptr, true);
}

TEST(Lists, PrefixLoopMarksTheSelectedRow) {
  TemplateArena arena;
  TMPL_loop* loop = nullptr;
  AddPrefixLoop(&loop, {"a", "", "b"}, "Config", "Config:b");
  RecordingResponse page;
  page.renderTemplate("x", TMPL_add_loop(nullptr, "rows", loop));
  EXPECT_EQ(page.column("rows", "selValue"), "Config:a|Config:b");
  EXPECT_EQ(page.column("rows", "selName"), "a|b");
  EXPECT_EQ(page.column("rows", "selected"), "|selected");
}

TEST(Lists, OrbListMovesCopiesAndErases) {
  OrbList<std::string> list;
  for (const char* text : {"a", "b", "c"}) list.push_back(text);
  OrbList<std::string> copy = list;
  OrbList<std::string> moved = std::move(list);
  EXPECT_TRUE(list.empty());
  list.push_back("again");
  copy.swap(list);
  EXPECT_EQ(copy.front() + list.back(), "againc");
  moved.erase(++moved.begin());
  EXPECT_EQ(moved.size(), 2u);
  EXPECT_EQ(moved.front() + moved.back(), "ac");
  moved.erase(moved.begin());
  moved.erase(moved.begin());
  EXPECT_TRUE(moved.begin() == moved.end());
}

TEST(Lists, OrbHashMapKeepsEntriesApartInOneBucket) {
  OrbHashMap<std::string, int> map(1);
  map.set("a", 1);
  map.set("b", 2);
  map.set("a", 3);
  EXPECT_EQ(*map.find("a") + *map.find("b"), 5);
  EXPECT_EQ(map.size(), 2u);
  map.clear();
  EXPECT_EQ(map.find("a"), nullptr);
}

TEST(Base64, EncodesAndDecodes) {
  std::string text;
  EXPECT_EQ(Base64Enc(text, "Man", 3), 4);
  EXPECT_EQ(text, "TWFu");
  Base64Enc(text, "Ma", 2);
  EXPECT_EQ(text, "TWE=");
  Base64Enc(text, "\xFB\xFF", 2);
  EXPECT_EQ(text, "+/8=");
  EXPECT_EQ(Base64Enc(text, "x", 0), 0);
  EXPECT_EQ(text, "");
  EXPECT_EQ(Base64Dec(text, "TWE=", 4), 2);
  EXPECT_EQ(text, "Ma");
  EXPECT_EQ(Base64Dec(text, "TWE=x", 5), -1);
  EXPECT_EQ(Base64Dec(text, "T!E=", 4), 2);
  EXPECT_EQ(text, "L\x01");
  EXPECT_EQ(base64_decode("TWFuTQ==\nTWFu", text), 4);
  EXPECT_EQ(text, "ManM");
  char* made = nullptr;
  EXPECT_EQ(base64_encode("Ma", 2, &made), 4);
  EXPECT_STREQ(made, "TWE=");
  std::free(made);
  EXPECT_EQ(GetBase64Value('/'), 63);
  EXPECT_EQ(GetBase64Value('*'), 0);
}

std::string dateText(int year, int month, int day, int hour, int minute, int dateFormat, int timeFormat) {
  std::tm local{};
  local.tm_year = year - 1900;
  local.tm_mon = month - 1;
  local.tm_mday = day;
  local.tm_hour = hour;
  local.tm_min = minute;
  local.tm_isdst = -1;
  std::string part1, part2, part3, separator, time;
  EXPECT_TRUE(LocalTime2StrTime(std::mktime(&local), part1, part2, part3, separator, time, dateFormat, timeFormat));
  return part1 + separator + part2 + separator + part3 + " " + time;
}

TEST(Dates, Formats) {
  EXPECT_EQ(dateText(2013, 7, 4, 0, 5, 2, 0), "2013-07-04 12:05AM");
  EXPECT_EQ(dateText(2013, 7, 4, 12, 5, 0, 0), "Thu Jul 04 12:05PM");
  EXPECT_EQ(dateText(2013, 7, 4, 13, 5, 1, 0), "04-Jul-2013 01:05PM");
  EXPECT_EQ(dateText(2013, 7, 4, 9, 5, 3, 0), "04/07/2013 09:05AM");
  EXPECT_EQ(dateText(2009, 7, 4, 23, 59, 4, 1), "07/04/9 23:59");
  EXPECT_EQ(dateText(2013, 12, 1, 0, 0, 5, 1), "01 Dec 2013 00:00");
  EXPECT_EQ(dateText(2013, 12, 1, 0, 0, 6, 1), "Sun 01 Dec 00:00");
  EXPECT_EQ(dateText(2013, 12, 1, 0, 0, 7, 2), " ");
  EXPECT_EQ(GetMonth(0) + GetMonth(13) + GetWeeday(-1) + GetWeeday(7), "");
}

TEST(Tables, UniquenessIsSeenAtCompileTime) {
  static constexpr const char* kTwice[] = {"a", nullptr, "b", nullptr, "a"};
  static constexpr const char* kOnce[] = {"a", nullptr, "A", nullptr};
  static_assert(!allUnique(kTwice) && allUnique(kOnce));
}

TEST(Images, AreKnownByTheirFirstBytes) {
  EXPECT_EQ(GetImageTypeByData("BM1234"), 1);
  EXPECT_EQ(GetImageTypeByData("\xFF\xD8\xFF"), 2);
  EXPECT_EQ(GetImageTypeByData("\x89PNG\r\n\x1A\n..."), 3);
  EXPECT_EQ(GetImageTypeByData("GIF89a"), 0);
  EXPECT_EQ(GetImageTypeByData(""), 0);
}

}  // namespace
