// The provisioning service, for other applications.
#pragma once

#include "simulator/phone.h"

namespace simulator {

// Provisioning runs for a few seconds from now. Called with the phone's mutex held.
void startProvisioning(Phone& phone);

}  // namespace simulator
