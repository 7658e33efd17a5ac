#include "host/body_stream.h"

#include <algorithm>
#include <cstring>

namespace host {

void BodyStream::pauseLocked() {
  if (paused_) return;
  paused_ = true;
  connection_.pause();
}

void BodyStream::resumeLocked() {
  if (!paused_) return;
  paused_ = false;
  connection_.resume();
}

void BodyStream::holdUntilRead() {
  const std::lock_guard lock(mutex_);
  pauseLocked();
}

std::size_t BodyStream::offer(std::string_view piece) {
  const std::lock_guard lock(mutex_);
  if (answered_ || ended_) return piece.size();
  const std::size_t count = std::min(piece.size(), kCapacity - (bytes_.size() - taken_));
  // What is not taken at once is offered again only after a pause.
  if (count < piece.size()) pauseLocked();
  if (taken_ > kCapacity) {
    bytes_.erase(0, taken_);
    taken_ = 0;
  }
  bytes_.append(piece.substr(0, count));
  unpaid_ += count;
  arrived_.notify_one();
  return count;
}

void BodyStream::end() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  arrived_.notify_one();
}

void BodyStream::abort() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  bytes_.clear();
  taken_ = 0;
  arrived_.notify_one();
}

bool BodyStream::pauseUntilAnswered() {
  const std::lock_guard lock(mutex_);
  if (answered_) return false;
  pauseLocked();
  return true;
}

bool BodyStream::hasAnswer() {
  const std::lock_guard lock(mutex_);
  return answered_;
}

bool BodyStream::tooSlow() {
  const std::lock_guard lock(mutex_);
  return tooSlow_;
}

// Only the time that the reader waits counts against the sender.
bool BodyStream::waitForBytes(std::unique_lock<std::mutex>& lock) {
  const auto there = [this] { return ended_ || taken_ < bytes_.size(); };
  while (!there()) {
    const auto start = std::chrono::steady_clock::now();
    arrived_.wait_for(lock, rate_.left(), there);
    const auto waited = std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    if (!rate_.add(unpaid_, waited)) return !(tooSlow_ = true);
    unpaid_ = 0;
  }
  return taken_ < bytes_.size();
}

std::size_t BodyStream::read(char* buffer, std::size_t length) {
  std::unique_lock lock(mutex_);
  if (tooSlow_) return 0;
  if (taken_ == bytes_.size() && !ended_) resumeLocked();
  if (!waitForBytes(lock)) return 0;
  const std::size_t count = std::min(length, bytes_.size() - taken_);
  std::memcpy(buffer, bytes_.data() + taken_, count);
  taken_ += count;
  if (taken_ == bytes_.size()) {
    bytes_.clear();
    taken_ = 0;
  }
  if (bytes_.size() - taken_ <= kCapacity / 2 && !ended_) resumeLocked();
  return count;
}

void BodyStream::answered() {
  const std::lock_guard lock(mutex_);
  answered_ = true;
  resumeLocked();
}

}  // namespace host
