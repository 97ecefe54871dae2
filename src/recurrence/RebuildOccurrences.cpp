#include "recurrence/ExceptionDays.h"
#include "recurrence/SeriesRows.h"
#include "recurrence/SpawnLedger.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"
#include "store/WithoutIndexes.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

class Rebuild {
 public:
  Rebuild(Store& store, const SpawnTime& time) : store_(store), time_(time) {}

  /// Finds out what is to be written. `ledger` may be null: then every row is looked at.
  bool Look(const SpawnLedger* ledger);
  bool HasWrites() const { return writes_ > 0; }
  /// To be called within a transaction.
  bool Write();
  const std::vector<SpawnLedger::Line>& Lines() const { return lines_; }

 private:
  bool ReadRoots();
  bool ReadRows(const std::optional<QSet<QString>>& guids);
  bool ReadRowsWhere(const QString& condition, const QList<QVariant>& values);
  std::optional<QSet<QString>> GuidsToLookAt(const SpawnLedger& ledger) const;
  void Take(const StoreRow& row);

  bool ChangesMost() const;
  bool WriteAll();
  bool WriteSeries(const SeriesRows& series);
  bool Overwrite(const SeriesRows& series, const SeriesRows::Overwrite& row);
  const QString& UpdateSql(ColumnSet columns);
  bool Delete(qint64 key);

  Store& store_;
  const SpawnTime& time_;
  std::vector<SpawnLedger::Line> lines_;  ///< of all roots
  bool rowsBearTheirRoot_ = true;         ///< every row can be found by the guid of its root
  std::vector<SeriesRows> series_;
  QHash<QByteArray, std::vector<std::size_t>> byGuid_;  ///< places in series_
  const std::vector<std::size_t>* lastNamed_ = nullptr;
  std::vector<qint64> orphans_;
  std::size_t writes_ = 0;
  std::size_t indexedWrites_ = 0;  ///< those that change what the indexes hold
  QHash<unsigned, QString> updates_;
};

bool Rebuild::ReadRoots() {
  const auto exceptions = ExceptionDays::Read(store_);
  if (!exceptions) return false;
  return store_.ForEach(statements::RootsWithRule(), [&](const ScheduleRecord& root) {
    const auto series = SeriesOfRoot(root);
    if (!series || !HasRule(series->rule)) return true;
    bool addFirst = true;
    SpawnedRows rows(*series, addFirst, time_.now);
    if (time_.ids) rows.AddIdentities(*time_.ids, time_.biases);
    const auto first = std::min_element(rows.Dates().begin(), rows.Dates().end());
    lines_.push_back({root.guid, first == rows.Dates().end() ? std::nullopt : std::optional(*first)});
    // A root without a guid gives its rows a fresh one each time; one that is too long is cut.
    const QString guid = CutToSize(rows.At(Date()).guid, GuidSize);
    rowsBearTheirRoot_ = rowsBearTheirRoot_ && guid == root.guid;
    series_.emplace_back(std::move(rows), exceptions->OfSeries(guid));
    byGuid_[series_.back().Guid()].push_back(series_.size() - 1);
    return true;
  });
}

/// The guids of series that have been written to, or of which a date has passed, since the last rebuild. Nothing where
/// that is so many that one look at all rows is cheaper.
std::optional<QSet<QString>> Rebuild::GuidsToLookAt(const SpawnLedger& ledger) const {
  if (!rowsBearTheirRoot_) return {};
  QSet<QString> guids;
  QSet<QString> bases;
  for (const QString& guid : ledger.Written()) {
    // As it stands in the row that was written to, and as the rows of such a root bear it.
    guids << guid << CutToSize(guid, GuidSize);
    bases.insert(SeriesBase(guid));
  }
  for (const SpawnLedger::Line& line : lines_) {
    const auto names = [&line](const QString& base) { return NamesSeries(base, line.guid); };
    if (ledger.HasMovedOn(line.guid) || std::any_of(bases.begin(), bases.end(), names)) guids.insert(line.guid);
  }
  constexpr std::size_t few = 10;
  if (static_cast<std::size_t>(guids.size()) > few + lines_.size() / 2) return {};
  return guids;
}

bool Rebuild::ReadRows(const std::optional<QSet<QString>>& guids) {
  if (!guids) return ReadRowsWhere(QString(), {});
  return std::all_of(guids->begin(), guids->end(), [this](const QString& guid) {
    return ReadRowsWhere(u" AND guid=? COLLATE NOCASE AND guid=?"_qs, {guid, guid});
  });
}

bool Rebuild::ReadRowsWhere(const QString& condition, const QList<QVariant>& values) {
  QStringList columns(u"rowid"_qs);
  for (const char* name : kSpawnColumns) columns << QString::fromLatin1(name);
  const QString sql = u"SELECT "_qs + columns.join(u',') + u" FROM schedule WHERE status=1"_qs + condition;
  return store_.ForEachRow({sql, values}, [this](const StoreRow& row) {
    Take(row);
    return true;
  });
}

