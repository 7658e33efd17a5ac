#include "servlet/settings/settings_datetime_store.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "framework/config_operate.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "platform/network.h"
#include "servlet/settings/settings_datetime_daylight.h"
#include "servlet/settings/settings_datetime_zones.h"

namespace {

constexpr std::size_t kZoneNameSize = 64;
constexpr std::size_t kBoundarySize = 256;
constexpr char kOwnRule[] = "1";

bool isField(HttpRequest* request, const char* name, std::string_view wanted) {
  const char* value = request->getParameter(name);
  return value && value == wanted;
}

// Stores the boundary that the fields make up, joined by "/".
template <std::size_t N>
void storeBoundary(const char* key, HttpRequest* request, const char* const (&fields)[N]) {
  std::string text;
  for (const char* field : fields) {
    const char* value = request->getParameter(field);
    if (!value) return;
    text.append(field == fields[0] ? "" : "/").append(value);
  }
  cutText(text, kBoundarySize);
  writeConfigOperate(GLOBAL_FILE, key, text.c_str(), 0);
}

// The numbers of the fields of a time set by hand, from the year to the second.
std::optional<std::array<int, 6>> manualTime(HttpRequest* request) {
  static constexpr const char* kFields[] = {"ManualYear", "ManualMonth",  "ManualDay",
                                            "ManualHour", "ManualMinute", "ManualSecond"};
  std::array<int, 6> time{};
  for (std::size_t i = 0; i < time.size(); ++i) {
    const std::optional<int> number = parseInt(request->getParameter(kFields[i]));
    if (!number || *number < 0) return std::nullopt;
    time[i] = *number;
  }
  return time;
}

bool isTime(const std::array<int, 6>& time) {
  const auto [year, month, day, hour, minute, second] = time;
  const std::chrono::year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day)));
  return year <= 9999 && month <= 12 && day <= 31 && date.ok() && hour < 24 && minute < 60 && second < 60;
}

}  // namespace

bool SetTimeZone(HttpRequest* request) {
  const char* field = request->getParameter("TimeZoneAndName");
  if (!field) return false;
  const auto [offset, name] = offsetAndName(field, kZoneNameSize);
  writeConfigOperate(GLOBAL_FILE, "CurrentTimeZoneTime", offset.c_str(), 0);
  writeConfigOperate(GLOBAL_FILE, "CurrentTimeZoneZone", name.c_str(), 0);
  return true;
}

bool SetDayLight(HttpRequest* request) {
  if (!isField(request, "LocalTimeDaylightSaving", kOwnRule)) return false;
  if (isField(request, "DSTTimeType", kRuleByDate)) {
    storeBoundary("DSTStartTime", request, {"sDateSMonth", "sDateSDay", "sDateSHour"});
    storeBoundary("DSTEndTime", request, {"sDateEMonth", "sDateEDay", "sDateEHour"});
  } else if (isField(request, "DSTTimeType", kRuleByWeek)) {
    storeBoundary("DSTStartTime", request, {"sWeekSMonth", "sWeekSWeek", "sWeekSDay", "sWeekSHour"});
    storeBoundary("DSTEndTime", request, {"sWeekEMonth", "sWeekEWeek", "sWeekEDay", "sWeekEHour"});
  }
  writeConfigOperate(GLOBAL_FILE, "DSTOffSetTime", request, 0);
  return true;
}

void SetManualTime(HttpRequest* request) {
  const std::optional<std::array<int, 6>> time = manualTime(request);
  const auto [year, month, day, hour, minute, second] = time.value_or(std::array<int, 6>{});
  if (!time || !isTime(*time) || !netSetLocalTime(year, month, day, hour, minute, second)) {
    log_log(kWebLog, kLogWarning, "SettingsDateTimeServlet::SetManualTime() is no time\n");
  }
}
