#pragma once

#include "recurrence/RecurrPopulate.h"

namespace talnik {

/// What one call of the spawner writes: rows that follow from their dates.
class SpawnedRows {
 public:
  /// Walks the rule. `addFirst` as in RecurrPopulate.
  SpawnedRows(const SpawnSeries& series, bool& addFirst, const Date& now);

  /// The date of the series' own row first, when it gets one.
  const std::vector<Date>& Dates() const { return dates_; }
  ScheduleRecord At(const Date& date) const;
  std::optional<Date> EndAt(const Date& date) const { return Date::FromSeconds(date.Seconds() + duration_); }
  std::optional<Date> AlarmAt(const Date& date) const;
  bool HasAlarm() const { return alarmOffset_.has_value(); }
  /// Adds what exceptions of these rows would be called. The series' own row is not named.
  void AddIdentities(SyncIdList& ids, const ZoneBiases& biases) const;

 private:
  void Walk(const SpawnSeries& series, bool& addFirst, const Date& now);

  QString title_;
  QString id_;
  QString recur_;
  std::int64_t duration_ = 0;  ///< seconds from start to end
  std::optional<std::int64_t> alarmOffset_;
  std::vector<Date> dates_;
  bool hasOwnRow_ = false;
};

/// A root as the spawner is given it; nothing without a start.
std::optional<SpawnSeries> SeriesOfRoot(const ScheduleRecord& root);

/// A rule of blanks alone is none.
bool HasRule(const QString& rule);

}  // namespace talnik
