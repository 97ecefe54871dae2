#include "recurrence/SpawnLedger.h"

#include "store/Store.h"

#include <algorithm>

namespace talnik {

// The ledger stands in temporary tables: they are gone when the file is opened anew, and go back with a transaction
// that is undone, which their mark then gives away.

std::optional<qint64> SpawnLedger::Version() {
  std::optional<qint64> version;
  store_.ForEachRow({u"PRAGMA data_version"_qs, {}}, [&version](const StoreRow& row) {
    version = row.Number(0);
    return true;
  });
  return version;
}

void SpawnLedger::BeginLook() {
  look_ = store_.MarkSeries();
}

bool SpawnLedger::IsUnwritten() {
  const auto written = store_.SeriesWrittenSince(look_);
  return version_ && Version() == version_ && written && written->isEmpty();
}

bool SpawnLedger::Read(const Date& now) {
  now_ = now;
  version_ = Version();
  if (!version_ || !ReadState()) return false;
  ReadSeries();
  return true;
}

bool SpawnLedger::ReadState() {
  std::optional<QSet<QString>> written;
  // Before the first rebuild there is no such table, and so nothing to be read.
  store_.ForEachRow({u"SELECT mark,moment FROM temp.spawn_state WHERE version=?"_qs, {*version_}},
                    [&](const StoreRow& row) {
                      const auto moment = row.Moment(1);
                      if (moment && *moment <= now_) written = store_.SeriesWrittenSince(row.Number(0));
                      return true;
                    });
  // A row without a guid is not to be found by it.
  if (!written || written->contains(QString())) return false;
  written_ = *written;
  return true;
}

void SpawnLedger::ReadSeries() {
  store_.ForEachRow({u"SELECT guid,first FROM temp.spawn_series"_qs, {}}, [this](const StoreRow& row) {
    const auto earlier = [first = row.Moment(1)](std::optional<Date>& noted) {
      if (first && (!noted || *first < *noted)) noted = first;
    };
    // Two roots may have one guid.
    earlier(firstDates_[row.Text(0)]);
    earlier(firstDate_);
    return true;
  });
}

bool SpawnLedger::HasMovedOn(const QString& guid) const {
  const auto found = firstDates_.constFind(guid);
  return found == firstDates_.constEnd() || (*found && **found < now_);
}

void SpawnLedger::Write(const std::vector<Line>& lines) {
  if (!version_) return;
  // No transaction: it would ask for the file, which may be one that can only be read. The state goes first and comes
  // last, so that half a ledger says nothing.
  const auto run = [this](const QString& sql, const QList<QVariant>& values = {}) {
    return store_.Execute({sql, values});
  };
  const auto write = [&run](const Line& line) {
    const QVariant first = line.firstDate ? QVariant(line.firstDate->Serial()) : QVariant();
    return run(u"INSERT INTO temp.spawn_series VALUES(?,?)"_qs, {line.guid, first});
  };
  const bool written =
      run(u"CREATE TEMP TABLE IF NOT EXISTS spawn_state(mark INTEGER,version INTEGER,moment REAL)"_qs) &&
      run(u"CREATE TEMP TABLE IF NOT EXISTS spawn_series(guid TEXT,first REAL)"_qs) &&
      run(u"DELETE FROM temp.spawn_state"_qs) && run(u"DELETE FROM temp.spawn_series"_qs) &&
      std::all_of(lines.begin(), lines.end(), write);
  if (!written) return;
  const QList<QVariant> state = {store_.MarkSeries(), *version_, now_.Serial()};
  run(u"INSERT INTO temp.spawn_state VALUES(?,?,?)"_qs, state);
}

}  // namespace talnik
