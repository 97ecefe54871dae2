#include "store/WriteFailure.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <sqlite3.h>

#include <cerrno>

namespace talnik {

namespace {

QString Reason(const char* text) {
  return QCoreApplication::translate("Store", text);
}

bool DiskIsFull(int error, sqlite3* db) {
  if ((error & 0xFF) == SQLITE_FULL) return true;
  const int system = db ? sqlite3_system_errno(db) : 0;
  return (error & 0xFF) == SQLITE_IOERR && (system == ENOSPC || system == EDQUOT || system == EFBIG);
}

QString ReasonOf(int error, sqlite3* db, const QString& path) {
  if (DiskIsFull(error, db)) return Reason(QT_TRANSLATE_NOOP("Store", "disk je plný"));
  if (!QFileInfo::exists(path)) return Reason(QT_TRANSLATE_NOOP("Store", "soubor chybí")) + u": "_qs + path;
  switch (error & 0xFF) {
    case SQLITE_READONLY:
      return Reason(QT_TRANSLATE_NOOP("Store", "soubor je jen pro čtení")) + u": "_qs + path;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Reason(QT_TRANSLATE_NOOP("Store", "soubor používá jiný program"));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return Reason(QT_TRANSLATE_NOOP("Store", "soubor nebo složku nelze otevřít")) + u": "_qs + path;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return Reason(QT_TRANSLATE_NOOP("Store", "soubor je poškozený")) + u": "_qs + path;
    case SQLITE_IOERR:
      return Reason(QT_TRANSLATE_NOOP("Store", "chyba disku"));
    case SQLITE_NOTFOUND:
      return Reason(QT_TRANSLATE_NOOP("Store", "záznam mezitím zanikl"));
    default:
      return QString::fromUtf8(db ? sqlite3_errmsg(db) : sqlite3_errstr(error));
  }
}

}  // namespace

QString WriteFailureText(int error, sqlite3* db, const QString& path) {
  return Reason(QT_TRANSLATE_NOOP("Store", "Data se nepodařilo uložit, %1.")).arg(ReasonOf(error, db, path));
}

QString ReadFailureText(int error, sqlite3* db, const QString& path) {
  return Reason(QT_TRANSLATE_NOOP("Store", "Data se nepodařilo přečíst, %1.")).arg(ReasonOf(error, db, path));
}

}  // namespace talnik
