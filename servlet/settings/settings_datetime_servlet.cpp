// The page "settings-datetime": where the phone's time comes from, its time zone, and how time and date are shown.
#include <string>
#include <string_view>
#include <utility>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "platform/network.h"
#include "servlet/settings/settings_datetime_daylight.h"
#include "servlet/settings/settings_datetime_store.h"
#include "servlet/settings/settings_datetime_zones.h"
#include "servlet/settings/settings_tabs.h"

namespace {

constexpr const char* kShownKeys[] = {"LocalTimeDhcpTimeSwitch",
                                      "LocalTimeType",
                                      "LocalTimeTimeFormatType",
                                      "LocalTimeDateFormatType",
                                      "LocalTimeServer1",
                                      "LocalTimeServer2",
                                      "TimeInterval",
                                      "EmergencyNumberList",
                                      "LocalTimeDaylightSaving"};
constexpr const char* kStoredKeys[] = {"DSTTimeType",   "LocalTimeDhcpTimeSwitch", "LocalTimeDaylightSaving",
                                       "LocalTimeType", "LocalTimeTimeFormatType", "LocalTimeDateFormatType"};
constexpr const char* kServerKeys[] = {"LocalTimeServer1", "LocalTimeServer2", "TimeInterval"};
constexpr const char* kFormatKeys[] = {"LocalTimeTimeFormatType", "LocalTimeDateFormatType"};
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-datetime");
constexpr const char* kItems[] = {"SettingsTimeZone",   "SettingsDHCPTime",          "SettingsPrimServer",
                                  "SettingsSecServer",  "SettingsUpdateInterval",    "SettingsDaylightTime",
                                  "SettingsManualTime", "SettingsTimeFormatSetting", "SettingsDateFormatSetting"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kServerKeys) && allUnique(kItems));

constexpr std::size_t kOffsetSize = 32;
constexpr std::size_t kZoneNameSize = 128;
constexpr std::size_t kFormatSize = 4;

constexpr int kSetByHand = 0, kFollowsServers = 1, kFormatsChanged = 2;  // details of what is announced of the clock

bool isField(HttpRequest* request, const char* name, std::string_view wanted) {
  const char* value = request->getParameter(name);
  return value && value == wanted;
}

using Formats = std::pair<std::string, std::string>;

Formats storedFormats() {
  return {readConfigPlain(kFormatKeys[0], kFormatSize), readConfigPlain(kFormatKeys[1], kFormatSize)};
}

// True when the form has both formats, and not those.
bool changesFormats(HttpRequest* request, const Formats& formats) {
  const char* time = request->getParameter(kFormatKeys[0]);
  const char* date = request->getParameter(kFormatKeys[1]);
  return time && date && formats != Formats(time, date);
}

}  // namespace

class SettingsDateTimeServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int onTimeZoneChanged(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* GetLocalTimeList(TMPL_varlist* list);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsDateTimeServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsDateTimeServlet> kActions[] = {
      {"load", &SettingsDateTimeServlet::loadConfig},
      {"write", &SettingsDateTimeServlet::writeConfig},
      {"TimeZoneChanged", &SettingsDateTimeServlet::onTimeZoneChanged},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsDateTimeServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  const std::string offset = readConfigPlain("CurrentTimeZoneTime", kOffsetSize);
  const std::string zone = readConfigPlain("CurrentTimeZoneZone", kZoneNameSize);
  list = GetDaylightTimeByZone(GetLocalTimeList(list), zone);
  list = TMPL_add_loop(list, "timezoneLoop", getTimeZoneAndName(offset, zone));
  list = GetTR069Supported(showItemsByLevel(list, request));
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-datetime.htm", list);
  return 1;
}

int SettingsDateTimeServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const Formats formats = storedFormats();
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  const bool isByHand = isField(request, "LocalTimeType", "0");
  if (isByHand) SetManualTime(request);
  if (isField(request, "LocalTimeType", "1")) {
    writeConfigOperate(GLOBAL_FILE, kServerKeys, request, 0);
    SetTimeZone(request);
    SetDayLight(request);
    broadcastConfigChanged(ConfigArea::kTimeServers);
  }
  if (changesFormats(request, formats)) broadcastConfigChanged(ConfigArea::kClock, kFormatsChanged);
  broadcastConfigChanged(ConfigArea::kClock, isByHand ? kSetByHand : kFollowsServers);
  response->sendRedirect("/servlet?p=settings-datetime&q=load");
  return 1;
}

// Tells the page's script the rule of the zone that is chosen in the form.
int SettingsDateTimeServlet::onTimeZoneChanged(HttpRequest* request, HttpResponse* response) {
  const TimeZones zones;
  if (!zones.root()) {
    log_log(kWebLog, kLogWarning, "SettingsDateTimeServlet::getTimeZoneAndName End error to get root element\n");
    return 1;
  }
  const char* chosen = request->getParameter("z");
  const pugi::xml_node zone = zones.find(offsetAndName(chosen ? chosen : "", kZoneNameSize).second);
  if (zone) printDaylightRule(response, zone);
  return 1;
}

TMPL_varlist* SettingsDateTimeServlet::GetLocalTimeList(TMPL_varlist* list) {
  const LocalTime time = netGetLocalTime();
  const auto add = [&](const char* name, int value) {
    list = TMPL_add_var(list, name, std::to_string(value).c_str(), nullptr);
  };
  add("ManualYear", time.year);
  add("ManualMonth", time.month);
  add("ManualDay", time.day);
  add("ManualHour", time.hour);
  add("ManualMinute", time.minute);
  add("ManualSecond", time.second);
  return list;
}

TMPL_varlist* SettingsDateTimeServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsDateTimeServlet, HttpServlet, SettingsDateTimeServlet);
