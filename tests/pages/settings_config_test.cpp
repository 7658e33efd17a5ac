// Configuration archives that are downloaded, custom factory settings, the system log.
#include "tests/pages/settings_config_test.h"

namespace {

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

// Whatever moment it ends at, each file is the old or the new one, and whole.
// Accounts that the settings that came leave out had their passwords stored another way. One that is too long for its
// field, that of account 15, stays as it is.
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
    EXPECT_THAT(files["log/" + name], HasSubstr("hostapp.exx"));
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

}  // namespace
