// Configuration archives, custom factory settings, the system log.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "platform/named_lock.h"
#include "tests/support/page_test.h"
#include "tests/support/tar.h"

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

class SettingsConfigTest : public PageTest {
 protected:
  RecordingResponse act(const std::string& action, const std::string& fields = "") {
    return run("settings-config", action, fields);
  }
  // The notice that an upload ends in; nothing temporary is left, whatever it was.
  std::string upload(const std::string& action, const std::string& archive) {
    write("/tmp/fileupload_aB3-_9", archive);
    const std::string field = action == "import" ? "ConfigFileName" : "FactoryConfig";
    const std::string label = act(action, field + "=/tmp/fileupload_aB3-_9").variable("noticeLabel");
    expectNothingLeft();
    return label.substr(0, label.find("$settings-config$")) + label.substr(std::min(label.size(), label.rfind('$')));
  }
  std::string import(const Tar& archive) { return upload("import", archive.text()); }
  void expectNothingLeft() const {
    for (const auto& entry : fs::directory_iterator(file("/tmp"))) EXPECT_EQ(entry.path().extension(), ".lock");
    EXPECT_FALSE(fs::exists(file("/config/.import")) || fs::exists(file("/data/customfactory.new")));
  }
  // What an archive of the page holds: names, "=" and contents of plain files.
  std::map<std::string, std::string> unpacked(const std::string& archive) {
    write("/tmp/x/a.tar", archive);
    EXPECT_EQ(std::system(("tar -xf " + file("/tmp/x/a.tar").string() + " -C " + file("/tmp/x").string()).c_str()), 0);
    fs::remove(file("/tmp/x/a.tar"));
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(file("/tmp/x"))) {
      const std::string path = entry.path().lexically_relative(file("/tmp/x")).string();
      files[path] = entry.is_regular_file() ? content("/tmp/x/" + path) : "";
    }
    fs::remove_all(file("/tmp/x"));
    return files;
  }
  std::string configTree() {
    std::string all;
    for (const auto& entry : fs::recursive_directory_iterator(file("/config"))) {
      const std::string path = entry.path().lexically_relative(file("/config")).string();
      all += path + "\n" + (entry.is_regular_file() ? content("/config/" + path) : "");
    }
    return all;
  }
};

constexpr char kUpdating[] = "setInterval$Configuration updating ...";
constexpr char kRefused[] = "setTimeout$Error:Import config error!";
constexpr char kAsked[] = "send app_hostapp 0x1000f 0 0; ";

TEST_F(SettingsConfigTest, ExportsWhatTheFactoryKnows) {
  setConfig("AreaCode=030&AccountPassword@0=geheim&RedialTime=5");
  write("/config/certs/a.pem", "x");
  write("/config/system/autop_code.cfg", "x");
  write("/config/system/other.cfg", "y");
  write("/phone/factory/certs/b.pem", "x");
  write("/phone/factory/system/other.cfg", "x");
  write("/config/openvpn/client.cfg", "x");
  fs::create_symlink("/etc/passwd", file("/config/data/link"));
  write("/tmp/export/left/over", "x");
  const RecordingResponse answer = act("export");
  expectNothingLeft();
  EXPECT_EQ(answer.contentType, "text/xml");
  using Header = std::pair<std::string, std::string>;
  EXPECT_EQ(answer.headers, (std::vector<Header>{{"Content-disposition", "attachment; filename=config.bin"},
                                                 {"Accept-Ranges", "bytes"},
                                                 {"Expires", "-1"}}));
  auto files = unpacked(answer.body);
  EXPECT_THAT(files["factory/global.ini"], HasSubstr("AreaCode=030\n"));
  EXPECT_THAT(files["factory/account.ini"], HasSubstr("AccountPassword=geheim\n"));
  EXPECT_EQ(files["factory/system/other.cfg"] + files["factory/data/htpasswd"], "y" + content("/config/data/htpasswd"));
  for (const char* name : {"certs", "system/autop_code.cfg", "openvpn", "data/link", "left"})
    EXPECT_FALSE(files.contains(std::string("factory/") + name)) << name;
  setConfig("ExportCFGClearPWD=1");
  files = unpacked(act("export").body);
  EXPECT_THAT(files["factory/account.ini"], HasSubstr("AccountPassword=\n"));
  EXPECT_EQ(config("AccountPassword@0"), "geheim");
}

