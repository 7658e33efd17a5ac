#include "servlet/settings/settings_datetime_zones.h"

#include <algorithm>
#include <vector>

#include "framework/text_utils.h"
#include "framework/xml_file.h"
#include "platform/log.h"

namespace {

constexpr char kZonesPath[] = "/config/data/AutoDST.xml";
constexpr char kFactoryZonesPath[] = "/phone/factory/data/AutoDST.xml";
constexpr std::size_t kMostRows = 300;
constexpr std::size_t kRowSize = 128;
constexpr std::size_t kOffsetSize = 16;

struct Zone {
  std::string time, name;
};

bool load(const char* path, pugi::xml_document& document) {
  return loadXml(path, document) && document.document_element();
}

// The zones in the order of the list.
std::vector<Zone> zonesOf(const pugi::xml_node& root) {
  std::vector<Zone> zones;
  for (const pugi::xml_node& node : root.children()) {
    if (node.type() != pugi::node_element) continue;
    zones.push_back({node.attribute("szTime").as_string(), node.attribute("szZone").as_string()});
  }
  return zones;
}

std::vector<Zone> readZones() {
  pugi::xml_document document;
  if (load(kZonesPath, document)) return zonesOf(document.document_element());
  log_log(kWebLog, kLogWarning, "Can't load timezone from config [%s] !\n", kZonesPath);
  if (load(kFactoryZonesPath, document)) return zonesOf(document.document_element());
  log_log(kWebLog, kLogWarning, "Can't load timezone from factory config [%s] !\n", kFactoryZonesPath);
  log_log(kWebLog, kLogWarning, "SettingsDateTimeServlet::getTimeZoneAndName End error to get root element\n");
  return {};
}

// True when the zone stands among the first ones of its offset, one behind the other.
bool isListed(const std::vector<Zone>& zones, const Zone& wanted) {
  const auto hasOffset = [&](const Zone& zone) { return zone.time == wanted.time; };
  const auto first = std::ranges::find_if(zones, hasOffset);
  const auto end = std::find_if_not(first, zones.end(), hasOffset);
  return std::any_of(first, end, [&](const Zone& zone) { return zone.name == wanted.name; });
}

std::string rowText(const Zone& zone) {
  std::string text = zone.time + " " + zone.name;
  cutUtf8(text, kRowSize);
  return text;
}

}  // namespace

TimeZones::TimeZones() {
  loadXml(kZonesPath, document_);
}

pugi::xml_node TimeZones::find(std::string_view name) const {
  if (name.empty()) return {};
  return root().find_child([&](const pugi::xml_node& node) { return node.attribute("szZone").as_string() == name; });
}

TMPL_loop* getTimeZoneAndName(const std::string& time, const std::string& zone) {
  std::vector<Zone> zones = readZones();
  const Zone wanted{time, zone};
  const bool isExact = isListed(zones, wanted);
  std::erase_if(zones, [](const Zone& one) { return one.time.empty() || one.name.empty(); });
  zones.resize(std::min(zones.size(), kMostRows));
  const auto selected = std::ranges::find_if(
      zones, [&](const Zone& one) { return isExact ? rowText(one) == rowText(wanted) : one.time == time; });
  TMPL_loop* rows = nullptr;
  for (auto one = zones.begin(); one != zones.end(); ++one) {
    const std::string text = templateText(rowText(*one));
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "selValue", text.c_str(), "selName", text.c_str(), "selected",
                                               one == selected ? "selected" : "", nullptr));
  }
  return rows;
}

std::pair<std::string, std::string> offsetAndName(std::string_view text, std::size_t nameSize) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) return {};
  std::pair<std::string, std::string> parts(text.substr(0, blank), text.substr(blank + 1));
  cutText(parts.first, kOffsetSize);
  cutUtf8(parts.second, nameSize);
  return parts;
}
