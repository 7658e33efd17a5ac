// The phone's tree: paths, ini files of the applications, filling a root.
#include "platform/phone_root.h"
#include "platform/registry.h"
#include "tests/simulator/simulator_test.h"

namespace {

using FilesTest = PhoneTest;
using Names = std::vector<std::string>;

std::unique_ptr<ETL_SubClass> open(const char* file, const char* section) {
  return registryOpen(file, section, RegistryFile::kMustExist);
}

TEST_F(FilesTest, PathsStayBelowTheRoot) {
  const std::string root = fs::canonical(file("/").parent_path()).string();
  const std::pair<const char*, const char*> links[] = {
      {"/etc", "/tmp/out"}, {"/nowhere/at/all", "/tmp/dangling"}, {"../config", "/tmp/in"}, {"loop", "/tmp/loop"}};
  for (const auto& [target, link] : links) fs::create_symlink(target, file(link));
  EXPECT_EQ(phonePath("/config//data/./htpasswd"), root + "/config/data/htpasswd");
  for (const std::string path :
       {"/", "/config/", "/tmp/new/folder/x", "/tmp/in/data/htpasswd", "/config/data/..x", "/config/data/htpasswd/x"})
    EXPECT_EQ(phonePath(path), root + path);
  for (const char* path : {"", "config", "../x", "/..", "/config/../../x", "/config/data/../x", "/config/..",
                           "/tmp/out", "/tmp/out/passwd", "/tmp/out/", "/tmp/dangling", "/tmp/dangling/x", "/tmp/loop"})
    EXPECT_EQ(phonePath(path), "") << path;
  EXPECT_EQ(phonePath(std::string_view("/tmp/a\0b", 8)), "");
  fs::create_directory(file("/tmp/folder"));
  EXPECT_EQ(phonePath("/tmp/folder/x"), root + "/tmp/folder/x");
  fs::remove(file("/tmp/folder"));
  fs::create_symlink("/etc", file("/tmp/folder"));
  EXPECT_EQ(phonePath("/tmp/folder/x"), "");
}

TEST_F(FilesTest, RegistryMergesWhatOthersWrote) {
  write("/tmp/a.ini", "; about\n[one]\nfirst = 1\n; second\nsecond = 2\n[two]\nfirst = x\n");
  const auto one = open("/tmp/a.ini", "one"), two = open("/tmp/a.ini", "two");
  one->registrySetString("first", "one ");
  one->registrySetInt("third", -3);
  two->registrySetString("first", "y\nz");
  EXPECT_EQ(one->registryGetString("first", ""), "one ");
  EXPECT_TRUE(two->registryFlush());
  EXPECT_TRUE(one->registryFlush());
  EXPECT_EQ(content("/tmp/a.ini"),
            "; about\n\n\n[one]\nfirst=\\:one\\x20\n\n; second\nsecond=2\nthird=-3\n\n\n[two]\nfirst=\\:y\\x0az\n");
  const auto again = open("/tmp/a.ini", "two");
  EXPECT_EQ(again->registryGetString("first", "") + again->registryGetString("third", "none"), "y\nznone");
}

TEST_F(FilesTest, RegistryBatchReplacesAFileOnce) {
  write("/tmp/a.ini", "[one]\nfirst=1\n[two]\nfirst=x\n");
  std::unique_ptr<ETL_SubClass> kept;
  {
    const RegistryBatch batch, inner;
    kept = open("/tmp/a.ini", "one");
    const auto two = open("/tmp/a.ini", "two");
    EXPECT_FALSE(kept->registrySetInt("first", 1));
    EXPECT_TRUE(kept->registrySetString("second", "") && kept->registryFlush() && two->registrySetInt("first", 2));
    EXPECT_EQ(open("/tmp/a.ini", "one")->registryGetString("second", "none"), "");
    EXPECT_EQ(open("/tmp/a.ini", "two")->registryGetString("first", ""), "x");
    EXPECT_TRUE(two->registryFlush());
    write("/tmp/a.ini", "[one]\nfirst=5\nother=6\n");
  }
  EXPECT_EQ(content("/tmp/a.ini"), "[one]\nfirst=1\nother=6\nsecond=\n\n\n[two]\nfirst=2\n");
  EXPECT_TRUE(kept->registrySetInt("first", 9) && kept->registryFlush());
  EXPECT_THAT(content("/tmp/a.ini"), HasSubstr("first=9\n"));
  const auto before = fs::last_write_time(file("/tmp/a.ini"));
  EXPECT_TRUE(!kept->registrySetInt("first", 9) && kept->registryFlush());
  EXPECT_EQ(fs::last_write_time(file("/tmp/a.ini")), before);
}

TEST_F(FilesTest, RegistryNumbersAndMissingFiles) {
  write("/tmp/n.ini", "[s]\na=12\nb=-4\nc=12x\nd=\ne=99999999999\n");
  const auto numbers = open("/tmp/n.ini", "s");
  const std::pair<const char*, int> expected[] = {{"a", 12}, {"b", -4}, {"c", 7}, {"d", 7}, {"e", 7}, {"f", 7}};
  for (const auto& [key, value] : expected) EXPECT_EQ(numbers->registryGetInt(key, 7), value) << key;
  EXPECT_EQ(numbers->registryGetString("d", "fallback"), "");
  EXPECT_EQ(open("/tmp/no.ini", "s"), nullptr);
  for (const char* path : {"/tmp/../no.ini", "/tmp"}) {
    EXPECT_EQ(registryOpen(path, "s", RegistryFile::kMayBeMissing), nullptr) << path;
  }
  const auto fresh = registryOpen("/tmp/new/deep/no.ini", "a]b\n[c]", RegistryFile::kMayBeMissing);
  EXPECT_EQ(fresh->registryGetString("k", "none"), "none");
  fresh->registrySetString("=[k", "v");
  EXPECT_TRUE(fresh->registryFlush());
  EXPECT_EQ(open("/tmp/new/deep/no.ini", "a]b\n[c]")->registryGetString("=[k", ""), "v");
}

TEST_F(FilesTest, RegistrySectionsInTheFilesOrder) {
  Names names{"old"};
  for (const char* path : {"/tmp/no.ini", "/tmp/../no.ini", "/tmp", static_cast<const char*>(nullptr)}) {
    EXPECT_FALSE(registrySections(path, names));
    EXPECT_EQ(names, Names());
  }
  const std::pair<std::string, Names> files[] = {
      {"above = 1\n[Zulu]\nk=1\n[]\n[ Great Britain ]\n[\\:a\\x5db]\nk=2\n[Zulu]\n[alpha]",
       {"Zulu", "Great Britain", "a]b", "alpha"}},
      {"", {}},
      {std::string(100000, '['), {}},
      {"]\n[a\nb=1\n=x\n=\n;\nk=<<<X\n1\n\r\r\n=\r", {}},
      {std::string("[s]\nk=1\0\n[t]", 12), {"s"}},
      {"\xef\xbb\xbf[open\n[one]\na=1\n  [open\r[open=2\n]\nb=2\n[two]\nc=3", {"one", "two"}}};
  for (const auto& [bytes, expected] : files) {
    write("/tmp/s.ini", bytes);
    EXPECT_TRUE(registrySections("/tmp/s.ini", names));
    EXPECT_EQ(names, expected);
    const auto section = open("/tmp/s.ini", "one");
    section->registrySetString("new", " v ");
    EXPECT_TRUE(section->registryFlush());
    EXPECT_EQ(open("/tmp/s.ini", "one")->registryGetString("new", ""), " v ") << bytes;
  }
  EXPECT_EQ(open("/tmp/s.ini", "one")->registryGetString("b", ""), "2");
}

TEST(PrepareRoot, FillsWhatLacksAndNothingElse) {
  TemporaryFolder folder;
  const fs::path root = folder.path() / "root";
  const auto has = [&root](const char* path) { return fs::exists(root / path); };
  folder.write("somebody's", "x");
  for (const auto& [path, rootfs] : {std::pair(root, folder.path() / "no"),
                                     {folder.path(), PHONE_WEB_ROOTFS},
                                     {folder.path() / "a:b", PHONE_WEB_ROOTFS}})
    EXPECT_THROW(simulator::prepareRoot(path, rootfs), std::runtime_error) << path;
  EXPECT_FALSE(fs::exists(folder.path() / "config"));
  fs::remove_all(root);
  simulator::prepareRoot(root, PHONE_WEB_ROOTFS);
  for (const char* path : {"phone/www/htdocs", "config/data/htpasswd", "config/user/voip/sipAccount0.cfg",
                           "config/tone/CptToneCountry.cfg", "config/user/user.ini", "data/userdata/wallpaper"})
    EXPECT_TRUE(has(path)) << path;
  EXPECT_FALSE(has(".fill") || has(".config") || has("CMakeLists.txt") || has("config/hostapp"));
  EXPECT_TRUE(fs::is_empty(root / "data/userdata/sound"));

  folder.write("root/phone/mine", "x");
  folder.write("root/config/data/htpasswd", "x");
  simulator::prepareRoot(root, PHONE_WEB_ROOTFS);
  EXPECT_TRUE(has("phone/mine"));
  EXPECT_EQ(fs::file_size(root / "config/data/htpasswd"), 1);
  fs::remove_all(root / "config");
  simulator::prepareRoot(root, "/nowhere");
  EXPECT_GT(fs::file_size(root / "config/data/htpasswd"), 40);

  // A fill that was cut short is done again.
  fs::remove_all(root);
  fs::create_directories(root / ".fill/phone/half");
  fs::create_directories(root / "bin");
  simulator::prepareRoot(root, PHONE_WEB_ROOTFS);
  EXPECT_TRUE(has("phone/www/htdocs") && !has("phone/half") && !has(".fill"));
}

}  // namespace
