// The values of the configuration service.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "simulator/files.h"

namespace simulator {

// The name of an account's key, "Account.2.AccountLabel".
std::string accountConfigName(std::string_view key, int account);

struct AccountKey {
  int account;
  std::string_view key;  // a part of the name
};
// The parts of a name made by accountConfigName(); nothing for any other name.
std::optional<AccountKey> parseAccountConfigName(std::string_view name);

// Values that were set are kept in "/config/global.ini" and "/config/account.ini" (a section an account), everything
// else reads as the factory default: "/phone/factory/global.ini", and for accounts "/phone/factory/account.ini", of
// which a section "account N" or a file "accountN.ini" beside it applies to account N alone. Not safe from several
// threads at once.
class ConfigStore {
 public:
  // Reads everything from the phone's tree.
  void load();
  // Reads the live files again if somebody else replaced them.
  void reloadIfChanged();

  std::string get(std::string_view name) const;
  // All values by name, but for the defaults that hold for every account.
  std::map<std::string, std::string> values() const;

  using Values = std::vector<std::pair<std::string, std::string>>;
  // Stores all values, on disk when it returns, and says how many differed from what was stored before; 0 when a file
  // could not be written, whose values then stay as they were.
  int set(const Values& values);

 private:
  using Live = std::map<std::string, std::string, std::less<>>;
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };
  using Defaults = std::unordered_map<std::string, std::string, Hash, std::equal_to<>>;
  struct LiveFile {
    const char* path;  // of the phone
    bool isAccounts;
    Live values;  // by name
    std::optional<FileStamp> stamp;
  };

  void loadDefaults(const std::string& folder);
  void loadAccountDefaults(const std::string& folder);
  static void loadLive(LiveFile& file);
  int store(LiveFile& file, const Values& values);
  LiveFile& fileOf(std::string_view name);

  LiveFile global_{}, accounts_{};
  Defaults defaults_;         // by name
  Defaults accountDefaults_;  // by key, for every account
};

}  // namespace simulator
