#pragma once

#include "store/ScheduleRecord.h"

#include <QByteArray>

#include <array>

struct sqlite3;

namespace talnik {

struct SchemaColumn {
  const char* name;
  const char* type;
  qsizetype size = 0;  ///< of a text
};

/// The columns of the table `schedule`. The first five are in every store; the others may be missing from an old one.
inline constexpr std::array<SchemaColumn, 12> kColumns = {{
    {"apptime", "REAL"},
    {"appointment", "TEXT(255) NOT NULL DEFAULT ''", AppointmentSize},
    {"appdur", "REAL"},
    {"wav", "TEXT(255)", WavSize},
    {"alarm", "INTEGER NOT NULL DEFAULT 0"},
    {"alarmtime", "REAL"},
    {"recur", "TEXT(250)", RecurSize},
    {"spawntime", "REAL"},
    {"alarmfired", "INTEGER NOT NULL DEFAULT 0"},
    {"guid", "TEXT(250)", GuidSize},
    {"reftime", "REAL"},
    {"status", "INTEGER"},
}};

/// Rows whose guid is longer than an identity of our own and is not such a one with a stamp behind it. Only in these
/// can an identity of our own stand anywhere but at the beginning.
QByteArray OddGuid();

/// Conditions and terms of indexes. A query that is to use the index repeats them letter by letter.
inline constexpr const char* kFired = "(coalesce(alarmfired,0)<>0)";
/// All but the two roles that nearly all rows have.
inline constexpr const char* kSpecialRows = "status IS NULL OR status>1";

QByteArray CreateTableSql();

/// Makes the indexes that are missing or of an older shape, in one transaction. Nothing is done while columns are
/// missing. False when they could not be made: the store works without them, slowly.
bool EnsureIndexes(sqlite3* db);

}  // namespace talnik