void Rebuild::Take(const StoreRow& row) {
  const qint64 key = row.Number(0);
  const auto start = row.Moment(PlaceOf(Apptime));
  const QUtf8StringView guid = row.Utf8(PlaceOf(Guid));
  if (!lastNamed_ || !series_[lastNamed_->front()].IsNamed(guid)) {
    const auto found = byGuid_.constFind(QByteArray::fromRawData(guid.data(), guid.size()));
    lastNamed_ = found == byGuid_.constEnd() ? nullptr : &*found;
  }
  if (!start || !lastNamed_) return orphans_.push_back(key);
  // Two roots of one guid are not ours to judge: a row belongs to the one that would have written it.
  for (const std::size_t place : *lastNamed_) {
    const ColumnSet differs = series_[place].Differences(row, *start);
    if (differs.IsEmpty() || place == lastNamed_->back()) return series_[place].Found({*start, key, differs});
  }
}

const QString& Rebuild::UpdateSql(ColumnSet columns) {
  QString& sql = updates_[columns.Bits()];
  if (!sql.isEmpty()) return sql;
  QStringList assignments;
  for (std::size_t column = 0; column < kSpawnColumns.size(); ++column) {
    if (columns.Has(static_cast<int>(column))) assignments << QString::fromLatin1(kSpawnColumns.at(column)) + u"=?"_qs;
  }
  sql = u"UPDATE schedule SET "_qs + assignments.join(u',') + u" WHERE rowid=?"_qs;
  return sql;
}

QVariant ValueOf(const ScheduleRecord& record, SpawnColumn column) {
  const auto moment = [](const std::optional<Date>& date) { return date ? QVariant(date->Serial()) : QVariant(); };
  switch (column) {
    case Apptime:
      return moment(record.apptime);
    case Appdur:
      return moment(record.appdur);
    case Alarmtime:
      return moment(record.alarmtime);
    case Reftime:
      return moment(record.reftime);
    case Appointment:
      return CutToSize(record.appointment, AppointmentSize);
    case Recur:
      return CutToSize(record.recur, RecurSize);
    case Alarm:
      return record.alarm;
    case Alarmfired:
      return record.alarmfired;
    case Guid:
      return CutToSize(record.guid, GuidSize);
    case Wav:
    case Spawntime:
      break;
  }
  return QVariant();
}

bool Rebuild::Overwrite(const SeriesRows& series, const SeriesRows::Overwrite& row) {
  const ScheduleRecord record = series.Rows().At(row.date);
  Statement update{UpdateSql(row.columns), {}};
  for (int column = Apptime; column <= Guid; ++column) {
    if (row.columns.Has(column)) update.values << ValueOf(record, static_cast<SpawnColumn>(column));
  }
  update.values << row.key;
  return store_.Execute(update);
}

bool Rebuild::Delete(qint64 key) {
  return store_.Execute({u"DELETE FROM schedule WHERE rowid=?"_qs, {key}});
}

bool Rebuild::WriteSeries(const SeriesRows& series) {
  const auto all = [](const auto& rows, const auto& write) { return std::all_of(rows.begin(), rows.end(), write); };
  return all(series.Overwrites(), [&](const auto& row) { return Overwrite(series, row); }) &&
         all(series.Surplus(), [&](qint64 key) { return Delete(key); }) &&
         all(series.Missing(), [&](const Date& date) { return store_.Insert(series.Rows().At(date)); });
}

bool Rebuild::WriteAll() {
  return std::all_of(orphans_.begin(), orphans_.end(), [this](qint64 key) { return Delete(key); }) &&
         std::all_of(series_.begin(), series_.end(), [this](const SeriesRows& series) { return WriteSeries(series); });
}

/// From here on it is cheaper to make the indexes anew than to keep them at every write.
bool Rebuild::ChangesMost() const {
  constexpr std::size_t few = 5000;
  if (indexedWrites_ < few) return false;
  const auto rows = store_.Number(statements::CountAll());
  return rows && indexedWrites_ >= static_cast<std::size_t>(*rows) / 3;
}

bool Rebuild::Write() {
  const auto write = [this] { return WriteAll(); };
  return ChangesMost() ? WithoutIndexes(store_, write) : write();
}

bool Rebuild::Look(const SpawnLedger* ledger) {
  if (!ReadRoots()) return false;
  const auto guids = ledger ? GuidsToLookAt(*ledger) : std::nullopt;
  if (!ReadRows(guids)) return false;
  writes_ = indexedWrites_ = orphans_.size();
  for (std::size_t place = 0; place < series_.size(); ++place) {
    if (guids && !guids->contains(lines_[place].guid)) continue;
    series_[place].Compare();
    writes_ += series_[place].Writes();
    indexedWrites_ += series_[place].IndexedWrites();
  }
  return true;
}

}  // namespace

bool RebuildOccurrences(Store& store, const SpawnTime& time) {
  SpawnLedger ledger(store);
  const bool isKnown = ledger.Read(time.now);
  // A synchronisation wants the identities, which only the rules can tell.
  if (isKnown && ledger.NothingToDo() && !time.ids) return true;
  ledger.BeginLook();
  std::optional<Rebuild> rebuild(std::in_place, store, time);
  if (!rebuild->Look(isKnown ? &ledger : nullptr)) return false;
  const auto write = [&] {
    // Until now the file was free to others, and what they have written would be overwritten.
    if (ledger.IsUnwritten()) return rebuild->Write();
    ledger.Read(time.now);
    rebuild.emplace(store, time);
    return rebuild->Look(nullptr) && rebuild->Write();
  };
  if (rebuild->HasWrites() && !store.InTransaction(write)) return false;
  ledger.Write(rebuild->Lines());
  return true;
}

}  // namespace talnik
