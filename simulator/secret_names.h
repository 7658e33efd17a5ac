#pragma once

#include <string>

namespace simulator {

// True for the name of a setting that is a secret.
bool isSecretName(std::string name);

}  // namespace simulator
