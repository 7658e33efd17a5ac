// Files that the phone writes and removes each time it comes up.
#pragma once

#include <string>

namespace simulator {

// "/tmp/mac.tmp": the MAC address as 12 digits; none when the phone does not know it.
void writeMacFile(const std::string& mac);

// A line in "/tmp/log/phone.log", which begins anew beyond 64 KiB.
void writeStartLine(const std::string& line);

// A firmware image that is being received. One that is there when the phone comes up was cut off.
void removeUnfinishedImage();
// Its real path, whatever is a link there; empty when "/data" leads out of the tree.
std::string unfinishedImage();

}  // namespace simulator
