#include "store/StoreImpl.h"

#include "store/Fields.h"
#include "store/Text.h"
#include "store/WriteFailure.h"

#include <QStringList>

#include <limits>
#include <type_traits>
#include <utility>

namespace talnik {

namespace {

class Counted {
 public:
  explicit Counted(int& counter) : counter_(counter) { ++counter_; }
  ~Counted() { --counter_; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

 private:
  int& counter_;
};

int Run(Connection& open, const char* sql) {
  return sqlite3_exec(open.Db(), sql, nullptr, nullptr, nullptr);
}

/// After such an error the connection is of no use any more, or the file another one.
bool IsBroken(int error) {
  const int kind = error & 0xFF;
  return kind == SQLITE_IOERR || kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_CANTOPEN;
}

/// Fills one place of a statement. What is empty has no value, but for the text of an appointment.
void BindField(Running& running, int place, bool mayBeNull, const QString& text) {
  if (text.isEmpty() && mayBeNull) {
    running.BindNull(place);
  } else {
    running.BindText(place, text);
  }
}

void BindField(Running& running, int place, bool, const std::optional<Date>& moment) {
  running.Bind(place, moment ? QVariant(moment->Serial()) : QVariant());
}

void BindField(Running& running, int place, bool, bool flag) {
  running.BindNumber(place, flag ? 1 : 0);
}

void BindField(Running& running, int place, bool, std::optional<int> number) {
  running.Bind(place, number ? QVariant(*number) : QVariant());
}

bool MayBeNull(std::size_t column) {
  return qstrcmp(kColumns[column].name, "appointment") != 0;
}

QString InsertSql() {
  QString columns;
  QString places;
  for (const SchemaColumn& column : kColumns) {
    columns += u',' + QString::fromLatin1(column.name);
    places += u",?"_qs;
  }
  return u"INSERT INTO schedule(rowid"_qs + columns + u") VALUES(?"_qs + places + u')';
}

}  // namespace

ScheduleRecord CutToColumns(ScheduleRecord record) {
  ForEachField([&record](std::size_t place, auto field) {
    if constexpr (std::is_same_v<decltype(field), QString ScheduleRecord::*>) {
      record.*field = CutToSize(record.*field, kColumns[place].size);
    }
  });
  return record;
}

Connection* Store::Impl::Ready(int& error) {
  error = SQLITE_OK;
  const bool mayReopen = statementsRunning_ == 0 && transactionDepth_ == 0;
  if (connection && mayReopen && connection->HasMoved()) {
    Drop();
    fileIdentity_ = {};
  }
  if (!connection && mayReopen) Reopen(error);
  if (!connection && error == SQLITE_OK) error = SQLITE_CANTOPEN;
  return connection.get();
}

void Store::Impl::Reopen(int& error) {
  connection = Connection::Open(store.Path(), patient_, error);
  patient_ = (error & 0xFF) != SQLITE_BUSY;
  if (!connection) return;
  if (std::exchange(fileIdentity_, connection->FileIdentity()) != connection->FileIdentity()) ++filesSeen;
  if (sqlite3_db_readonly(connection->Db(), "main") == 0) EnsureIndexes(connection->Db());
  FindLastRow();
  seriesWatch.Attach(connection->Db());
}

void Store::Impl::Drop() {
  if (statementsRunning_ > 0 || transactionDepth_ > 0) return;
  connection.reset();
  counts_.clear();
}

bool Store::Impl::Failed(int error) {
  const QString text = WriteFailureText(error, connection ? connection->Db() : nullptr, store.Path());
  if (!std::exchange(failing_, true)) untold_ = text;
  if (transactionDepth_ > 0) {
    transactionFailed_ = true;
  } else {
    if (IsBroken(error)) Drop();
    Tell();
  }
  return false;
}

bool Store::Impl::Unread(int error) {
  if (!IsBroken(error)) return false;
  const QString text = ReadFailureText(error, connection ? connection->Db() : nullptr, store.Path());
  Drop();
  if (!std::exchange(unreadable_, true) && untold_.isEmpty()) untold_ = text;
  if (transactionDepth_ == 0) Tell();
  return false;
}

void Store::Impl::Tell() {
  const QString text = std::exchange(untold_, QString());
  if (!text.isEmpty() && store.WriteFailed) store.WriteFailed(text);
}

bool Store::Impl::Write(const std::function<int(Connection&)>& write) {
  // Behind a failed write of a transaction nothing may be written: it would stand alone, or be undone unheard.
  if (transactionDepth_ > 0 && transactionFailed_) return false;
  int error = SQLITE_OK;
  Connection* open = Ready(error);
  if (!open) return Failed(error);
  const qint64 before = sqlite3_total_changes64(open->Db());
  {
    const Counted running(statementsRunning_);
    error = write(*open);
  }
  if (error != SQLITE_DONE) return Failed(error);
  if (transactionDepth_ == 0) Succeeded(before);
  return true;
}

/// Ends the stretch of failing writes, if something was really written.
void Store::Impl::Succeeded(qint64 changesBefore) {
  if (sqlite3_total_changes64(connection->Db()) != changesBefore) failing_ = false;
}

bool Store::Impl::Read(const Statement& statement, const std::function<bool(const Running&)>& row) {
  int error = SQLITE_OK;
  Connection* open = Ready(error);
  if (!open) return Unread(error);
  {
    const Counted counted(statementsRunning_);
    Running running(*open, statement.sql);
    running.Bind(statement.values);
    while ((error = running.Step()) == SQLITE_ROW) {
      if (!row(running)) break;
    }
  }
  if (error != SQLITE_DONE && error != SQLITE_ROW) return Unread(error);
  unreadable_ = false;
  return true;
}

bool Store::Impl::Begin() {
  int error = SQLITE_OK;
  Connection* open = Ready(error);
  if (open) error = Run(*open, "BEGIN IMMEDIATE");
  if (error != SQLITE_OK) return Failed(error);
  return true;
}

void Store::Impl::Rollback() {
  // A full disk has rolled back by itself.
  if (sqlite3_get_autocommit(connection->Db()) == 0) Run(*connection, "ROLLBACK");
  counts_.clear();
}

bool Store::Impl::InTransaction(const std::function<bool()>& work) {
  if (transactionDepth_ > 0) {
    const Counted nested(transactionDepth_);
    if (!work()) transactionFailed_ = true;
    return !transactionFailed_;
  }
  if (!Begin()) return false;
  const qint64 before = sqlite3_total_changes64(connection->Db());
  int error = SQLITE_OK;
  bool kept = false;
  {
    const Counted outer(transactionDepth_);
    transactionFailed_ = false;
    kept = work() && !transactionFailed_;
    if (kept) error = Run(*connection, "COMMIT");
    if (!kept || error != SQLITE_OK) Rollback();
  }
  if (error != SQLITE_OK) return Failed(error);
  if (kept) Succeeded(before);
  Tell();
  return kept;
}

void Store::Impl::FindLastRow() {
  Running running(*connection, u"SELECT max(rowid) FROM schedule"_qs);
  if (running.Step() == SQLITE_ROW) lastRow_ = std::max(lastRow_, StoreRow(running.Handle()).Number(0));
}

int Store::Impl::InsertOnce(Connection& open, const ScheduleRecord& record, qint64 key) {
  static const QString sql = InsertSql();
  Running running(open, sql);
  running.BindNumber(1, key);
  ForEachField([&](std::size_t column, auto field) {
    BindField(running, static_cast<int>(column) + 2, MayBeNull(column), record.*field);
  });
  return running.Finish();
}

std::optional<qint64> Store::Impl::Insert(const ScheduleRecord& record) {
  const ScheduleRecord row = CutToColumns(record);
  const bool written = Write([&](Connection& open) {
    if (lastRow_ == std::numeric_limits<qint64>::max()) return SQLITE_FULL;
    const int error = InsertOnce(open, row, ++lastRow_);
    if (error != SQLITE_CONSTRAINT_ROWID) return error;
    // Another program has added rows.
    FindLastRow();
    return InsertOnce(open, row, ++lastRow_);
  });
  return written ? std::optional(lastRow_) : std::nullopt;
}

bool Store::Impl::Update(qint64 key, const ScheduleRecord& old, const ScheduleRecord& changed) {
  QStringList assignments;
  ForEachField([&](std::size_t column, auto field) {
    if (old.*field != changed.*field) assignments << QString::fromLatin1(kColumns[column].name) + u"=?"_qs;
  });
  const QString sql = u"UPDATE schedule SET "_qs + assignments.join(u',') + u" WHERE rowid=?"_qs;
  return Write([&](Connection& open) {
    Running running(open, sql);
    int place = 0;
    ForEachField([&](std::size_t column, auto field) {
      if (old.*field != changed.*field) BindField(running, ++place, MayBeNull(column), changed.*field);
    });
    running.BindNumber(place + 1, key);
    const int error = running.Finish();
    return error == SQLITE_DONE && sqlite3_changes(open.Db()) == 0 ? SQLITE_NOTFOUND : error;
  });
}

bool Store::Impl::Delete(qint64 key) {
  return Write([key](Connection& open) {
    Running running(open, u"DELETE FROM schedule WHERE rowid=?"_qs);
    running.BindNumber(1, key);
    return running.Finish();
  });
}

bool Store::Impl::CountsAreCurrent(Connection& open) {
  Running running(open, u"PRAGMA data_version"_qs);
  if (running.Step() != SQLITE_ROW) return false;
  const std::pair<qint64, qint64> version = {StoreRow(running.Handle()).Number(0), sqlite3_total_changes64(open.Db())};
  return std::exchange(countsVersion_, version) == version;
}

std::optional<qint64> Store::Impl::Count(const Statement& statement) {
  int error = SQLITE_OK;
  Connection* open = Ready(error);
  if (!open) {
    Unread(error);
    return {};
  }
  // A window asks for the same number time and again, and to count all rows means to read a whole index.
  if (!CountsAreCurrent(*open)) counts_.clear();
  const auto kept = counts_.constFind(statement.sql);
  if (kept != counts_.constEnd() && kept->first == statement.values) return kept->second;
  std::optional<qint64> count;
  Read(statement, [&count](const Running& running) {
    if (!StoreRow(running.Handle()).IsNull(0)) count = StoreRow(running.Handle()).Number(0);
    return false;
  });
  if (count) counts_.insert(statement.sql, {statement.values, *count});
  return count;
}

}  // namespace talnik
