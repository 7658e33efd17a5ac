// The body of a request as handlers get it.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "host/body_stream.h"
#include "host/spool_buffer.h"

namespace host {

// What was gathered before the turn, and for a long body the stream that brings the rest. A stream is opened once the
// filter has let the request in: until then its bytes are not to be had.
class Body {
 public:
  explicit Body(std::string spoolFolder) : gathered_(kSpoolLimit, std::move(spoolFolder)) {}

  SpoolBuffer& gathered() { return gathered_; }
  void setStream(std::shared_ptr<BodyStream> stream) { stream_ = std::move(stream); }
  BodyStream* stream() const { return stream_.get(); }

  bool readable() const { return !stream_ || open_; }
  // A gathered body can be read again from its start.
  bool rewindable() const { return !stream_; }
  void open() { open_ = true; }

  // Up to `length` bytes from `offset` on, which for a stream goes on where the last read ended.
  std::size_t read(std::size_t offset, char* buffer, std::size_t length) {
    if (!readable()) return 0;
    const std::size_t count = gathered_.read(offset, buffer, length);
    return count == 0 && stream_ ? stream_->read(buffer, length) : count;
  }

 private:
  static constexpr std::size_t kSpoolLimit = 64 * 1024;

  SpoolBuffer gathered_;
  std::shared_ptr<BodyStream> stream_;
  bool open_ = false;
};

}  // namespace host
