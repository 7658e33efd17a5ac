// The pace that a sender of a body must keep.
#pragma once

#include <chrono>
#include <cstddef>

namespace host {

inline constexpr std::size_t kMinBytesPerWindow = 16 * 1024;
inline constexpr std::chrono::milliseconds kDefaultRateWindow{10'000};

// Counts what arrives against the time spent waiting for it.
class RateGuard {
 public:
  explicit RateGuard(std::chrono::milliseconds window) : window_(window) {}

  // `bytes` came after `waited`. False when the last window brought too little.
  bool add(std::size_t bytes, std::chrono::milliseconds waited) {
    bytes_ += bytes;
    waited_ += waited;
    if (waited_ < window_) return true;
    const bool enough = bytes_ >= kMinBytesPerWindow;
    bytes_ = 0;
    waited_ = {};
    return enough;
  }
  std::chrono::milliseconds left() const { return window_ - waited_; }

 private:
  std::chrono::milliseconds window_;
  std::size_t bytes_ = 0;
  std::chrono::milliseconds waited_{};
};

}  // namespace host
