#include "recurrence/ExceptionDays.h"
#include "recurrence/SpawnedRows.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>

namespace talnik {

namespace {

/// The columns that a spawned row can differ in, in the order in which they are read behind the key of the row.
enum Column { Apptime, Appdur, Alarmtime, Reftime, Appointment, Recur, Wav, Spawntime, Alarm, Alarmfired, Guid };
constexpr std::array<const char*, 11> kNames = {"apptime",     "appdur",     "alarmtime", "reftime",
                                                "appointment", "recur",      "wav",       "spawntime",
                                                "alarm",       "alarmfired", "guid"};

class ColumnSet {
 public:
  bool Has(Column column) const { return ((bits_ >> column) & 1U) != 0; }
  bool IsEmpty() const { return bits_ == 0; }
  unsigned Bits() const { return bits_; }
  ColumnSet& Add(Column column, bool add = true) {
    bits_ |= (add ? 1U : 0U) << column;
    return *this;
  }

 private:
  unsigned bits_ = 0;
};

/// A row that is there.
struct Existing {
  Date apptime;
  qint64 key;
  ColumnSet differs;  ///< from what its series would write at its start
};

/// A row that is there and is to become the row of another date, or to have some columns mended.
struct Overwrite {
  qint64 key;
  Date date;
  ColumnSet columns;
};

/// What one root yields and what is there of it.
class SeriesRows {
 public:
  SeriesRows(SpawnedRows rows, std::vector<Date> wanted);

  bool IsNamed(QUtf8StringView guid) const { return guid_ == guid; }
  const QByteArray& Guid() const { return guid_; }
  /// The columns in which a row of this guid that starts at `start` differs from the series' own.
  ColumnSet Differences(const StoreRow& row, const Date& start) const;
  void Found(const Existing& row) { existing_.push_back(row); }

  /// Finds out what is to be written. Rows that come out the same are left alone; others are made into those that are
  /// missing, as far as they go.
  void Compare();
  bool IsSame() const { return overwrites_.empty() && surplus_.empty() && missing_.empty(); }

  const SpawnedRows& Rows() const { return rows_; }
  const std::vector<Overwrite>& Overwrites() const { return overwrites_; }
  const std::vector<qint64>& Surplus() const { return surplus_; }
  const std::vector<Date>& Missing() const { return missing_; }

 private:
  void Match(std::vector<Existing>& unmatched);

