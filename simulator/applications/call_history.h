// The call history that the phone application keeps. Called with the phone's mutex held.
#pragma once

#include <string>

#include "simulator/phone.h"

namespace simulator {

// Has the history's file be there; one that is there stays as it is.
void writeCallHistory();

// Adds a call that this phone made now: to a number, or to USER@SERVER.
void addPlacedCall(const Phone& phone, int account, const std::string& target);

}  // namespace simulator
