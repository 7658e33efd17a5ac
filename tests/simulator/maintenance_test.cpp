// What the phone does for its upkeep: reboots, resets, captures.
#include <signal.h>

#include "platform/boot_environment.h"
#include "platform/os_services.h"
#include "tests/simulator/simulator_test.h"

namespace {

using MaintenanceTest = PhoneTest;
using Lines = std::vector<std::string>;

void reboot() {
  msgPostMsgToThread(msgGetThreadByName("app_hostapp"), 0x10101, 0, 0);
}

TEST_F(MaintenanceTest, AKilledProcessComesBackWithAReboot) {
  EXPECT_EQ(content("/proc/110/cmdline"), std::string("lighttpd\0-f\0/phone/www/lighttpd.conf\0", 37));
  EXPECT_THAT(content("/proc/200/stat"), ::testing::StartsWith("200 (SipApp.sh) S "));
  EXPECT_EQ(content("/proc/2/cmdline"), "");
  for (const int process : {200, 999, 0, -1}) osKill(process, SIGKILL);
  EXPECT_FALSE(fs::exists(file("/proc/200")));
  EXPECT_TRUE(fs::exists(file("/proc/201")));
  reboot();
  EXPECT_TRUE(fs::exists(file("/proc/200/stat")));
}

TEST_F(MaintenanceTest, AFactoryResetKeepsWhatUsersBrought) {
  const std::string delivered = content("/config/data/htpasswd");
  write("/config/data/htpasswd", "changed");
  write("/data/userdata/sound/Own.wav", "RIFF");
  setConfig("AreaCode", "030");
  setState(R"({"rebootSeconds":1})");
  messages();
  msgBroadpostThreadMsg(0x10103, 0, 0);
  EXPECT_EQ(messages(), (Lines{"broadcast 0x10103 0 0", "system reboot factory reset"}));
  EXPECT_EQ(content("/config/data/htpasswd"), delivered);
  EXPECT_EQ(config("AreaCode") + content("/data/userdata/sound/Own.wav"), "RIFF");
  // What was installed stays installed.
  setConfig("PhoneFirmware", "46.84.0.1");
  write("/data/firmware.img", "an image");
  msgBroadpostThreadMsg(0x10103, 0, 0);
  EXPECT_EQ(config("PhoneFirmware"), "46.84.0.1");
  EXPECT_TRUE(fs::exists(file("/config/Pics")) && simulator::rebooting() && !fs::exists(file("/.config")));
}

TEST_F(MaintenanceTest, AFactoryResetTakesThePhonesOwnDefaults) {
  write("/data/customfactory/global.ini", "AreaCode=040\nFactoryConfigCustomEnabled=1\n");
  write("/../secret", "x");
  fs::create_symlink(file("/../secret"), file("/data/customfactory/link"));
  const auto reset = [] {
    msgBroadpostThreadMsg(0x10103, 0, 0);
    return config("AreaCode");
  };
  EXPECT_EQ(reset(), "");
  setConfig("FactoryConfigCustomEnabled", "1");
  EXPECT_EQ(reset(), "040");
  EXPECT_THAT(content("/config/data/htpasswd"), HasSubstr("admin"));
  EXPECT_FALSE(fs::exists(fs::symlink_status(file("/config/link"))));
  // One that does not fit is left out.
  write("/data/customfactory/data/htpasswd/x", "a folder in place of a file");
  EXPECT_EQ(reset(), "");
  EXPECT_THAT(content("/config/data/htpasswd"), HasSubstr("admin"));
}

TEST_F(MaintenanceTest, ACaptureHoldsTheMessagesOfItsTime) {
  const auto write = [] {
    return msgSendMsgToThreadEx(msgGetThreadByName("app_pcapServer"), 0x200005, 0, 0, "/tmp/c", 7);
  };
  const auto capturing = [] { return ask("app_pcapServer", 0x200003); };
  ask("app_hostapp", 0x30007);
  EXPECT_EQ(write() + capturing(), 0);
  ask("app_pcapServer", 0x200001);
  EXPECT_EQ(capturing(), 1);
  EXPECT_EQ(state()["capturing"], true);
  EXPECT_EQ(control("PATCH", "state", R"({"capturing":false})").status, 400);
  EXPECT_EQ(control("PATCH", "state", state().dump()).status, 200);
  ask("app_hostapp", 0x30007);
  msgBroadpostThreadMsg(0x10007, 11, 0);
  ask("app_pcapServer", 0x200002);
  ask("app_hostapp", 0x12345);
  EXPECT_EQ(write() + capturing(), 1);
  const std::string file = content("/tmp/c");
  // Ethernet, its first packet whole, from the phone's address and port.
  EXPECT_EQ(file.substr(0, 24), std::string("\xd4\xc3\xb2\xa1\2\0\4\0\0\0\0\0\0\0\0\0\xff\xff\0\0\1\0\0\0", 24));
  EXPECT_EQ(file.substr(32, 4), file.substr(36, 4));
  EXPECT_EQ(file.substr(52, 2) + file.substr(66, 4) + file.substr(74, 2), std::string("\x08\0\xc0\0\2\x2e\x13\xc4", 8));
  std::string subjects;
  for (std::size_t at = 0; (at = file.find("Subject: ", at)) != std::string::npos; ++at)
    subjects += file.substr(at + 9, file.find('\r', at) - at - 9) + "; ";
  EXPECT_EQ(subjects, "app_hostapp 0x30007; broadcast 0x10007; ");
  ask("app_pcapServer", 0x200001);
  ask("app_pcapServer", 0x200002);
  EXPECT_EQ(write(), 1);
  EXPECT_THAT(content("/tmp/c"), HasSubstr("OPTIONS sip:"));
}

TEST_F(MaintenanceTest, SafeModeLastsForOneRun) {
  setState(R"({"rebootSeconds":1,"bootEnvironment":{"BOOTMODE":"safemode"}})");
  reboot();
  EXPECT_EQ(state()["bootEnvironment"]["BOOTMODE"], "safemode");
  reboot();
  EXPECT_EQ(state()["bootEnvironment"].size(), 0);
}

TEST_F(MaintenanceTest, WhatLiesAboutAndWhatIsLocked) {
  EXPECT_EQ(content("/tmp/mac.tmp") + content("/tmp/log/phone.log"),
            "02005e000046The phone is up with firmware 46.83.0.120.\n");
  setState(R"({"mac":"02005e00ffff","upgrading":true,"bootEnvironmentLocked":true})");
  EXPECT_EQ(content("/tmp/mac.tmp"), "02005e00ffff");
  EXPECT_EQ(ask("smGui", 0xb0001), 1);
  EXPECT_FALSE(userenv_set("A", "1"));
  setState(R"({"mac":""})");
  EXPECT_FALSE(fs::exists(file("/tmp/mac.tmp")));
}

}  // namespace
