#include "Deeds.h"
#include "editor/NoteFiles.h"
#include "store/Repair.h"
#include "store/Template.h"

#include <QDir>
#include <QRegularExpression>

#include <sqlite3.h>

#include <memory>

namespace talnik::soak {

namespace {

constexpr int kNames = 372;

/// What SQLite itself says of the file; "ok" when it is whole.
QString Integrity(const QString& path) {
  sqlite3* db = nullptr;
  QString verdict = u"cannot be opened"_qs;
  const auto take = [](void* said, int, char** values, char**) {
    *static_cast<QString*>(said) = QString::fromUtf8(values[0]);
    return 0;
  };
  if (sqlite3_open(QFile::encodeName(path).constData(), &db) == SQLITE_OK) {
    sqlite3_exec(db, "PRAGMA integrity_check(1)", take, &verdict, nullptr);
  }
  sqlite3_close(db);
  return verdict;
}

bool AddRows(Store& store, QString& contents) {
  return store.ForEachRow({u"SELECT * FROM schedule ORDER BY rowid"_qs, {}}, [&contents](const StoreRow& row) {
    for (int column = 0; column < 12; ++column) contents += row.Text(column) + u'|';
    contents += u'\n';
    return true;
  });
}

/// The files of the notes that rows name.
QStringList Notes(Store& store, const QString& folder) {
  QStringList notes;
  store.ForEachRow({u"SELECT DISTINCT wav FROM schedule WHERE wav IS NOT NULL"_qs, {}}, [&](const StoreRow& row) {
    notes << NotePath(row.Text(0), folder).section(u'/', -1);
    return true;
  });
  return notes;
}

bool AddFile(const QString& path, QString& contents) {
  QFile file(path);
  if (!file.exists()) return true;
  if (!file.open(QIODevice::ReadOnly)) return false;
  contents += path.section(u'/', -1) + u'\n' + QString::fromUtf8(file.readAll()) + u'\n';
  return true;
}

/// Identities are made up anew each time; what counts is where the same one stands.
QString WithNumbers(const QString& contents) {
  static const QRegularExpression identity(u"[0-9a-f]{32}"_qs);
  QHash<QString, qsizetype> known;
  QString numbered;
  qsizetype from = 0;
  for (auto found = identity.globalMatch(contents); found.hasNext();) {
    const auto match = found.next();
    const qsizetype number = known.value(match.captured(), known.size());
    known.insert(match.captured(), number);
    numbered += contents.mid(from, match.capturedStart() - from) + u'#' + QString::number(number);
    from = match.capturedEnd();
  }
  return numbered + contents.mid(from);
}

}  // namespace

bool MakeDataFolder(const QString& folder) {
  QFile names(folder + u"/Names.dat"_qs);
  if (!CreateStore(folder + u"/talnik.MDB"_qs) || !names.open(QIODevice::WriteOnly)) return false;
  for (int line = 1; line <= kNames; ++line) names.write("Jméno\r\n");
  return true;
}

std::optional<QString> Contents(const QString& folder, QString& why, qint64& leftovers) {
  const QString path = folder + u"/talnik.MDB"_qs;
  QString contents;
  QStringList known = {u"Names.dat"_qs, u"talnik.ini"_qs, u"LmData.txt"_qs};
  QStringList notes;
  {
    Store store(path);
    if (!RepairSchedule(store)) why = u"the store is not taken at the start"_qs;
    if (!AddRows(store, contents)) why = u"the store cannot be read"_qs;
    notes = Notes(store, folder);
  }
  const QString verdict = Integrity(path);
  if (verdict != u"ok"_qs) why = u"the store is not whole: "_qs + verdict;
  for (const QString& name : known) {
    if (!AddFile(folder + u'/' + name, contents)) why = name + u" cannot be read"_qs;
  }
  for (const QString& note : notes) {
    if (!QFile::exists(folder + u'/' + note)) why = note + u" is gone, and a row names it"_qs;
  }
  known += notes;
  leftovers = 0;
  for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
    if (name != u"talnik.MDB"_qs && !known.contains(name)) ++leftovers;
  }
  if (!why.isEmpty()) return {};
  // The two folders bear names of their own.
  return WithNumbers(contents.replace(folder, u"~"_qs));
}

}  // namespace talnik::soak
