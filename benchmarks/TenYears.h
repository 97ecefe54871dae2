#pragma once

#include "store/Store.h"
#include "store/Template.h"
#include "store/Text.h"

#include <QFile>
#include <QRandomGenerator>

namespace talnik::bench {

inline constexpr int kDays = 3650;
inline const Date kFirstDay = *Date::FromParts(2019, 1, 1);

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

/// Some event of ten years.
inline ScheduleRecord RandomRow(QRandomGenerator& random) {
  ScheduleRecord row;
  row.apptime = DateAdd(DateUnit::Minute, random.bounded(kDays * 1440), kFirstDay);
  row.appdur = DateAdd(DateUnit::Second, RandomDuration(random), *row.apptime);
  row.appointment = QStringLiteral("Schůzka číslo ") + QString::number(random.generate());
  row.status = static_cast<int>(random.bounded(10U)) == 0 ? StatusOccurrence : StatusSingle;
  row.guid = NewGuidText();
  if (random.bounded(5U) == 0) {
    row.alarmtime = DateAdd(DateUnit::Minute, -10, *row.apptime);
    row.alarmfired = row.apptime < *Date::FromParts(2028, 11, 1);
    row.alarm = !row.alarmfired;
  }
  return row;
}

/// Makes a store of so many rows of ten years at `path`, the same ones each time. False if it cannot be written.
inline bool MakeTenYears(const QString& path, int rows) {
  QFile::remove(path);
  CreateStore(path);
  Store store(path);
  QRandomGenerator random(7);
  return store.InTransaction([&] {
    for (int i = 0; i < rows; ++i) {
      if (!store.Insert(RandomRow(random))) return false;
    }
    return true;
  });
}

}  // namespace talnik::bench
