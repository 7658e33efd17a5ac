#include "framework/accounts.h"

#include <iterator>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/phone_messages.h"
#include "framework/text_utils.h"
#include "platform/device.h"
#include "platform/registry.h"

namespace {

constexpr int kLastSipAccount = 5;

// The server of one section of an account's SIP file; false when it names none.
bool serverOf(const std::string& file, const char* section, std::string& host, std::string& port) {
  const auto ini = registryOpen(file.c_str(), section, RegistryFile::kMayBeMissing);
  if (!ini || ini->registryGetString("server", "").empty()) return false;
  host = ini->registryGetString("server", "");
  port = ini->registryGetString("port", "5060");
  return true;
}

}  // namespace

int GetAccountMax() {
  const bool single = readConfigPlain("AccountNum", 4) == "1";
  switch (GetPhoneType()) {
    case 28:
      return single ? 16 : 6;
    case 26:
      return single ? 13 : 3;
    case 46:
      return 6;
    case 20:
    case 21:
      return 2;
    case 19:
      return 1;
    default:  // 22 too
      return 3;
  }
}

std::optional<int> validAccount(const char* text) {
  const std::optional<int> account = parseInt(text);
  if (!account || *account < 0 || *account >= GetAccountMax()) return std::nullopt;
  return account;
}

TMPL_loop* GetAccountLoop(const char* selected, bool withAuto) {
  const std::string_view choice = selected ? selected : "";
  TMPL_loop* loop = nullptr;
  const auto add = [&](const std::string& index, const std::string& name) {
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "index", index.c_str(), "selected", choice == index ? "1" : "0",
                                               "accountno", name.c_str(), nullptr));
  };
  if (withAuto) add("-1", "Auto");
  for (int i = 0; i < GetAccountMax(); ++i) add(std::to_string(i), "Account" + std::to_string(i + 1));
  return loop;
}

void MapAccountStatusToString(std::string* text, int status) {
  constexpr const char* kTexts[] = {"Disabled",     "Registering", "Registered", "Register Failed",
                                    "Unregistered", "Registered",  "Inexistence"};
  *text = status >= 0 && status < static_cast<int>(std::size(kTexts)) ? kTexts[status] : "Unknown";
}

std::string accountFile(int account) {
  return "/config/user/voip/sipAccount" + std::to_string(account) + ".cfg";
}

bool GetSipServerHost(std::string& host, std::string& port, int account) {
  if (account < 0 || account > kLastSipAccount) return false;
  const std::string file = accountFile(account);
  if (serverOf(file, "sipserver1", host, port) || serverOf(file, "sipserver2", host, port)) return true;
  const auto ini = registryOpen(file.c_str(), "account", RegistryFile::kMayBeMissing);
  host = ini ? ini->registryGetString("SIPServerHost", "") : "";
  if (host.empty()) host = "0.0.0.0";
  port = ini ? ini->registryGetString("SIPServerPort", "5060") : "5060";
  return true;
}

int GetAccountID(const char* uri) {
  if (!uri) return -1;
  for (int account = 0; account < GetAccountMax(); ++account) {
    if (queryRegistrationState(account) != kRegistered) continue;
    std::string host, port;
    GetSipServerHost(host, port, account);
    if (readAccountConfigPlain("AccountUserName", account, kConfigValueSize) + "@" + host == uri) return account;
  }
  return -1;
}
