// Dates as the phone shows them.
#pragma once

#include <ctime>
#include <string>

// "Jan" for 1 to "Dec" for 12; empty for any other number.
std::string GetMonth(int month);
// "Sun" for 0 to "Sat" for 6; empty for any other number.
std::string GetWeeday(int weekday);

// Appends the local date in one of the formats 0 to 6 to three parts and their separator (nothing for another format),
// and the time to `timeText`: format 1 with 24 hours, 0 with 12 and AM or PM. False when the time cannot be converted.
bool LocalTime2StrTime(std::time_t time, std::string& part1, std::string& part2, std::string& part3,
                       std::string& separator, std::string& timeText, int dateFormat, int timeFormat);
