#include "timetools/Countdown.h"

#include "timetools/SpinTimeField.h"

#include <QCoreApplication>

#include <algorithm>

namespace talnik {
namespace {

constexpr std::int64_t SecondsOfHour = 3600;
constexpr std::int64_t SecondsOfMinute = 60;

struct TimeLeft {
  std::int64_t hours, minutes, seconds;
};

TimeLeft LeftOf(const Countdown& countdown, const Date& now) {
  const std::int64_t left = std::max<std::int64_t>(countdown.CountdownEnd.Seconds() - now.Seconds(), 0);
  return {left / SecondsOfHour, left % SecondsOfHour / SecondsOfMinute, left % SecondsOfMinute};
}

QString TwoDigitText(std::int64_t number) {
  return QString::number(number).rightJustified(2, u'0');
}

}  // namespace

QString EndOfCountdownText(int hours, int minutes, const Date& now) {
  // The whole moment is moved, not the time of day alone, so the end is right beyond midnight too.
  const auto end = DateAdd(DateUnit::Minute, hours * 60 + minutes, now);
  return end ? DateText(*end) : QString();
}

CountdownAnswer SetCountdown(Countdown& countdown, const QString& hours, const QString& minutes, const Date& now) {
  if (FieldValue(hours) == 0 && FieldValue(minutes) == 0) {
    if (!countdown.CountdownRunning) return CountdownAnswer::Refused;
    countdown.CountdownRung = true;
    countdown.CountdownRunning = false;
    return CountdownAnswer::Cancelled;
  }
  if (!ValidTimeFields(hours, minutes)) return CountdownAnswer::Refused;
  const auto end = CDate(EndOfCountdownText(FieldValue(hours), FieldValue(minutes), now), now);
  if (!end) return CountdownAnswer::Refused;
  countdown.CountdownRunning = true;
  countdown.CountdownEnd = *end;
  return CountdownAnswer::Set;
}

QString CountdownAnswerText(CountdownAnswer answer) {
  switch (answer) {
    case CountdownAnswer::Set:
      return QCoreApplication::translate("Countdown", "minutky nastaveny");
    case CountdownAnswer::Cancelled:
      return QCoreApplication::translate("Countdown", "minutky zrušeny");
    case CountdownAnswer::Refused:
      break;
  }
  return QString();
}

QString CountdownLeftText(const Countdown& countdown, const Date& now) {
  const TimeLeft left = LeftOf(countdown, now);
  return TwoDigitText(left.hours) + u':' + TwoDigitText(left.minutes) + u':' + TwoDigitText(left.seconds);
}

QString CountdownLeftSentence(const Countdown& countdown, const Date& now) {
  const TimeLeft left = LeftOf(countdown, now);
  QString sentence;
  if (left.hours > 0) sentence += QString::number(left.hours) + QCoreApplication::translate("Countdown", " hodin ");
  if (left.minutes > 0) sentence += QString::number(left.minutes) + QCoreApplication::translate("Countdown", " minut ");
  if (left.seconds > 0)
    sentence += QString::number(left.seconds) + QCoreApplication::translate("Countdown", " sekund ");
  return sentence;
}

}  // namespace talnik
