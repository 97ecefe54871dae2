#include "editor/Purge.h"

#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"

#include <QCoreApplication>

namespace talnik {

QString PurgeDateText(const QString& startText) {
  const qsizetype blank = startText.indexOf(u' ');
  return blank < 0 ? startText : startText.left(blank + 1);
}

QString PurgeQuestion(const QString& dateText) {
  return QCoreApplication::translate("Purge", "Vymazat záznamy starší jak  ") + dateText +
         QCoreApplication::translate("Purge", " ?");
}

PurgeOutcome RemoveOlderThan(Store& store, const Date& day) {
  PurgeOutcome outcome;
  const bool read = store.ForEach(statements::Before(day), [&outcome](const ScheduleRecord& row) {
    outcome.alarmsTouched = outcome.alarmsTouched || row.alarmtime;
    if (const QString note = StripAtNul(row.wav); !note.isEmpty()) outcome.notes << note;
    return true;
  });
  if (!read || !store.Execute(statements::DeleteBefore(day))) return {};
  outcome.done = true;
  return outcome;
}

}  // namespace talnik
