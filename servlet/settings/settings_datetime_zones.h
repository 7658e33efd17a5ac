// The phone's list of time zones, with their daylight saving.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "framework/servlet_base.h"

// The list as the phone has it; one that cannot be read has no root.
class TimeZones {
 public:
  TimeZones();

  pugi::xml_node root() const { return document_.document_element(); }
  // The first zone of that name; null for none.
  pugi::xml_node find(std::string_view name) const;

 private:
  pugi::xml_document document_;
};

// The rows of the zone selector, at most 300. Without a list of the phone's own it is the one it was delivered with.
// Selected is the zone of that offset and name or, when there is none, the first one of that offset.
TMPL_loop* getTimeZoneAndName(const std::string& time, const std::string& zone);

// "offset name" as the selector posts it, taken apart at its first blank; both empty without one. Offsets have up to
// 15 bytes, names up to `nameSize` - 1.
std::pair<std::string, std::string> offsetAndName(std::string_view text, std::size_t nameSize);
