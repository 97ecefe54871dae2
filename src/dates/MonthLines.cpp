#include "dates/MonthLines.h"

namespace talnik {

CalendarNames LocaleCalendarNames(const QLocale& locale) {
  CalendarNames names;
  // Qt counts the weekdays from Monday and ends with Sunday.
  for (int day = 1; day <= 7; ++day)
    names.day.at(static_cast<std::size_t>(day)) = locale.standaloneDayName(day == 1 ? 7 : day - 1);
  for (int month = 1; month <= 12; ++month)
    names.month.at(static_cast<std::size_t>(month)) = locale.standaloneMonthName(month);
  return names;
}

QString DayLine(const Date& date, const CalendarNames& names) {
  return QString::number(date.Day()) + u". " + names.day.at(static_cast<std::size_t>(date.WeekdayNumber()));
}

QString MonthTitle(const Date& date, const CalendarNames& names) {
  return names.month.at(static_cast<std::size_t>(date.Month())) + u' ' +
         QString::number(date.Year()).rightJustified(4, u'0');
}

QStringList MonthLines(const Date& date, const CalendarNames& names) {
  QStringList lines;
  const int last = DaysInMonth(date.Year(), date.Month());
  for (int day = 1; day <= last; ++day) lines << DayLine(*Date::FromParts(date.Year(), date.Month(), day), names);
  return lines;
}

}  // namespace talnik
