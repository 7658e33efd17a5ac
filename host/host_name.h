// The names and addresses by which clients are known and ask for the phone.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// The host of "name:port" or "[::1]:port" in lower case, without port and without a dot at its end; an IPv6 address
// keeps its brackets. Nothing when the text is malformed.
std::optional<std::string> hostName(std::string_view text);

// True for what only the phone's own network can give it: an address, a name of one label or under "local", "lan",
// "home.arpa", "internal" or "localhost"; and for one of `names`. Any other name may belong to a stranger who points it
// at the phone, whose pages the phone's would then be for a browser. `host` and `names` are results of hostName().
bool isPhoneHost(const std::string& host, const std::vector<std::string>& names);

// True for 127.0.0.0/8 and ::1.
bool isLoopbackAddress(std::string_view address);

// True when a result of hostName() is a loopback address or "localhost".
bool isLoopbackHost(std::string_view host);

}  // namespace host
