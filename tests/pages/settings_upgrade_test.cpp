// The upgrade page: firmware that comes in, what is ended for it, restarts and captures.
#include <gmock/gmock.h>
#include <unistd.h>

#include "framework/shared_texts.h"
#include "platform/boot_environment.h"
#include "servlet/settings/settings_upgrade_stream.h"
#include "tests/support/page_test.h"

namespace {

using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr char kSum[] = "09ecb6ebc8bcefc733f6f2ec44f791abeed6a99edf0cc31519637898aebd52d8";  // of 100 times "x"
constexpr char kForm[] = "multipart/form-data; boundary=X";
constexpr char kHead[] = "--X\r\nContent-Disposition: form-data\r\nContent-Type: a/b\r\n\r\n";

std::string image(const std::string& size = "100", const std::string& sum = kSum, const std::string& version = "9.9") {
  return "PHONE-FIRMWARE 1\nversion: " + version + "\nsize: " + size + "\nsha256: " + sum + "\n\n" +
         std::string(100, 'x');
}

class UpgradeTest : public PageTest {
 protected:
  UpgradeTest() { write("/tmp/log/phone.log", "what went wrong"); }

  // Whether the phone took the firmware of this body; if not, that it saved its logs and restarts.
  bool upgrade(const std::string& body, const std::string& type = kForm, int pieceSize = 1 << 20) {
    messages();
    write("/config/data/log/phone.log", "of old");
    FakeRequest request;
    request.fields = fieldsOf("q=upgrade");
    request.contentType = type;
    request.body = body;
    request.pieceSize = pieceSize;
    const RecordingResponse answer = serve(pageHandler("settings-upgrade"), request);
    EXPECT_EQ(answer.contentType + answer.body, "text/html");
    EXPECT_FALSE(std::filesystem::exists(file("/data/firmware.img.new")));
    const Messages done = messages();
    const bool installed = done.back() == "system reboot upgrade";
    EXPECT_NE(installed, done.back() == "system reboot shell");
    EXPECT_NE(installed, content("/config/data/log/phone.log") == "what went wrong");
    return installed;
  }
  std::string ask(const std::string& action) { return run("settings-upgrade", action).body; }
  static std::string variable(const char* name) {
    char value[32];
    userenv_get(name, value, sizeof value);
    return value;
  }
  static std::string told() { return " " + readShareText("romTranStat") + " " + readShareText("romRecvSize"); }
  void addProcess(int number, const std::string& command, const std::string& stat) const {
    write("/proc/" + std::to_string(number) + "/cmdline", command);
    write("/proc/" + std::to_string(number) + "/stat", stat);
  }
};

TEST_F(UpgradeTest, InstallsTheImageBehindThePartsHead) {
  EXPECT_TRUE(upgrade(kHead + image() + "\r\n--X--\r\n"));
  EXPECT_EQ(content("/data/firmware.img"), image());
  EXPECT_EQ(config("PhoneFirmware") + told(), "9.9 done 100");
  EXPECT_TRUE(upgrade(kHead + image("100", kSum, "9.10"), kForm, 7));
  EXPECT_EQ(config("PhoneFirmware"), "9.10");
  EXPECT_THAT(log, Contains("6 Form Header(Content-Disposition: form-data\\x0d\\x0a)!!!!"));
  EXPECT_THAT(log, Contains("6 Block Header(Content-Type: a/b\\x0d\\x0a\\x0d\\x0a)!!!!"));
}

TEST_F(UpgradeTest, AnImageThatIsNotWholeLeavesTheOldOne) {
  EXPECT_TRUE(upgrade(kHead + image()));
  const std::string whole = kHead + image("100", kSum, "10");
  for (std::size_t length = 0; length < whole.size(); length += length < 60 ? 1 : 20)
    EXPECT_FALSE(upgrade(whole.substr(0, length))) << length;
  std::string other = kSum;
  other[0] = '1';
  for (const std::string& bad :
       {image("99"), image("101"), image("0"), image("-1"), image("67108865"), image("1e2"), image("100", other),
        image("100", ""), image("100", kSum, "../x"), image("100", kSum, ""), image("100", kSum, std::string(32, '1')),
        std::string(600, 'x')})
    EXPECT_FALSE(upgrade(kHead + bad)) << bad;
  EXPECT_EQ(content("/data/firmware.img"), image());
  EXPECT_FALSE(upgrade(whole.substr(0, whole.size() - 1)));
  EXPECT_EQ(config("PhoneFirmware") + told(), "9.9 failed 99");
}

TEST_F(UpgradeTest, TheBoundaryIsWhatFollowsTheFirstEqualsSign) {
  const std::string form = kHead + image(), quoted = "--\"X\"\r\na\r\nb\r\n\r\n" + image();
  for (const auto& [type, body, ends] : std::vector<std::tuple<std::string, std::string, bool>>{
           {"multipart/form-data; boundary=\"X\"", form, false},
           {"multipart/form-data; boundary=\"X\"", quoted, true},
           {"multipart/form-data; charset=utf-8; boundary=X", form, false},
           {"=X", form, true},
           {"multipart/form-data", form, false},
           {"", form, false},
           {"multipart/form-data; boundary=", "--\r\na\r\nb\r\n\r\n" + image(), true},
           // A byte that breaks a match off begins none.
           {kForm, "--" + form, false},
           {kForm, "preamble\r\n" + form, true},
           {kForm, "--X\r\na\r\r\nb\r\n\r\n" + image(), false},
           // All of a head of one line is its first line.
           {kForm, "--X\r\na\r\n\r\n" + image() + "\r\n\r\n" + image(), true},
           {kForm, "--X\r\n" + std::string(1021, 'a') + "\r\nb\r\n\r\n" + image(), true},
           {kForm, "--X\r\n" + std::string(1022, 'a') + "\r\nb\r\n\r\n" + image(), false},
           {kForm, "--X\r\na\r\n" + std::string(10 << 10, 'b') + "\r\n\r\n" + image(), false}})
    EXPECT_EQ(upgrade(body, type), ends) << type << "\n" << body.substr(0, 60);
  EXPECT_THAT(log, Contains("4 lpszBoundText is null"));
  EXPECT_THAT(log, Contains("4 szFormHeader is error"));
  EXPECT_THAT(log, Contains("4 \\x0d\\x0a\\x0d\\x0a is error"));
  FakeRequest empty;
  EXPECT_FALSE(matchStreamData(&empty, nullptr));
  EXPECT_TRUE(matchStreamData(&empty, ""));
}

TEST_F(UpgradeTest, LinksAndLockedVariablesDoNoHarm) {
  write("/../outside", "kept");
  std::filesystem::create_symlink(file("/../outside"), file("/data/firmware.img"));
  std::filesystem::create_symlink(file("/../outside"), file("/data/firmware.img.new"));
  EXPECT_TRUE(upgrade(kHead + image()));
  EXPECT_EQ(content("/../outside") + content("/data/firmware.img"), "kept" + image());
  setState(R"({"bootEnvironmentLocked":true})");
  EXPECT_FALSE(upgrade(kHead + image()));
  EXPECT_THAT(log, Contains("3 Fail to set user env 'NeedSync' to value '1' !"));
  setState(R"({"bootEnvironmentLocked":false})");
  EXPECT_EQ(variable("NeedSync"), "1");
  EXPECT_FALSE(upgrade(kHead + std::string("x")));
  EXPECT_EQ(variable("NeedSync"), "0");
}

TEST_F(UpgradeTest, PreparesByEndingWhatTheUpgradeDoesNotNeed) {
  EXPECT_EQ(ask("askUpgrade"), "false");
  setConfig("SipUnregisterOnReboot=3");
  setState(R"({"upgrading":true})");
  run("settings-upgrade", "beforeupgrade");
  EXPECT_EQ(announced(),
            "send app_hostapp 0x10009 0 0; broadcast 0x1000a 0 0; system sleep 3000 ms; system sleep 5000 ms; "
            "send smGui 0xb0001 0 0");
  EXPECT_THAT(log, Contains("3 Firmware Upgrading, can't launch once more !"));
  EXPECT_EQ(ask("askUpgrade"), "true");
  setConfig("SipUnregisterOnReboot=0");
  setState(R"({"upgrading":false})");
  for (const int own : {getpid(), getppid()}) addProcess(own, "own", "9 (own) S");
  addProcess(301, "x", "301 (flasher) S");
  addProcess(302, "x", "302 ((x) S");
  addProcess(303, "", "303 (kernel) S");
  addProcess(304, "x", "304 (open");
  write("/proc/305x/cmdline", "x");
  std::filesystem::create_directories(file("/proc/306/stat"));
  run("settings-upgrade", "beforeupgrade");
  std::string kills;
  for (const char* number : {"200", "201", "202", "203", "210", "211", "302"})
    kills += std::string("; system kill process ") + number + ", signal 9";
  EXPECT_EQ(announced(),
            "send app_hostapp 0x10009 0 0; system sleep 5000 ms; send smGui 0xb0001 0 0; "
            "broadcast 0xb0003 0 0" +
                kills);
}

TEST_F(UpgradeTest, AnswersAndRestarts) {
  EXPECT_EQ(load("settings-upgrade").variable("firmware hardware pcapUpdate Identity supportTR069"),
            "46.83.0.120|46.0.0.1|0|admin|true");
  EXPECT_EQ(ask("ask") + ask("askRebootOK") + ask("progress"), "falsefalse<p>done</p>");
  setState(R"({"talking":true,"answers":{"app_hostapp 0x10103":0}})");
  EXPECT_EQ(ask("ask"), "true");
  EXPECT_EQ(run("settings-upgrade", "Upgrade").status, 404);
  announced();
  EXPECT_EQ(run("settings-upgrade", "reboot").variable("noticeLabel"),
            "setInterval$settings-upgrade$Rebooting , please wait ...");
  EXPECT_EQ(announced() + config("UpdateStatus"),
            "post app_hostapp 0x10101 2 0; system reboot app_hostapp 0x10101reboot");
  EXPECT_EQ(run("settings-upgrade", "reset").variable("noticeLabel"),
            "setInterval$settings-upgrade$Resetting , please wait ...");
  EXPECT_EQ(announced() + config("UpdateStatus"), "broadcast 0x10103 0 0RESETFACTORY");
  EXPECT_TRUE(run("settings-upgrade", "rebootbeforeupgrade").untouched());
  EXPECT_THAT(announced(), HasSubstr("0x10101 2 0"));
  EXPECT_EQ(variable("bWebUpgrade") + variable("BOOTMODE"), "1safemode");
}

TEST_F(UpgradeTest, CapturesGoOutWithTheirClips) {
  const auto download = [this] { return run("settings-upgrade", "exportcapture"); };
  EXPECT_EQ(download().body, "Invalid file name.");
  EXPECT_EQ(run("settings-upgrade", "startcapture").redirects, Messages{"/servlet?p=settings-upgrade&q=load"});
  EXPECT_EQ(load("settings-upgrade").variable("pcapUpdate"), "1");
  run("settings-upgrade", "stopcapture");
  write("/tmp/clip-0.pcap", "first");
  write("/tmp/clip-2.pcap", "third");
  write("/tmp/clip-3.pcap", "beyond");
  setConfig("PacketCapClipFilePrefix=/tmp/clip&PacketCapFileCount=3");
  setConfig("PhoneFirmware", "../a\r\nX: y;\"b\xc3\xa9");
  announced();
  const RecordingResponse answer = download();
  EXPECT_THAT(answer.body, EndsWith("firstthird"));
  EXPECT_EQ(answer.body.substr(0, 4), "\xd4\xc3\xb2\xa1");
  EXPECT_THAT(answer.headers[0].second,
              ::testing::MatchesRegex("attachment; filename=\\.\\._a__X: y__b___[0-9_]+\\.pcap"));
  EXPECT_THAT(announced(), HasSubstr("0x200005 0 0 [/tmp/.._a__X: y__b___"));
  for (const auto& entry : std::filesystem::directory_iterator(file("/tmp")))
    EXPECT_THAT(entry.path().filename().string(), Not(HasSubstr("_a__X"))) << "is left behind";
  setConfig("PacketCapClipFilePrefix", "/../outside");
  write("/../outside-0.pcap", "secret");
  EXPECT_THAT(download().body, Not(HasSubstr("secret")));
  std::filesystem::create_directories(file("/tmp/clip-1.pcap"));
  setConfig("PacketCapClipFilePrefix", "/tmp/clip");
  EXPECT_THAT(download().body, EndsWith("first"));
  EXPECT_THAT(log, Contains("4 PhoneUpgradeServlet::exportCapture(). failed to open file"));
}

}  // namespace
