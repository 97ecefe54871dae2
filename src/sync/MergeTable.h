#pragma once

#include "store/GuidSearch.h"
#include "store/ScheduleRecord.h"
#include "store/WithoutIndexes.h"

#include <QHash>
#include <QString>

#include <deque>
#include <optional>
#include <vector>

namespace talnik {

struct Statement;
class Store;

/// The table as a merge sees it: read once, in step with the store as long as nobody else writes.
class MergeTable {
 public:
  struct Row;
  struct Guid {
    QString text;
    Row* first = nullptr;
    bool named = false;     ///< by a line, or by what a rebuild has spawned
    bool searched = false;  ///< stands in the search
  };
  /// What a merge looks at; of spawned rows title and end are left out.
  struct Row {
    qint64 key = 0;
    Guid* guid = nullptr;
    Row* next = nullptr;  ///< the next row of the same guid
    QString title;
    std::optional<Date> start, end, reference, alarm;
    std::optional<int> status;
  };
  using Rows = std::vector<Row*>;

  explicit MergeTable(Store& store) : store_(store), indexes_(store) {}

  /// Reads the table, anew where others have written to it. False when the store could not be read.
  bool Read();
  qsizetype Size() const { return size_; }

  /// The rows with exactly this guid, ORDER BY apptime, but for the spawned ones. An empty guid names none.
  Rows WithGuid(const QString& guid) const;
  /// The rows with guid LIKE *base*, ORDER BY apptime. An empty base names none.
  Rows OfSeries(const QString& guidOrBase);
  /// Names a guid whose rows, those to come too, are to stay.
  void Name(const QString& guid) { GuidOf(guid).named = true; }
  /// The rows whose guid was not named, ORDER BY apptime.
  Rows Unnamed() const;

  /// Each of them is false when the store could not be written.
  bool Insert(const ScheduleRecord& record);
  /// Writes title, start, end and alarm.
  bool Update(Row& row, const Row& changed);
  bool MakeRoot(Row& row, const QString& rule);
  bool MakeTombstone(Row& row, const QString& guid);
  bool Delete(Row& row);
  /// Due behind the last of them: until then the table may be without its indexes.
  bool Finish();

 private:
  bool Write(const Statement& statement);
  bool Written();
  Guid& GuidOf(const QString& text);
  Row& Take(Row row);
  void Enter(Row& row, Guid& guid);
  static void Leave(Row& row);
  void Search(Guid& guid);

  Store& store_;
  std::deque<Guid> guids_;
  QHash<QString, Guid*> guidOf_;
  std::deque<Row> rows_;
  qsizetype size_ = 0;
  qsizetype writes_ = 0;
  std::optional<GuidSearch> search_;  ///< only a merge that deletes needs one
  IndexesAside indexes_;
};

}  // namespace talnik
