#pragma once

#include "dates/Date.h"
#include "dates/MonthLines.h"

#include <QString>

#include <optional>

class QLabel;

namespace talnik {

class ListBox;

/// The moves of a list that shows one month, a line for each day. Every window with such a list keeps a `currentDate`,
/// a date in the month on show, whose day need not be the selected one.

/// Puts the month of `date` on show, with no line selected.
void ShowMonth(ListBox* list, QLabel* label, const Date& date, const CalendarNames& names);

/// Puts the month of `date` on show and selects its line, which runs the list's Click.
void FillMonthList(ListBox* list, QLabel* label, const Date& date, const CalendarNames& names);

/// Moves `currentDate` on by a month, or by a year, and puts its month on show. `keepIndex` selects the line of the
/// old index, or the last one of a month too short for it; without it no line is selected. False, with nothing
/// changed, at the end of the range of dates.
bool NextMonth(ListBox* list, QLabel* label, bool byYear, bool keepIndex, Date& currentDate,
               const CalendarNames& names);
/// The same backwards.
bool PrevMonth(ListBox* list, QLabel* label, bool byYear, bool keepIndex, Date& currentDate,
               const CalendarNames& names);

/// The date one week on or back; nothing at the end of the range of dates.
std::optional<Date> WeekJump(const Date& currentDate, bool forward);

/// The day of the selected line in the month of `currentDate`; nothing when no line is selected.
std::optional<Date> SelectedDate(const ListBox* list, const Date& currentDate);

/// Selects the next line (with `back` the one before) that holds `text`, going on into the month behind (before) at
/// most once. False when there is none: no line is selected then, and the caller shows the day it came from.
bool FindWeekDay(ListBox* list, QLabel* label, const QString& text, bool back, Date& currentDate,
                 const CalendarNames& names);

/// What a letter typed in the list looks for: "p" and "s" wait in `dayPrefix` for the letter behind them, which gives
/// the text of a weekday for FindWeekDay. Nothing for other keys and for "p" and "s" themselves.
std::optional<QString> WeekDayOfLetter(QString& dayPrefix, int key);

/// Adds a digit to the last two typed and gives the index of the line they name (0 names the first line too); nothing
/// when the month is too short for it.
std::optional<int> LineOfDigits(QString& digitBuffer, QChar digit, int lineCount);

}  // namespace talnik
