// Configuration archives that come in.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "platform/named_lock.h"
#include "tests/pages/settings_config_test.h"

namespace {

TEST_F(SettingsConfigTest, AnImportTakesThePlaceOfWhatIsThere) {
  setConfig("AreaCode=030&AccountLabel@0=Old");
  write("/config/user/user.ini", "old");
  chmod(file("/config/data/htpasswd").c_str(), 0600);
  announced();
  EXPECT_EQ(import(Tar().folder("factory").file("factory/global.ini", "[global]\nAreaCode=089\n")), kUpdating);
  EXPECT_THAT(announced(), ::testing::MatchesRegex(".*send app_hostapp 0x1000f 0 0; .*post app_hostapp 0x10101 0 0; "
                                                   "system reboot app_hostapp 0x10101.*"));
  EXPECT_EQ(config("AreaCode AccountLabel@0") + content("/config/user/user.ini"), "089|Oldold");
  EXPECT_EQ(import(Tar().file("phone/factory/global.ini", "AreaCode=0711\n")), kUpdating);
  EXPECT_EQ(config("AreaCode"), "0711");
  EXPECT_EQ(import(Tar().file("factory/htpasswd", "admin:x\n").file("factory/data/htpasswd", "no")), kUpdating);
  EXPECT_EQ(content("/config/htpasswd") + content("/config/data/htpasswd"), "admin:x\nadmin:x\n");
  struct stat status {};
  EXPECT_EQ(stat(file("/config/data/htpasswd").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  setConfig("AreaCode=1");
  EXPECT_THAT(content("/config/global.ini"), Not(HasSubstr("030"))) << "what was there before is not brought back";
  setConfig("AreaCode=5&UpdateStatus=x");
  const std::string exported = act("export").body;
  setConfig("AreaCode=6");
  EXPECT_EQ(upload("import", exported), kUpdating);
  EXPECT_EQ(config("AreaCode UpdateStatus"), "5|x");
}

TEST_F(SettingsConfigTest, RefusesWhatDoesNotBelongAndChangesNothing) {
  setConfig("AreaCode=030");
  write("/data/customfactory/global.ini", "kept");
  const std::string before = configTree();
  const Tar good = Tar().file("factory/global.ini", "AreaCode=1\n");
  const std::pair<const char*, std::string> cases[] = {
      {"nothing", Tar().text()},
      {"no archive", "AreaCode=1\n"},
      {"cut", good.text().substr(0, 700)},
      {"neither folder", Tar().file("config/global.ini").text()},
      {"something beside", Tar(good).file(".reboot").text()},
      {"something beside the second", Tar().file("phone/factory/a").file("phone/www/b").text()},
      {"a file in the folder's place", Tar().file("factory").text()},
      {"a link", Tar(good).special('2', "factory/data", "/etc").text()},
      {"a device", Tar(good).special('3', "factory/x").text()},
      {"a path that climbs", Tar(good).file("factory/../../evil").text()},
      {"a line end", Tar(good).file("factory/a\nb").text()},
  };
  announced();
  for (const auto& [what, archive] : cases) {
    EXPECT_EQ(upload("import", archive) + upload("importFactory", archive), std::string(kRefused) + kRefused) << what;
  }
  EXPECT_EQ(import(Tar(good).file("factory/data")), kRefused) << "a file in a folder's place";
  EXPECT_EQ(import(Tar(good).folder("factory/data/htpasswd")), kRefused);
  EXPECT_EQ(act("import").variable("noticeLabel"), "setTimeout$settings-config$Error:Import config error!");
  EXPECT_EQ(act("import", "ConfigFileName=/config/global.ini").variable("noticeLabel"),
            "setTimeout$settings-config$Error:Import config error!");
  fs::create_directory_symlink("/usr", file("/config/out"));
  EXPECT_EQ(import(Tar().file("factory/out/evil")), kRefused);
  fs::remove(file("/config/out"));
  setState(R"({"missingApplications":["app_hostapp"]})");
  EXPECT_EQ(import(good), "setTimeout$Failed");
  EXPECT_TRUE(configTree() == before);
  EXPECT_EQ(content("/data/customfactory/global.ini"), "kept");
  EXPECT_THAT(announced(), Not(HasSubstr("0x1")));
  setState(R"({"missingApplications":null,"talking":true})");
  write("/tmp/fileupload_aB3-_9", good.text());
  for (const char* action : {"export", "import", "exportsyslog", "write", "importFactory", "delFactory"}) {
    const RecordingResponse answer =
        act(action, "ConfigFileName=/tmp/fileupload_aB3-_9&FactoryConfig=/tmp/fileupload_aB3-_9&SysLogLevel=6");
    EXPECT_EQ(answer.variable("noticeLabel") + answer.body, "setTimeout$notice$Talking, Please wait...") << action;
  }
  EXPECT_TRUE(configTree() == before && fs::exists(file("/data/customfactory")));
}

TEST_F(SettingsConfigTest, AnImportThatIsCutLeavesWholeFiles) {
  Tar archive;
  std::map<std::string, std::string> fresh;
  for (int i = 0; i < 60; ++i) {
    const std::string name = "data/file" + std::to_string(i);
    fresh[name] = std::string(40'000, static_cast<char>('a' + i % 26));
    write("/config/" + name, "old");
    archive.file("factory/" + name, fresh[name]);
  }
  for (const int milliseconds : {2, 6, 10, 14, 18, 22, 26, 30, 40}) {
    write("/tmp/fileupload_aB3-_9", archive.text());
    const pid_t child = fork();
    if (child == 0) {
      act("import", "ConfigFileName=/tmp/fileupload_aB3-_9");
      _exit(0);
    }
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    for (const auto& [name, text] : fresh) {
      const std::string now = content("/config/" + name);
      EXPECT_TRUE(now == "old" || now == text) << name << " after " << milliseconds << " ms";
    }
  }
  // Commands of the last one may still run.
  std::string notice;
  for (int tries = 0; tries < 50 && notice != kUpdating; ++tries) {
    usleep(100'000);
    notice = import(archive);
  }
  EXPECT_EQ(notice, kUpdating);
  for (const auto& [name, text] : fresh) EXPECT_TRUE(content("/config/" + name) == text) << name;
}

TEST_F(SettingsConfigTest, WaitsForWhoeverWritesIniFiles) {
  ETL_BaseHelper::chMutex lock;
  ASSERT_TRUE(lock.OpenMutex("WRLockiniFileName") && lock.Lock(0));
  for (const char* action : {"export", "import"}) {
    std::string result;
    std::thread page([&] {
      const TemplateArena arena;
      if (std::string_view(action) == "import") result = import(Tar().file("factory/user/new", "1"));
      if (std::string_view(action) == "export") result = act(action).body.empty() ? "" : kUpdating;
    });
    usleep(60'000);
    EXPECT_EQ(result + content("/config/user/new"), "");
    lock.Unlock();
    page.join();
    EXPECT_EQ(result, kUpdating);
    EXPECT_TRUE(lock.Lock(0));
  }
  EXPECT_EQ(content("/config/user/new"), "1");
}

TEST_F(SettingsConfigTest, PasswordsFollowTheWayTheyAreStored) {
  fs::create_directory(file("/tarnvel"));
  for (const char* name : {"/tarnvel/config", "/tarnvel/factory"})
    fs::create_directory_symlink(file("/config"), file(name));
  const auto passwordOf = [](int account) {
    return account == 15 ? std::string(300, 'x') : "pass" + std::to_string(account);
  };
  // The hardware's version; whether there are many accounts and encrypted passwords, before and after; the accounts
  // whose passwords are stored otherwise then.
  constexpr char kBeyondSix[] = " 6 7 8 9 10 11 12 13 14";
  const struct {
    std::string hardware, switches, converted;
  } cases[] = {
      {"[OLD_VER]\nHwVer=1.0.0.0", "1001", kBeyondSix},
      {"[OLD_VER]\nHwVer=1.0.0.0", "1100", kBeyondSix},
      {"", "1001", kBeyondSix},
      {"", "1011", ""},
      {"", "0011", ""},
      {"", "1101", ""},
      {"", "1200", ""},
      {"[OLD_VER]\nHwVer=4.1", "1001", " 3 4 5 6 7 8 9 10 11 12"},
      {"[OLD_VER]\nHwVer=2.1", "1001", ""},
      {"[OLD_VER]\nHwVer=7.1", "1001", ""},
      {"[OLD_VER]\nHwVer=9.1", "1001", ""},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.hardware + row.switches);
    for (int i = 0; i < 16; ++i) setConfig("AccountPassword@" + std::to_string(i), passwordOf(i));
    write("/tmp/InitSave", row.hardware);
    write("/config/voip/AccountNum.cfg", std::string("[AccountNum]\nIsAccountNum16=") + row.switches[0]);
    write("/config/Setting/Setting.cfg", std::string("[PhoneSetting]\nEnLock=") + row.switches[1]);
    Tar archive;
    archive.file("factory/voip/AccountNum.cfg", std::string("[AccountNum]\nIsAccountNum16=") + row.switches[2]);
    archive.file("factory/Setting/Setting.cfg", std::string("[PhoneSetting]\nEnLock=") + row.switches[3]);
    EXPECT_EQ(import(archive), kUpdating);
    std::string converted;
    for (int i = 0; i < 16; ++i) {
      if (config("AccountPassword@" + std::to_string(i)) != passwordOf(i)) converted += " " + std::to_string(i);
    }
    EXPECT_EQ(converted, row.converted);
  }
}

}  // namespace
