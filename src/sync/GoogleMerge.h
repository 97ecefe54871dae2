#pragma once

#include "recurrence/RecurrPopulate.h"
#include "sync/MergeTable.h"

#include <QString>

namespace talnik {

struct GoogleLine;

/// What a merge has changed, for the log of the synchronisation.
struct SyncTally {
  qint64 AddedCount = 0;
  qint64 ChangedCount = 0;
  qint64 RemovedCount = 0;
  QString SyncDetail;  ///< a line for each change, ended by CR LF
};

/// What a line of the calendar has done.
enum ImportResult {
  NothingAdded = 0,
  BadLine = 1,  ///< neither a date nor a rule
  RowAdded = 2,
  AlarmAdded = 3  ///< a row with an alarm: the alarm queue is due
};

/// One merge of the calendar into the store, line by line, and the sweep behind it:
///
///     store.InTransaction([&] {
///       GoogleMerge merge(store, biases, now);
///       for (each line) merge.ImportDataGoogle(line);
///       if (!merge.LinesTaken()) return false;
///       if (merge.RebuildFlag() && !RebuildOccurrences(store, merge.ForRebuild())) return false;
///       return merge.DeleteMissingEvents();
///     });
///
/// The caller opens the transaction; until it ends, nothing else may write to the store. A line that cannot be read
/// stops nothing. A store that cannot be read or written stops all: from then on nothing more is done, and what was
/// done must not be kept.
class GoogleMerge {
 public:
  GoogleMerge(Store& store, const ZoneBiases& biases, const Date& now);

  /// Applies one line. No line may follow a rebuild.
  ImportResult ImportDataGoogle(const QString& text);
  /// Due behind the last line. False when the store failed there or before.
  bool LinesTaken();
  /// Deletes every row whose identity was not named. False when the store failed.
  bool DeleteMissingEvents();
  /// Names an identity that is to stay.
  void AddSyncId(const QString& id) { table_.Name(id); }

  /// A new root or a new rule has come: RebuildOccurrences is due.
  bool RebuildFlag() const { return rebuild_; }
  /// A row with an alarm time was changed or deleted, whatever the lines returned.
  bool AlarmsTouched() const { return alarmsTouched_; }
  const SyncTally& Tally() const { return tally_; }
  /// The time with which a rebuild names what it spawns. It may not outlive the merge.
  SpawnTime ForRebuild();

 private:
  bool Ready();
  bool Kept(bool written);
  void Remove(const GoogleLine& line);
  bool MakeTombstones(const GoogleLine& line, const MergeTable::Rows& rows);
  bool Match(MergeTable::Row& row, GoogleLine& line);
  void TakeStartFromRule(GoogleLine& line) const;
  QString ChangesOf(const GoogleLine& line, MergeTable::Row& row) const;
  void Change(MergeTable::Row& row, const GoogleLine& line);
  ScheduleRecord RecordOf(const GoogleLine& line) const;
  ImportResult Add(GoogleLine& line);
  void Log(qint64 SyncTally::*count, const QString& line);

  Store& store_;
  ZoneBiases biases_;
  Date now_;
  MergeTable table_;
  SyncIdList spawned_;  ///< by the rebuild
  SyncTally tally_;
  bool read_ = false;
  bool failed_ = false;
  bool rebuild_ = false;
  bool rebuilt_ = false;
  bool alarmsTouched_ = false;
};

}  // namespace talnik
