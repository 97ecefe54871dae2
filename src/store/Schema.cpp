#include "store/Schema.h"

#include "store/DayClasses.h"

#include <QHash>
#include <QList>

#include <sqlite3.h>

namespace talnik {

namespace {

struct SchemaIndex {
  QByteArray name;
  QByteArray sql;
};

QList<SchemaIndex> Indexes() {
  QList<SchemaIndex> indexes;
  const auto add = [&indexes](const QByteArray& name, const QByteArray& columns, const QByteArray& rows) {
    const QByteArray where = rows.isEmpty() ? QByteArray() : " WHERE " + rows;
    indexes.append({name, "CREATE INDEX " + name + " ON schedule(" + columns + ")" + where});
  };
  for (const DayClass& day : kDayClasses) {
    // The status is not read there, but without it the index would not count as holding all that is asked for.
    add(day.index, "apptime,appdur,status", QByteArray(day.rows) + " AND " + kVisible);
  }
  add("schedule_odd", "apptime,appdur,status", kOddRows);
  add("schedule_start", "apptime,status", "");
  add("schedule_guid", "guid COLLATE NOCASE,status", "");
  add("schedule_odd_guid", "guid", OddGuid());
  add("schedule_alarms", QByteArray(kFired) + ",alarmtime,alarm DESC", "alarmtime IS NOT NULL");
  add("schedule_alarm", "apptime", "alarm<>0");
  add("schedule_roles", "status,spawntime", kSpecialRows);
  add("schedule_spawned", "status", "status=1");
  return indexes;
}

bool RunSql(sqlite3* db, const char* sql) {
  return sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// Name and text of what is there; nothing is found where the file cannot be read.
QHash<QByteArray, QByteArray> Pairs(sqlite3* db, const char* sql) {
  QHash<QByteArray, QByteArray> pairs;
  sqlite3_exec(
      db, sql,
      [](void* result, int, char** values, char**) {
        static_cast<QHash<QByteArray, QByteArray>*>(result)->insert(values[0], values[1]);
        return 0;
      },
      &pairs, nullptr);
  return pairs;
}

bool HasAllColumns(sqlite3* db) {
  const auto columns = Pairs(db, "SELECT lower(name),type FROM pragma_table_info('schedule')");
  for (const SchemaColumn& column : kColumns) {
    if (!columns.contains(column.name)) return false;
  }
  return true;
}

bool MakeIndexes(sqlite3* db, const QList<SchemaIndex>& missing) {
  if (!RunSql(db, "BEGIN IMMEDIATE")) return false;
  bool made = true;
  for (const SchemaIndex& index : missing) {
    made = made && RunSql(db, QByteArray("DROP INDEX IF EXISTS " + index.name)) && RunSql(db, index.sql);
  }
  if (made && RunSql(db, "COMMIT")) return true;
  RunSql(db, "ROLLBACK");
  return false;
}

}  // namespace

QByteArray OddGuid() {
  const QByteArray digits = QByteArray("[0-9a-f]").repeated(32);
  // 31 characters behind the identity leave no room for another one.
  return "length(guid)>32 AND NOT (length(guid)<65 AND guid GLOB '" + digits + "_*')";
}

QByteArray CreateTableSql() {
  QByteArray columns;
  for (const SchemaColumn& column : kColumns) {
    columns += columns.isEmpty() ? "" : ",";
    columns += QByteArray(column.name) + ' ' + column.type;
  }
  return "CREATE TABLE schedule(" + columns + ")";
}

bool EnsureIndexes(sqlite3* db) {
  const auto present = Pairs(db, "SELECT name,sql FROM sqlite_schema WHERE type='index'");
  QList<SchemaIndex> missing;
  for (const SchemaIndex& index : Indexes()) {
    if (present.value(index.name) != index.sql) missing.append(index);
  }
  if (missing.isEmpty()) return true;
  return HasAllColumns(db) && MakeIndexes(db, missing);
}

}  // namespace talnik
