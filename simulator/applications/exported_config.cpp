#include "simulator/applications/exported_config.h"

#include "simulator/ini_file.h"
#include "simulator/secret_names.h"

namespace simulator {
namespace {

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
