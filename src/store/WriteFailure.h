#pragma once

#include <QString>

struct sqlite3;

namespace talnik {

/// The sentence that tells the user of a write that failed with this result code of SQLite. `db` may be null.
QString WriteFailureText(int error, sqlite3* db, const QString& path);
/// The same for a read.
QString ReadFailureText(int error, sqlite3* db, const QString& path);

}  // namespace talnik
