#pragma once

#include "dates/Date.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace talnik {

enum class RuleFrequency { None, Daily, Weekly, Monthly, Yearly };

/// Weekdays as a set: Sunday is 1, as everywhere.
class WeekdaySet {
 public:
  bool Has(int weekday) const { return ((bits_ >> weekday) & 1U) != 0; }
  bool IsEmpty() const { return bits_ == 0; }
  void Add(int weekday) { bits_ |= 1U << weekday; }
  bool operator==(const WeekdaySet&) const = default;

 private:
  unsigned bits_ = 0;
};

/// What one line of rule text says. The line is of the iCalendar kind, but its parts are separated by blanks and the
/// "Z" of UNTIL marks a local time.
struct RuleText {
  RuleFrequency frequency = RuleFrequency::None;
  WeekdaySet days = {};            ///< the day codes of BYDAY
  int ordinal = 0;                 ///< the number in front of a day code ("2TU"); 0 without one
  int monthDay = 0;                ///< BYMONTHDAY; 0 without it
  std::int64_t interval = 1;       ///< INTERVAL
  std::int64_t count = 0;          ///< COUNT; 0 when the series does not end by count
  bool endsByDate = false;         ///< there is an UNTIL, readable or not
  std::optional<Date> until = {};  ///< nothing when UNTIL is no stamp

  bool EndsByCount() const { return count > 0; }
  bool IsEndless() const { return !endsByDate && !EndsByCount(); }

  /// Never fails: pieces that say nothing are passed over.
  static RuleText Read(const QString& text);
  /// The line, with every blank that belongs to it: an endless rule ends in one.
  QString Write() const;

  bool operator==(const RuleText&) const = default;
};

/// "MO" to "SU" for a weekday number.
QString DayCode(int weekday);

/// The ordinal of the date's weekday within its month, 1 to 5.
int WeekdayOrdinal(const Date& date);

/// "20241231T123000": local time, seconds always "00".
QString MakeRuleStamp(const Date& moment);

/// The local date text of a stamp, "5.1.2024 08:30:00"; empty when the text is no stamp. What follows the 15th
/// character is ignored.
QString ParseRuleStamp(const QString& stamp);

/// Two rules are the same when they are equal without outer blanks.
bool SameRule(const QString& a, const QString& b);

}  // namespace talnik
