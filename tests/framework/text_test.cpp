// Texts, lists, Base64 and dates.
#include <gtest/gtest.h>

#include <cstdlib>

#include "framework/date_text.h"
#include "framework/encoding.h"
#include "framework/file_utils.h"
#include "framework/orb_hash_map.h"
#include "framework/page_tables.h"
#include "framework/query_text.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "tests/support/phone_test.h"

namespace {

TEST(Text, EscapesEachCharacterOnceAndBoundsTheResult) {
  const auto escaped = [](std::string text) { return ReplaceSpecailStrs(text), text; };
  EXPECT_EQ(joinedValues("a<b>&\"c\" &amp;", escaped), "a&lt;b&gt;&amp;&quot;c&quot;|&amp;amp;");
  EXPECT_EQ(escaped(std::string(600, 'a')), std::string(600, 'a'));
  EXPECT_EQ(escaped("&" + std::string(600, 'a')), "&amp;" + std::string(506, 'a'));
  EXPECT_EQ(escaped(std::string(1000, '"')).size(), 511u);
}

TEST(Text, Replaces) {
  std::string text = "aaa";
  EXPECT_EQ(ReplaceStr(&text, "aa", "b"), 0);
  EXPECT_EQ(text, "ba");
  for (const char* from : {"x", ""}) EXPECT_EQ(ReplaceStr(&text, from, "y"), -1);
  EXPECT_EQ(ReplaceStr(nullptr, "x", "y"), -1);
  text = "abab";
  ReplaceStrByStr(text, "ab", "xabx");
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
  EXPECT_EQ(encodeQueryValue("a-b_c.d~e &=+%\r\n/\xC3\xA4"), "a-b_c.d~e%20%26%3D%2B%25%0D%0A%2F%C3%A4");
  EXPECT_TRUE(isPlainName("features-acd"));
  for (const char* name : {"", "a&b", "a/b", "a b", "a\n", "\xC3\xA4"}) EXPECT_FALSE(isPlainName(name)) << name;
}

TEST(Text, TakesNamesApart) {
  const auto trimmed = [](std::string text) { return removeSpace(text), text; };
  EXPECT_EQ(trimmed("  a b  ") + trimmed("   "), "a b");
  std::string name, label = "kept";
  const auto file = [&](const std::string& path) { return GetSimpleUpdateFileName(path.c_str(), &name) ? name : "-"; };
  EXPECT_EQ(joinedValues("C:\\fake\\path\\a.rom /tmp/a\\b/c.rom plain", file), "a.rom|c.rom|plain");
  EXPECT_FALSE(GetSimpleUpdateFileName(nullptr, &name));
  const auto ring = [&](const std::string& text) { return GetRealRingName(text.c_str(), &label) + "/" + label; };
  EXPECT_EQ(joinedValues("Ring1.wav Config:a:b.wav", ring), "/kept|a:b.wav/Config");
  EXPECT_EQ(ring(std::string(300, 'x') + ":f"), "f/" + std::string(255, 'x'));
}

TEST(Lists, SplitPickAndSort) {
  const auto split = [](const std::string& text) {
    OrbList<std::string> list;
    list.push_back("old");
    String2List(list, text, ',');
    std::string joined;
    for (const std::string& piece : list) joined += "[" + piece + "]";
    return joined;
  };
  EXPECT_EQ(joinedValues("a,,b a,b, ,a whole", split), "[a][][b]|[a][b]|[][a]|[whole]");
  EXPECT_EQ(split(""), "[old]");
  std::list<std::string> names{"b", "\xC3\xA4", "B", ""};
  EXPECT_EQ(GetStringListByIndex(names, 2), "B");
  EXPECT_EQ(GetStringListByIndex(names, 4) + GetStringListByIndex(names, -1), "");
  sortStringListByName(&names, true);
  EXPECT_EQ(names, (std::list<std::string>{"", "B", "b", "\xC3\xA4"}));
  sortStringListByName(&names, false);
  EXPECT_EQ(names.front(), "\xC3\xA4");
  sortStringListByName(nullptr, true);
}

TEST(Lists, OrbListMovesCopiesAndErases) {
  OrbList<std::string> list;
  for (const char* text : {"a", "b", "c"}) list.push_back(text);
  OrbList<std::string> copy = list, moved = std::move(list);
  EXPECT_TRUE(list.empty());
  list.push_back("again");
  copy.swap(list);
  EXPECT_EQ(copy.front() + list.back(), "againc");
  moved.erase(++moved.begin());
  EXPECT_EQ(moved.front() + moved.back(), "ac");
  for (int i = 0; i < 2; ++i) moved.erase(moved.begin());
  EXPECT_TRUE(moved.begin() == moved.end());
}

TEST(Lists, OrbHashMapKeepsEntriesApartInOneBucket) {
  OrbHashMap<std::string, int> map(1);
  for (const auto& [key, value] : {std::pair("a", 1), {"b", 2}, {"a", 3}}) map.set(key, value);
  EXPECT_EQ(*map.find("a") + *map.find("b"), 5);
  EXPECT_EQ(map.size(), 2u);
  map.clear();
  EXPECT_EQ(map.find("a"), nullptr);
}

TEST(Base64, EncodesAndDecodes) {
  std::string text;
  for (const auto& [plain, encoded] : Values{{"Man", "TWFu"}, {"Ma", "TWE="}, {"\xFB\xFF", "+/8="}, {"", ""}}) {
    EXPECT_EQ(Base64Enc(text, plain.data(), static_cast<int>(plain.size())), static_cast<int>(encoded.size()));
    EXPECT_EQ(text, encoded);
    EXPECT_EQ(base64_decode(encoded.c_str(), text), static_cast<int>(plain.size()));
    EXPECT_EQ(text, plain);
  }
  EXPECT_EQ(Base64Dec(text, "TWE=x", 5), -1);
  EXPECT_EQ(Base64Dec(text, "T!E=", 4), 2);
  EXPECT_EQ(text, "L\x01");
  EXPECT_EQ(base64_decode("TWFuTQ==\nTWFu", text), 4);
  EXPECT_EQ(text, "ManM");
  char* made = nullptr;
  EXPECT_EQ(base64_encode("Ma", 2, &made), 4);
  EXPECT_STREQ(made, "TWE=");
  std::free(made);
  EXPECT_EQ(GetBase64Value('/') + GetBase64Value('*'), 63);
}

TEST(Dates, Formats) {
  // The local time as formats of date and time show it.
  const auto shown = [](const char* when, int dateFormat, int timeFormat) {
    std::tm local{};
    strptime(when, "%Y-%m-%d %H:%M", &local);
    local.tm_isdst = -1;
    std::string part1, part2, part3, separator, time;
    EXPECT_TRUE(LocalTime2StrTime(std::mktime(&local), part1, part2, part3, separator, time, dateFormat, timeFormat));
    return part1 + separator + part2 + separator + part3 + " " + time;
  };
  EXPECT_EQ(shown("2013-07-04 12:05", 0, 0), "Thu Jul 04 12:05PM");
  EXPECT_EQ(shown("2013-07-04 13:05", 1, 0), "04-Jul-2013 01:05PM");
  EXPECT_EQ(shown("2013-07-04 00:05", 2, 0), "2013-07-04 12:05AM");
  EXPECT_EQ(shown("2013-07-04 09:05", 3, 0), "04/07/2013 09:05AM");
  EXPECT_EQ(shown("2009-07-04 23:59", 4, 1), "07/04/9 23:59");
  EXPECT_EQ(shown("2013-12-01 00:00", 5, 1), "01 Dec 2013 00:00");
  EXPECT_EQ(shown("2013-12-01 00:00", 6, 1), "Sun 01 Dec 00:00");
  EXPECT_EQ(shown("2013-12-01 00:00", 7, 2), " ");
  EXPECT_EQ(GetMonth(0) + GetMonth(13) + GetWeeday(-1) + GetWeeday(7), "");
}

TEST(Tables, UniquenessIsSeenAtCompileTime) {
  static constexpr const char* kTwice[] = {"a", nullptr, "b", nullptr, "a"};
  static constexpr const char* kOnce[] = {"a", nullptr, "A", nullptr};
  static_assert(!allUnique(kTwice) && allUnique(kOnce));
}

TEST(Images, AreKnownByTheirFirstBytes) {
  const auto type = [](const std::string& bytes) { return std::to_string(GetImageTypeByData(bytes)); };
  EXPECT_EQ(joinedValues("BM1234 \xFF\xD8\xFF GIF89a", type), "1|2|0");
  EXPECT_EQ(type("\x89PNG\r\n\x1A\n...") + type(""), "30");
}

}  // namespace
