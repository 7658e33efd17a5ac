// The phone's configuration as it gives it away.
#pragma once

#include <string>

#include "simulator/config_store.h"

namespace simulator {

// An ini text of what the phone is set to, without anything that is to be kept secret.
std::string exportedConfig(const ConfigStore& config);

}  // namespace simulator
