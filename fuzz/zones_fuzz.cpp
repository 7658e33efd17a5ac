// Lists of time zones that hold anything: the page shows them, and tells its script numbers only. Input: a zone as the
// form posts it, then the file.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

#include "fuzz/phone.h"
#include "servlet/settings/settings_datetime_daylight.h"
#include "servlet/settings/settings_datetime_zones.h"
#include "template/template_list.h"
#include "tests/support/fake_http.h"

namespace {

// The answer but for its names, numbers and signs.
std::string marksOf(const std::string& answer) {
  std::string marks;
  for (const char c : answer) {
    if (c == '\'' || c == '"' || c == '\\' || c == '<' || c == '{' || c == '}') marks += c;
  }
  return marks;
}

void checkAnswer(const std::string& zone) {
  const TimeZones zones;
  const pugi::xml_node node = zones.find(offsetAndName(zone, 128).second);
  if (!node) return;
  RecordingResponse response;
  printDaylightRule(&response, node);
  const std::string marks = marksOf(response.body);
  require(marks.empty() || marks == "{}" || marks == "{" + std::string(16, '\'') + "}" ||
              marks == "{" + std::string(20, '\'') + "}",
          "an answer holds numbers only");
}

void checkRows(const RecordingResponse& page) {
  const auto rows = page.loops.find("timezoneLoop");
  if (rows == page.loops.end()) return;
  require(rows->second.size() <= 300, "there are 300 rows at the most");
  int selected = 0;
  for (const RecordingResponse::Row& row : rows->second) selected += row.at("selected").empty() ? 0 : 1;
  require(selected <= 1, "one row is selected");
}

bool holdsLongNumber(const std::string& text) {
  int digits = 0;
  return std::ranges::any_of(text, [&](char c) { return (digits = c >= '0' && c <= '9' ? digits + 1 : 0) > 9; });
}

// A boundary is read as the phone's applications read it.
void checkBoundary(const std::string& text) {
  if (holdsLongNumber(text)) return;
  int month = 0, second = 0, third = 0, hour = 0;
  const int count = std::sscanf(text.c_str(), "%d/%d/%d/%d", &month, &second, &third, &hour);
  const auto isWithin = [](int number, int least, int most) { return number >= least && number <= most; };
  const int days = month == 2 ? 29 : month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
  const bool isMonth = isWithin(month, 1, 12);
  require(
      CheckDSTTime("0", text.c_str()) == (count == 3 && isMonth && isWithin(second, 1, days) && isWithin(third, 0, 23)),
      "a rule by date is read like that");
  require(CheckDSTTime("1", text.c_str()) ==
              (count == 4 && isMonth && isWithin(second, 1, 5) && isWithin(third, 1, 7) && isWithin(hour, 0, 23)),
          "a rule by week is read like that");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::filesystem::path& root = fuzzedPhone();
  std::string_view input = inputText(data, size);
  const std::string zone = takeLine(input);
  std::ofstream(root / "config/data/AutoDST.xml", std::ios::binary) << input;
  const auto [offset, name] = offsetAndName(zone, 128);
  checkBoundary(zone);
  checkAnswer(zone);
  const TemplateArena arena;
  RecordingResponse page;
  page.renderTemplate(
      "x", TMPL_add_loop(GetDaylightTimeByZone(nullptr, name), "timezoneLoop", getTimeZoneAndName(offset, name)));
  checkRows(page);
  return 0;
}
