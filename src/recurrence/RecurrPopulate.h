#pragma once

#include "dates/Date.h"
#include "platform/TimeZone.h"
#include "store/ScheduleRecord.h"

#include <QSet>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace talnik {

class Store;

/// The ids named during one synchronisation.
class SyncIdList {
 public:
  void AddSyncId(const QString& id) { ids_.insert(id); }
  bool Contains(const QString& id) const { return ids_.contains(id); }
  const QSet<QString>& Ids() const { return ids_; }
  void Clear() { ids_.clear(); }

 private:
  QSet<QString> ids_;
};

/// The events of series, carried through a rebuild or a change of rule.
class RecurEvent {
 public:
  struct Event {
    QString title;
    Date start;
    Date end;
    std::optional<Date> alarm = {};
    QString rule;
    QString id;
    std::optional<Date> exceptionTime = {};
  };

  void SaveEvent(Event event) { events_.push_back(std::move(event)); }
  qsizetype GetSize() const { return static_cast<qsizetype>(events_.size()); }
  const Event& Get(qsizetype index) const { return events_.at(static_cast<std::size_t>(index)); }

 private:
  std::vector<Event> events_;
};

/// What spawning depends on besides the series.
struct SpawnTime {
  Date now = {};
  ZoneBiases biases = {};
  SyncIdList* ids = nullptr;  ///< receives the identities of what is spawned; only a synchronisation has one
};

/// A series as the spawner is given it.
struct SpawnSeries {
  QString title = {};
  Date start = {};
  std::optional<Date> end = {};    ///< of the first date; nothing means that it ends when it starts
  std::optional<Date> alarm = {};  ///< of the first date; nothing means no alarm on any row
  QString rule = {};
  std::optional<Date> spawnTime = {};  ///< the date from which ExtendSeries goes on
  QString id = {};                     ///< empty: a fresh one is made for the rows of this call
};

/// Takes a spawned row; false when it could not be written. Hand in Recordset::AddNew and the open recordset sees the
/// rows at its next move; hand in Store::Insert otherwise.
using AddRow = std::function<bool(const ScheduleRecord&)>;

/// Walks the rule of a series and hands each row of status 1 to `add`. `addFirst` says whether the start itself gets
/// a row; it is cleared when the start has passed. False when a row was refused; the others are added all the same.
/// Many rows belong into one transaction of the store.
bool RecurrPopulate(const AddRow& add, const SpawnSeries& series, bool& addFirst, const SpawnTime& time);

/// Brings the rows of status 1 to what the roots yield now, less the days that an exception or a tombstone holds: as
/// if all of them were dropped and spawned anew, in one transaction that leaves alone what would come out the same.
/// False when nothing was changed because the store failed.
bool RebuildOccurrences(Store& store, const SpawnTime& time);

/// Spawns two more years of every endless series whose `spawntime` lies before `limit`. Costs one look into an index
/// when no root has a spawntime.
bool ExtendSeries(Store& store, const Date& limit, const SpawnTime& time);

}  // namespace talnik
