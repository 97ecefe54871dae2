#pragma once

#include "dates/Date.h"

#include <QString>

#include <optional>

namespace talnik {

enum ScheduleStatus {
  StatusSingle = 0,
  StatusOccurrence = 1,  ///< spawned from a series
  StatusChanged = 2,     ///< an occurrence changed by itself
  StatusDeleted = 8,     ///< the tombstone of an occurrence deleted by itself
  StatusRoot = 9         ///< holds the rule of a series; never an event of a day
};

/// One row of the table `schedule`. What has no value in the row is nothing here.
struct ScheduleRecord {
  std::optional<Date> apptime;  ///< start; at midnight a day without a time
  QString appointment;          ///< the text
  std::optional<Date> appdur;   ///< the END of the appointment
  QString wav;                  ///< voice note: a name in the Record folder or a full path
  bool alarm = false;           ///< carries an alarm that has not gone off
  std::optional<Date> alarmtime;
  bool alarmfired = false;
  std::optional<int> status;
  QString guid;
  QString recur;                  ///< rule text, empty on a single record
  std::optional<Date> reftime;    ///< the start that the rule gave the row
  std::optional<Date> spawntime;  ///< root: the date up to which occurrences have been spawned

  bool operator==(const ScheduleRecord&) const = default;
};

/// The declared sizes of the text columns.
inline constexpr qsizetype AppointmentSize = 255;
inline constexpr qsizetype WavSize = 255;
inline constexpr qsizetype RecurSize = 250;
inline constexpr qsizetype GuidSize = 250;

}  // namespace talnik
