// Reads multipart/form-data piece by piece, however the pieces are cut.
//
// libmicrohttpd's own form reader is not used: it wants a live connection, refuses a boundary that is followed by
// another parameter, cuts names at a NUL and does not tell a cut-off body from a text after the last boundary.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

struct PartHead {
  std::string name;
  std::string fileName;  // as the browser sent it
  bool isFile = false;
};

// Takes the parts. Views are good for the length of the call.
class PartSink {
 public:
  virtual void beginPart(const PartHead& head) = 0;
  virtual void partData(std::string_view bytes) = 0;
  virtual void endPart() = 0;  // the part was there as a whole

 protected:
  ~PartSink() = default;
};

class MultipartReader {
 public:
  static constexpr std::size_t kMaxBoundary = 200;
  static constexpr std::size_t kMaxPartHead = 8 * 1024;

  // `boundary` without the dashes in front. A missing or oversized one breaks the reader at once.
  MultipartReader(std::string_view boundary, PartSink& sink);

  // False once the body is broken; what was complete until then has reached the sink.
  bool feed(std::string_view bytes);
  // True when the final boundary was seen. What follows it is ignored.
  bool complete() const { return state_ == State::kDone; }

 private:
  enum class State { kPreamble, kHead, kData, kDone, kBroken };

  bool step();
  bool readData();
  bool readHead();
  bool passDelimiter(std::size_t at);
  void emit(std::size_t count);
  std::string_view rest() const { return std::string_view(buffer_).substr(at_); }

  PartSink& sink_;
  std::string delimiter_;  // "\r\n--boundary"
  std::string buffer_;
  std::size_t at_ = 0;  // first byte of buffer_ that is not used up
  State state_ = State::kPreamble;
  bool inPart_ = false;  // a part with a name
};

}  // namespace host
