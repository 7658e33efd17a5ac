// Files that the phone writes anew each time it comes up.
#pragma once

#include <string>

namespace simulator {

// "/tmp/mac.tmp": the MAC address as 12 digits; none when the phone does not know it.
void writeMacFile(const std::string& mac);

// A line in "/tmp/log/phone.log", which keeps its last 64 KiB.
void writeStartLine(const std::string& line);

}  // namespace simulator
