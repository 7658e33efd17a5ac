// The configuration service: bytes, files, defaults, accidents.
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "platform/config_parser.h"
#include "platform/os_services.h"
#include "tests/simulator/simulator_test.h"

// The calls that a power cut could come between. The phone's library finds these before the system's; nothing here
// waits for the disk.
static std::vector<std::string> diskCalls;

__attribute__((visibility("default"))) int fsync(int file) {
  diskCalls.push_back("sync " + fs::read_symlink("/proc/self/fd/" + std::to_string(file)).string());
  return 0;
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to) noexcept {
  diskCalls.push_back(std::string("rename ") + to);
  return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

namespace {

class ConfigFileTest : public PhoneTest {
 protected:
  // Values that the configuration files hold after a restart.
  void restart() { simulator::start(file("/").parent_path()); }
};

int set(const std::string& key, const std::string& value) {
  return configParser_SetConfigString(key.c_str(), value.c_str());
}
std::string get(const std::string& key) {
  return configParser_GetConfigString(key.c_str());
}
std::string of(const std::string& key, int account) {
  return configParser_GetAccountConfigName(key.c_str(), account);
}

TEST_F(ConfigFileTest, KeepsEveryByteOfKeysAndValues) {
  std::vector<std::string> texts =
      nlohmann::json::parse(R"~([" ", " x", "  edge  ", "\tx\t", "a\nb", "\r\n", "a\rb", "\"q\"",
    "'q'", "; comment", "# comment", "[section]", "a=b=c", "a ; b # c", "\\", "\\:", "\\:x", "\\x41", "\\\\:", "\\:\\x4",
    "<<<END", "END", "; end", "\u0001\u007f", "\ufeffx", "%s%n", "$(x)", "a]b", "key", "global", "Account.1"])~");
  std::string& bytes = texts.emplace_back();
  for (int c = 1; c < 256; ++c) bytes += static_cast<char>(c);
  std::map<std::string, std::string> expected{{"empty", ""}, {"", "of no name"}, {of("k", 2), ""}};
  for (const auto& text : texts) {
    expected.insert({{text, "key " + text}, {"value of " + text, text}, {of("k" + text, 3), text}});
  }
  for (const auto& [key, value] : expected) EXPECT_EQ(set(key, value), value != "");
  restart();
  for (const auto& [key, value] : expected) EXPECT_EQ(get(key), value);
}

TEST_F(ConfigFileTest, DefaultsShowUntilAValueIsSet) {
  write("/phone/factory/global.ini", "Top = 1\n[a]\nPlain = one two \n; Plain = no\n[b]\nEmpty =\n");
  write("/phone/factory/account.ini", "[account]\nLabel = all\nPort = 5060\n[account 1]\nLabel = second\n");
  write("/phone/factory/account2.ini", "Label = third\n");
  restart();
  EXPECT_EQ(config("Top Plain Empty Label"), "1|one two||");
  EXPECT_EQ(config("Label@0 Label@1 Label@2 Label@-7 Label@2147483647"), "all|second|third|all|all");
  EXPECT_EQ((std::vector{set("Top", "1"), set("Top", ""), set("Top", ""), set(of("Port", -7), "1")}),
            (std::vector{0, 1, 0, 1}));
  for (const auto& [text, value] : {std::pair("007", 7), {"-4", -4}, {" 1", 0}, {"1x", 0}}) {
    set("Number", text);
    EXPECT_EQ(configParser_GetConfigInt("Number"), value) << text;
  }
  EXPECT_EQ(configParser_GetConfigInt("NeverSet") + configParser_GetConfigInt(nullptr), 0);
  EXPECT_EQ(configParser_SetConfigString(nullptr, "x") + configParser_SetConfigString("x", nullptr), 0);
  restart();
  EXPECT_EQ(config("Top Port@-7 Port@7"), "|1|5060");
}

TEST_F(ConfigFileTest, BrokenFilesAreKeptAside) {
  set("UserNameAdmin", "root");
  const std::string whole = content("/config/global.ini");
  const auto cut = [&whole](std::size_t size) { return whole.substr(0, size); };
  const auto nul = [](std::size_t size) { return std::string(size, '\0'); };
  std::string aside = "/config/global.ini.broken";
  int count = 0;
  for (const std::string& bytes : {cut(0), cut(1), cut(40), cut(whole.size() - 4), nul(400), whole + nul(1),
                                   std::string("\x7f@ELF\x02"), std::string("no key here\n")}) {
    write("/config/global.ini", bytes);
    restart();
    EXPECT_EQ(get("UserNameAdmin"), "admin") << bytes;
    EXPECT_EQ(content(aside), bytes);
    aside = "/config/global.ini.broken." + std::to_string(++count);
  }
  EXPECT_THAT(log, Contains(HasSubstr("is broken")));
  fs::remove(file("/config/account.ini"));
  fs::create_directories(file("/config/account.ini/x"));
  restart();
  EXPECT_TRUE(fs::is_directory(file("/config/account.ini.broken/x")));
  EXPECT_EQ(set(of("Label", 1), "works again"), 1);
}

TEST_F(ConfigFileTest, AKillLeavesAWholeFile) {
  std::mt19937 random(7);
  for (int i = 0; i < 20; ++i) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    const auto fill = [](unsigned n) { set("Filler" + std::to_string(n % 50), std::string(2000, "abcdefg"[n % 7])); };
    if (child == 0)
      for (unsigned n = 0;; ++n) fill(n);
    usleep(static_cast<useconds_t>(2000 + random() % 10000));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    restart();
    const std::string value = get("Filler0");
    ASSERT_EQ(value, value.empty() ? "" : std::string(2000, value[0]));
  }
  EXPECT_NE(get("Filler0"), "");
  EXPECT_FALSE(fs::exists(file("/config/global.ini.broken")));
}

TEST_F(ConfigFileTest, APowerCutLeavesAWholeFile) {
  diskCalls.clear();
  set("Kept", "x");
  const std::string folder = fs::canonical(file("/config")).string();
  EXPECT_EQ(diskCalls, (std::vector<std::string>{"sync " + folder + "/global.ini.new",
                                                 "rename " + folder + "/global.ini", "sync " + folder}));
}

TEST_F(ConfigFileTest, WhatWasCopiedOverTheFilesIsTaken) {
  set("Kept", "old");
  osShell("sed 's/Kept=old/Kept=imported/' config/global.ini > tmp/global.ini; cp -pr tmp/global.ini config/");
  EXPECT_EQ(get("Kept"), "imported");
  EXPECT_EQ(set("Other", "x"), 1);
  restart();
  EXPECT_EQ(config("Kept Other"), "imported|x");
  write("/config/global.ini", "Kept=by hand\n");
  EXPECT_EQ(config("Kept"), "by hand");
}

TEST_F(ConfigFileTest, AValueThatCannotBeWrittenIsNotKept) {
  const TemporaryFolder elsewhere;
  const auto outside = elsewhere.path() / "config";
  fs::rename(file("/config"), outside);
  const auto expectLost = [this] {
    EXPECT_EQ(set("Lost", "x"), 0);
    EXPECT_EQ(get("Lost"), "");
    EXPECT_EQ(control("PUT", "config", R"({"global":{"Lost":"x"}})").status, 500);
    EXPECT_THAT(log, Contains(HasSubstr("cannot write")));
    log.clear();
  };
  write("/config", "in the way");
  expectLost();
  fs::remove(file("/config"));
  fs::create_directory_symlink(outside, file("/config"));
  expectLost();
  EXPECT_FALSE(fs::exists(outside / "global.ini"));
}

}  // namespace
