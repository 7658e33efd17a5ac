// The phone's hash map.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <utility>
#include <vector>

// A fixed table of buckets over entries from a pool. Entries are added and emptied all at once, never removed singly;
// their addresses stay valid until clear().
template <class Key, class Value, class Hash = std::hash<Key>>
class OrbHashMap {
 public:
  explicit OrbHashMap(std::size_t buckets) : buckets_(buckets ? buckets : 1) {}

  // The value of the key, null when it has none. Owned by the map.
  Value* find(const Key& key) {
    for (Entry* entry = bucket(key); entry; entry = entry->next) {
      if (entry->key == key) return &entry->value;
    }
    return nullptr;
  }

  // Sets the value of the key, adding an entry when there is none.
  Value& set(const Key& key, Value value) {
    if (Value* known = find(key)) return *known = std::move(value);
    Entry*& first = bucket(key);
    first = &pool_.emplace_back(Entry{key, std::move(value), first});
    return first->value;
  }

  std::size_t size() const { return pool_.size(); }

  void clear() {
    buckets_.assign(buckets_.size(), nullptr);
    pool_.clear();
  }

 private:
  struct Entry {
    Key key;
    Value value;
    Entry* next;
  };

  Entry*& bucket(const Key& key) { return buckets_[Hash{}(key) % buckets_.size()]; }

  std::vector<Entry*> buckets_;
  std::deque<Entry> pool_;
};
