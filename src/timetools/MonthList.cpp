#include "timetools/MonthList.h"

#include "shell/TextControls.h"

#include <QLabel>

#include <algorithm>
#include <utility>

namespace talnik {
namespace {

bool MoveMonth(ListBox* list, QLabel* label, int direction, bool byYear, bool keepIndex, Date& currentDate,
               const CalendarNames& names) {
  const auto moved = DateAdd(byYear ? DateUnit::Year : DateUnit::Month, direction, currentDate);
  if (!moved) return false;
  const int index = list->ListIndex();
  currentDate = *moved;
  ShowMonth(list, label, currentDate, names);
  if (keepIndex) list->SetListIndex(std::min(index, list->ListCount() - 1));
  return true;
}

/// The first line from `from` on, upwards or downwards, that holds `text`; -1 when there is none.
int LineWith(const ListBox* list, const QString& text, int from, bool back) {
  for (int index = from; index >= 0 && index < list->ListCount(); index += back ? -1 : 1)
    if (list->Line(index).contains(text)) return index;
  return -1;
}

}  // namespace

void ShowMonth(ListBox* list, QLabel* label, const Date& date, const CalendarNames& names) {
  list->clear();
  label->setText(MonthTitle(date, names));
  list->addItems(MonthLines(date, names));
}

void FillMonthList(ListBox* list, QLabel* label, const Date& date, const CalendarNames& names) {
  ShowMonth(list, label, date, names);
  list->SetListIndex(date.Day() - 1);
}

bool NextMonth(ListBox* list, QLabel* label, bool byYear, bool keepIndex, Date& currentDate,
               const CalendarNames& names) {
  return MoveMonth(list, label, 1, byYear, keepIndex, currentDate, names);
}

bool PrevMonth(ListBox* list, QLabel* label, bool byYear, bool keepIndex, Date& currentDate,
               const CalendarNames& names) {
  return MoveMonth(list, label, -1, byYear, keepIndex, currentDate, names);
}

std::optional<Date> WeekJump(const Date& currentDate, bool forward) {
  return DateAdd(DateUnit::Week, forward ? 1 : -1, currentDate);
}

std::optional<Date> SelectedDate(const ListBox* list, const Date& currentDate) {
  return Date::FromParts(currentDate.Year(), currentDate.Month(), list->ListIndex() + 1);
}

bool FindWeekDay(ListBox* list, QLabel* label, const QString& text, bool back, Date& currentDate,
                 const CalendarNames& names) {
  int found = LineWith(list, text, list->ListIndex() + (back ? -1 : 1), back);
  if (found < 0) {
    const bool moved = back ? PrevMonth(list, label, false, false, currentDate, names)
                            : NextMonth(list, label, false, false, currentDate, names);
    if (!moved) return false;
    found = LineWith(list, text, back ? list->ListCount() - 1 : 0, back);
  }
  list->SetListIndex(found);
  return found >= 0;
}

std::optional<QString> WeekDayOfLetter(QString& dayPrefix, int key) {
  switch (key) {
    case Qt::Key_P:
      dayPrefix = u"p"_qs;
      return {};
    case Qt::Key_S:
      dayPrefix = u"s"_qs;
      return {};
    case Qt::Key_O:
      return std::exchange(dayPrefix, QString()) + u'o';
    case Qt::Key_A:
      return std::exchange(dayPrefix, QString()) + u'á';
    case Qt::Key_T:
      return dayPrefix + u't';
    case Qt::Key_U:
      return u"út"_qs;
    case Qt::Key_C:
      return u"čt"_qs;
    case Qt::Key_N:
      return u"ne"_qs;
    default:
      return {};
  }
}

std::optional<int> LineOfDigits(QString& digitBuffer, QChar digit, int lineCount) {
  digitBuffer = digitBuffer.right(1) + digit;
  const int line = digitBuffer.toInt();
  if (line > lineCount) return {};
  return std::max(line - 1, 0);
}

}  // namespace talnik
