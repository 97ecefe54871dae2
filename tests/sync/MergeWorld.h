#pragma once

#include "recurrence/SeriesStore.h"
#include "sync/GoogleMerge.h"

namespace talnik::test {

/// A store and what a synchronisation does to it.
struct MergeWorld : SeriesStore {
  SyncTally tally;
  QString results;  ///< of the lines, a digit each
  bool alarmsTouched = false;

  /// The whole of a merge, as one transaction; without the sweep where lines alone are of interest.
  bool Merge(const QStringList& lines, bool sweep = true) {
    results.clear();
    return store.InTransaction([&] {
      GoogleMerge merge(store, time.biases, time.now);
      for (const QString& line : lines) results += QString::number(merge.ImportDataGoogle(line));
      const bool done = merge.LinesTaken() &&
                        (!sweep || !merge.RebuildFlag() || RebuildOccurrences(store, merge.ForRebuild())) &&
                        (!sweep || merge.DeleteMissingEvents());
      tally = merge.Tally();
      alarmsTouched = merge.AlarmsTouched();
      return done;
    });
  }
};

}  // namespace talnik::test
