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
  static int process(const std::string& destination, long limit = 5'000'000) {
    return ProcessUserPhoto("/tmp/source", destination.c_str(), 126, 126, limit);
  }
};

TEST_F(UserPhotoTest, FillsTheSizeInTheFormatOfTheDestination) {
  const struct {
    const char *format, *destination, *kind;
  } cases[] = {{"png", "a.png", "PNG 126 126"},
               {"jpeg", "a.JPG", "JPEG 126 126"},
               {"bmp", "a.bmp", "BMP3 126 126"},
               {"jpeg", "b.png", "PNG 126 126"},
               {"png", "without suffix", "PNG 126 126"}};
  for (const auto& [format, destination, expected] : cases) {
    make("200x80 gradient:red-blue", format);
    const std::string path = std::string("/data/userdata/contact-image/") + destination;
    EXPECT_EQ(process(path), 1) << format << ' ' << destination;
    EXPECT_EQ(kind(path), expected);
    EXPECT_FALSE(has("/tmp/source"));
  }
  make("40x40 xc:red", "png");
  EXPECT_EQ(ProcessUserPhoto("/tmp/source", "/data/userdata/wallpaper/w.png", 480, 272, 5242280), 1);
  EXPECT_EQ(kind("/data/userdata/wallpaper/w.png"), "PNG 480 272");
}

TEST_F(UserPhotoTest, NamesAreNamesAndNothingElse) {
  for (const char* name : {"with blanks.png", "it's \"quoted\".png", "$(touch x) `touch x`;touch x&.png",
                           "gr\xc3\xbc\xc3\x9f.png", "-resize.png", "png:a%d[0]*?.png", "@list.png", "\\n\t.png"}) {
    make("10x10 xc:red", "png");
    const std::string source = std::string("/tmp/") + name,
                      destination = std::string("/data/userdata/wallpaper/") + name;
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
  const struct {
    const char *picture, *format;
    std::size_t place;
    std::string bytes;
    int result;
  } cases[] = {{"10x10 xc:red", "png", 16, std::string("\0\1\x86\xa0\0\1\x86\xa0", 8), 2},
               {"10x10 xc:red", "bmp", 18, std::string("\x60\xea\0\0\x60\xea\0\0", 8), 2},
               {"10x10 xc:red", "jpeg", jpegSize, "\xff\xff\xff\xff", 2},
               {"5000x4000 xc:red", "png", 0, "", 2},
               {"4000x4000 xc:red", "png", 0, "", 1}};
  for (const auto& [picture, format, place, bytes, result] : cases) {
    make(picture, format);
    if (!bytes.empty()) write("/tmp/source", content("/tmp/source").replace(place, bytes.size(), bytes));
    EXPECT_EQ(process("/data/userdata/wallpaper/a.png"), result) << format;
    EXPECT_FALSE(has("/tmp/source"));
  }
}

TEST_F(UserPhotoTest, WhatIsNoPictureLeavesTheOldOne) {
  const std::string wallpaper = "/data/userdata/wallpaper/a.png";
  write(wallpaper, "old");
  make("10x10 xc:red", "png");
  const std::string whole = content("/tmp/source");
  const std::string broken[] = {"",
                                "BM",
                                "\xff\xd8",
                                "GIF89a",
                                whole.substr(0, 60),
                                whole.substr(0, 8) + "<svg/>",
                                "push graphic-context\nimage over 0,0 0,0 'msl:x'"};
  for (const std::string& bytes : broken) {
    write("/tmp/source", bytes);
    EXPECT_EQ(process(wallpaper), 0) << bytes;
    EXPECT_FALSE(has("/tmp/source"));
  }
  write("/tmp/source", whole);
  EXPECT_EQ(process(wallpaper, static_cast<long>(whole.size()) - 1), 0);
  EXPECT_EQ(process(wallpaper), 0);
  EXPECT_EQ(content(wallpaper), "old");
  write("/tmp/source", whole);
  EXPECT_EQ(process("/data/userdata/wallpaper"), 0);
  EXPECT_EQ(process("/data/nowhere/a.png"), 0);
  EXPECT_FALSE(has(wallpaper + ".new"));
}

using UserPhotoScriptTest = PhoneTest;

TEST_F(UserPhotoScriptTest, OnlyTheResultOfThisPictureCounts) {
  const struct {
    const char* script;
    int result;
  } cases[] = {{"exit 1", 0},
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
    write("/phone/scripts/imageScale.sh", std::string("#!/bin/sh\n") + script + "\n");
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
