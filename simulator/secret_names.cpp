#include "simulator/secret_names.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "platform/config_parser.h"

namespace simulator {

bool isSecretName(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
  return std::any_of(std::begin(kSecretWords), std::end(kSecretWords),
                     [&name](std::string_view word) { return name.find(word) != std::string::npos; });
}

}  // namespace simulator
