// The custom directories on the server, as the phone application fetches them. Called with the phone's mutex held.
#pragma once

#include "simulator/phone.h"

namespace simulator {

// Begins to fetch their names, which takes a second.
void fetchNetworkDirectories(Phone& phone);

// Stores what has been fetched by now. Nobody waits for it: whoever asks the configuration or the control calls this
// first.
void takeNetworkDirectories(Phone& phone);

}  // namespace simulator
