// The phone's tree: paths, ini files of the applications, filling a root.
#include <fstream>

#include "platform/phone_root.h"
#include "platform/registry.h"
#include "tests/simulator/simulator_test.h"

namespace fs = std::filesystem;

namespace {

using FilesTest = PhoneTest;

TEST_F(FilesTest, PathsStayBelowTheRoot) {
  const std::string root = fs::canonical(file("/").parent_path()).string();
  fs::create_symlink("/etc", file("/tmp/out"));
  fs::create_symlink("/nowhere/at/all", file("/tmp/dangling"));
  fs::create_symlink("../config", file("/tmp/in"));
  fs::create_symlink("loop", file("/tmp/loop"));
  const std::pair<std::string, std::string> inside[] = {
      {"/", "/"},
      {"/config/", "/config/"},
      {"/config//data/./htpasswd", "/config/data/htpasswd"},
      {"/tmp/new/folder/x", "/tmp/new/folder/x"},
      {"/tmp/in/data/htpasswd", "/tmp/in/data/htpasswd"},
      {"/config/data/..x", "/config/data/..x"},
      {"/config/data/htpasswd/x", "/config/data/htpasswd/x"},
  };
  for (const auto& [path, mapped] : inside) EXPECT_EQ(phonePath(path), root + mapped) << path;
  const std::string outside[] = {"",
                                 "config",
                                 "../x",
                                 "/..",
                                 "/config/../../x",
                                 "/config/data/../x",
                                 "/config/..",
                                 "/tmp/out",
                                 "/tmp/out/passwd",
                                 "/tmp/out/",
                                 "/tmp/dangling",
                                 "/tmp/dangling/x",
                                 "/tmp/loop",
                                 std::string("/tmp/a\0b", 8)};
  for (const std::string& path : outside) EXPECT_EQ(phonePath(path), "") << path;
}

TEST_F(FilesTest, RegistryMergesWhatOthersWrote) {
  write("/tmp/a.ini", "; about\n[one]\nfirst = 1\n; second\nsecond = 2\n[two]\nfirst = x\n");
  const auto one = registryOpen("/tmp/a.ini", "one", RegistryFile::kMustExist);
  const auto two = registryOpen("/tmp/a.ini", "two", RegistryFile::kMustExist);
  one->registrySetString("first", "one ");
  one->registrySetInt("third", -3);
  two->registrySetString("first", "y\nz");
  EXPECT_EQ(one->registryGetString("first", ""), "one ");
  EXPECT_TRUE(two->registryFlush());
  EXPECT_TRUE(one->registryFlush());
  EXPECT_EQ(content("/tmp/a.ini"),
            "; about\n\n\n[one]\nfirst=\\:one\\x20\n\n; second\nsecond=2\nthird=-3\n\n\n[two]\nfirst=\\:y\\x0az\n");
  const auto again = registryOpen("/tmp/a.ini", "two", RegistryFile::kMustExist);
  EXPECT_EQ(again->registryGetString("first", ""), "y\nz");
  EXPECT_EQ(again->registryGetString("third", "none"), "none");
}

TEST_F(FilesTest, RegistryNumbersAndMissingFiles) {
  write("/tmp/n.ini", "[s]\na=12\nb=-4\nc=12x\nd=\ne=99999999999\n");
  const auto numbers = registryOpen("/tmp/n.ini", "s", RegistryFile::kMustExist);
  const std::pair<const char*, int> expected[] = {{"a", 12}, {"b", -4}, {"c", 7}, {"d", 7}, {"e", 7}, {"f", 7}};
  for (const auto& [key, value] : expected) EXPECT_EQ(numbers->registryGetInt(key, 7), value) << key;
  EXPECT_EQ(numbers->registryGetString("d", "fallback"), "");
  EXPECT_EQ(registryOpen("/tmp/no.ini", "s", RegistryFile::kMustExist), nullptr);
  EXPECT_EQ(registryOpen("/tmp/../no.ini", "s", RegistryFile::kMayBeMissing), nullptr);
  EXPECT_EQ(registryOpen("/tmp", "s", RegistryFile::kMayBeMissing), nullptr);
  const auto fresh = registryOpen("/tmp/new/deep/no.ini", "a]b\n[c]", RegistryFile::kMayBeMissing);
  EXPECT_EQ(fresh->registryGetString("k", "none"), "none");
  fresh->registrySetString("=[k", "v");
  EXPECT_TRUE(fresh->registryFlush());
  const auto read = registryOpen("/tmp/new/deep/no.ini", "a]b\n[c]", RegistryFile::kMustExist);
  EXPECT_EQ(read->registryGetString("=[k", ""), "v");
}

TEST_F(FilesTest, RegistrySectionsInTheFilesOrder) {
  std::vector<std::string> names{"old"};
  EXPECT_FALSE(registrySections("/tmp/no.ini", names) || registrySections(nullptr, names));
  EXPECT_FALSE(registrySections("/tmp/../no.ini", names) || registrySections("/tmp", names));
  EXPECT_EQ(names, std::vector<std::string>());
  write("/tmp/s.ini", "above = 1\n[Zulu]\nk=1\n[]\n[ Great Britain ]\n[\\:a\\x5db]\nk=2\n[Zulu]\n[alpha]");
  EXPECT_TRUE(registrySections("/tmp/s.ini", names));
  EXPECT_EQ(names, (std::vector<std::string>{"Zulu", "Great Britain", "a]b", "alpha"}));
  write("/tmp/s.ini", "");
  EXPECT_TRUE(registrySections("/tmp/s.ini", names));
  EXPECT_EQ(names, std::vector<std::string>());
}

TEST_F(FilesTest, RegistryReadsHostileFiles) {
  const std::string files[] = {"[",
                               "[]\n=x\n",
                               "]\n[a\nb=1",
                               "a",
                               "=",
                               "[s]\nk",
                               "\xef\xbb\xbf",
                               ";",
                               "[s]\n;x",
                               std::string("[s]\nk=1\0\n[t]", 12),
                               std::string(100000, '['),
                               "k=<<<X\n1\n",
                               "\r\r\n=\r"};
  for (const std::string& bytes : files) {
    write("/tmp/h.ini", bytes);
    const auto section = registryOpen("/tmp/h.ini", "s", RegistryFile::kMustExist);
    ASSERT_NE(section, nullptr);
    section->registrySetString("new", " v ");
    EXPECT_TRUE(section->registryFlush());
    EXPECT_EQ(registryOpen("/tmp/h.ini", "s", RegistryFile::kMustExist)->registryGetString("new", ""), " v ") << bytes;
  }
}

TEST_F(FilesTest, ASectionEndsWithItsLine) {
  write("/tmp/o.ini", "\xef\xbb\xbf[open\n[one]\na=1\n  [open\r[open=2\n]\nb=2\n[two]\nc=3");
  std::vector<std::string> names;
  EXPECT_TRUE(registrySections("/tmp/o.ini", names));
  EXPECT_EQ(names, (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(registryOpen("/tmp/o.ini", "one", RegistryFile::kMustExist)->registryGetString("b", ""), "2");
}

TEST(PrepareRoot, FillsWhatLacksAndNothingElse) {
  TemporaryFolder folder;
  const fs::path root = folder.path() / "root";
  const auto put = [](const fs::path& path, std::string_view text) { std::ofstream(path, std::ios::binary) << text; };
  const auto has = [&root](const char* path) { return fs::exists(root / path); };
  EXPECT_THROW(simulator::prepareRoot(root, folder.path() / "no"), std::runtime_error);
  fs::remove_all(root);
  simulator::prepareRoot(root, PHONE_WEB_ROOTFS);
  EXPECT_TRUE(has("phone/www/htdocs") && has("config/data/htpasswd") && has("config/user/voip/sipAccount0.cfg"));
  EXPECT_TRUE(has("config/tone/CptToneCountry.cfg") && has("config/user/user.ini"));
  for (const char* media : {"sound", "wallpaper", "contact-image"}) {
    EXPECT_TRUE(fs::is_empty(root / "data/userdata" / media)) << media;
    EXPECT_FALSE(fs::is_empty(root / "phone/resource/sysdata" / media)) << media;
  }
  EXPECT_FALSE(has(".fill") || has(".config") || has("CMakeLists.txt") || has("config/hostapp"));

  put(root / "phone/mine", "x");
  put(root / "config/data/htpasswd", "x");
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
