// The configuration service: bytes, files, defaults, accidents.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "platform/config_parser.h"
#include "platform/os_services.h"
#include "tests/simulator/simulator_test.h"

namespace {

class ConfigFileTest : public PhoneTest {
 protected:
  // Values that the configuration files hold after a restart.
  void restart() { simulator::start(file("/").parent_path()); }
  bool logHas(std::string_view text) const {
    for (const std::string& line : log) {
      if (line.find(text) != std::string::npos) return true;
    }
    return false;
  }
};

int set(const std::string& key, const std::string& value) {
  return configParser_SetConfigString(key.c_str(), value.c_str());
}
std::string get(const std::string& key) {
  return configParser_GetConfigString(key.c_str());
}
std::string accountName(const char* key, int account) {
  return configParser_GetAccountConfigName(key, account);
}

TEST_F(ConfigFileTest, KeepsEveryByteOfKeysAndValues) {
  const std::string texts[] = {"",
                               " ",
                               "  edge  ",
                               "\tx\t",
                               "a\nb",
                               "\r\n",
                               "a\rb",
                               "\"q\"",
                               "'q'",
                               "; comment",
                               "# comment",
                               "[section]",
                               "a=b=c",
                               "a ; b # c",
                               "\\",
                               "\\:",
                               "\\:x",
                               "\\x41",
                               "\\\\:",
                               "\\:\\x4",
                               "<<<END",
                               "END",
                               "; end",
                               "\x01\x7f",
                               "\xff\xfe",
                               "\xef\xbb\xbfx",
                               "gr\xc3\xbc\xc3\x9f",
                               "%s%n",
                               "$(x)",
                               "a]b",
                               "key",
                               "global",
                               "Account.1",
                               "Account.x.y"};
  for (const std::string& text : texts) {
    set("value of " + text, text);
    set(accountName(("k" + text).c_str(), 3), text);
    if (!text.empty()) set(text, "key " + text);
  }
  restart();
  for (const std::string& text : texts) {
    EXPECT_EQ(get("value of " + text), text);
    EXPECT_EQ(get(accountName(("k" + text).c_str(), 3)), text);
    EXPECT_EQ(get(text), text.empty() ? "" : "key " + text);
  }
  EXPECT_EQ(get(accountName("k", 2)), "");
}

TEST_F(ConfigFileTest, KeepsRandomBytes) {
  std::mt19937 random(46);
  std::map<std::string, std::string> expected;
  for (int i = 0; i < 300; ++i) {
    std::string texts[2];
    for (std::string& text : texts) {
      text.resize(random() % 40 + 1);
      for (char& c : text) c = random() % 4 == 0 ? " \\:=;\n[]\""[random() % 9] : static_cast<char>(random() % 255 + 1);
    }
    expected[texts[0]] = texts[1];
    EXPECT_EQ(set(texts[0], texts[1]), 1);
  }
  restart();
  for (const auto& [key, value] : expected) EXPECT_EQ(get(key), value);
}

TEST_F(ConfigFileTest, DefaultsShowUntilAValueIsSet) {
  write("/phone/factory/global.ini", "Top = 1\n[a]\nPlain = one two \n; Plain = no\n[b]\nEmpty =\n");
  write("/phone/factory/account.ini", "[account]\nLabel = all\nPort = 5060\n[account 1]\nLabel = second\n");
  write("/phone/factory/account2.ini", "Label = third\n");
  restart();
  EXPECT_EQ(get("Top") + get("Plain") + get("Empty") + get("Label"), "1one two");
  EXPECT_EQ(get(accountName("Label", 0)) + get(accountName("Label", 1)) + get(accountName("Label", 2)),
            "allsecondthird");
  EXPECT_EQ(get(accountName("Label", -7)) + get(accountName("Label", 2147483647)), "allall");
  EXPECT_EQ(set("Top", "1"), 0);
  EXPECT_EQ(set("Top", ""), 1);
  EXPECT_EQ(set("Top", ""), 0);
  EXPECT_EQ(set(accountName("Port", -7), "1"), 1);
  EXPECT_EQ(configParser_SetConfigString(nullptr, "x") + configParser_SetConfigString("x", nullptr), 0);
  restart();
  EXPECT_EQ(get("Top"), "");
  EXPECT_EQ(get(accountName("Port", -7)) + get(accountName("Port", 7)), "15060");
}

TEST_F(ConfigFileTest, NumbersAreZeroUnlessDecimal) {
  const std::pair<const char*, int> cases[] = {{"12", 12}, {"-4", -4}, {"007", 7},        {"", 0},
                                               {"1x", 0},  {" 1", 0},  {"2147483648", 0}, {"0x10", 0}};
  for (const auto& [text, value] : cases) {
    set("Number", text);
    EXPECT_EQ(configParser_GetConfigInt("Number"), value) << text;
  }
  EXPECT_EQ(configParser_GetConfigInt("NeverSet") + configParser_GetConfigInt(nullptr), 0);
}

TEST_F(ConfigFileTest, BrokenFilesAreKeptAside) {
  set("UserNameAdmin", "root");
  const std::string whole = content("/config/global.ini");
  const std::string cut = whole.substr(0, whole.size() - 4);
  const std::string broken[] = {"",
                                std::string(400, '\0'),
                                cut,
                                "\x7f"
                                "ELF\x02",
                                "no key here\n",
                                whole + std::string(1, '\0')};
  std::string aside = "/config/global.ini.broken";
  int count = 0;
  for (const std::string& bytes : broken) {
    write("/config/global.ini", bytes);
    restart();
    EXPECT_EQ(get("UserNameAdmin"), "admin") << bytes;
    EXPECT_EQ(content(aside), bytes);
    aside = "/config/global.ini.broken." + std::to_string(++count);
  }
  EXPECT_TRUE(logHas("is broken"));
  std::filesystem::remove(file("/config/account.ini"));
  std::filesystem::create_directories(file("/config/account.ini/x"));
  restart();
  EXPECT_TRUE(std::filesystem::is_directory(file("/config/account.ini.broken/x")));
  EXPECT_EQ(set(accountName("Label", 1), "works again"), 1);
}

TEST_F(ConfigFileTest, AKillLeavesAWholeFile) {
  std::mt19937 random(7);
  for (int i = 0; i < 20; ++i) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (unsigned n = 0;; ++n)
        set("Filler" + std::to_string(n % 50), std::string(2000, static_cast<char>('a' + n % 26)));
    }
    usleep(static_cast<useconds_t>(2000 + random() % 10000));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    restart();
    const std::string value = get("Filler0");
    ASSERT_EQ(value, value.empty() ? "" : std::string(2000, value[0]));
  }
  EXPECT_NE(get("Filler0"), "");
  EXPECT_FALSE(std::filesystem::exists(file("/config/global.ini.broken")));
}

TEST_F(ConfigFileTest, WhatWasCopiedOverTheFilesIsTaken) {
  set("Kept", "old");
  osShell(
      "mkdir -p tmp/factory; sed 's/Kept=old/Kept=imported/' config/global.ini > tmp/factory/global.ini; "
      "cp -pr tmp/factory/* config/");
  EXPECT_EQ(get("Kept"), "imported");
  EXPECT_EQ(set("Other", "x"), 1);
  restart();
  EXPECT_EQ(get("Kept") + get("Other"), "importedx");
}

TEST_F(ConfigFileTest, AValueThatCannotBeWrittenIsNotKept) {
  std::filesystem::remove_all(file("/config"));
  write("/config", "in the way");
  EXPECT_EQ(set("Lost", "x"), 0);
  EXPECT_EQ(get("Lost"), "");
  EXPECT_EQ(control("PUT", "config", R"({"global":{"Lost":"x"}})").status, 500);
  EXPECT_TRUE(logHas("cannot write"));
}

}  // namespace
