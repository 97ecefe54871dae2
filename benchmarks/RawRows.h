#pragma once

#include <QFile>
#include <QString>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace talnik::bench {

/// Ends a measurement that cannot be made.
inline void Check(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(1);
}

/// A store as SQLite alone sees it, as safe as ours.
class RawFile {
 public:
  explicit RawFile(const QString& path) {
    Check(sqlite3_open(QFile::encodeName(path).constData(), &db_) == SQLITE_OK, "open");
    Run("PRAGMA synchronous=FULL; PRAGMA cache_size=-65536");
  }
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;
  ~RawFile() { sqlite3_close(db_); }

  void Run(const char* sql) const { Check(sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql); }

  /// The caller finalizes it.
  sqlite3_stmt* Prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(db_, sql, -1, &statement, nullptr) == SQLITE_OK, sql);
    return statement;
  }

 private:
  sqlite3* db_ = nullptr;
};

/// Rows of `schedule` as values that can be bound as they are: what remains to be done is SQLite's work alone.
class RawRows {
 public:
  static constexpr int kColumns = 12;

  RawRows(const RawFile& file, const char* select) {
    sqlite3_stmt* read = file.Prepare(select);
    while (sqlite3_step(read) == SQLITE_ROW) {
      for (int column = 0; column < kColumns; ++column) {
        values_.push_back(sqlite3_value_dup(sqlite3_column_value(read, column)));
      }
    }
    sqlite3_finalize(read);
  }
  RawRows(const RawRows&) = delete;
  RawRows& operator=(const RawRows&) = delete;
  ~RawRows() {
    for (sqlite3_value* value : values_) sqlite3_value_free(value);
  }

  /// A plain prepared insert of them all, in one transaction.
  void InsertInto(const RawFile& file) const {
    sqlite3_stmt* insert = file.Prepare("INSERT INTO schedule VALUES(?,?,?,?,?,?,?,?,?,?,?,?)");
    file.Run("BEGIN IMMEDIATE");
    for (std::size_t first = 0; first < values_.size(); first += kColumns) {
      for (int column = 0; column < kColumns; ++column) {
        sqlite3_bind_value(insert, column + 1, values_[first + static_cast<std::size_t>(column)]);
      }
      Check(sqlite3_step(insert) == SQLITE_DONE, "insert");
      sqlite3_reset(insert);
    }
    file.Run("COMMIT");
    sqlite3_finalize(insert);
  }

 private:
  std::vector<sqlite3_value*> values_;
};

}  // namespace talnik::bench
