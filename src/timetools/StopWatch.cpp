#include "timetools/StopWatch.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace talnik {
namespace {

/// A length of time, whose time of day is shown. A clock that was set back has measured nothing.
Date LengthOfTime(std::int64_t seconds) {
  return Date::FromSeconds(std::max<std::int64_t>(seconds, 0)).value_or(Date());
}

QString TwoDigitsOf(int number) {
  return QString::number(number).rightJustified(2, u'0');
}

}  // namespace

QString StripLeadingZero(const QString& text) {
  const QString trimmed = text.trimmed();
  return trimmed.startsWith(u'0') ? trimmed.right(1) : trimmed;
}

QString StopWatchText(const StopWatchFields& fields) {
  const std::array<QString, 3> words{QCoreApplication::translate("StopWatch", " hodin "),
                                     QCoreApplication::translate("StopWatch", " minut "),
                                     QCoreApplication::translate("StopWatch", " sekund ")};
  QString text;
  for (std::size_t i = 0; i < words.size(); ++i)
    if (fields.at(i) != u"00") text += StripLeadingZero(fields.at(i)) + words.at(i);
  return text + fields[3].trimmed() + QCoreApplication::translate("StopWatch", " milisekund ");
}

QString JoinedFields(const StopWatchFields& fields) {
  return QStringList(fields.begin(), fields.end()).join(u':');
}

QString LapFileText(const QList<Lap>& laps, const StopWatchFields& fields) {
  QString text = u"Pořadí\tMezičas\tRozdílový mezičas\r\n"_qs;
  for (const Lap& lap : laps)
    text += QString::number(lap.LapIndex) + u'\t' + TimeText(lap.LapTime) + u'\t' + TimeText(lap.LapDelta) + u"\r\n";
  return text + u"Koncový čas " + JoinedFields(fields);
}

StopWatch::StopWatch() {
  ShowZero();
}

std::int64_t StopWatch::Elapsed(const Date& now) const {
  return now.Seconds() - startTime_.Seconds();
}

void StopWatch::ShowZero() {
  Fields = {u"00"_qs, u"00"_qs, u"00"_qs, u"0"_qs};
}

void StopWatch::StartOrStop(const Date& now) {
  if (WatchState == Running) {
    stopTime_ = now;
    WatchState = Stopped;
    return;
  }
  const bool fromZero = WatchState == New || std::exchange(resetPending_, false);
  if (fromZero) {
    startTime_ = now;
  } else {
    const std::int64_t pause = std::max<std::int64_t>(now.Seconds() - stopTime_.Seconds(), 0);
    startTime_ = Date::FromSeconds(startTime_.Seconds() + pause).value_or(now);
  }
  resetPending_ = false;
  Laps.clear();
  WatchState = Running;
}

bool StopWatch::Tick(const Date& now) {
  const Date elapsed = LengthOfTime(Elapsed(now));
  const bool secondChanged = elapsed.Second() != std::exchange(lastSecond_, elapsed.Second());
  tickCount_ = secondChanged ? 0 : tickCount_ + 1;
  Fields = {TwoDigitsOf(elapsed.Hour()), TwoDigitsOf(elapsed.Minute()), TwoDigitsOf(elapsed.Second()),
            QString::number(tickCount_)};
  return secondChanged;
}

void StopWatch::Reset(const Date& now) {
  startTime_ = now;
  lastSecond_ = 0;
  tickCount_ = 0;
  ShowZero();
  // While it runs the count has begun again already, and a later stop must keep it.
  resetPending_ = WatchState != Running;
}

void StopWatch::AddLap(const Date& now) {
  Lap lap;
  lap.LapIndex = static_cast<int>(Laps.size()) + 1;
  lap.LapTime = LengthOfTime(Elapsed(now));
  if (!Laps.isEmpty()) lap.LapDelta = LengthOfTime(lap.LapTime.Seconds() - Laps.last().LapTime.Seconds());
  Laps << lap;
}

}  // namespace talnik
