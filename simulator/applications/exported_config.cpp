#include "simulator/applications/exported_config.h"

#include <algorithm>
#include <cctype>

#include "platform/config_parser.h"
#include "simulator/ini_file.h"

namespace simulator {
namespace {

bool isSecretName(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
  return std::any_of(std::begin(kSecretWords), std::end(kSecretWords),
                     [&name](std::string_view word) { return name.find(word) != std::string::npos; });
}

// An address may carry a name and a password.
bool holdsLogin(std::string_view value) {
  const auto scheme = value.find("://");
  return scheme != std::string_view::npos && value.find('@', scheme) != std::string_view::npos;
}

}  // namespace

std::string exportedConfig(const ConfigStore& config) {
  IniFile file("");
  for (const auto& [name, value] : config.values()) {
    if (isSecretName(name) || holdsLogin(value)) continue;
    const std::optional<AccountKey> account = parseAccountConfigName(name);
    file.set(account ? "account " + std::to_string(account->account) : "global",
             account ? std::string(account->key) : name, value);
  }
  return file.text();
}

}  // namespace simulator
