#pragma once

#include "store/Connection.h"
#include "store/SeriesWatch.h"
#include "store/Store.h"

#include <QHash>

#include <functional>

namespace talnik {

/// What stands behind Store: the connection as it comes and goes, the transaction, the stretch of failing writes.
struct Store::Impl {
  explicit Impl(Store& owner) : store(owner) {}

  /// The connection, opened if need be; null, with the code in `error`, when there is none.
  Connection* Ready(int& error);
  void Drop();

  /// Runs a write and keeps account of its failure. `write` returns a result code of SQLite; SQLITE_DONE is success.
  bool Write(const std::function<int(Connection&)>& write);
  /// Steps through the rows of a statement until `row` returns false. False when it failed.
  bool Read(const Statement& statement, const std::function<bool(const Running&)>& row);

  bool InTransaction(const std::function<bool()>& work);

  /// Adds a row under a number that no row of this file has had since it was opened, which is returned; nothing when
  /// it could not be written. A recordset thus never takes a new row for one that was deleted.
  std::optional<qint64> Insert(const ScheduleRecord& record);

  /// Writes the fields in which `changed` differs from `old`; they must differ. What another routine has changed
  /// meanwhile stays.
  bool Update(qint64 key, const ScheduleRecord& old, const ScheduleRecord& changed);
  bool Delete(qint64 key);

  std::optional<qint64> Count(const Statement& statement);

  /// Keeps account of a write that failed with this code of SQLite; always false.
  bool Failed(int error);
  /// The same for a read. A file that another program holds for a moment is nothing to tell of.
  bool Unread(int error);

  Store& store;
  SeriesWatch seriesWatch;
  std::unique_ptr<Connection> connection;
  int filesSeen = 0;  ///< another number when the path leads to another file than before

 private:
  void Reopen(int& error);
  void Succeeded(qint64 changesBefore);
  void Tell();
  bool Begin();
  void Rollback();
  int InsertOnce(Connection& open, const ScheduleRecord& record, qint64 key);
  void FindLastRow();
  bool CountsAreCurrent(Connection& open);

  std::pair<quint64, quint64> fileIdentity_;
  bool patient_ = true;
  int statementsRunning_ = 0;
  int transactionDepth_ = 0;
  bool transactionFailed_ = false;
  bool failing_ = false;
  bool unreadable_ = false;  ///< as the last read has found the file
  QString untold_;
  qint64 lastRow_ = 0;
  QHash<QString, std::pair<QList<QVariant>, qint64>> counts_;  ///< of each text the values asked for last, the count
  std::pair<qint64, qint64> countsVersion_;
};

/// A record as the table can hold it: texts cut to their declared size.
ScheduleRecord CutToColumns(ScheduleRecord record);

}  // namespace talnik
