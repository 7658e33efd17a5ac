// What the phone did: every message and every call of the operating system services.
#pragma once

#include <cstdint>
#include <deque>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace simulator {

struct JournalEntry {
  enum class Kind { kPost, kSend, kBroadcast, kSystem };
  Kind kind = Kind::kPost;
  std::string target;  // the thread, empty for a broadcast; the call of a system entry
  std::string text;    // the payload; the text of a system entry
  unsigned message = 0;
  int wParam = 0;
  int lParam = 0;
  int answer = 0;
  std::uint64_t sequence = 0;  // given by the journal
};

// {"entries":[...]} as the HTTP control shows it.
nlohmann::ordered_json journalJson(const std::vector<JournalEntry>& entries);

// Keeps the last 10,000 entries, fewer when their texts take more than 16 MiB. Sequence numbers begin at 1 and are
// never used again. Not safe from several threads at once.
class Journal {
 public:
  void add(JournalEntry entry);
  void clear();
  // The entries after `since`, oldest first.
  std::vector<JournalEntry> entriesAfter(std::uint64_t since) const;

 private:
  std::deque<JournalEntry> entries_;
  std::size_t textBytes_ = 0;
  std::uint64_t lastSequence_ = 0;
};

}  // namespace simulator
