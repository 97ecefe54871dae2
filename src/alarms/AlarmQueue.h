#pragma once

#include "dates/Date.h"
#include "platform/Clock.h"
#include "platform/TimeZone.h"
#include "store/ScheduleRecord.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace talnik {

class Recordset;
class Store;

/// What the alarms ask of the world and of higher rooms.
struct AlarmSurroundings {
  Store& store;
  Clock& clock;
  TimeZone& timeZone;
  QString recordFolder;
  /// Removes a series of which only the root and tombstones are left.
  std::function<void(const QString& guid)> deleteSeriesIfEmpty;
};

/// The alarms: the store is the queue, and one alarm of it is known, the next one.
class AlarmQueue {
 public:
  explicit AlarmQueue(AlarmSurroundings surroundings);

  /// Stands in NextAlarm when there is none: 31.12.3000.
  static Date NoAlarm();

  std::optional<Date> NextAlarm;  ///< nothing before the first RegisterAlarm
  QString NextAlarmText;
  QString NextAlarmSound;
  bool AlarmRung = false;  ///< the alarm in waiting has been given; set by the alarm box

  /// True when the alarm in waiting is to be given now. Where its moment still lies ahead, AlarmRung is cleared.
  /// The caller asks only while alarms are watched and no alarm box is open.
  bool Due();

  /// The text of NextAlarm; empty when there is nothing.
  QString NextAlarmTime() const;

  /// Chooses the next alarm anew. Where the store cannot be read, the old one stays.
  void RegisterAlarm();

  /// Marks the first alarm of this moment (and, unless `text` is empty, of this appointment) as fired. False when it
  /// is to be passed over without a box: the row of the moment carries no alarm any more. It is marked as fired then,
  /// and the next alarm is registered. True otherwise, also when there is no such row left: that alarm is still given.
  bool AlarmSetOff(const QString& text, const QString& timeText);

  /// The alarm box was closed and nothing was postponed: the next alarm is registered.
  void AlarmFinished();

  /// Deletes all that has its alarm at the moment of the alarm in waiting: single records are removed, occurrences
  /// become tombstones, roots stay.
  void DelAlarm();

  /// How far the event of the alarm in waiting lies from now: "Za 5 minut ", "Před 1 hodinou "; empty within the
  /// minute.
  QString AppTimeFromAlarm() const;

  /// Moves all records with the alarm in waiting: to the moment `hours` and `minutes` from now or, when `dateText` is
  /// not empty, to that moment. A text that is no date moves nothing.
  void ShiftAlarm(int hours, int minutes, const QString& dateText);

 private:
  Date Now() const { return Date::FromQDateTime(world_.clock.Now()); }
  void Await(const ScheduleRecord& row);
  void MarkFired(Recordset& rows);
  bool PassOver(Recordset& rows, const Date& moment);
  bool IsGiven(const ScheduleRecord& row) const;
  void RetryMarks();
  void MakeTombstone(Recordset& rows);
  void DeleteUnusedSound(const QString& wav);
  std::optional<Date> MomentOfShift(int hours, int minutes, const QString& dateText) const;

  AlarmSurroundings world_;
  bool isSetOff_ = false;  ///< the alarm in waiting has been marked as fired
  /// Alarms that were given but could not be marked so in the store: they do not ring again, and the mark is tried
  /// anew.
  std::vector<ScheduleRecord> given_;
};

}  // namespace talnik
