// What pages do around their own work: notices, uploads, accounts, files, passwords.
#include "tests/support/page_test.h"

#include <crypt.h>
#include <dlfcn.h>
#include <sys/stat.h>

#include <fstream>

#include "framework/accounts.h"
#include "framework/file_password.h"
#include "framework/file_utils.h"
#include "framework/shared_texts.h"
#include "framework/shell_command.h"
#include "framework/uploads.h"

// Goes before the library's own: counts what is hashed.
int hashedBlocks = 0;
extern "C" char* crypt_r(const char* key, const char* salt, crypt_data* work) noexcept {
  static const auto real = reinterpret_cast<decltype(&crypt_r)>(dlsym(dlopen("libcrypt.so.1", RTLD_NOW), "crypt_r"));
  ++hashedBlocks;
  return real(key, salt, work);
}

namespace {

using UtilsTest = PageTest;
using PasswordTest = PhoneTest;

TEST_F(UtilsTest, NumberOfAccounts) {
  const std::tuple<int, const char*, int> rows[] = {{28, "1", 16}, {28, "6", 6}, {28, "16", 6}, {26, "1", 13},
                                                    {26, "", 3},   {46, "1", 6}, {22, "1", 3},  {20, "1", 2},
                                                    {21, "9", 2},  {19, "1", 1}, {99, "1", 3}};
  for (const auto& [phoneType, accountNum, accounts] : rows) {
    setState("{\"phoneType\":" + std::to_string(phoneType) + "}");
    setConfig("AccountNum", accountNum);
    EXPECT_EQ(GetAccountMax(), accounts) << phoneType << ' ' << accountNum;
  }
}

TEST_F(UtilsTest, AccountSelector) {
  setState(R"({"phoneType":22})");
  EXPECT_EQ(columns(GetAccountLoop("2", false), "index accountno selected"),
            "0|1|2, Account1|Account2|Account3, 0|0|1");
  EXPECT_EQ(columns(GetAccountLoop("-1", true), "index accountno selected"),
            "-1|0|1|2, Auto|Account1|Account2|Account3, 1|0|0|0");
}

TEST_F(UtilsTest, StatusTexts) {
  const auto status = [](const std::string& code) {
    std::string text;
    MapAccountStatusToString(&text, std::stoi(code));
    return text;
  };
  EXPECT_EQ(joinedValues("-1 0 1 2 3 4 5 6 7", status),
            "Unknown|Disabled|Registering|Registered|Register Failed|Unregistered|Registered|Inexistence|Unknown");
}

TEST_F(UtilsTest, SipServerOfAnAccount) {
  std::string host = "kept", port = "kept";
  for (const int account : {6, -1}) EXPECT_FALSE(GetSipServerHost(host, port, account));
  EXPECT_EQ(host + port, "keptkept");
  for (const auto& [file, server] : Values{{"", "0.0.0.0:5060"},
                                           {"[account]\nSIPServerHost=a\nSIPServerPort=7\n", "a:7"},
                                           {"[sipserver2]\nserver=b\nport=8\n[account]\nSIPServerHost=a\n", "b:8"},
                                           {"[sipserver1]\nserver=c\n[sipserver2]\nserver=b\n", "c:5060"}}) {
    write("/config/user/voip/sipAccount3.cfg", file);
    EXPECT_TRUE(GetSipServerHost(host, port, 3));
    EXPECT_EQ(host + ":" + port, server);
  }
}

TEST_F(UtilsTest, RegisteredAccountOfAUri) {
  setState(R"({"registration":[0,2,2]})");
  for (const std::string account : {"0", "1", "2"}) {
    setConfig("AccountUserName@" + account, "1000");
    write("/config/user/voip/sipAccount" + account + ".cfg", "[sipserver1]\nserver=pbx\n");
  }
  EXPECT_EQ(GetAccountID("1000@pbx"), 1);
  EXPECT_EQ(GetAccountID("1000@other"), -1);
  EXPECT_EQ(GetAccountID(nullptr), -1);
}

TEST_F(UtilsTest, SharedTexts) {
  EXPECT_EQ(readShareText("romTranStat"), "");
  writeShareText("romTranStat", "12345678", 5);
  EXPECT_TRUE(std::string("12345").starts_with(readShareText("romTranStat")));
  writeShareText("romTranStat", "ab", 100);
  EXPECT_EQ(readShareText("romTranStat"), "ab");
}

TEST_F(UtilsTest, UploadsMustFit) {
  write("/data/rings/a", "12345");
  const std::int64_t used = GetDirSize("/data/rings"), free = GetPartionFreeSize("/data/");
  ASSERT_GT(free, 1'000'000);
  const char noSpace[] = "No space left!";
  const std::tuple<const char*, bool, std::int64_t, std::int64_t, std::string> rows[] = {
      {"/data/nowhere/", true, 100, 0, "Error:The destination folder does not exist!"},
      {"/data/rings", true, 100, 0, ""},
      {"/data/rings", false, used + 101, 0, ""},
      {"/data/rings", false, used + 100, 0, noSpace},
      {"/data/rings", true, 99, 0, noSpace},
      {"/data/rings", true, 1000, free + 1'000'000, noSpace}};
  FakeRequest request;
  request.contentLength = 100;
  std::string error;
  for (const auto& [folder, replace, maximum, reserve, expected] : rows) {
    error.clear();
    EXPECT_EQ(CheckUploadFile(&request, "/data/", folder, &error, replace, maximum, reserve), expected.empty());
    EXPECT_EQ(error, expected);
  }
  EXPECT_FALSE(CheckUploadFile(nullptr, "/data/", "/data/rings", &error, true, 1000, 0));
  RecordingResponse response;
  EXPECT_TRUE(CheckConfigFreeSize(&request, &response, "/config/none", false) && response.untouched());
}

TEST_F(UtilsTest, CommandsAreTheirWords) {
  write("/data/in/a b", "1");
  write("/data/in/$(touch hit)", "2");
  const ShellCommand copy = ShellCommand("cp").word("-f").allIn("/data/in/").path("/data/out");
  EXPECT_EQ(CommandShell(ShellCommand("mkdir").word("-p").path("/data/out")), 0);
  EXPECT_EQ(CommandShell(copy), 0);
  EXPECT_EQ(content("/data/out/a b") + content("/data/out/$(touch hit)"), "12");
  EXPECT_EQ(CommandShell(ShellCommand("test").in("/data/out").word("-e").word("a b")), 0);
  EXPECT_EQ(CommandShell(ShellCommand("test").word("it's $(touch hit)`\n\"\\;*").word("=").word("")), 1);
  EXPECT_FALSE(std::filesystem::exists(file("/hit")));
  write("/phone/scripts/three.sh", "exit 3");
  EXPECT_EQ(CommandShell(ShellCommand("sh").path("/phone/scripts/three.sh")), 3);
}

TEST_F(UtilsTest, ACommandWithARefusedPathDoesNotRun) {
  const std::filesystem::path outside = file("/").parent_path().parent_path() / "outside";
  std::filesystem::create_directories(outside);
  std::ofstream(outside / "kept") << "x";
  std::filesystem::remove_all(file("/config/Pics"));
  std::filesystem::create_directory_symlink(outside, file("/config/Pics"));
  const std::string before = everythingStored();
  messages();
  const ShellCommand rm = ShellCommand("rm").word("-rf");
  for (const ShellCommand& command :
       {ShellCommand(rm).allIn("/config/Pics/"), ShellCommand(rm).path("/config/Pics/x").path("/tmp/x"),
        ShellCommand(rm).path("/data/../.."), ShellCommand(rm).path(""),
        ShellCommand("rm").in("/config/Pics").word("kept"), ShellCommand("/config/Pics/tool")}) {
    EXPECT_EQ(CommandShell(command), -1);
    EXPECT_TRUE(log.back().starts_with("4 CommandShell() path refused: ")) << log.back();
  }
  EXPECT_EQ(messages(), Messages{});
  EXPECT_TRUE(everythingStored() == before);
  EXPECT_TRUE(std::filesystem::exists(outside / "kept"));
}

TEST_F(UtilsTest, FilesAndFolders) {
  for (const auto& [name, text] : Values{{"b.JS", "12345"}, {"a.js", "1"}, {".js", ""}, {"c.txt", ""}}) {
    write("/data/x/" + name, text);
  }
  std::list<std::string> names{"first"};
  EXPECT_TRUE(ReadFiles::FindFiles(names, "/data/x", ".js", false, false));
  EXPECT_TRUE(ReadFiles::FindFiles(names, "/data/x/", "TXT", true, true));
  EXPECT_FALSE(ReadFiles::FindFiles(names, "/data/none", "", false, false));
  names.sort();
  EXPECT_EQ(names, (std::list<std::string>{"", "/data/x/c.txt", "a", "b", "first"}));
  EXPECT_EQ(GetFileSize("/data/x/b.JS"), 5);
  EXPECT_EQ(GetFileSize("/data/x/none"), -1);
  std::filesystem::create_symlink("/", file("/data/x/link"));
  struct stat folder {};
  ASSERT_EQ(lstat(file("/data/x").c_str(), &folder), 0);
  EXPECT_EQ(GetDirSize("/data/x"), folder.st_size + 6 + 1);
  EXPECT_EQ(GetDirSize("/data/none"), 0);
  EXPECT_EQ(log.back(), "4 filename : /data/none, error info : No such file or directory");
  EXPECT_TRUE(RenameUploadFile("/data/x/a.js", "/data/x/c.txt"));
  EXPECT_EQ(content("/data/x/c.txt"), "1");
  EXPECT_FALSE(RenameUploadFile("/data/x/a.js", "/data/x/c.txt"));
  EXPECT_TRUE(replaceFile("/data/x/c.txt", "new"));
  for (const char* none : {"/data/none/c.txt", "/data/../../c.txt"}) EXPECT_FALSE(replaceFile(none, "new")) << none;
  std::string text;
  EXPECT_TRUE(readFile("/data/x/c.txt", text));
  EXPECT_EQ(text, "new");
  for (const char* none : {"/data/x", "/data/none", "/data/../x"}) EXPECT_FALSE(readFile(none, text)) << none;
}

TEST_F(PasswordTest, HashesBlocksOfEightWithOneSalt) {
  const auto& encrypt = filePassword::GetEncryptedText;
  EXPECT_EQ(encrypt("secret12", "ab"), "abhv/ZnAzL36k");
  const std::string hash = encrypt("12345678123456781", "abcdefghijklm");
  EXPECT_EQ(hash.size(), 39u);
  EXPECT_EQ(hash.substr(0, 13), hash.substr(13, 13));
  EXPECT_EQ(encrypt("12345678123456781", hash.c_str()), hash);
  const std::string other = encrypt("12345678123456782", hash.c_str());
  EXPECT_EQ(other.substr(0, 28), hash.substr(0, 26) + "ab");
  EXPECT_NE(other.substr(26), hash.substr(26));
  EXPECT_EQ(encrypt("", nullptr).size(), 13u);
  EXPECT_EQ(encrypt(nullptr, "ab"), encrypt("", "ab"));
  EXPECT_EQ(encrypt("x", "!!invalid salt"), "");
  std::string output = ">";
  EncryptString("secret12", output, "ab");
  EXPECT_EQ(output, ">abhv/ZnAzL36k");
}

TEST_F(PasswordTest, EntriesKeepTheirPlace) {
  write("/config/data/htpasswd", "a:abhv/ZnAzL36k\nno colon\nb:x:y\na:second\nlast:abhv/ZnAzL36k");
  filePassword file(kPasswordFile);
  for (const char* user : {"a", "last"}) EXPECT_TRUE(file.IsRightUserPassword(user, "secret12")) << user;
  using Pair = std::pair<const char*, const char*>;
  for (const auto& [user, password] : {Pair{"a", "secret1"}, {"A", "secret12"}, {"no colon", ""}, {nullptr, nullptr}}) {
    EXPECT_FALSE(file.IsRightUserPassword(user, password)) << password;
  }
  EXPECT_FALSE(file.SetUserPassword("a", "secret12"));
  EXPECT_TRUE(file.SetUserPassword("last", "other") && file.SetUserPassword("new", "pass") && file.RemoveUser("b"));
  EXPECT_FALSE(file.RemoveUser("b"));
  file.SaveToFile(kPasswordFile);
  const std::string saved = content("/config/data/htpasswd");
  EXPECT_TRUE(saved.starts_with("a:abhv/ZnAzL36k\na:second\nlast:ab")) << saved;
  const filePassword again(kPasswordFile);
  EXPECT_TRUE(again.IsRightUserPassword("new", "pass") && again.IsRightUserPassword("last", "other")) << saved;
  EXPECT_FALSE(filePassword("/config/none").IsRightUserPassword("a", "secret12"));
}

TEST_F(PasswordTest, NoHashIsNobodysPassword) {
  write("/config/data/htpasswd", "none:\nlocked:!\nodd:!!hv/ZnAzL36k\nlong:abhv/ZnAzL36kabhv/ZnAzL36k\n");
  filePassword file(kPasswordFile);
  for (const char* user : {"none", "locked", "odd", "long"}) {
    for (const char* password : {"", "!", "!!", "secret12", "secret12secret12secret12"}) {
      EXPECT_FALSE(file.IsRightUserPassword(user, password)) << user << ' ' << password;
    }
    EXPECT_TRUE(file.SetUserPassword(user, "new")) << user;
    EXPECT_TRUE(file.IsRightUserPassword(user, "new")) << user;
  }
  hashedBlocks = 0;
  EXPECT_FALSE(file.IsRightUserPassword("long", std::string(1 << 20, 'x').c_str()));
  EXPECT_EQ(hashedBlocks, 0);
}

}  // namespace
