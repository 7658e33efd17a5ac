#include "framework/date_text.h"

#include <cstddef>

namespace {

std::string digits(long long number, std::size_t width) {
  const std::string text = std::to_string(number);
  return std::string(text.size() < width ? width - text.size() : 0, '0').append(text);
}

std::string clockText(const std::tm& time, int format) {
  if (format != 0 && format != 1) return {};
  const int hour = format == 1 ? time.tm_hour : (time.tm_hour + 11) % 12 + 1;
  std::string text = digits(hour, 2).append(":").append(digits(time.tm_min, 2));
  if (format == 0) text += time.tm_hour < 12 ? "AM" : "PM";
  return text;
}

}  // namespace

std::string GetMonth(int month) {
  constexpr const char* kNames[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  return month >= 1 && month <= 12 ? kNames[month - 1] : "";
}

std::string GetWeeday(int weekday) {
  constexpr const char* kNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  return weekday >= 0 && weekday <= 6 ? kNames[weekday] : "";
}

bool LocalTime2StrTime(std::time_t time, std::string& part1, std::string& part2, std::string& part3,
                       std::string& separator, std::string& timeText, int dateFormat, int timeFormat) {
  std::tm local{};
  if (!localtime_r(&time, &local)) return false;
  const std::string weekday = GetWeeday(local.tm_wday);
  const std::string day = digits(local.tm_mday, 2);
  const std::string month = digits(local.tm_mon + 1, 2);
  const std::string monthName = GetMonth(local.tm_mon + 1);
  const std::string year = digits(local.tm_year + 1900LL, 4);
  const std::string shortYear = std::to_string((local.tm_year + 1900LL) % 100);
  const struct {
    const std::string &part1, &part2, &part3;
    const char* separator;
  } formats[] = {
      {weekday, monthName, day, " "}, {day, monthName, year, "-"},  {year, month, day, "-"},
      {day, month, year, "/"},        {month, day, shortYear, "/"}, {day, monthName, year, " "},
      {weekday, day, monthName, " "},
  };
  if (dateFormat >= 0 && dateFormat <= 6) {
    const auto& format = formats[dateFormat];
    part1 += format.part1;
    part2 += format.part2;
    part3 += format.part3;
    separator += format.separator;
  }
  timeText += clockText(local, timeFormat);
  return true;
}
