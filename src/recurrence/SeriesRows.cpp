#include "recurrence/SeriesRows.h"

#include "recurrence/ExceptionDays.h"
#include "store/Text.h"

#include <algorithm>
#include <iterator>

namespace talnik {

namespace {

const ColumnSet kIndexed = ColumnSet().Add(Apptime).Add(Appdur).Add(Alarmtime).Add(Alarm).Add(Alarmfired);

}  // namespace

SeriesRows::SeriesRows(SpawnedRows rows, const std::vector<std::int64_t>& held) : rows_(std::move(rows)) {
  const ScheduleRecord row = rows_.At(Date());
  guid_ = CutToSize(row.guid, GuidSize).toUtf8();
  appointment_ = CutToSize(row.appointment, AppointmentSize).toUtf8();
  recur_ = CutToSize(row.recur, RecurSize).toUtf8();
  wanted_.reserve(rows_.Dates().size());
  std::copy_if(rows_.Dates().begin(), rows_.Dates().end(), std::back_inserter(wanted_), [&held](const Date& date) {
    return held.empty() || !std::binary_search(held.begin(), held.end(), SerialDay(date));
  });
  // Only an ordinal rule with interval 0 walks out of order.
  if (!std::is_sorted(wanted_.begin(), wanted_.end())) std::sort(wanted_.begin(), wanted_.end());
}

ColumnSet SeriesRows::Differences(const StoreRow& row, const Date& start) const {
  ColumnSet differs;
  differs.Add(Appdur, row.Moment(PlaceOf(Appdur)) != rows_.EndAt(start))
      .Add(Alarmtime, row.Moment(PlaceOf(Alarmtime)) != rows_.AlarmAt(start))
      .Add(Reftime, row.Moment(PlaceOf(Reftime)) != start)
      .Add(Appointment, row.Utf8(PlaceOf(Appointment)) != QUtf8StringView(appointment_))
      .Add(Recur, row.Utf8(PlaceOf(Recur)) != QUtf8StringView(recur_))
      .Add(Wav, !row.IsNull(PlaceOf(Wav)))
      .Add(Spawntime, !row.IsNull(PlaceOf(Spawntime)))
      .Add(Alarm, (row.Number(PlaceOf(Alarm)) != 0) != rows_.HasAlarm())
      .Add(Alarmfired, row.Number(PlaceOf(Alarmfired)) != 0);
  return differs;
}

void SeriesRows::Match(std::vector<Existing>& unmatched) {
  const auto byStart = [](const Existing& a, const Existing& b) { return a.apptime < b.apptime; };
  if (!std::is_sorted(existing_.begin(), existing_.end(), byStart)) {
    std::stable_sort(existing_.begin(), existing_.end(), byStart);
  }
  auto row = existing_.begin();
  auto date = wanted_.begin();
  while (row != existing_.end() && date != wanted_.end()) {
    if (row->apptime < *date) {
      unmatched.push_back(*row++);
    } else if (*date < row->apptime) {
      missing_.push_back(*date++);
    } else {
      if (!row->differs.IsEmpty()) overwrites_.push_back({row->key, *date, row->differs});
      ++row;
      ++date;
    }
  }
  unmatched.insert(unmatched.end(), row, existing_.end());
  missing_.insert(missing_.end(), date, wanted_.end());
}

void SeriesRows::Compare() {
  std::vector<Existing> unmatched;
  Match(unmatched);
  const std::size_t reused = std::min(unmatched.size(), missing_.size());
  for (std::size_t i = 0; i < reused; ++i) {
    ColumnSet columns = unmatched[i].differs;
    columns.Add(Apptime).Add(Appdur).Add(Reftime).Add(Alarmtime, rows_.HasAlarm());
    overwrites_.push_back({unmatched[i].key, missing_[i], columns});
  }
  for (std::size_t i = reused; i < unmatched.size(); ++i) surplus_.push_back(unmatched[i].key);
  missing_.erase(missing_.begin(), missing_.begin() + static_cast<std::ptrdiff_t>(reused));
}

std::size_t SeriesRows::IndexedWrites() const {
  const auto touches = [](const Overwrite& row) { return row.columns.HasAny(kIndexed); };
  const auto overwrites = std::count_if(overwrites_.begin(), overwrites_.end(), touches);
  return static_cast<std::size_t>(overwrites) + surplus_.size() + missing_.size();
}

}  // namespace talnik
