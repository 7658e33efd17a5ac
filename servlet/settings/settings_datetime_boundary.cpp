#include "servlet/settings/settings_datetime_boundary.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <vector>

#include "servlet/settings/settings_datetime_daylight.h"

namespace {

constexpr int kDaysOfMonth[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// The numbers divided by "/" that a text begins with, `most` at the most. What follows the last one does not count.
std::vector<int> leadingNumbers(std::string_view text, std::size_t most) {
  std::vector<int> numbers;
  while (numbers.size() < most) {
    const std::optional<int> number = takeNumber(text);
    if (!number) break;
    numbers.push_back(*number);
    if (!text.starts_with('/')) break;
    text.remove_prefix(1);
  }
  return numbers;
}

bool isDate(const std::vector<int>& numbers) {
  return numbers.size() == 3 && isWithin(numbers[0], 1, 12) && isWithin(numbers[1], 1, kDaysOfMonth[numbers[0] - 1]) &&
         isWithin(numbers[2], 0, 23);
}

bool isWeek(const std::vector<int>& numbers) {
  return numbers.size() == 4 && isWithin(numbers[0], 1, 12) && isWithin(numbers[1], 1, 5) &&
         isWithin(numbers[2], 1, 7) && isWithin(numbers[3], 0, 23);
}

}  // namespace

std::optional<int> takeNumber(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
  const char* begin = text.data() + (hasPlus ? 1 : 0);
  int number = 0;
  const auto [stop, error] = std::from_chars(begin, text.data() + text.size(), number);
  if (error == std::errc::invalid_argument) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  return error == std::errc() ? number : INT_MAX;
}

bool isWithin(int number, int least, int most) {
  return number >= least && number <= most;
}

bool CheckDSTTime(const char* kind, const char* text) {
  if (!kind || !text) return false;
  const std::vector<int> numbers = leadingNumbers(text, 4);
  return (kind == kRuleByDate && isDate(numbers)) || (kind == kRuleByWeek && isWeek(numbers));
}