  SpawnedRows rows_;
  QByteArray guid_, appointment_, recur_;  ///< as they stand in the store
  std::vector<Date> wanted_;
  std::vector<Existing> existing_;
  std::vector<Overwrite> overwrites_;
  std::vector<qint64> surplus_;
  std::vector<Date> missing_;
};

SeriesRows::SeriesRows(SpawnedRows rows, std::vector<Date> wanted)
    : rows_(std::move(rows)), wanted_(std::move(wanted)) {
  const ScheduleRecord row = rows_.At(Date());
  guid_ = CutToSize(row.guid, GuidSize).toUtf8();
  appointment_ = CutToSize(row.appointment, AppointmentSize).toUtf8();
  recur_ = CutToSize(row.recur, RecurSize).toUtf8();
  // Only an ordinal rule with interval 0 walks out of order.
  if (!std::is_sorted(wanted_.begin(), wanted_.end())) std::sort(wanted_.begin(), wanted_.end());
}

ColumnSet SeriesRows::Differences(const StoreRow& row, const Date& start) const {
  const auto at = [](Column column) { return column + 1; };
  ColumnSet differs;
  differs.Add(Appdur, row.Moment(at(Appdur)) != rows_.EndAt(start))
      .Add(Alarmtime, row.Moment(at(Alarmtime)) != rows_.AlarmAt(start))
      .Add(Reftime, row.Moment(at(Reftime)) != start)
      .Add(Appointment, row.Utf8(at(Appointment)) != QUtf8StringView(appointment_))
      .Add(Recur, row.Utf8(at(Recur)) != QUtf8StringView(recur_))
      .Add(Wav, !row.IsNull(at(Wav)))
      .Add(Spawntime, !row.IsNull(at(Spawntime)))
      .Add(Alarm, (row.Number(at(Alarm)) != 0) != rows_.HasAlarm())
      .Add(Alarmfired, row.Number(at(Alarmfired)) != 0);
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

class Rebuild {
 public:
  Rebuild(Store& store, const SpawnTime& time) : store_(store), time_(time) {}

  bool Run();

 private:
  bool ReadRoots();
  bool ReadRows();
  void Take(const StoreRow& row);
  bool Write();
  bool WriteSeries(const SeriesRows& series);
  bool Overwritten(const SeriesRows& series, const Overwrite& row);
  const QString& UpdateSql(ColumnSet columns);
  bool Delete(qint64 key);

  Store& store_;
  const SpawnTime& time_;
  std::vector<SeriesRows> series_;
  QHash<QByteArray, std::vector<std::size_t>> byGuid_;
  const std::vector<std::size_t>* lastNamed_ = nullptr;
  std::vector<qint64> orphans_;
  QHash<unsigned, QString> updates_;
};

std::vector<Date> WithoutDays(const std::vector<Date>& dates, const std::vector<std::int64_t>& days) {
  std::vector<Date> free;
  free.reserve(dates.size());
  std::copy_if(dates.begin(), dates.end(), std::back_inserter(free), [&days](const Date& date) {
    return days.empty() || !std::binary_search(days.begin(), days.end(), SerialDay(date));
  });
  return free;
}

bool Rebuild::ReadRoots() {
  const auto exceptions = ExceptionDays::Read(store_);
  if (!exceptions) return false;
  return store_.ForEach(statements::RootsWithRule(), [&](const ScheduleRecord& root) {
    const auto series = SeriesOfRoot(root);
    if (!series || !HasRule(series->rule)) return true;
    bool addFirst = true;
    SpawnedRows rows(*series, addFirst, time_.now);
    if (time_.ids) rows.AddIdentities(*time_.ids, time_.biases);
    std::vector<Date> wanted = WithoutDays(rows.Dates(), exceptions->OfSeries(root.guid));
    series_.emplace_back(std::move(rows), std::move(wanted));
    byGuid_[series_.back().Guid()].push_back(series_.size() - 1);
    return true;
  });
}

void Rebuild::Take(const StoreRow& row) {
  const qint64 key = row.Number(0);
  const auto start = row.Moment(1 + Apptime);
  const QUtf8StringView guid = row.Utf8(1 + Guid);
  if (!lastNamed_ || !series_[lastNamed_->front()].IsNamed(guid)) {
    const auto found = byGuid_.constFind(QByteArray::fromRawData(guid.data(), guid.size()));
    lastNamed_ = found == byGuid_.constEnd() ? nullptr : &*found;
  }
  if (!start || !lastNamed_) return orphans_.push_back(key);
  // Two roots of one guid are not ours to judge: a row belongs to the one that would have written it.
  for (const std::size_t index : *lastNamed_) {
    const ColumnSet differs = series_[index].Differences(row, *start);
    if (differs.IsEmpty() || index == lastNamed_->back()) return series_[index].Found({*start, key, differs});
  }
}

bool Rebuild::ReadRows() {
  QStringList columns(u"rowid"_qs);
  for (const char* name : kNames) columns << QString::fromLatin1(name);
  const Statement rows{u"SELECT "_qs + columns.join(u',') + u" FROM schedule WHERE status=1"_qs, {}};
  return store_.ForEachRow(rows, [this](const StoreRow& row) {
    Take(row);
    return true;
  });
}

const QString& Rebuild::UpdateSql(ColumnSet columns) {
  QString& sql = updates_[columns.Bits()];
  if (!sql.isEmpty()) return sql;
  QStringList assignments;
  for (int column = Apptime; column <= Guid; ++column) {
    if (columns.Has(static_cast<Column>(column))) {
      assignments << QString::fromLatin1(kNames[static_cast<std::size_t>(column)]) + u"=?"_qs;
    }
  }
  sql = u"UPDATE schedule SET "_qs + assignments.join(u',') + u" WHERE rowid=?"_qs;
  return sql;
}

QVariant Bound(const std::optional<Date>& moment) {
  return moment ? QVariant(moment->Serial()) : QVariant();
}

bool Rebuild::Overwritten(const SeriesRows& series, const Overwrite& row) {
  const ScheduleRecord record = series.Rows().At(row.date);
  const auto value = [&record](Column column) {
    switch (column) {
      case Apptime:
        return Bound(record.apptime);
      case Appdur:
        return Bound(record.appdur);
      case Alarmtime:
        return Bound(record.alarmtime);
      case Reftime:
        return Bound(record.reftime);
      case Appointment:
        return QVariant(CutToSize(record.appointment, AppointmentSize));
      case Recur:
        return QVariant(CutToSize(record.recur, RecurSize));
      case Alarm:
        return QVariant(record.alarm);
      case Alarmfired:
        return QVariant(false);
      case Guid:
        return QVariant(CutToSize(record.guid, GuidSize));
      case Wav:
      case Spawntime:
        break;
    }
    return QVariant();
  };
  Statement update{UpdateSql(row.columns), {}};
  for (int column = Apptime; column <= Guid; ++column) {
    if (row.columns.Has(static_cast<Column>(column))) update.values << value(static_cast<Column>(column));
  }
  update.values << row.key;
  return store_.Execute(update);
}

bool Rebuild::Delete(qint64 key) {
  return store_.Execute({u"DELETE FROM schedule WHERE rowid=?"_qs, {key}});
}

bool Rebuild::WriteSeries(const SeriesRows& series) {
  const auto overwrite = [&](const Overwrite& row) { return Overwritten(series, row); };
  const auto remove = [&](qint64 key) { return Delete(key); };
  const auto insert = [&](const Date& date) { return store_.Insert(series.Rows().At(date)); };
  const auto& overwrites = series.Overwrites();
  const auto& surplus = series.Surplus();
  const auto& missing = series.Missing();
  return std::all_of(overwrites.begin(), overwrites.end(), overwrite) &&
         std::all_of(surplus.begin(), surplus.end(), remove) && std::all_of(missing.begin(), missing.end(), insert);
}

bool Rebuild::Write() {
  return std::all_of(orphans_.begin(), orphans_.end(), [this](qint64 key) { return Delete(key); }) &&
         std::all_of(series_.begin(), series_.end(), [this](const SeriesRows& series) { return WriteSeries(series); });
}

bool Rebuild::Run() {
  if (!ReadRoots() || !ReadRows()) return false;
  bool same = orphans_.empty();
  for (SeriesRows& series : series_) {
    series.Compare();
    same = same && series.IsSame();
  }
  return same || store_.InTransaction([this] { return Write(); });
}

}  // namespace

bool RebuildOccurrences(Store& store, const SpawnTime& time) {
  return Rebuild(store, time).Run();
}

}  // namespace talnik
