// The bounded hand-over of a long body from its connection to the handler that reads it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>

#include "host/rate_guard.h"

namespace host {

// The side of the connection that can be held up. Both are called with the stream's lock held.
class Pausable {
 public:
  virtual void pause() = 0;
  virtual void resume() = 0;

 protected:
  ~Pausable() = default;
};

// The connection's thread offers pieces and pauses while the handler does not take them; the handler's thread reads and
// waits while the connection brings nothing. A body that is not asked for passes by.
class BodyStream {
 public:
  static constexpr std::size_t kCapacity = 64 * 1024;

  // `window` is that of a RateGuard over the time that the handler waits.
  BodyStream(Pausable& connection, std::chrono::milliseconds window) : connection_(connection), rate_(window) {}

  // Connection's side.
  void holdUntilRead();                       // pauses until the handler first reads or has answered
  std::size_t offer(std::string_view piece);  // the bytes taken; pauses when they are not all
  void end();                                 // the body is whole
  void abort();                               // the client has gone, or the host stops: ends the handler's wait
  bool pauseUntilAnswered();                  // false when there is an answer already
  bool hasAnswer();
  bool tooSlow();  // the handler gave the sender up

  // Handler's side.
  std::size_t read(char* buffer, std::size_t length);  // 0 at the end of the body, or when it will not come
  void answered();                                     // the rest of the body is not wanted

 private:
  bool waitForBytes(std::unique_lock<std::mutex>& lock);
  void pauseLocked();
  void resumeLocked();

  Pausable& connection_;
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::string bytes_;
  std::size_t taken_ = 0;   // of bytes_
  std::size_t unpaid_ = 0;  // arrived since the reader last looked
  RateGuard rate_;
  bool paused_ = false, ended_ = false, answered_ = false, tooSlow_ = false;
};

}  // namespace host
