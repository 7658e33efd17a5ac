// The settings pages, and the lists of rings and pictures.
#include <filesystem>

#include "framework/media_lists.h"
#include "tests/support/page_test.h"

namespace {

using SettingsPages = PageTest;

TEST_F(SettingsPages, AnnounceWhatChanged) {
  setConfig("JitterAdaptive", "1");
  expectSaves({
      {"settings-areacode", "AreaCode=7", "post app_hostapp 0x10007 18 0", "AreaCode=7"},
      {"settings-areacode", "", "post app_hostapp 0x10007 18 0"},
      {"settings-tones", "ToneDial=425/0", "broadcast 0x10007 12 0", "ToneDial=425/0"},
      {"settings-tones", "", "broadcast 0x10007 12 0"},
      {"settings-voice", "JitterType=0&JitterAdaptive=9", "broadcast 0x10007 17 0", "JitterAdaptive=0"},
      {"settings-tr069", "TR069ServerPassword=********", "", "TR069ServerPassword="},
      {"settings-tr069", "TR069ServerPassword=secret", "broadcast 0x10007 23 0", "TR069ServerPassword=secret"},
      {"settings-tr069", "TR069ServerURL=http://acs", "broadcast 0x10007 23 0", "TR069ServerURL=http://acs"},
  });
}

TEST_F(SettingsPages, VoiceNeedsTheKindOfItsJitterBuffer) {
  EXPECT_EQ(load("settings-voice").variable("supportTR069"), "true");
  EXPECT_TRUE(save("settings-voice", "VPMVAD=1").untouched());
  EXPECT_EQ(config("VPMVAD"), "1");
  EXPECT_EQ(log.back(), "4 SettingsVoiceServlet::writeConfig() para error");
}

TEST_F(SettingsPages, TonesOfferCustomFirst) {
  write("/config/tone/CptToneCountry.cfg", "[Germany]\ndial=425\n[Austria]\n[" + std::string(70, 'x') + "]\n");
  setConfig("ToneCountry", "Austria");
  const RecordingResponse page = load("settings-tones");
  EXPECT_EQ(page.column("countryLoop", "selName"), "Custom|Germany|Austria|" + std::string(63, 'x'));
  EXPECT_EQ(page.column("countryLoop", "selected"), "false|false|true|false");
  std::filesystem::remove(file("/config/tone/CptToneCountry.cfg"));
  setConfig("ToneCountry", "Custom");
  EXPECT_EQ(load("settings-tones").column("countryLoop", "selected"), "true");
}

TEST_F(SettingsPages, ProvisioningNow) {
  setConfig("AutoProvisionAESKey16", "old");
  EXPECT_TRUE(save("settings-autop", "AutoProvisionUser=x").untouched());
  EXPECT_EQ(config("AutoProvisionUser"), "");
  expectSaves({{"settings-autop",
                "now=false&AutoProvisionUser=u&AutoProvisionAESKey16=********&AutoProvisionPassword=p&"
                "AutoProvisionPowerOn=0",
                "", "AutoProvisionUser=u&AutoProvisionAESKey16=old&AutoProvisionPassword=p&AutoProvisionPowerOn=0"}});
  EXPECT_EQ(save("settings-autop", "now=true&AutoProvisionAESKey16=").variable("noticeLabel"),
            "setInterval$settings-autop$Configuration updating ...");
  EXPECT_EQ(announced(), "post autoServer 0xb0001 0 0");
  EXPECT_EQ(config("AutoProvisionAESKey16"), "");
  for (const auto& [answer, text] : std::map<int, const char*>{{0, "idle"}, {1, "autoprovision"}, {-1, "idle"}}) {
    setState("{\"answers\":{\"autoServer 0xa0001\":" + std::to_string(answer) + "}}");
    EXPECT_EQ(run("settings-autop", "result").body, text);
  }
  for (const std::string& name : load("settings-autop").names) {
    EXPECT_EQ(name.find("Password") + name.find("AESKey"), 2 * std::string::npos) << name;
  }
}

TEST_F(SettingsPages, Tr069FillsInItsUserName) {
  setConfig("TR069DeviceManufacturerOUI=02005E&TR069DeviceProductClass=Desk");
  setState(R"({"mac":"02005e000046"})");
  for (const auto& [stored, shown] :
       Values{{"$ManufactureOUI-$ProductClass-$MAC", "02005E-Desk-02005e000046"}, {"<$MAC>", "&lt;$MAC&gt;"}}) {
    setConfig("TR069ServerUsername", stored);
    EXPECT_EQ(load("settings-tr069").variable("TR069ServerUsername"), shown);
  }
}

TEST_F(SettingsPages, RingsAreStoredByTheirPosition) {
  std::filesystem::remove_all(file("/phone/resource/sysdata/sound"));
  std::filesystem::remove_all(file("/data/userdata/sound"));
  for (const char* ring : {"Ring2.wav", "Ring1.WAV", ".svn"})
    write(std::string("/phone/resource/sysdata/sound/") + ring, "x");
  const std::string odd = "a b'\"$(x)\xC3\xA4.wav";
  write("/data/userdata/sound/" + odd, "x");
  const std::string fields =
      "Text=<a>&Ringer=default-ring.wav&Text=b&Ringer=Ring1.WAV&Text=c&Ringer=Ring2.wav&Text=d&Ringer=" + odd +
      "&Text=e&Ringer=none.wav";
  setConfig("AlertInfo9Text", "kept");
  expectSaves({{"settings-ring", fields, "broadcast 0x10007 57 0", "AlertInfo0Text=<a>&AlertInfo3Text=d"}});
  EXPECT_EQ(config("AlertInfo0Ringer AlertInfo1Ringer AlertInfo2Ringer AlertInfo3Ringer AlertInfo4Ringer "
                   "AlertInfo9Text"),
            "0|1|2|3|0|kept");
  EXPECT_EQ(load("settings-ring").column("TRLoop", "row"), "1|2|3|4|5|6|7|8|9|10");
}

TEST_F(SettingsPages, RingChoices) {
  std::filesystem::remove_all(file("/phone/resource/sysdata"));
  std::filesystem::remove_all(file("/data/userdata"));
  for (const char* ring : {"b.wav", "a.WAV", "skip.mp3"})
    write(std::string("/phone/resource/sysdata/sound/") + ring, "");
  write("/data/userdata/sound/b.wav", "");
  const auto column = [](TMPL_loop* loop, const char* name) {
    RecordingResponse page;
    page.renderTemplate("x", TMPL_add_loop(nullptr, "rows", loop));
    return page.column("rows", name);
  };
  const struct {
    const char* value;
    RING_OPERATOR_TYPE kind;
    bool withSource;
    const char *values, *selected;
  } rows[] = {
      {"Config:b.wav", RING_CONTACT, true, "Auto|Resource:a.WAV|Resource:b.wav|Config:b.wav", "||selected|selected"},
      {"/x/y:z/a.WAV", RING_PREFERENCE, false, "a.WAV|b.wav|b.wav", "selected||"},
      {"Common", RING_ACCOUNT, false, "Common|a.WAV|b.wav|b.wav", "selected|||"},
      {"0", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "||"},
      {"1", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "selected||"},
      {"3", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "|selected|selected"},
      {"4", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "||"},
      {"x", RING_ALERT_INFO, false, "a.WAV|b.wav|b.wav", "||"},
  };
  for (const auto& [value, kind, withSource, values, selected] : rows) {
    EXPECT_EQ(column(GetRingToneLoop(value, kind, withSource), "selValue"), values) << value;
    EXPECT_EQ(column(GetRingToneLoop(value, kind, withSource), "selected"), selected) << value;
  }
  write("/data/userdata/wallpaper/z.BMP", "");
  EXPECT_EQ(column(GetWallpaperLoop("Config:z.BMP"), "selValue"), "Default:Default.jpg|Config:z.BMP");
  EXPECT_EQ(column(GetWallpaperLoop("Config:z.BMP"), "selected"), "|selected");
  EXPECT_EQ(GetWallpaperLoop(nullptr), nullptr);
  EXPECT_EQ(column(GetPhotoLoop(), "selValue"), "Default:default_contact_image.png");
}

}  // namespace