TEST_F(SettingsConfigTest, AnImportTakesThePlaceOfWhatIsThere) {
  setConfig("AreaCode=030&AccountLabel@0=Old");
  write("/config/user/user.ini", "old");
  chmod(file("/config/data/htpasswd").c_str(), 0600);
  announced();
  const Tar archives[] = {Tar().folder("factory").file("factory/global.ini", "[global]\nAreaCode=089\n"),
                          Tar().file("phone/factory/global.ini", "AreaCode=0711\n"),
                          Tar().file("factory/htpasswd", "admin:x\n", 0644).file("factory/data/htpasswd", "no")};
  EXPECT_EQ(import(archives[0]), kUpdating);
  EXPECT_THAT(announced(), ::testing::MatchesRegex(".*send app_hostapp 0x1000f 0 0; .*post app_hostapp 0x10101 0 0; "
                                                   "system reboot app_hostapp 0x10101.*"));
  EXPECT_EQ(config("AreaCode AccountLabel@0") + content("/config/user/user.ini"), "089|Oldold");
  EXPECT_EQ(import(archives[1]), kUpdating);
  EXPECT_EQ(config("AreaCode"), "0711");
  EXPECT_EQ(import(archives[2]), kUpdating);
  EXPECT_EQ(content("/config/htpasswd") + content("/config/data/htpasswd"), "admin:x\nadmin:x\n");
  struct stat status {};
  EXPECT_EQ(stat(file("/config/data/htpasswd").c_str(), &status) + (status.st_mode & 0777), 0600);
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

// Whatever moment it ends at, each file is the old or the new one, and whole.
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
  usleep(200'000);  // commands of the last one may still run
  write("/tmp/fileupload_aB3-_9", archive.text());
  EXPECT_EQ(act("import", "ConfigFileName=/tmp/fileupload_aB3-_9").variable("noticeLabel"),
            "setInterval$settings-config$Configuration updating ...");
  expectNothingLeft();
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

// Accounts that the settings that came leave out had their passwords stored another way.
TEST_F(SettingsConfigTest, PasswordsFollowTheWayTheyAreStored) {
  fs::create_directory(file("/tarnvel"));
  for (const char* name : {"/tarnvel/config", "/tarnvel/factory"})
    fs::create_directory_symlink(file("/config"), file(name));
  const auto settings = [](int isMany, int isEncrypted) {
    return std::pair{"[AccountNum]\nIsAccountNum16=" + std::to_string(isMany),
                     "[PhoneSetting]\nEnLock=" + std::to_string(isEncrypted)};
  };
  // The hardware, both switches before and after, and which accounts' passwords are stored otherwise then.
  const struct {
    const char* hardware;
    int many, encrypted, manyAfter, encryptedAfter;
    const char* converted;
  } cases[] = {
      {"1.0.0.0", 1, 0, 0, 1, "......**********"}, {"1.0.0.0", 1, 1, 0, 0, "......**********"},
      {"1.0.0.0", 1, 0, 1, 1, "................"}, {"1.0.0.0", 0, 0, 1, 1, "................"},
      {"1.0.0.0", 1, 1, 0, 1, "................"}, {"1.0.0.0", 1, 2, 0, 0, "................"},
      {"2.1", 1, 0, 0, 1, "................"},     {"4.1", 1, 0, 0, 1, "...**********..."},
      {"7.1", 1, 0, 0, 1, "................"},     {"9.1", 1, 0, 0, 1, "................"},
      {nullptr, 1, 0, 0, 1, "......**********"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.hardware ? row.hardware : "unknown") + " " + row.converted);
    for (int i = 0; i < 16; ++i) setConfig("AccountPassword@" + std::to_string(i), "pass" + std::to_string(i));
    fs::remove(file("/tmp/InitSave"));
    if (row.hardware) write("/tmp/InitSave", std::string("[OLD_VER]\nHwVer=") + row.hardware);
    write("/config/voip/AccountNum.cfg", settings(row.many, 0).first);
    write("/config/Setting/Setting.cfg", settings(0, row.encrypted).second);
    write("/tmp/fileupload_aB3-_9", Tar()
                                        .file("factory/voip/AccountNum.cfg", settings(row.manyAfter, 0).first)
                                        .file("factory/Setting/Setting.cfg", settings(0, row.encryptedAfter).second)
                                        .text());
    act("import", "ConfigFileName=/tmp/fileupload_aB3-_9");
    std::string converted;
    for (int i = 0; i < 16; ++i) {
      const std::string number = std::to_string(i);
      converted += config("AccountPassword@" + number) == "pass" + number ? '.' : '*';
    }
    EXPECT_EQ(converted, row.converted);
  }
  setConfig("AccountPassword@15", std::string(300, 'x'));
  write("/config/voip/AccountNum.cfg", settings(1, 0).first);
  write("/config/Setting/Setting.cfg", settings(0, 0).second);
  write("/tmp/fileupload_aB3-_9", Tar()
                                      .file("factory/voip/AccountNum.cfg", settings(0, 0).first)
                                      .file("factory/Setting/Setting.cfg", settings(0, 1).second)
                                      .text());
  act("import", "ConfigFileName=/tmp/fileupload_aB3-_9");
  EXPECT_EQ(config("AccountPassword@15"), std::string(300, 'x')) << "too long for its field, and nothing is lost";
}

TEST_F(SettingsConfigTest, KeepsFactorySettings) {
  const auto date = [this] { return load("settings-config").variable("customFactoryDate"); };
  EXPECT_EQ(date(), "");
  EXPECT_EQ(upload("importFactory", Tar().file("factory/global.ini", "1").file("factory/htpasswd", "p").text()),
            "setTimeout$Success:Import your factory config OK!");
  EXPECT_EQ(content("/data/customfactory/global.ini") + content("/data/customfactory/data/htpasswd"), "1p");
  EXPECT_EQ(upload("importFactory", Tar().file("phone/factory/user/a", "2").text()),
            "setTimeout$Success:Import your factory config OK!");
  EXPECT_EQ(content("/data/customfactory/user/a"), "2");
  EXPECT_FALSE(fs::exists(file("/data/customfactory/global.ini")));
  EXPECT_NE(date(), "");
  EXPECT_EQ(act("delFactory").variable("noticeLabel"),
            "setTimeout$settings-config$Success:Delete user factory config OK!");
  EXPECT_EQ(act("delFactory").variable("noticeLabel"),
            "setTimeout$settings-config$Error:User factory config doesn't exist!");
}

TEST_F(SettingsConfigTest, ExportsTheLog) {
  write("/tmp/log/sys.log", "line\n");
  const std::pair<std::string, std::string> names[] = {{"02005e000046\n", "02005e000046.log"},
                                                       {"02:00:5E:00:00:46", "02:00:5E:00:00:46.log"},
                                                       {"$(touch x)", "000000000000.log"},
                                                       {"../../config/x", "000000000000.log"},
                                                       {"", "000000000000.log"}};
  for (const auto& [mac, name] : names) {
    write("/tmp/mac.tmp", mac);
    const RecordingResponse answer = act("exportsyslog");
    EXPECT_EQ(answer.headers.at(0).second, "attachment; filename=syslog.tar");
    auto files = unpacked(answer.body);
    EXPECT_EQ(files["log/sys.log"], "line\n");
    EXPECT_THAT(files["log/" + name], HasSubstr("eth0")) << mac;
    EXPECT_THAT(files["log/" + name], HasSubstr("app_hostapp"));
    EXPECT_FALSE(fs::exists(file("/tmp/export")));
  }
  fs::remove_all(file("/tmp/log"));
  fs::remove(file("/tmp/mac.tmp"));
  EXPECT_EQ(unpacked(act("exportsyslog").body).size(), 0U);
}

TEST_F(SettingsConfigTest, SavesAndRestartsWhenAsked) {
  expectSaves({{"settings-config", "SyslogServerName=log.example&ServerLogLevel=5&SysLogLevel=6&ExportCFGClearPWD=1",
                "", "SyslogServerName=log.example&ServerLogLevel=5&SysLogLevel=6&ExportCFGClearPWD=0"}});
  EXPECT_EQ(save("settings-config", "reboot=true").variable("noticeLabel"),
            "setInterval$settings-config$Rebooting , please wait ...");
  EXPECT_EQ(announced(), "post app_hostapp 0x10101 2 0; system reboot app_hostapp 0x10101");
  EXPECT_EQ(load("settings-config").variable("ExistFactory"), "true");
  fs::remove_all(file("/phone/factory"));
  EXPECT_EQ(load("settings-config").variable("ExistFactory"), "(absent)");
  EXPECT_EQ(act("Export").status, 404);
}

TEST_F(SettingsConfigTest, ArchivesAreForThoseWhoSeeThem) {
  const auto statusFor = [this](const char* user, const char* action) {
    session.attributes["user"] = user;
    return act(action).status;
  };
  for (const char* action : {"export", "import", "exportsyslog", "importFactory", "delFactory"}) {
    EXPECT_EQ(statusFor("admin", action), 200) << action;
    EXPECT_EQ(statusFor("var", action), 403) << action;
    EXPECT_EQ(statusFor("user", action), 403) << action;
  }
  setConfig("PhoneOptConfigfile=1");
  EXPECT_EQ(statusFor("var", "export") + statusFor("user", "export") + statusFor("nobody", "export"), 1006);
  setConfig("PhoneOptConfigfile=2");
  EXPECT_EQ(statusFor("user", "export") + statusFor("nobody", "export"), 603);
}

}  // namespace
