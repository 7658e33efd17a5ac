#include "servlet/settings/settings_config_accounts.h"

#include <algorithm>
#include <memory>
#include <string>

#include "framework/config_operate.h"
#include "platform/log.h"
#include "platform/registry.h"
#include "platform/secrets.h"

namespace {

constexpr std::size_t kPasswordSize = 256;  // the final NUL included

struct AccountNumber {
  char hardware;  // the first character of the hardware's version
  unsigned many, few;
};
constexpr AccountNumber kAccountNumbers[] = {{'1', 16, 6}, {'2', 6, 6}, {'3', 2, 2},
                                             {'7', 2, 2},  {'8', 2, 2}, {'4', 13, 3}};
constexpr AccountNumber kOtherHardware{'\0', 3, 3};

int numberIn(const char* file, const char* section, const char* key) {
  const auto opened = registryOpen(file, section, RegistryFile::kMustExist);
  return opened ? opened->registryGetInt(key, 0) : 0;
}

void convertPassword(int account, bool encrypt) {
  const std::string password = readAccountConfigPlain("AccountPassword", account, kConfigValueSize);
  if (password.empty()) return;
  char converted[kPasswordSize];
  const bool done = password.size() < kPasswordSize &&
                    (encrypt ? pw_data_encrypt : pw_data_decrypt)(password.c_str(), converted, sizeof converted);
  if (done) {
    writeConfigOperate(ACCOUNT_FILE, "AccountPassword", converted, account);
  } else {
    log_log(kWebLog, kLogWarning, "EncrpptPassword() the password of account %d stays as it is\n", account);
  }
}

}  // namespace

unsigned GetMaxAccountNum() {
  const auto known = registryOpen("/tmp/InitSave", "OLD_VER", RegistryFile::kMayBeMissing);
  const std::string version = known ? known->registryGetString("HwVer", "1.0.0.0") : "1.0.0.0";
  const char hardware = version.empty() ? '\0' : version.front();
  const auto* row = std::ranges::find(kAccountNumbers, hardware, &AccountNumber::hardware);
  const AccountNumber& number = row != std::end(kAccountNumbers) ? *row : kOtherHardware;
  const bool isMany = numberIn("/tarnvel/factory/voip/AccountNum.cfg", "AccountNum", "IsAccountNum16") != 0;
  return isMany ? number.many : number.few;
}

bool arePasswordsEncrypted() {
  return numberIn("/tarnvel/config/Setting/Setting.cfg", "PhoneSetting", "EnLock") == 1;
}

bool EncrpptPassword(unsigned first, unsigned end, bool encrypt) {
  for (unsigned account = first; account < end; ++account) convertPassword(static_cast<int>(account), encrypt);
  return true;
}
