// Uploaded pictures, scaled by the phone's script.
#include "framework/user_photo.h"

#include "platform/os_services.h"
#include "tests/support/phone_test.h"

namespace {

class UserPhotoTest : public PhoneTest {
 protected:
  void SetUp() override {
    if (osShell("command -v convert identify >/dev/null") != 0) GTEST_SKIP() << "needs ImageMagick (convert, identify)";
  }
  // Makes "/tmp/source" from a picture of the programs' own kind, e.g. "200x100 gradient:red-blue".
  static void make(const std::string& picture, const std::string& format) {
    ASSERT_EQ(osShell("convert -size " + picture + " " + format + ":tmp/source"), 0) << picture;
  }
  // Format, width and height of a picture, "PNG 126 126".
  std::string kind(const std::string& name) {
    std::filesystem::copy_file(file(name), file("/tmp/picture"), std::filesystem::copy_options::overwrite_existing);
    osShell("identify -format '%m %w %h' - < tmp/picture > tmp/kind");
    return content("/tmp/kind");
  }
  bool has(const std::string& name) const { return std::filesystem::exists(file(name)); }
  // The result of the picture, which is gone then.
  int process(const std::string& destination, long limit = 5'000'000) {
    const int result = ProcessUserPhoto("/tmp/source", destination.c_str(), 126, 126, limit);
    EXPECT_FALSE(has("/tmp/source"));
    return result;
  }
};

TEST_F(UserPhotoTest, FillsTheSizeInTheFormatOfTheDestination) {
  using Row = std::tuple<std::string, std::string, std::string>;
  for (const auto& [format, name, expected] : {Row{"png", "a.png", "PNG"},
                                               {"jpeg", "a.JPG", "JPEG"},
                                               {"bmp", "a.bmp", "BMP3"},
                                               {"jpeg", "b.png", "PNG"},
                                               {"png", "without suffix", "PNG"}}) {
    make("200x80 gradient:red-blue", format);
    EXPECT_EQ(process("/data/userdata/contact-image/" + name), 1) << format << ' ' << name;
    EXPECT_EQ(kind("/data/userdata/contact-image/" + name), expected + " 126 126");
  }
  make("40x40 xc:red", "png");
  EXPECT_EQ(ProcessUserPhoto("/tmp/source", "/data/userdata/wallpaper/w.png", 480, 272, 5242280), 1);
  EXPECT_EQ(kind("/data/userdata/wallpaper/w.png"), "PNG 480 272");
}

TEST_F(UserPhotoTest, NamesAreNamesAndNothingElse) {
  for (const std::string name :
       {"with blanks.png", "it's \"quoted\".png", "$(touch x) `touch x`;touch x&.png", "gr\xc3\xbc\xc3\x9f.png",
        "-resize.png", "png:a%d[0]*?.png", "@list.png", "\\n\t.png"}) {
    make("10x10 xc:red", "png");
    const std::string source = "/tmp/" + name, destination = "/data/userdata/wallpaper/" + name;
    std::filesystem::rename(file("/tmp/source"), file(source));
    EXPECT_EQ(ProcessUserPhoto(source.c_str(), destination.c_str(), 20, 20, 10'000), 1) << name;
    EXPECT_EQ(kind(destination), "PNG 20 20") << name;
    EXPECT_FALSE(has(source));
  }
  EXPECT_FALSE(has("/x") || has("/tmp/x"));
  const std::filesystem::directory_iterator files(file("/data/userdata/wallpaper"));
  EXPECT_EQ(std::distance(begin(files), end(files)), 8);
}

TEST_F(UserPhotoTest, TooManyPixelsAreSaidSo) {
  // Heads that claim far more than is there, at the place of each format.
  make("10x10 xc:red", "jpeg");
  const std::size_t jpegSize = content("/tmp/source").find("\xff\xc0") + 5;
  const std::tuple<std::string, std::string, std::size_t, std::string, int> rows[] = {
      {"10x10 xc:red", "png", 16, std::string("\0\1\x86\xa0\0\1\x86\xa0", 8), 2},
      {"10x10 xc:red", "bmp", 18, std::string("\x60\xea\0\0\x60\xea\0\0", 8), 2},
      {"10x10 xc:red", "jpeg", jpegSize, "\xff\xff\xff\xff", 2},
      {"5000x4000 xc:red", "png", 0, "", 2},
      {"4000x4000 xc:red", "png", 0, "", 1}};
  for (const auto& [picture, format, place, bytes, result] : rows) {
    make(picture, format);
    write("/tmp/source", content("/tmp/source").replace(place, bytes.size(), bytes));
    EXPECT_EQ(process("/data/userdata/wallpaper/a.png"), result) << format;
  }
}

TEST_F(UserPhotoTest, WhatIsNoPictureLeavesTheOldOne) {
  const std::string wallpaper = "/data/userdata/wallpaper/a.png";
  write(wallpaper, "old");
  make("10x10 xc:red", "png");
  const std::string whole = content("/tmp/source");
  const std::string text = "push graphic-context\nimage over 0,0 0,0 'msl:x'";
  for (const std::string& bytes : std::initializer_list<std::string>{
           "", "BM", "\xff\xd8", "GIF89a", whole.substr(0, 60), whole.substr(0, 8) + "<svg/>", text}) {
    write("/tmp/source", bytes);
    EXPECT_EQ(process(wallpaper), 0) << bytes;
  }
  write("/tmp/source", whole);
  EXPECT_EQ(process(wallpaper, static_cast<long>(whole.size()) - 1), 0);
  EXPECT_EQ(process(wallpaper), 0);
  EXPECT_EQ(content(wallpaper), "old");
  for (const char* destination : {"/data/userdata/wallpaper", "/data/nowhere/a.png"}) {
    write("/tmp/source", whole);
    EXPECT_EQ(process(destination), 0) << destination;
  }
  EXPECT_FALSE(has(wallpaper + ".new"));
}

using UserPhotoScriptTest = PhoneTest;

TEST_F(UserPhotoScriptTest, OnlyTheResultOfThisPictureCounts) {
  const std::pair<std::string, int> cases[] = {{"exit 1", 0},
                                               {"echo ' 1 ' > tmp/imageScale.out", 1},
                                               {"echo 1 > tmp/imageScale.out; exit 3", 1},
                                               {"printf 2 > tmp/imageScale.out", 2},
                                               {"echo -7 > tmp/imageScale.out", -7},
                                               {"echo one > tmp/imageScale.out", 0},
                                               {"echo 'result: 2 of 3' > tmp/imageScale.out", 2},
                                               {": > tmp/imageScale.out", 0},
                                               {"echo 99999999999 > tmp/imageScale.out", 0},
                                               {"printf '%s|' \"$@\" > tmp/arguments", 0}};
  for (const auto& [script, result] : cases) {
    write("/phone/scripts/imageScale.sh", "#!/bin/sh\n" + script + "\n");
    write("/tmp/source", "x");
    write("/tmp/imageScale.out", "1\n");
    EXPECT_EQ(ProcessUserPhoto("/tmp/source", "/data/a b.png", 126, 272, 5'000'000'000), result) << script;
    EXPECT_FALSE(std::filesystem::exists(file("/tmp/source")));
  }
  const std::string root = std::filesystem::canonical(file("/").parent_path()).string();
  EXPECT_EQ(content("/tmp/arguments"), root + "/tmp/source|126|272|" + root + "/data/a b.png|5000000000|");
  std::filesystem::remove(file("/phone/scripts/imageScale.sh"));
  write("/tmp/imageScale.out", "1\n");
  EXPECT_EQ(ProcessUserPhoto("/tmp/source", "/data/a.png", 1, 1, 1), 0);
  write("/tmp/source", "x");
  EXPECT_EQ(ProcessUserPhoto("/tmp/source", "/data/../../a.png", 1, 1, 1), 0);
  EXPECT_FALSE(std::filesystem::exists(file("/tmp/source")));
  EXPECT_EQ(ProcessUserPhoto(nullptr, "/data/a.png", 1, 1, 1) + ProcessUserPhoto("/tmp/a", nullptr, 1, 1, 1), 0);
}

}  // namespace
