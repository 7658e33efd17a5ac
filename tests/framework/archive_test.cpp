// Archives that come in, and trees of files.
#include <sys/stat.h>

#include "framework/unpacked_archive.h"
#include "tests/support/phone_test.h"
#include "tests/support/tar.h"

namespace {

namespace fs = std::filesystem;

class ArchiveTest : public PhoneTest {
 protected:
  // What an archive holds, "refused" when it is.
  std::string holds(const std::string& archive, TreeLimits limits = {.bytes = 1 << 20, .entries = 40}) {
    write("/tmp/a.tar", archive);
    const std::string before = everythingStored();
    std::string all;
    {
      const UnpackedArchive unpacked("/tmp/a.tar", limits);
      for (const TreeEntry& entry : unpacked.entries()) all += entry.path + (entry.isFolder ? "/ " : " ");
      if (!unpacked.isPlain()) all = "refused";
    }
    EXPECT_TRUE(everythingStored() == before) << "all of it is gone";
    return all;
  }
  std::string rights(const std::string& path) const {
    struct stat status {};
    if (lstat(file(path).c_str(), &status) != 0) return "none";
    char text[8];
    std::snprintf(text, sizeof text, "%o", status.st_mode & 07777);
    return text;
  }
};

TEST_F(ArchiveTest, TakesPlainFilesAndFolders) {
  const std::string longName(255, 'n');
  const std::pair<Tar, std::string> cases[] = {
      {Tar().folder("factory").file("factory/global.ini", "a=1"), "factory/ factory/global.ini "},
      {Tar().file("./phone/factory/data/a"), "phone/ phone/factory/ phone/factory/data/ phone/factory/data/a "},
      {Tar().file(longName), longName + " "},
      {Tar().file("\xD8\xA7 \xC3\xA4 'x' $(y) -z.ini"), "\xD8\xA7 \xC3\xA4 'x' $(y) -z.ini "},
      {Tar().file("/etc/passwd", "x"), "etc/ etc/passwd "},
      {Tar().folder("a", 0).file("a/b", "x", 06000), "a/ a/b "},
      {Tar(), ""},
  };
  for (const auto& [archive, entries] : cases) EXPECT_EQ(holds(archive.text()), entries);
}

TEST_F(ArchiveTest, RefusesEverythingElse) {
  const std::string plain = Tar().file("factory/a", std::string(3000, 'x')).text();
  Tar many;
  for (int i = 0; i < 41; ++i) many.file(std::to_string(i));
  Tar deep;
  std::string path;
  for (int i = 0; i < 1500; ++i) path += "d/";
  for (int i = 0; i < 60; ++i) deep.file(path + std::to_string(i));
  const std::pair<const char*, std::string> cases[] = {
      {"a link", Tar().special('2', "a", "b").text()},
      {"a link out, and a file through it", Tar().special('2', "a", "../../config").file("a/evil").text()},
      {"a link within, and a file through it", Tar().folder("b").special('2', "a", "b").file("a/c").text()},
      {"a file with two names", Tar().file("a", "x").special('1', "b", "a").text()},
      {"another name of a file outside", Tar().special('1', "b", "../../config/data/htpasswd").text()},
      {"a device", Tar().special('3', "a").text()},
      {"a pipe", Tar().special('6', "a").text()},
      {"a path that climbs", Tar().file("../evil").file("a").text()},
      {"a path that climbs within", Tar().file("a/../../evil").text()},
      {"a line end in a name", Tar().file("a\nb").text()},
      {"a name of 256 bytes", Tar().file(std::string(256, 'n')).text()},
      {"a file and a folder of one name", Tar().file("a").file("a/b").text()},
      {"cut short", plain.substr(0, 2000)},
      {"no archive", "<html>" + std::string(2000, 'x')},
      {"too many files", many.text()},
      {"too many folders", deep.text()},
      {"too many bytes", Tar().file("a", std::string(600 << 10, 'x')).file("b", std::string(600 << 10, 'x')).text()},
  };
  for (const auto& [what, archive] : cases) EXPECT_EQ(holds(archive), "refused") << what;
  EXPECT_EQ(holds(plain, {.bytes = 2999}) + holds(plain, {.bytes = 3000}), "refusedfactory/ factory/a ");
}

// What other programs make of archives: compressed, and with files that claim more than they bring.
TEST_F(ArchiveTest, RefusesBombs) {
  const auto made = [this](const std::string& command) {
    EXPECT_EQ(std::system(("cd " + file("/tmp").string() + " && " + command + " && rm -rf a").c_str()), 0);
    return content("/tmp/made.tar");
  };
  EXPECT_EQ(holds(made("mkdir a && echo x >a/b && tar -czf made.tar a")), "refused");
  EXPECT_EQ(holds(made("truncate -s 100G a && tar -Scf made.tar a")), "refused");
  EXPECT_EQ(holds(made("tar -cf made.tar --exclude='*' .")), "");
  fs::remove(file("/tmp/made.tar"));
  EXPECT_FALSE(UnpackedArchive("/tmp/made.tar", {.bytes = 100}).isPlain());
}

TEST_F(ArchiveTest, WorksInAFolderOfItsOwn) {
  write("/tmp/unpacked/old", "left over");
  write("/tmp/a.tar", Tar().file("a").text());
  EXPECT_EQ(UnpackedArchive("/tmp/a.tar", {.bytes = 100}).entries().size(), 1U);
  fs::create_directory_symlink(file("/config"), file("/tmp/unpacked"));
  EXPECT_EQ(UnpackedArchive("/tmp/a.tar", {.bytes = 100}).entries().size(), 1U);
  EXPECT_FALSE(fs::exists(file("/tmp/unpacked")) || fs::exists(file("/config/a")));
}

TEST_F(ArchiveTest, CopiesWhatIsPlain) {
  write("/tmp/from/a", "1");
  write("/tmp/from/b/c", "2");
  chmod(file("/tmp/from/a").c_str(), 0640);
  fs::create_symlink("/etc/passwd", file("/tmp/from/link"));
  mkfifo(file("/tmp/from/pipe").c_str(), 0600);
  write("/tmp/to/keep", "3");
  fs::create_symlink(file("/tmp/to/keep"), file("/tmp/to/a"));
  EXPECT_TRUE(copyPlain("/tmp/from", "/tmp/to") && copyPlain("/tmp/nothing", "/tmp/to/nothing"));
  EXPECT_EQ(content("/tmp/to/a") + content("/tmp/to/b/c") + content("/tmp/to/keep") + rights("/tmp/to/a"), "123640");
  EXPECT_EQ(rights("/tmp/to/link") + rights("/tmp/to/pipe") + rights("/tmp/to/nothing"), "nonenonenone");
  EXPECT_FALSE(copyPlain("/tmp/from", "/tmp/no/folder"));
}

TEST_F(ArchiveTest, MovesFilesIntoPlace) {
  write("/tmp/stage/data/htpasswd", "new");
  write("/tmp/stage/more/file", "new");
  chmod(file("/tmp/stage/data/htpasswd").c_str(), 0666);
  chmod(file("/tmp/stage/more/file").c_str(), 0666);
  chmod(file("/config/data/htpasswd").c_str(), 0600);
  fs::create_directory_symlink(file("/data"), file("/config/more"));
  write("/tmp/stage/user", "a file where a folder is");
  EXPECT_FALSE(moveIntoPlace("/tmp/stage", "/config"));
  EXPECT_EQ(rights("/data/file"), "none");
  fs::remove(file("/tmp/stage/user"));
  EXPECT_TRUE(moveIntoPlace("/tmp/stage", "/config"));
  EXPECT_EQ(content("/config/data/htpasswd") + rights("/config/data/htpasswd"), "new600");
  EXPECT_EQ(content("/data/file") + rights("/data/file"), "new644");
  fs::remove(file("/config/more"));
  fs::create_directory_symlink("/usr", file("/config/more"));
  write("/tmp/stage/more/file", "out");
  EXPECT_FALSE(moveIntoPlace("/tmp/stage", "/config"));
}

}  // namespace
