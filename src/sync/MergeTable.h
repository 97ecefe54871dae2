#pragma once

#include "store/GuidSearch.h"
#include "store/ScheduleRecord.h"

#include <QHash>
#include <QString>

#include <deque>
#include <optional>
#include <vector>

namespace talnik {

class Store;

/// The table as a merge sees it: read once, in step with the store as long as nobody else writes. What a merge does not
/// look at is empty in its records: rule, voice note and fired alarm, and of spawned rows text and end.
class MergeTable {
 public:
  struct Row {
    qint64 key = 0;
    ScheduleRecord record;
  };

  explicit MergeTable(Store& store) : store_(store) {}

  /// False when the store could not be read.
  bool Read();
  qsizetype Size() const { return size_; }

  /// The rows with exactly this guid, ORDER BY apptime, but for the spawned ones. An empty guid names none.
  std::vector<Row*> WithGuid(const QString& guid) const;
  /// The rows with guid LIKE *base*, ORDER BY apptime. An empty base names none.
  std::vector<Row*> OfSeries(const QString& guidOrBase);

  /// Each of them is false when the store could not be written.
  bool Insert(const ScheduleRecord& record);
  bool Update(Row& row, const ScheduleRecord& changed);
  bool Delete(Row& row);

 private:
  void Take(Row row);
  void Leave(Row& row);

  Store& store_;
  std::deque<Row> rows_;
  qsizetype size_ = 0;
  QHash<QString, std::vector<Row*>> byGuid_;
  std::optional<GuidSearch> search_;  ///< only a merge that deletes needs one
};

}  // namespace talnik
