#pragma once

#include "dates/Date.h"

#include <QLocale>
#include <QStringList>

#include <array>

namespace talnik {

/// The names of days and months in the user's language.
struct CalendarNames {
  std::array<QString, 8> day;     ///< 1 is Sunday, 7 is Saturday
  std::array<QString, 13> month;  ///< 1 is January
};

/// The names of the user's locale; Czech on a Czech machine.
CalendarNames LocaleCalendarNames(const QLocale& locale = QLocale::system());

/// "15. středa"
QString DayLine(const Date& date, const CalendarNames& names);

/// "leden 2009"
QString MonthTitle(const Date& date, const CalendarNames& names);

/// The lines of all days of the month that holds `date`, the 1st first.
QStringList MonthLines(const Date& date, const CalendarNames& names);

}  // namespace talnik
