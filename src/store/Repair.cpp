#include "store/Repair.h"

#include "store/Schema.h"
#include "store/Text.h"

#include <QList>

namespace talnik {

namespace {

bool HasTable(Store& store) {
  return store.Number(
             {u"SELECT count(*) FROM sqlite_schema WHERE type='table' AND name='schedule' COLLATE NOCASE"_qs, {}}) == 1;
}

/// Tries a write and takes it back: a locked, full or read-only disk shows itself before the user types anything.
bool CanBeWritten(Store& store) {
  bool written = false;
  store.InTransaction([&] {
    written = store.Execute({u"PRAGMA user_version=1"_qs, {}});
    return false;
  });
  return written;
}

/// Adds the columns that an old store lacks, one by one: a failure does not keep the others out.
bool AddMissingColumns(Store& store) {
  QStringList present;
  const bool read =
      store.ForEachRow({u"SELECT name FROM pragma_table_info('schedule')"_qs, {}}, [&](const StoreRow& row) {
        present << row.Text(0);
        return true;
      });
  bool added = false;
  for (const SchemaColumn& column : kColumns) {
    const QString name = QString::fromLatin1(column.name);
    if (!read || present.contains(name, Qt::CaseInsensitive)) continue;
    added |=
        store.Execute({u"ALTER TABLE schedule ADD COLUMN "_qs + name + u' ' + QString::fromLatin1(column.type), {}});
  }
  return added;
}

/// False when the rows could not be read.
bool GiveGuids(Store& store) {
  QList<qint64> rows;
  const bool read =
      store.ForEachRow({u"SELECT rowid FROM schedule WHERE guid IS NULL"_qs, {}}, [&rows](const StoreRow& row) {
        rows.append(row.Number(0));
        return true;
      });
  if (!read || rows.isEmpty()) return read;
  store.InTransaction([&] {
    for (const qint64 row : rows) {
      if (!store.Execute({u"UPDATE schedule SET guid=? WHERE rowid=?"_qs, {NewGuidText(), row}})) return false;
    }
    return true;
  });
  return true;
}

/// Fills a column of the rows that have nothing in it. Where there are none nothing is written. False when the rows
/// could not be read.
bool FillGaps(Store& store, const QString& column, const QString& value) {
  const QString rows = u" WHERE "_qs + column + u" IS NULL"_qs;
  bool any = false;
  const bool read =
      store.ForEachRow({u"SELECT 1 FROM schedule"_qs + rows + u" LIMIT 1"_qs, {}}, [&any](const StoreRow&) {
        any = true;
        return false;
      });
  if (any) store.Execute({u"UPDATE schedule SET "_qs + column + u'=' + value + rows, {}});
  return read;
}

}  // namespace

bool RepairSchedule(Store& store) {
  if (!HasTable(store) || !CanBeWritten(store)) return false;
  if (AddMissingColumns(store)) {
    // Opened anew, the store gets the indexes that lean on the new columns.
    store.Close();
    store.Open();
  }
  const bool guids = GiveGuids(store);
  const bool ends = FillGaps(store, u"appdur"_qs, u"apptime"_qs);
  return FillGaps(store, u"status"_qs, QString::number(StatusSingle)) && guids && ends;
}

}  // namespace talnik
