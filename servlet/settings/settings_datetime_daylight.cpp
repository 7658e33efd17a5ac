#include "servlet/settings/settings_datetime_daylight.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "framework/config_operate.h"
#include "framework/text_utils.h"
#include "platform/log.h"
#include "servlet/settings/settings_datetime_boundary.h"
#include "servlet/settings/settings_datetime_zones.h"

namespace {

constexpr std::size_t kKindSize = 8;
constexpr std::size_t kOffsetSize = 8;
constexpr std::size_t kBoundarySize = 16;
constexpr std::size_t kPartSize = 8;
constexpr std::size_t kWeekSize = 4;
constexpr int kLargestShift = 300;
constexpr char kAutomatic[] = "2";

struct DaylightRule {
  std::string kind, start, end, offset;
};

DaylightRule storedRule() {
  return {readConfigPlain("DSTTimeType", kKindSize), readConfigPlain("DSTStartTime", kBoundarySize),
          readConfigPlain("DSTEndTime", kBoundarySize), readConfigPlain("DSTOffSetTime", kOffsetSize)};
}

DaylightRule ruleOf(const pugi::xml_node& zone) {
  const std::string kind = zone.attribute("iType").as_string();
  if (kind != kRuleByDate && kind != kRuleByWeek) return {std::string(kRuleByDate), "//", "//", ""};
  return {kind, zone.attribute("szStart").as_string(), zone.attribute("szEnd").as_string(),
          zone.attribute("szOffset").as_string()};
}

// The parts of a boundary as texts, those that are missing empty. A rule by date has no week.
struct DaylightBoundary {
  std::string month, week, day, hour;
};

DaylightBoundary boundaryOf(std::string_view kind, std::string_view text) {
  DaylightBoundary boundary;
  std::vector<std::string*> parts{&boundary.month, &boundary.day, &boundary.hour};
  if (kind == kRuleByWeek) parts.insert(parts.begin() + 1, &boundary.week);
  for (std::string* part : parts) {
    const std::size_t end = std::min(text.find('/'), text.size());
    if (end == 0) break;  // nothing is read behind a part that is missing
    *part = text.substr(0, end);
    cutUtf8(*part, part == &boundary.week ? kWeekSize : kPartSize);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return boundary;
}

// A boundary that can be shown: one that is none becomes an empty one.
DaylightBoundary shownBoundary(const std::string& kind, const std::string& text) {
  if (CheckDSTTime(kind.c_str(), text.c_str())) return boundaryOf(kind, text);
  return boundaryOf(kind, kind == kRuleByWeek ? "0/0/0/" : "//");
}

TMPL_varlist* addByDate(TMPL_varlist* list, const DaylightBoundary& start, const DaylightBoundary& end) {
  return TMPL_add_var(list, "DSTTimeType", "byDate", "sSMonth", start.month.c_str(), "sSDay", start.day.c_str(),
                      "sSHour", start.hour.c_str(), "sEMonth", end.month.c_str(), "sEDay", end.day.c_str(), "sEHour",
                      end.hour.c_str(), nullptr);
}

TMPL_varlist* addByWeek(TMPL_varlist* list, const DaylightBoundary& start, const DaylightBoundary& end) {
  return TMPL_add_var(list, "DSTTimeType", "byWeek", "sSMonth", start.month.c_str(), "sSWeek", start.week.c_str(),
                      "sSDay", start.day.c_str(), "sSHour", start.hour.c_str(), "sEMonth", end.month.c_str(), "sEWeek",
                      end.week.c_str(), "sEDay", end.day.c_str(), "sEHour", end.hour.c_str(), nullptr);
}

TMPL_varlist* addRule(TMPL_varlist* list, const DaylightRule& rule) {
  const DaylightBoundary start = shownBoundary(rule.kind, rule.start), end = shownBoundary(rule.kind, rule.end);
  if (rule.kind == kRuleByDate) list = addByDate(list, start, end);
  if (rule.kind == kRuleByWeek) list = addByWeek(list, start, end);
  std::string_view number = rule.offset;
  const bool isOutside = !isWithin(takeNumber(number).value_or(0), -kLargestShift, kLargestShift);
  return TMPL_add_var(list, "DSTOffSetTime", isOutside ? "" : templateText(rule.offset).c_str(), nullptr);
}

// A part of a zone's rule as it is told to the page's script: what is no number is left out.
std::string digits(const std::string& part) {
  return part.find_first_not_of("0123456789") == std::string::npos ? part : "";
}

DaylightBoundary numbersOf(const pugi::xml_node& zone, const char* boundary) {
  const DaylightBoundary parts = boundaryOf(zone.attribute("iType").as_string(), zone.attribute(boundary).as_string());
  return {digits(parts.month), digits(parts.week), digits(parts.day), digits(parts.hour)};
}

// The minutes by which a zone's clock is put forward, empty when they are no number or too many.
std::string shiftOf(const pugi::xml_node& zone) {
  std::string_view text = zone.attribute("szOffset").as_string();
  const std::optional<int> shift = takeNumber(text);
  return shift && isWithin(*shift, -kLargestShift, kLargestShift) ? std::to_string(*shift) : "";
}

}  // namespace

TMPL_varlist* GetDaylightTimeByZone(TMPL_varlist* list, const std::string& zone) {
  DaylightRule rule = storedRule();
  if (readConfigPlain("LocalTimeDaylightSaving", kKindSize) == kAutomatic) {
    const TimeZones zones;
    if (!zones.root()) return list;
    if (const pugi::xml_node node = zones.find(zone)) rule = ruleOf(node);
  }
  return addRule(list, rule);
}

void printDaylightRule(HttpResponse* response, const pugi::xml_node& zone) {
  const std::string kind = zone.attribute("iType").as_string();
  const std::string offset = shiftOf(zone);
  const DaylightBoundary start = numbersOf(zone, "szStart"), end = numbersOf(zone, "szEnd");
  if (kind.empty()) {
    response->print("{Type:3}");
  } else if (kind == kRuleByDate) {
    response->print("{Type:'%s',sMonth:'%s',sDay:'%s',sHour:'%s',eMonth:'%s',eDay:'%s',eHour:'%s',offset:'%s'}",
                    kind.c_str(), start.month.c_str(), start.day.c_str(), start.hour.c_str(), end.month.c_str(),
                    end.day.c_str(), end.hour.c_str(), offset.c_str());
    log_log(kWebLog, kLogInfo, "SettingsDateTimeServlet::onTimeZoneChanged() end of by Data\n");
  } else if (kind == kRuleByWeek) {
    response->print(
        "{Type:'%s',sMonth:'%s',sWeek:'%s',sDay:'%s',sHour:'%s',eMonth:'%s',eWeek:'%s',eDay:'%s',eHour:'%s',"
        "offset:'%s'}",
        kind.c_str(), start.month.c_str(), start.week.c_str(), start.day.c_str(), start.hour.c_str(), end.month.c_str(),
        end.week.c_str(), end.day.c_str(), end.hour.c_str(), offset.c_str());
    log_log(kWebLog, kLogInfo, "SettingsDateTimeServlet::onTimeZoneChanged() end of by Week\n");
  }
}
