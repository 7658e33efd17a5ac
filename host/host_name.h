// The addresses and names by which clients are known and ask for the phone.
#pragma once

#include <string_view>

namespace host {

// True for 127.0.0.0/8 and ::1.
bool isLoopbackAddress(std::string_view address);

// True when a Host header ("name:port", "[::1]:port") names a loopback address, so that a name that was pointed at one
// does not count.
bool namesLoopback(std::string_view host);

}  // namespace host
