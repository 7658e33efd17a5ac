// The preferences, and the rings and wallpapers of the phone's users.
#include <filesystem>

#include "tests/support/page_test.h"

namespace {

constexpr char kRings[] = "/data/userdata/sound/";
constexpr char kWallpapers[] = "/data/userdata/wallpaper/";
constexpr char kNoFile[] = "Error:File isn't exist!";
constexpr char kNotStored[] = "Error:File upload error!";
constexpr char kNotScaled[] = "Fail to upload photo ! [Can not compress the picture]";
constexpr char kRingsChanged[] = "back, post app_hostapp 0x10007 53 0";
constexpr char kWallpapersChanged[] = "back, post app_hostapp 0x10007 86 1";

class Preferences : public PageTest {
 protected:
  // "back" for the page, the text of its notice, "" for nothing at all, "?" for anything else; behind it what was sent.
  std::string answerOf(const RecordingResponse& response) {
    std::string answer = response.untouched() ? "" : "?";
    const std::string label = response.variable("noticeLabel"), front = "setTimeout$settings-preference$";
    if (label.starts_with(front)) answer = label.substr(front.size());
    if (response.redirects == std::vector<std::string>{"/servlet?p=settings-preference&q=load"}) answer = "back";
    for (const std::string& message : messages()) {
      if (message.starts_with("post")) answer += ", " + message;
    }
    return answer;
  }
  std::string act(const std::string& action, const std::string& fields) {
    return answerOf(run("settings-preference", action, fields));
  }
  // An upload, of `length` bytes in the request's head.
  std::string upload(const std::string& action, const std::string& name, const std::string& bytes, int length = -1) {
    const bool isRing = action == "upload";
    const std::string stored = std::string(isRing ? kRings : kWallpapers) + "ringtone_aB3-_9";
    const std::string field = isRing ? "nameUploadRing" : "nameUploadWallpaper";
    write(stored, bytes);
    FakeRequest request{{"q", action}, {field, stored}, {field, name}};
    request.session = &session;
    request.contentLength = length;
    const std::string answer = answerOf(serve(pageHandler("settings-preference"), request));
    std::filesystem::remove(file(stored));  // the host does, where a request is refused before its files are looked at
    return answer;
  }
  std::string uploadRing(const std::string& name) { return upload("upload", name, "sound"); }
  std::string picture() const { return content("/phone/resource/sysdata/wallpaper/pictures (01).png"); }
  bool has(const std::string& path) const { return std::filesystem::exists(file(path)); }
  // How many files lie in a folder.
  auto count(const char* folder) const { return std::distance(std::filesystem::directory_iterator(file(folder)), {}); }
};

TEST_F(Preferences, ShowsWhatIsStored) {
  std::filesystem::remove_all(file("/phone/www/htdocs/language"));
  for (const char* name : {"language/B.JS", "language/b.txt"}) write(std::string("/phone/www/htdocs/") + name, "");
  setConfig("ActiveLevel=10&ContrastLevel=12345678&LanguageWebLang=B");
  setConfig("CurrentWallpaper", "Config:a&b.png");
  write(std::string(kWallpapers) + "a&b.png", "x");
  const RecordingResponse page = load("settings-preference");
  EXPECT_EQ(page.variable("Ringtype ColorfulScreen supportTR069 UnlockPIN"), "Resource:Ring1.wav|true|true|(absent)");
  EXPECT_EQ(columns(page, "activeLevelLoop", "selValue selName selected"),
            "1|2|3|4|5|6|7|8|9|10, 1|2|3|4|5|6|7|8|9|10, |||||||||selected");
  EXPECT_EQ(columns(page, "contrastLoop", "selValue selected"), "1|2|3|4|5|6|7|8|9|10, |||||||||");
  EXPECT_EQ(columns(page, "wallpaperLoop", "selName selected"),
            "Default.jpg|pictures (01).png|pictures (02).png|pictures (03).png|a&b.png, ||||selected");
  EXPECT_EQ(page.column("ringTypeloop", "selected"), "selected|||");
  EXPECT_EQ(columns(page, "languageLoop", "selValue selName selected"), "B, B, selected");
}

TEST_F(Preferences, EachChangeIsAnnouncedToItsReader) {
  setConfig("EnableWatchDog=0&UnlockPIN=111&Ringtype=Resource:Ring2.wav");
  const std::string page = "settings-preference", wallpaper = "CurrentWallpaper=Default:Default.jpg";
  expectSaves({
      {page, "BacklightLevel=3", "post app_dispsvc 0x90007 3 0", "BacklightLevel=3"},
      {page, "BacklightLevel=3&UnlockPIN=********&Ringtype=Resource:", "", "UnlockPIN=111&Ringtype=Resource:Ring2.wav"},
      {page, "BacklightLevel=<b>", "post app_dispsvc 0x90007 0 0", "BacklightLevel=<b>"},
      {page, "UnlockPIN=222&Ringtype=Ring3.wav", "", "UnlockPIN=222&Ringtype=Resource:Ring2.wav"},
      {page, "InactiveLevel=0&PredialAutodial=1&InterDigitTime=9&Ringtype=Config:x.wav&LanguageWebLang=German", "",
       "InactiveLevel=0&PredialAutodial=1&InterDigitTime=9&Ringtype=Config:x.wav&LanguageWebLang=German"},
      {page, wallpaper + "&ActiveLevel=2&ContrastLevel=4&BacklightTime=30&EnableWatchDog=1",
       "post app_dispsvc 0x90004 0 0; post app_dispsvc 0x90008 4 0; post app_hostapp 0x10007 85 0; "
       "post app_hostapp 0x10007 86 1; post app_hostapp 0x10007 86 0; broadcast 0x10007 41 0",
       wallpaper + "&ActiveLevel=2&ContrastLevel=4&BacklightTime=30&EnableWatchDog=1"},
      {page, wallpaper + "&EnableWatchDog=1", ""},
      {page, "EnableWatchDog=12345", "broadcast 0x10007 41 0"},
      {page, "EnableWatchDog=12345", "broadcast 0x10007 41 0"},  // three characters are remembered
  });
  FakeRequest request{{"q", "write"}, {"LanguageGuiLang", "German"}};
  serve(pageHandler(page), request);
  EXPECT_EQ(request.language, "German");
}

TEST_F(Preferences, RingsAreKeptUnderPlainNames) {
  setConfig("Ringtype", "Resource:Ring2.wav");
  for (const char* name : {"C:\\sounds\\my $(x) \"ring\".WAV", "../../../config/x.wav", "my $(x) \"ring\".WAV"}) {
    EXPECT_EQ(uploadRing(name), kRingsChanged) << name;
  }
  EXPECT_EQ(content(std::string(kRings) + "my $(x) \"ring\".WAV"), "sound");
  EXPECT_TRUE(has(std::string(kRings) + "x.wav"));
  const std::string longest = std::string(102, 'x') + ".wav";
  std::filesystem::create_directories(file(std::string(kRings) + "folder.wav/full"));
  EXPECT_EQ(uploadRing(longest), kRingsChanged);
  for (const std::string& name :
       {"x" + longest, std::string("a.mp3"), std::string("a:b.wav"), std::string("folder.wav")})
    EXPECT_EQ(uploadRing(name), kNotStored) << name;
  for (const char* name : {"", ".", "..", ".wav", "a\nb.wav", "sound/"}) EXPECT_EQ(uploadRing(name), kNoFile) << name;
  EXPECT_EQ(log.back(), "4 SettingsPreferenceServlet::upload error!");
  EXPECT_EQ(count(kRings), 4);
  EXPECT_EQ(upload("upload", "a.wav", "x", 8388608), kRingsChanged);
  EXPECT_EQ(upload("upload", "b.wav", "x", 8388609), "No space left!");
  EXPECT_EQ(act("upload", std::string("nameUploadRing=") + kRings + "a.wav&nameUploadRing=b.wav"), kNoFile);
  EXPECT_TRUE(has(std::string(kRings) + "a.wav") && !has(std::string(kRings) + "b.wav"));
  std::filesystem::remove_all(file(kRings));
  EXPECT_EQ(act("upload", ""), "Error:The destination folder does not exist!");
}

TEST_F(Preferences, DeletedRingsGiveWayToTheFirst) {
  const std::string gone = std::string(kRings) + "a b.wav";
  for (const auto& [stored, left] : Values{{"a b.wav", "Ring1.wav"},
                                           {"Config:a b.wav", "Resource:Ring1.wav"},
                                           {"Config:a", "Config:a"},
                                           {"Resource:Ring2.wav", "Resource:Ring2.wav"}}) {
    setConfig("Ringtype", stored);
    write(gone, "x");
    EXPECT_EQ(act("deleteRing", "Ringtype=Config:a b.wav"), kRingsChanged);
    EXPECT_TRUE(!has(gone) && config("Ringtype") == left) << stored;
  }
  EXPECT_EQ(act("deleteRing", "Ringtype=Config:a b.wav"), kRingsChanged);
  write("/data/userdata/kept.wav", "x");
  for (const char* fields : {"", "Ringtype=", "Ringtype=a b.wav", "Ringtype=Config:", "Ringtype=Config:../kept.wav",
                             "Ringtype=Config:..", "Ringtype=Config:a\nb"}) {
    EXPECT_EQ(act("deleteRing", fields), "Error:Delete ring error!") << fields;
    EXPECT_EQ(log.back(), "4 get ring name is empty!");
  }
  EXPECT_TRUE(has("/data/userdata/kept.wav"));
}

TEST_F(Preferences, WallpapersArePicturesOnly) {
  const std::string action = "uploadWallpaper", odd = std::string(kWallpapers) + "my $(x) 'picture'.png";
  EXPECT_EQ(upload(action, "C:\\pictures\\my $(x) 'picture'.png", picture()), kWallpapersChanged);
  EXPECT_EQ(upload(action, "../../a.BMP", picture(), 5242879), kWallpapersChanged);
  EXPECT_EQ(upload(action, "b.png", picture(), 5242880), "The file is too large,please less than 5M!");
  EXPECT_EQ(content(std::string(kWallpapers) + "a.BMP").substr(0, 2), "BM");
  const std::string longest = std::string(226, 'x') + ".png";
  EXPECT_EQ(upload(action, longest, picture()), kWallpapersChanged);
  for (const std::string& name : {"x" + longest, std::string("a.gif"), std::string("a:b.png"), std::string("png")})
    EXPECT_EQ(upload(action, name, picture()), kNotScaled) << name;
  for (const char* name : {"", ".png", "a\nb.png"}) EXPECT_EQ(upload(action, name, picture()), kNoFile) << name;
  EXPECT_EQ(count(kWallpapers), 3);
  EXPECT_EQ(act(action, std::string("nameUploadWallpaper=") + odd + "&nameUploadWallpaper=a.BMP"), kNoFile);
  EXPECT_EQ(count(kWallpapers), 3);
  // No half of a picture stays, the one of that name neither.
  const std::string huge = picture().replace(16, 8, std::string("\0\0\x7f\xff\0\0\x7f\xff", 8));
  EXPECT_EQ(upload(action, "a.BMP", huge), "Fail to upload photo ! [The Resolution of the picture is too large]");
  EXPECT_EQ(upload(action, "my $(x) 'picture'.png", "no picture"), kNotScaled);
  EXPECT_EQ(count(kWallpapers), 1);
}

TEST_F(Preferences, OwnWallpapersAloneAreDeleted) {
  const std::string own = std::string(kWallpapers) + "a b.png";
  write(own, "x");
  write("/data/userdata/kept.png", "x");
  setConfig("CurrentWallpaper", "Config:a b.png");
  const auto refused = [this](const std::string& value) {
    EXPECT_EQ(act("deleteWallpaper", "Wallpapertype=" + value), "") << value;
    return log.back();
  };
  for (const char* value : {"", "a b.png", "Config:", "Config:../kept.png", "Config::a b.png"})
    EXPECT_EQ(refused(value), "4 Wallpaper name error.") << value;
  for (const char* value : {"Resource:a b.png", "config:a b.png"})
    EXPECT_EQ(refused(value), "4 False:only can remove config Wallpaper.") << value;
  EXPECT_EQ(act("deleteWallpaper", ""), "");
  EXPECT_TRUE(has(own) && has("/data/userdata/kept.png") && config("CurrentWallpaper") == "Config:a b.png");
  EXPECT_EQ(act("deleteWallpaper", "Wallpapertype=Config:a b.png"), kWallpapersChanged);
  EXPECT_FALSE(has(own));
  EXPECT_EQ(config("CurrentWallpaper"), "pictures (01).png");
}

TEST_F(Preferences, NothingComesOrGoesDuringACall) {
  setState(R"({"talking":true})");
  write(std::string(kRings) + "a.wav", "x");
  write(std::string(kWallpapers) + "a.png", "x");
  for (const char* action : {"upload", "uploadWallpaper"}) EXPECT_EQ(upload(action, "b.png", picture()), "?") << action;
  for (const char* action : {"deleteRing", "deleteWallpaper"}) {
    EXPECT_EQ(act(action, "Ringtype=Config:a.wav&Wallpapertype=Config:a.png"), "?") << action;
  }
  EXPECT_EQ(count(kRings) + count(kWallpapers), 2);
  EXPECT_EQ(load("settings-preference").variable("ColorfulScreen"), "true");
}

}  // namespace
