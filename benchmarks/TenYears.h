#pragma once

#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"
#include "store/Text.h"

#include <QFile>
#include <QRandomGenerator>

namespace talnik::bench {

inline constexpr int kDays = 3650;
inline const Date kFirstDay = *Date::FromParts(2019, 1, 1);

/// The days on which events begin, and when the alarms before it have gone off.
struct Span {
  Date first = kFirstDay;
  int days = kDays;
  Date now = *Date::FromParts(2028, 11, 1);
};

/// Seconds: nine of ten end within six hours, the longest last three years.
inline std::int64_t RandomDuration(QRandomGenerator& random) {
  constexpr std::int64_t day = 86400;
  const int kind = static_cast<int>(random.bounded(1000));
  const std::int64_t longest = kind < 900   ? day / 4
                               : kind < 970 ? 8 * day
                               : kind < 990 ? 64 * day
                               : kind < 999 ? 512 * day
                                            : 1095 * day;
  return random.bounded(static_cast<quint32>(longest));
}

/// Some event of ten years, or of another span.
inline ScheduleRecord RandomRow(QRandomGenerator& random, const Span& span = {}) {
  ScheduleRecord row;
  row.apptime = DateAdd(DateUnit::Minute, random.bounded(span.days * 1440), span.first);
  row.appdur = DateAdd(DateUnit::Second, RandomDuration(random), *row.apptime);
  row.appointment = QStringLiteral("Schůzka číslo ") + QString::number(random.generate());
  row.status = static_cast<int>(random.bounded(10U)) == 0 ? StatusOccurrence : StatusSingle;
  row.guid = NewGuidText();
  if (random.bounded(5U) == 0) {
    row.alarmtime = DateAdd(DateUnit::Minute, -10, *row.apptime);
    row.alarmfired = row.apptime < span.now;
    row.alarm = !row.alarmfired;
  }
  return row;
}

/// Makes a store of so many rows of ten years at `path`, or of another span, the same ones each time. False if it
/// cannot be written.
inline bool MakeTenYears(const QString& path, int rows, const Span& span = {}) {
  QFile::remove(path);
  CreateStore(path);
  Store store(path);
  QRandomGenerator random(7);
  return store.InTransaction([&] {
    for (int i = 0; i < rows; ++i) {
      if (!store.Insert(RandomRow(random, span))) return false;
    }
    return true;
  });
}

inline Date RandomDay(QRandomGenerator& random, const Span& span = {}) {
  return *DateAdd(DateUnit::Day, random.bounded(span.days), span.first);
}

/// What one move in the month list to `day` asks of the store: the count of the day's tasks.
inline qint64 MoveTo(const Date& day, Store& store) {
  store.ForEach(statements::RootsWithSpawnTime(), [](const ScheduleRecord&) { return true; });
  return store.Number(statements::CountAll()).value_or(0) + store.Number(statements::CountOfDay(day)).value_or(0);
}

}  // namespace talnik::bench
