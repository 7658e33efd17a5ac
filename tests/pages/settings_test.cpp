// The settings pages, and the lists of rings and pictures.
#include <filesystem>

#include "framework/media_lists.h"
#include "tests/support/page_test.h"

namespace {

class SettingsPages : public PageTest {
 protected:
  // The phone's own rings, and one of the user's; no other media.
  void haveRings(std::initializer_list<const char*> system, const std::string& user) {
    for (const char* media : {"/phone/resource/sysdata", "/data/userdata"}) std::filesystem::remove_all(file(media));
    for (const char* ring : system) write(std::string("/phone/resource/sysdata/sound/") + ring, "x");
    write("/data/userdata/sound/" + user, "x");
  }
};

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
  const std::string odd = "a b'\"$(x)\xC3\xA4.wav";
  haveRings({"Ring2.wav", "Ring1.WAV", ".svn"}, odd);
  const std::string fields =
      "Text=<a>&Ringer=default-ring.wav&Text=b&Ringer=Ring1.WAV&Text=c&Ringer=Ring2.wav&Text=d&Ringer=" + odd +
      "&Text=e&Ringer=none.wav";
  setConfig("AlertInfo9Text", "kept");
  expectSaves({{"settings-ring", fields, "broadcast 0x10007 57 0",
                "AlertInfo0Text=<a>&AlertInfo3Text=d&AlertInfo9Text=kept&AlertInfo0Ringer=0&AlertInfo1Ringer=1&"
                "AlertInfo2Ringer=2&AlertInfo3Ringer=3&AlertInfo4Ringer=0"}});
  EXPECT_EQ(load("settings-ring").column("TRLoop", "row"), "1|2|3|4|5|6|7|8|9|10");
}

TEST_F(SettingsPages, RingChoices) {
  haveRings({"b.wav", "a.WAV", "skip.mp3"}, "b.wav");
  const auto shown = [](TMPL_loop* loop) { return columns(loop, "selValue selected"); };
  EXPECT_EQ(shown(GetRingToneLoop("Config:b.wav", RING_CONTACT, true)),
            "Auto|Resource:a.WAV|Resource:b.wav|Config:b.wav, ||selected|selected");
  const std::string rings = "a.WAV|b.wav|b.wav, ";
  EXPECT_EQ(shown(GetRingToneLoop("/x/y:z/a.WAV", RING_PREFERENCE, false)), rings + "selected||");
  EXPECT_EQ(shown(GetRingToneLoop("Common", RING_ACCOUNT, false)), "Common|" + rings + "selected|||");
  for (const auto& [position, selected] :
       Values{{"0", "||"}, {"1", "selected||"}, {"3", "|selected|selected"}, {"4", "||"}, {"x", "||"}}) {
    EXPECT_EQ(shown(GetRingToneLoop(position.c_str(), RING_ALERT_INFO, false)), rings + selected) << position;
  }
  write("/data/userdata/wallpaper/z.BMP", "");
  EXPECT_EQ(shown(GetWallpaperLoop("Config:z.BMP")), "Default:Default.jpg|Config:z.BMP, |selected");
  EXPECT_EQ(GetWallpaperLoop(nullptr), nullptr);
  EXPECT_TRUE(shown(GetPhotoLoop()).starts_with("Default:default_contact_image.png, "));
}

}  // namespace
