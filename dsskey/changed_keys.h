// The numbers of changed keys, as the phone's applications are told of them.
#pragma once

#include <string>

#include "dsskey/dsskey_records.h"

class ChangedKeys {
 public:
  explicit ChangedKeys(DSSK_MODEL_TYPE family) : offset_(family == DSSK_EXT ? 1 : 0) {}

  // Keys beyond what the applications take are left out.
  void add(int keyIndex) {
    if (bytes_.size() < kMost) bytes_ += static_cast<char>(keyIndex + offset_);
  }
  // A byte for each, the key's number from 1.
  const std::string& text() const { return bytes_; }

 private:
  static constexpr std::size_t kMost = 63;  // and the final NUL

  int offset_;
  std::string bytes_;
};
