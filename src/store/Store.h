#pragma once

#include "store/ScheduleRecord.h"
#include "store/StoreRow.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace talnik {

/// A statement and the values bound to its "?". Values: Date, text, number, bool, or nothing for NULL.
struct Statement {
  QString sql;
  QList<QVariant> values;  ///< dates as Serial(); see Statements.h for the statements of the system
};

/// The file of appointments. It is opened at the first use and again after a failure, so that a file that comes back is
/// found; a missing, empty or foreign file is never made into a store. Routines share one Store and see each other's
/// writes at once. Texts are cut to their declared size as they are written; an empty text other than `appointment` is
/// stored as NULL. No call waits more than a moment for another program that holds the file.
class Store {
 public:
  explicit Store(QString path);
  ~Store();
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  const QString& Path() const { return path_; }

  /// True when the file is open or could be opened now.
  bool Open();
  void Close();

  /// Runs a statement that gives no rows. False when it failed; nothing of it is written then.
  bool Execute(const Statement& statement);

  /// The number in the first column of the first row; nothing when the statement failed or gave no row.
  std::optional<qint64> Number(const Statement& statement);

  /// Calls `row` for each row of "SELECT ... FROM schedule ..." in order, until it returns false. Columns that are not
  /// selected are empty in the record. `row` must not write: rows that are to be changed are walked by a Recordset.
  /// False when it failed.
  bool ForEach(const Statement& statement, const std::function<bool(const ScheduleRecord&)>& row);

  /// The same without making records, for walks over very many rows.
  bool ForEachRow(const Statement& statement, const std::function<bool(const StoreRow&)>& row);

  /// Adds a row. False when it could not be written.
  bool Insert(const ScheduleRecord& record);

  /// Runs `work` as one transaction: all of it is kept when `work` returns true and every write of it went well, else
  /// none of it. False when none was kept. Nested calls join the outer one.
  bool InTransaction(const std::function<bool()>& work);

  /// Sets a mark for SeriesWrittenSince and gives its number.
  qint64 MarkSeries();
  /// The guids of the rows of series (status 1, 2, 8 or 9, before or after) that this program has written to since the
  /// last mark, this one; nothing when that cannot be told. What an undone transaction had written may be among them.
  std::optional<QSet<QString>> SeriesWrittenSince(qint64 mark) const;

  /// Told once for each stretch of failing writes, and of reads that find the file damaged or missing, outside of any
  /// transaction: a sentence for the user.
  std::function<void(const QString& what)> WriteFailed;

 private:
  friend class Recordset;
  struct Impl;
  std::unique_ptr<Impl> impl_;
  QString path_;
};

}  // namespace talnik
