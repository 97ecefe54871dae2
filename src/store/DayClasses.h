#pragma once

#include <array>

namespace talnik {

/// No index can answer "which events touch this day" by itself, because an event may have begun at any time before.
/// So the visible rows are parted by how long they last: for each class a partial index by start needs to be read only
/// from that long before the day. Every row is in one of the classes, or odd, or hidden.
struct DayClass {
  const char* index;  ///< name
  const char* rows;   ///< condition of the partial index; a query that is to use it repeats it letter by letter
  const char* reach;  ///< days before the day that an event of the class can have begun, and a little; "" has no limit
};

/// What counts as an event of a day.
inline constexpr const char* kVisible = "(status<8 OR status IS NULL)";

/// Events that end at or after their start; each condition is to be followed by that of the visible rows.
inline constexpr std::array<DayClass, 7> kDayClasses = {{
    {"schedule_day0", "appdur>=apptime AND appdur-apptime<=0.25", "0.251"},
    {"schedule_day1", "appdur-apptime>0.25 AND appdur-apptime<=1", "1.001"},
    {"schedule_day8", "appdur-apptime>1 AND appdur-apptime<=8", "8.001"},
    {"schedule_day64", "appdur-apptime>8 AND appdur-apptime<=64", "64.001"},
    {"schedule_day256", "appdur-apptime>64 AND appdur-apptime<=256", "256.001"},
    {"schedule_day512", "appdur-apptime>256 AND appdur-apptime<=512", "512.001"},
    {"schedule_daylong", "appdur-apptime>512", ""},
}};

/// What lacks a start or an end, or ends before it starts, visible or not: few rows.
inline constexpr const char* kOddRows = "appdur<apptime OR appdur IS NULL OR apptime IS NULL";

}  // namespace talnik
