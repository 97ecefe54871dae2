#pragma once

#include "alarms/AlarmQueue.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"
#include "timetools/TimeWorld.h"

#include <QTemporaryDir>

namespace talnik::test {

inline Date At(const char* text) {
  return CDate(QString::fromUtf8(text), Date()).value();
}

/// The queue over a real store, at 8:30 of 15 January 2024.
class AlarmWorld : public testing::Test, protected TimeWorld {
 protected:
  AlarmWorld() { EXPECT_TRUE(CreateStore(store.Path())); }

  ScheduleRecord Row(const char* text, const char* start, const char* alarm) {
    ScheduleRecord row;
    row.appointment = QString::fromUtf8(text);
    row.apptime = At(start);
    row.appdur = row.apptime;
    row.status = StatusSingle;
    row.guid = u"guid of "_qs + row.appointment;
    row.alarmtime = At(alarm);
    row.alarm = true;
    return row;
  }
  void Add(const char* text, const char* start, const char* alarm) { store.Insert(Row(text, start, alarm)); }

  ScheduleRecord Find(const char* text) {
    ScheduleRecord found;
    store.ForEach(statements::All(), [&](const ScheduleRecord& row) {
      const bool is = row.appointment == QString::fromUtf8(text);
      if (is) found = row;
      return !is;
    });
    return found;
  }
  qint64 Count() { return store.Number(statements::CountAll()).value_or(-1); }

  void SetClock(const char* text) { world.clock.Moment = At(text).ToQDateTime(); }

  /// What the main timer does once a second. The text of the alarm that was given, "-" when none is due.
  std::string Tick() {
    if (!queue.Due() || !queue.AlarmSetOff(QString(), queue.NextAlarmTime())) return "-";
    queue.AlarmRung = true;
    const std::string given = queue.NextAlarmText.toStdString();
    queue.AlarmFinished();
    return given;
  }

  /// The texts of so many ticks, one after the other.
  std::string Ticks(int count) {
    std::string given;
    for (int i = 0; i < count; ++i) given += (i > 0 ? " " : "") + Tick();
    return given;
  }

  QTemporaryDir folder;
  Store store{folder.filePath(u"talnik.MDB"_qs)};
  QStringList emptied;  ///< the series that were to be removed if empty
  AlarmQueue queue{
      {store, world.clock, world.timeZone, folder.path(), [this](const QString& guid) { emptied << guid; }}};
};

}  // namespace talnik::test
