// What the configuration service does with secrets.
#include "platform/secrets.h"

#include <sys/stat.h>

#include "tests/simulator/simulator_test.h"

namespace {

using SecretsTest = PhoneTest;

TEST_F(SecretsTest, EmptiesSecretsOfIniFiles) {
  const std::string shown = "; Password = in a comment\r\n[pin]\nAccountLabel = secret\n AccountPassword";
  write("/tmp/set/account.ini", shown + " = 1234\nuserPSWD=\\:\\x20x\n\nlockPin=\n; end\n");
  write("/tmp/set/user/voip/a.cfg", "[a]\npasswd = x = y\n\\:aes\\x3dkey = 1\n\\:AESKey = \xC3\xA4");
  write("/tmp/set/data/htpasswd", "password=x\n");
  write("/tmp/outside.ini", "password=x\n");
  fs::create_symlink(file("/tmp/outside.ini"), file("/tmp/set/link.ini"));
  chmod(file("/tmp/set/account.ini").c_str(), 0640);
  EXPECT_EQ(configParser_CleanPassword("/tmp//set/", "/config/"), 0);
  EXPECT_EQ(content("/tmp/set/account.ini"), shown + " =\nuserPSWD=\n\nlockPin=\n; end\n");
  EXPECT_EQ(content("/tmp/set/user/voip/a.cfg"), "[a]\npasswd =\n\\:aes\\x3dkey = 1\n\\:AESKey =");
  EXPECT_EQ(content("/tmp/set/data/htpasswd") + content("/tmp/outside.ini"), "password=x\npassword=x\n");
  struct stat status {};
  EXPECT_EQ(stat(file("/tmp/set/account.ini").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
  EXPECT_EQ(configParser_CleanPassword("/tmp/none", "/config/") + configParser_CleanPassword("/../", "/config/") +
                configParser_CleanPassword(nullptr, nullptr),
            -3);
}

TEST_F(SecretsTest, PasswordsComeBack) {
  const std::string texts[] = {"a", "1234", "pass word ~", "p\xC3\xA4ss\t\xD8\xA7", std::string(255, 'x')};
  for (const std::string& text : texts) {
    char stored[256], back[256];
    EXPECT_TRUE(pw_data_encrypt(text.c_str(), stored, sizeof stored) && pw_data_decrypt(stored, back, sizeof back));
    EXPECT_EQ(back, text);
    EXPECT_NE(stored, text);
    EXPECT_EQ(std::string(stored).size(), text.size());
  }
  char one[5], other[5], small[4] = "old";
  EXPECT_TRUE(pw_data_encrypt("1234", one, 5) && pw_data_encrypt("1235", other, 5));
  EXPECT_NE(std::string(one).substr(0, 3), std::string(other).substr(0, 3)) << "each character counts for all";
  EXPECT_FALSE(pw_data_encrypt("1234", small, 4) || pw_data_decrypt(nullptr, one, 5) || pw_data_encrypt("1", one, 0));
  EXPECT_EQ(std::string(small) + one, "");
}

}  // namespace
