#include "simulator/config_store.h"

#include <filesystem>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/ini_file.h"
#include "simulator/number.h"

namespace simulator {
namespace {

constexpr int kLogModule = 2;
constexpr int kMaxAccounts = 16;
constexpr std::string_view kAccountPrefix = "Account.";
constexpr std::string_view kAccountSection = "account ";
constexpr std::string_view kFirstLine =
    "; Settings that were changed on this phone. The last line tells that the file is whole.\n";
constexpr std::string_view kLastLine = "; end\n";

// An account's number as names and sections spell it: "02" is none.
std::optional<int> accountNumber(std::string_view text) {
  const std::optional<int> account = decimalNumber(text);
  return account && text == std::to_string(*account) ? account : std::nullopt;
}

// The account of a section "account 2".
std::optional<int> accountOfSection(std::string_view section) {
  if (!section.starts_with(kAccountSection)) return std::nullopt;
  return accountNumber(section.substr(kAccountSection.size()));
}

// A file that this service wrote ends in its last line; one written by hand need not have either.
bool isWhole(std::string_view bytes) {
  const bool isOurs = bytes.starts_with(kFirstLine) || kFirstLine.starts_with(bytes);
  return isIniText(bytes) && (!isOurs || bytes.ends_with(kLastLine));
}

void keepAside(const std::string& path) {
  std::string aside = path + ".broken";
  std::error_code error;
  for (int i = 1; std::filesystem::exists(std::filesystem::symlink_status(aside, error)); ++i) {
    aside = path + ".broken." + std::to_string(i);
  }
  std::filesystem::rename(path, aside, error);
  log_log(kLogModule, 3, "configuration: %s is broken, factory defaults are used; %s %s\n", path.c_str(),
          error ? "it could not be kept aside as" : "kept aside as", aside.c_str());
}

IniFile readDefaults(const std::string& path) {
  const std::optional<std::string> bytes = readFile(phonePath(path));
  if (!bytes) log_log(kLogModule, 4, "configuration: cannot read %s\n", path.c_str());
  return IniFile(bytes.value_or(""));
}

void appendValue(std::string& text, std::string_view key, std::string_view value) {
  text.append(encodeIniKey(key)).append(1, '=').append(encodeIniValue(value)).append(1, '\n');
}

// Sorted by name, so that the keys of an account follow one another.
template <class Live>
std::string serialize(const Live& values, bool isAccounts) {
  std::string text(kFirstLine);
  if (!isAccounts) text += "\n[global]\n";
  std::optional<int> open;
  for (const auto& [name, value] : values) {
    const std::optional<AccountKey> parts = isAccounts ? parseAccountConfigName(name) : std::nullopt;
    if (parts && parts->account != open) {
      open = parts->account;
      text.append("\n[").append(kAccountSection).append(std::to_string(*open)).append("]\n");
    }
    appendValue(text, parts ? parts->key : std::string_view(name), value);
  }
  return text.append("\n").append(kLastLine);
}

}  // namespace

std::string accountConfigName(std::string_view key, int account) {
  return std::string(kAccountPrefix) + std::to_string(account) + "." + std::string(key);
}

std::optional<AccountKey> parseAccountConfigName(std::string_view name) {
  if (!name.starts_with(kAccountPrefix)) return std::nullopt;
  const std::string_view rest = name.substr(kAccountPrefix.size());
  const auto dot = rest.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  const std::optional<int> account = accountNumber(rest.substr(0, dot));
  if (!account) return std::nullopt;
  return AccountKey{*account, rest.substr(dot + 1)};
}

void ConfigStore::load() {
  loadDefaults("/phone/factory/");
  global_ = {"/config/global.ini", false, {}, {}};
  accounts_ = {"/config/account.ini", true, {}, {}};
  loadLive(global_);
  loadLive(accounts_);
}

void ConfigStore::loadDefaults(const std::string& folder) {
  defaults_.clear();
  accountDefaults_.clear();
  readDefaults(folder + "global.ini").visit([this](const std::string&, const std::string& key, std::string value) {
    defaults_[key] = std::move(value);
  });
  loadAccountDefaults(folder);
}

void ConfigStore::loadAccountDefaults(const std::string& folder) {
  readDefaults(folder + "account.ini")
      .visit([this](const std::string& section, const std::string& key, std::string value) {
        const std::optional<int> account = accountOfSection(section);
        (account ? defaults_[accountConfigName(key, *account)] : accountDefaults_[key]) = std::move(value);
      });
  for (int account = 0; account < kMaxAccounts; ++account) {
    const std::string path = folder + "account" + std::to_string(account) + ".ini";
    if (!fileStamp(phonePath(path))) continue;
    readDefaults(path).visit([this, account](const std::string&, const std::string& key, std::string value) {
      defaults_[accountConfigName(key, account)] = std::move(value);
    });
  }
}

void ConfigStore::loadLive(LiveFile& file) {
  const std::string path = phonePath(file.path);
  file.values.clear();
  file.stamp = fileStamp(path);
  if (!file.stamp) return;
  const std::optional<std::string> bytes = readFile(path);
  if (!bytes || !isWhole(*bytes)) {
    keepAside(path);
    file.stamp.reset();
    return;
  }
  IniFile(*bytes).visit([&file](const std::string& section, const std::string& key, std::string value) {
    const std::optional<int> account = file.isAccounts ? accountOfSection(section) : std::nullopt;
    if (file.isAccounts && !account) return;
    file.values[account ? accountConfigName(key, *account) : key] = std::move(value);
  });
}

void ConfigStore::reloadIfChanged() {
  for (LiveFile* file : {&global_, &accounts_}) {
    if (fileStamp(phonePath(file->path)) != file->stamp) loadLive(*file);
  }
}

std::string ConfigStore::get(std::string_view name) const {
  const std::optional<AccountKey> parts = parseAccountConfigName(name);
  const Live& live = (parts ? accounts_ : global_).values;
  if (const auto found = live.find(name); found != live.end()) return found->second;
  if (const auto found = defaults_.find(name); found != defaults_.end()) return found->second;
  if (!parts) return {};
  const auto found = accountDefaults_.find(parts->key);
  return found != accountDefaults_.end() ? found->second : std::string();
}

std::map<std::string, std::string> ConfigStore::values() const {
  std::map<std::string, std::string> result(defaults_.begin(), defaults_.end());
  for (const LiveFile* file : {&global_, &accounts_}) {
    for (const auto& [name, value] : file->values) result[name] = value;
  }
  return result;
}

ConfigStore::LiveFile& ConfigStore::fileOf(std::string_view name) {
  return parseAccountConfigName(name) ? accounts_ : global_;
}

int ConfigStore::set(const Values& values) {
  reloadIfChanged();
  Values changed[2];
  for (const auto& [name, value] : values) {
    if (get(name) != value) changed[&fileOf(name) == &accounts_].emplace_back(name, value);
  }
  return store(global_, changed[0]) + store(accounts_, changed[1]);
}

int ConfigStore::store(LiveFile& file, const Values& values) {
  if (values.empty()) return 0;
  std::vector<std::pair<std::string, std::optional<std::string>>> undo;
  for (const auto& [name, value] : values) {
    const auto found = file.values.find(name);
    undo.emplace_back(name, found != file.values.end() ? std::optional(found->second) : std::nullopt);
    file.values[name] = value;
  }
  const std::string path = phonePath(file.path);
  if (replaceFile(path, serialize(file.values, file.isAccounts))) {
    file.stamp = fileStamp(path);
    return static_cast<int>(values.size());
  }
  log_log(kLogModule, 3, "configuration: cannot write %s\n", file.path);
  for (auto change = undo.rbegin(); change != undo.rend(); ++change) {
    if (change->second) {
      file.values[change->first] = std::move(*change->second);
    } else {
      file.values.erase(change->first);
    }
  }
  return 0;
}

}  // namespace simulator
