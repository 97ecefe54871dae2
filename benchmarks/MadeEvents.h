#pragma once

#include "store/CsvText.h"
#include "store/ScheduleRecord.h"

#include <QRandomGenerator>

#include <functional>

namespace talnik::bench {

inline const Date kFirstEventDay = *Date::FromParts(2019, 1, 1);

/// Gives so many events of an hour within ten years, one of five with an alarm, the same ones each time.
inline void ForEachEvent(int count, const std::function<void(const ScheduleRecord&)>& take) {
  constexpr int minutes = 3650 * 1440;
  QRandomGenerator random(7);
  for (int i = 0; i < count; ++i) {
    ScheduleRecord row;
    row.apptime = DateAdd(DateUnit::Minute, random.bounded(minutes), kFirstEventDay);
    row.appdur = DateAdd(DateUnit::Minute, 60, *row.apptime);
    row.appointment = QStringLiteral("Schůzka číslo ") + QString::number(i);
    row.alarm = random.bounded(5) == 0;
    if (row.alarm) row.alarmtime = DateAdd(DateUnit::Minute, -10, *row.apptime);
    take(row);
  }
}

/// The text of a file that is imported.
inline QString CsvOfEvents(int count) {
  QString text = CsvHeader() + QStringLiteral("\r\n");
  ForEachEvent(count, [&text](const ScheduleRecord& row) {
    AddCsvLine(text, row);
    text += QStringLiteral("\r\n");
  });
  return text;
}

}  // namespace talnik::bench
