// Reads JSON values that come in. `path` is how an error names the value, "network.lanIP".
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

// The text of an error, or nothing.
using Error = std::optional<std::string>;

Error wrongType(const std::string& path, const std::string& expected);
Error unknown(const std::string& path);

bool hasNul(const std::string& text);

Error readBool(const nlohmann::json& value, const std::string& path, bool& target);
Error readText(const nlohmann::json& value, const std::string& path, std::string& target);
Error readInteger(const nlohmann::json& value, const std::string& path, std::int64_t& target, std::int64_t least,
                  std::int64_t most);

// An integer from `kLeast` to `kMost`.
template <std::int64_t kLeast, std::int64_t kMost, class Integer>
Error readRange(const nlohmann::json& value, const std::string& path, Integer& target) {
  static_assert(std::in_range<Integer>(kLeast) && std::in_range<Integer>(kMost));
  std::int64_t number = 0;
  if (Error error = readInteger(value, path, number, kLeast, kMost)) return error;
  target = static_cast<Integer>(number);
  return {};
}

inline constexpr auto readInt = readRange<std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), int>;

// A list of at most `most` values, called `kind`, in place of the old ones. `read` takes one of them.
template <class Value, class ReadValue>
Error readList(const nlohmann::json& value, const std::string& path, std::vector<Value>& target, std::size_t most,
               const char* kind, ReadValue read) {
  if (!value.is_array() || value.size() > most) {
    return wrongType(path, "a list of at most " + std::to_string(most) + " " + kind);
  }
  target.assign(value.size(), {});
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (Error error = read(value[i], path + "[" + std::to_string(i) + "]", target[i])) return error;
  }
  return {};
}

// Merges an object into a map; null removes an entry. `read` takes the entry's key before the rest.
template <class Value, class ReadValue>
Error mergeMap(const nlohmann::json& value, const std::string& path, std::map<std::string, Value>& target,
               ReadValue read) {
  if (!value.is_object()) return wrongType(path, "an object");
  for (const auto& [key, member] : value.items()) {
    if (member.is_null()) {
      target.erase(key);
      continue;
    }
    Value parsed{};
    if (Error error = read(key, member, path + "." + key, parsed)) return error;
    target[key] = std::move(parsed);
  }
  return {};
}

}  // namespace simulator
