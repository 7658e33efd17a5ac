// What the host asks about the device it runs on.
#pragma once

#include <cstdint>
#include <functional>

namespace host {

// Each may be empty; both are called from several threads.
struct Device {
  std::function<bool()> rebooting;             // true: every page is answered with 503
  std::function<std::uint64_t()> rebootCount;  // a change means that all sessions are gone
};

}  // namespace host
