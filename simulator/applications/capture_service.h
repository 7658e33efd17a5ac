// The capture service: what passes the phone's network interface, as a file for packet analysers.
#pragma once

#include "simulator/phone.h"

namespace simulator {

// While a capture runs, a message between applications passes the interface as a SIP request, without what it carries.
// Called with the phone's mutex held.
void captureMessage(Phone& phone, const JournalEntry& message);

}  // namespace simulator
