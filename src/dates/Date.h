#pragma once

#include <QDateTime>
#include <QString>

#include <compare>
#include <cstdint>
#include <optional>

namespace talnik {

/// A moment in whole seconds of local wall-clock time, on the serial scale whose day 0 is 30 December 1899.
/// It knows no time zone and no daylight time. Dates run from 1.1.1 to 31.12.9999; what lies outside is no date.
class Date {
 public:
  Date() = default;  ///< serial 0: 30.12.1899 at midnight

  /// Nothing when the day does not exist or lies outside the range.
  static std::optional<Date> FromParts(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  static std::optional<Date> FromSeconds(std::int64_t secondsOnTheScale);
  /// Days and the fraction of a day, rounded to the second.
  static std::optional<Date> FromSerial(double serial);
  static Date FromQDateTime(const QDateTime& moment);

  std::int64_t Seconds() const { return seconds_; }
  double Serial() const;
  QDateTime ToQDateTime() const;

  int Year() const;
  int Month() const;
  int Day() const;
  int Hour() const;
  int Minute() const;
  int Second() const;
  /// 1 is Sunday, 7 is Saturday.
  int WeekdayNumber() const;
  int DayOfYear() const;
  /// The week of the year; weeks begin on Sunday and week 1 holds January 1.
  int WeekOfYear() const;

  /// Midnight of the same day.
  Date DateValue() const;
  bool HasTime() const;

  // What the checker sees in code that the compiler makes here is not ours to write otherwise.
  friend auto operator<=>(const Date&, const Date&) = default;  // NOLINT(modernize-use-nullptr)

 private:
  explicit Date(std::int64_t seconds) : seconds_(seconds) {}
  std::int64_t seconds_ = 0;
};

enum class DateUnit { Second, Minute, Hour, Day, Week, Month, Year };

/// `date` moved by `amount` units. Months and years fall back to the last day of a shorter month. Nothing when the
/// result lies outside the range of dates.
std::optional<Date> DateAdd(DateUnit unit, std::int64_t amount, const Date& date);

/// 28 to 31.
int DaysInMonth(int year, int month);

/// The default text "d.m.yyyy h:mm:ss": no leading zeros in day, month and hour, and no time at midnight. A moment of
/// serial day 0 is its bare time ("0:05:00", and "0:00:00" at midnight).
QString DateText(const Date& date);

/// "d.m.yyyy", whatever the time.
QString DayText(const Date& date);

/// "h:mm:ss", whatever the day.
QString TimeText(const Date& date);

/// Reads every form of a date that the system reads: d.m.yyyy, alone or with h:mm or h:mm:ss behind or in front of it;
/// h:mm and h:mm:ss alone (on serial day 0); d.m in the year of `today`. Leading zeros and stray blanks are allowed.
/// Short years are taken as they stand. Everything else is no date.
std::optional<Date> CDate(const QString& text, const Date& today);

bool IsDate(const QString& text, const Date& today);

}  // namespace talnik
