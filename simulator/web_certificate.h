// The certificates of the phone's web server.
#pragma once

#include <string>

namespace simulator {

// Sees to it that the phone has a certificate of its own, with its key: makes one that names the phone by `mac` where
// it is missing or no use. A log line tells of a failure.
void ensureDeviceCertificate(const std::string& mac);

}  // namespace simulator
