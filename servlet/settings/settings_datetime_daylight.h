// When clocks are put forward and back. A boundary of daylight saving is "month/day/hour" in a rule by date and
// "month/week/weekday/hour" in a rule by week: hours of the clock before it changes, week 5 the month's last, weekdays
// from 1 for Monday to 7 for Sunday.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "framework/servlet_base.h"
#include "servlet/settings/settings_datetime_boundary.h"

inline constexpr std::string_view kRuleByDate = "0";
inline constexpr std::string_view kRuleByWeek = "1";

// Adds the rule that holds: the phone's own or, with automatic daylight saving, that of the zone. Adds nothing when the
// zones cannot be read.
TMPL_varlist* GetDaylightTimeByZone(TMPL_varlist* list, const std::string& zone);

// Answers a zone's rule for the page's script: {Type:'0',sMonth:'3',...}, {Type:3} for none. A part that is no number
// is left empty; a zone whose rule is of no known kind is not answered.
void printDaylightRule(HttpResponse* response, const pugi::xml_node& zone);
