#include "store/Template.h"

#include "store/Schema.h"

#include <QFile>

#include <sqlite3.h>

namespace talnik {

namespace {

bool WriteTable(const QString& path) {
  sqlite3* db = nullptr;
  const bool written = sqlite3_open_v2(QFile::encodeName(path).constData(), &db,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) == SQLITE_OK &&
                       sqlite3_exec(db, CreateTableSql().constData(), nullptr, nullptr, nullptr) == SQLITE_OK &&
                       EnsureIndexes(db);
  return sqlite3_close(db) == SQLITE_OK && written;
}

}  // namespace

bool CreateStore(const QString& path) {
  QFile file(path);
  const auto forMe = QFile::ReadOwner | QFile::WriteOwner;
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, forMe)) return false;
  file.close();
  if (WriteTable(path)) return true;
  file.remove();
  return false;
}

}  // namespace talnik
