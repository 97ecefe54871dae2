#pragma once

#include "store/Schema.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <sqlite3.h>

#include <array>
#include <list>
#include <memory>
#include <optional>
#include <unordered_map>

namespace talnik {

/// A statement made ready, and where in its rows the columns of a record stand.
struct PreparedStatement {
  sqlite3_stmt* handle = nullptr;
  std::array<int, kColumns.size()> columns{};  ///< by place in kColumns; -1 for what is not selected

  PreparedStatement() = default;
  PreparedStatement(const PreparedStatement&) = delete;
  PreparedStatement& operator=(const PreparedStatement&) = delete;
  ~PreparedStatement() { sqlite3_finalize(handle); }

  ScheduleRecord Record() const;
};

/// One open store file.
class Connection {
 public:
  /// Opens a file that is there and is a database with something in it. Nothing, and the result code of SQLite, when
  /// it is not.
  static std::unique_ptr<Connection> Open(const QString& path, bool patient, int& error);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  sqlite3* Db() const { return db_; }
  /// True when the path no longer leads to the file that is open.
  bool HasMoved() const;
  /// Equal for two connections to the same file.
  std::pair<quint64, quint64> FileIdentity() const { return identity_; }

  /// A file that another program holds is waited for once, not at every call.
  void SetPatient(bool patient);

  std::unique_ptr<PreparedStatement> Take(const QString& sql, int& error);
  void GiveBack(const QString& sql, std::unique_ptr<PreparedStatement> statement);

 private:
  Connection() = default;
  int Settle();

  sqlite3* db_ = nullptr;
  std::pair<quint64, quint64> identity_;
  bool patient_ = false;
  std::unordered_map<QString, std::unique_ptr<PreparedStatement>> idle_;
};

/// A statement in use: bound, run, and given back at the end of the scope.
class Running {
 public:
  Running(Connection& connection, const QString& sql);
  ~Running();
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  void Bind(const QList<QVariant>& values);
  void Bind(int place, const QVariant& value);
  void BindText(int place, const QString& text);
  void BindNumber(int place, qint64 number) { sqlite3_bind_int64(Handle(), place, number); }
  void BindNull(int place) { sqlite3_bind_null(Handle(), place); }

  /// The result code of the next step: SQLITE_ROW, SQLITE_DONE or an error; the error of preparing, if there was one.
  int Step();
  /// Steps to the end.
  int Finish();

  sqlite3_stmt* Handle() const { return statement_ ? statement_->handle : nullptr; }
  ScheduleRecord Record() const { return statement_->Record(); }

 private:
  Connection& connection_;
  QString sql_;
  int error_ = SQLITE_OK;
  std::unique_ptr<PreparedStatement> statement_;
  std::list<QByteArray> texts_;  ///< alive until the statement has run
};

}  // namespace talnik
