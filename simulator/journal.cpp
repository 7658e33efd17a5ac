#include "simulator/journal.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace simulator {
namespace {

constexpr std::size_t kMaxEntries = 10'000;
constexpr std::size_t kMaxTextBytes = 16 << 20;
constexpr const char* kKindNames[] = {"post", "send", "broadcast", "system"};

nlohmann::ordered_json entryJson(const JournalEntry& entry) {
  nlohmann::ordered_json json{{"seq", entry.sequence}, {"kind", kKindNames[static_cast<int>(entry.kind)]}};
  if (entry.kind == JournalEntry::Kind::kSystem) {
    json["call"] = entry.target;
    json["text"] = entry.text;
    return json;
  }
  json["thread"] = entry.target;
  json["message"] = entry.message;
  json["wParam"] = entry.wParam;
  json["lParam"] = entry.lParam;
  json["data"] = entry.text;
  json["answer"] = entry.answer;
  return json;
}

}  // namespace

void Journal::add(JournalEntry entry) {
  entry.sequence = ++lastSequence_;
  textBytes_ += entry.text.size();
  entries_.push_back(std::move(entry));
  while (entries_.size() > kMaxEntries || (textBytes_ > kMaxTextBytes && entries_.size() > 1)) {
    textBytes_ -= entries_.front().text.size();
    entries_.pop_front();
  }
}

void Journal::clear() {
  entries_.clear();
  textBytes_ = 0;
}

std::vector<JournalEntry> Journal::entriesAfter(std::uint64_t since) const {
  const auto first = std::partition_point(entries_.begin(), entries_.end(),
                                          [since](const JournalEntry& entry) { return entry.sequence <= since; });
  return {first, entries_.end()};
}

nlohmann::ordered_json journalJson(const std::vector<JournalEntry>& entries) {
  auto list = nlohmann::ordered_json::array();
  std::transform(entries.begin(), entries.end(), std::back_inserter(list), entryJson);
  return {{"entries", std::move(list)}};
}

}  // namespace simulator
