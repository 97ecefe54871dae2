#include "editor/RecordSpeech.h"

#include <QCoreApplication>

namespace talnik {
namespace {

QString HourAndMinute(const Date& date) {
  return u"%1:%2"_qs.arg(date.Hour()).arg(date.Minute(), 2, 10, QChar(u'0'));
}

/// A text that is no date is said as it stands.
QString TimeOf(const QString& text, const Date& today) {
  const auto date = CDate(text, today);
  return date ? HourAndMinute(*date) : text;
}

/// The text up to its first blank, the blank included; empty for a day without a time.
QString DatePart(const QString& text) {
  return text.left(text.indexOf(u' ') + 1);
}

QString DayAndTime(const QString& text, const Date& today) {
  const auto date = CDate(text, today);
  if (!date) return text + u' ';
  const QString day = DayText(*date).replace(u'.', u". "_qs) + u' ';
  return text.contains(u':') ? QString(day + HourAndMinute(*date) + u' ') : day;
}

}  // namespace

QString RecordBrief(const QString& lastShownStart, const QString& start, const QString& text, const Date& today) {
  const bool sameDay = DatePart(lastShownStart) == DatePart(start) && start.contains(u':');
  return (sameDay ? TimeOf(start, today) : DayAndTime(start, today)) + u' ' + text;
}

QString StartSpeech(const QString& start, const Date& today) {
  const auto date = CDate(start, today);
  if (!date) return start;
  const QString time = HourAndMinute(*date);
  return (time == u"0:00"_qs ? QString() : time) + QCoreApplication::translate("RecordSpeech", " datum ") +
         DayText(*date);
}

QString PositionMessage(qsizetype position, qsizetype count) {
  return QCoreApplication::translate("RecordSpeech", "Záznam %1 z %2.").arg(position).arg(count);
}

}  // namespace talnik
