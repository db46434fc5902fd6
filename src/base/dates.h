// Dates as the workbench writes them: year-month-day, ten characters, the same on every system.
#pragma once
#include <string>

namespace quom {

// Today's date in local time, "2026-11-21".
std::string today_text();
// ... and time of the day, "2026-11-21 05:40".
std::string now_text();
// Date on which a file was last written; empty when there is no such file.
std::string file_date_text(const std::string& path);
// Time of day at which it was written, "16:40"; empty when there is no such file.
std::string file_time_text(const std::string& path);
// A date as one speaks of it on a day: "today", "yesterday", "12 Nov", with the year when it is another one.
// What is no date stays as it is.
std::string spoken_day(const std::string& date, const std::string& today);

}  // namespace quom
