#include "dates/Date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace talnik {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t kDay = 86400;
constexpr sys_days kEpoch =
    sys_days(year_month_day(std::chrono::year(1899), std::chrono::month(12), std::chrono::day(30)));

constexpr std::int64_t DayNumber(int year, int month, int day) {
  const year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day)));
  return (sys_days(date) - kEpoch).count();
}

constexpr std::int64_t kFirst = DayNumber(1, 1, 1) * kDay;
constexpr std::int64_t kLast = DayNumber(9999, 12, 31) * kDay + kDay - 1;

std::int64_t DayOf(std::int64_t seconds) {
  return seconds >= 0 ? seconds / kDay : -((-seconds + kDay - 1) / kDay);
}

int SecondOfDay(std::int64_t seconds) {
  return static_cast<int>(seconds - DayOf(seconds) * kDay);
}

year_month_day Calendar(std::int64_t seconds) {
  return year_month_day(kEpoch + days(DayOf(seconds)));
}

}  // namespace

std::optional<Date> Date::FromParts(int year, int month, int day, int hour, int minute, int second) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) return {};
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return {};
  return Date(DayNumber(year, month, day) * kDay + hour * 3600 + minute * 60 + second);
}

std::optional<Date> Date::FromSeconds(std::int64_t secondsOnTheScale) {
  if (secondsOnTheScale < kFirst || secondsOnTheScale > kLast) return {};
  return Date(secondsOnTheScale);
}

std::optional<Date> Date::FromSerial(double serial) {
  // Far values and NaN must not reach the rounding, whose result they do not fit.
  if (!(std::abs(serial) < 4e6)) return {};
  return FromSeconds(std::llround(serial * static_cast<double>(kDay)));
}

Date Date::FromQDateTime(const QDateTime& moment) {
  const QDate day = moment.date();
  const QTime time = moment.time();
  return FromParts(day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()).value_or(Date());
}

double Date::Serial() const {
  return static_cast<double>(seconds_) / static_cast<double>(kDay);
}

QDateTime Date::ToQDateTime() const {
  return QDateTime(QDate(Year(), Month(), Day()), QTime(Hour(), Minute(), Second()));
}

int Date::Year() const {
  return static_cast<int>(Calendar(seconds_).year());
}

int Date::Month() const {
  return static_cast<int>(static_cast<unsigned>(Calendar(seconds_).month()));
}

int Date::Day() const {
  return static_cast<int>(static_cast<unsigned>(Calendar(seconds_).day()));
}

int Date::Hour() const {
  return SecondOfDay(seconds_) / 3600;
}

int Date::Minute() const {
  return SecondOfDay(seconds_) / 60 % 60;
}

int Date::Second() const {
  return SecondOfDay(seconds_) % 60;
}

int Date::WeekdayNumber() const {
  return static_cast<int>(std::chrono::weekday(kEpoch + days(DayOf(seconds_))).c_encoding()) + 1;
}

int Date::DayOfYear() const {
  return static_cast<int>(DayOf(seconds_) - DayNumber(Year(), 1, 1)) + 1;
}

int Date::WeekOfYear() const {
  const int firstWeekday = Date(DayNumber(Year(), 1, 1) * kDay).WeekdayNumber();
  return (DayOfYear() + firstWeekday - 2) / 7 + 1;
}

Date Date::DateValue() const {
  return Date(DayOf(seconds_) * kDay);
}

bool Date::HasTime() const {
  return SecondOfDay(seconds_) != 0;
}

namespace {

std::optional<Date> AddMonths(std::int64_t amount, const Date& date) {
  const std::int64_t months = date.Year() * 12 + date.Month() - 1 + amount;
  if (months < 12 || months >= 10000 * 12) return {};
  const int year = static_cast<int>(months / 12);
  const int month = static_cast<int>(months % 12) + 1;
  const int day = std::min(date.Day(), DaysInMonth(year, month));
  return Date::FromParts(year, month, day, date.Hour(), date.Minute(), date.Second());
}

}  // namespace

std::optional<Date> DateAdd(DateUnit unit, std::int64_t amount, const Date& date) {
  static constexpr std::array<std::int64_t, 5> lengths = {1, 60, 3600, kDay, 7 * kDay};
  // More than all the seconds that there are; keeps the products below from overflowing.
  if (amount > kLast - kFirst || amount < kFirst - kLast) return {};
  if (unit == DateUnit::Month) return AddMonths(amount, date);
  if (unit == DateUnit::Year) return AddMonths(amount * 12, date);
  return Date::FromSeconds(date.Seconds() + amount * lengths.at(static_cast<std::size_t>(unit)));
}

int DaysInMonth(int year, int month) {
  const std::chrono::year_month_day_last last(
      std::chrono::year(year), std::chrono::month_day_last(std::chrono::month(static_cast<unsigned>(month))));
  return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace talnik
