#include "dates/UtcStamp.h"
#include "recurrence/EditSeries.h"
#include "shell/Paths.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QStringList>

namespace talnik {

namespace {

Q_LOGGING_CATEGORY(deleteTrace, "talnik.trace", QtWarningMsg)

/// True when the statement gives a row that fits; nothing when the store could not be read.
std::optional<bool> AnyRow(Store& store, const Statement& statement,
                           const std::function<bool(const ScheduleRecord&)>& fits) {
  bool found = false;
  const bool read = store.ForEach(statement, [&](const ScheduleRecord& row) {
    found = fits(row);
    return !found;
  });
  return read ? std::optional(found) : std::nullopt;
}

std::optional<bool> AnyRow(Store& store, const Statement& statement) {
  return AnyRow(store, statement, [](const ScheduleRecord&) { return true; });
}

bool IsHidden(const ScheduleRecord& row) {
  return row.status == StatusDeleted || row.status == StatusRoot;
}

}  // namespace

DeleteWay WayToDelete(const ScheduleRecord& row) {
  if (row.recur.isEmpty()) return DeleteWay::Single;
  return StripAtNul(row.guid).contains(u'_') ? DeleteWay::Exception : DeleteWay::Series;
}

QString DeleteQuestion() {
  return QCoreApplication::translate("DeleteSeries", "Smazat záznam?");
}

DeleteOutcome DeleteSingle(Recordset& rows) {
  qCDebug(deleteTrace) << "Taln.SingleEvent Delete";
  DeleteOutcome outcome;
  const bool hadAlarm = rows.Row().alarmtime.has_value();
  outcome.done = rows.Delete();
  if (!outcome.done) return outcome;
  outcome.alarmsTouched = hadAlarm;
  outcome.closeForm = rows.RecordCount() == 0;
  if (outcome.closeForm) return outcome;
  rows.MoveNext();
  if (rows.Eof()) rows.MoveLast();
  return outcome;
}

DeleteOutcome DeleteOccurrence(Store& store, Recordset& rows, const ZoneBiases& biases) {
  ScheduleRecord row = rows.Row();
  const bool wasException = StripAtNul(row.guid).contains(u'_');
  row.status = StatusDeleted;
  if (row.apptime) row.guid = ExceptionGuid(row.guid, *row.apptime, biases);
  qCDebug(deleteTrace).noquote() << "XXXX strGUID(merge): " << row.guid;
  DeleteOutcome outcome;
  outcome.done = store.InTransaction([&] {
    if (!rows.Update(row)) return false;
    if (!wasException) return true;
    const QString base = SeriesBase(row.guid);
    const auto anyLeft = AnyRow(store, statements::OfSeriesBelow8(base));
    return anyLeft && (*anyLeft || store.Execute(statements::DeleteSeries(base)));
  });
  outcome.alarmsTouched = outcome.done && row.alarmtime;
  outcome.closeForm = outcome.done;
  return outcome;
}

DeleteOutcome DeleteWholeSeries(Store& store, const QString& guid, const QString& recordFolder) {
  qCDebug(deleteTrace).noquote() << "All.Delete.Seek: " << guid;
  DeleteOutcome outcome;
  bool hadAlarm = false;
  QStringList notes;
  const bool read = store.ForEach(statements::OfSeries(guid), [&](const ScheduleRecord& row) {
    hadAlarm = hadAlarm || row.alarmtime;
    const QString note = StripAtNul(row.wav);
    // Only what lies in the folder itself: the text of a row must not lead out of it.
    if (!note.isEmpty() && note == ExtractFileName(note) && !notes.contains(note)) notes << note;
    return true;
  });
  outcome.done = read && store.Execute(statements::DeleteSeries(guid));
  if (!outcome.done) return outcome;
  for (const QString& note : notes) {
    const QString path = recordFolder + u'/' + note;
    if (FileExists(path)) QFile::remove(path);
  }
  outcome.alarmsTouched = hadAlarm;
  outcome.closeForm = true;
  return outcome;
}

bool DeleteSeriesIfEmpty(Store& store, const QString& guid) {
  const QString base = SeriesBase(guid);
  if (base.isEmpty()) return true;
  qCDebug(deleteTrace).noquote() << "TALNIK.strQuery: " << base;
  const auto anyLive = AnyRow(store, statements::OfSeries(base), [](const ScheduleRecord& row) {
    qCDebug(deleteTrace).noquote() << "TALNIK.data: " << (row.apptime ? DateText(*row.apptime) : QString())
                                   << (IsHidden(row) ? "TALNIK.data: 8/9" : "TALNIK.data: else");
    return !IsHidden(row);
  });
  if (!anyLive) return false;
  if (*anyLive) return true;
  qCDebug(deleteTrace) << "TALNIK.data: DEL ALL";
  return store.Execute(statements::DeleteSeries(base));
}

bool CheckSoundFileUsage(Store& store, const QString& name) {
  if (name.isEmpty()) return false;
  // A store that cannot be read may name the file all the same.
  return AnyRow(store, statements::NamingSound(name)).value_or(true);
}

void RemoveUnusedNote(Store& store, const QString& path) {
  if (!QDir::isAbsolutePath(path) || CheckSoundFileUsage(store, ExtractFileName(path))) return;
  QFile::remove(path);
}

}  // namespace talnik
