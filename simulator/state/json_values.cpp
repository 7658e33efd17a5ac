#include "simulator/state/json_values.h"

namespace simulator {

using nlohmann::json;

Error wrongType(const std::string& path, const std::string& expected) {
  return "\"" + path + "\" is to be " + expected;
}

Error unknown(const std::string& path) {
  return "\"" + path + "\" is not known";
}

bool hasNul(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

Error readBool(const json& value, const std::string& path, bool& target) {
  if (!value.is_boolean()) return wrongType(path, "true or false");
  target = value.get<bool>();
  return {};
}

Error readText(const json& value, const std::string& path, std::string& target) {
  if (!value.is_string() || hasNul(value.get_ref<const std::string&>())) return wrongType(path, "a text without NUL");
  target = value.get<std::string>();
  return {};
}

Error readInteger(const json& value, const std::string& path, std::int64_t& target, std::int64_t least,
                  std::int64_t most) {
  const bool isTooLarge = value.is_number_unsigned() && !std::in_range<std::int64_t>(value.get<std::uint64_t>());
  if (value.is_number_integer() && !isTooLarge) {
    target = value.get<std::int64_t>();
    if (target >= least && target <= most) return {};
  }
  return wrongType(path, "an integer from " + std::to_string(least) + " to " + std::to_string(most));
}

}  // namespace simulator
