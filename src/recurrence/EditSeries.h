#pragma once

#include "recurrence/RecurrPopulate.h"

#include <QString>

#include <functional>
#include <optional>

namespace talnik {

class Recordset;

/// What the save of a record does with its row.
enum class SaveWay {
  Plain,        ///< the record has no rule
  NewSeries,    ///< a rule was added: the row becomes the root
  Exception,    ///< an occurrence changed before: changed again by itself
  AskWhichOnes  ///< the two-way dialog decides: the row becomes an exception, or the root is edited
};
SaveWay WayToSave(const QString& repeatRule, const ScheduleRecord& row);

/// The guid of an occurrence changed or deleted by itself: the stamp of `start` behind "_", unless it has one.
QString ExceptionGuid(const QString& guid, const Date& start, const ZoneBiases& biases);

/// The date text without its seconds, moved by so many seconds. Nothing outside the range of dates.
std::optional<Date> ShiftBySeconds(const Date& date, std::int64_t seconds);

/// What the editor shows when the user wants all of a series changed.
struct RootEdit {
  QString title = {};
  Date start = {};
  std::optional<Date> end = {};
  std::optional<Date> alarm = {};
  QString rule = {};
  QString guid = {};
  std::optional<int> status = {};  ///< of the row that is shown
  std::optional<Date> origStart = {};
  std::optional<Date> origEnd = {};
  std::optional<Date> origAlarm = {};
};

/// Carries text, times, alarm and rule into the root of the series: as they are from the root itself, as shifts from
/// an occurrence. The occurrences follow at the next rebuild. False when the store failed.
bool EditRootEvent(Store& store, const RootEdit& edit);

/// What the editor shows when the rule of its series is changed.
struct RuleEdit {
  QString guid = {};  ///< of the current row
  QString newRule = {};
  QString title = {};              ///< Text1
  QString note = {};               ///< Text2
  Date start = {};                 ///< Text3
  std::optional<Date> alarm = {};  ///< alarmtime of the current row
};

/// How a change of rule talks to the user.
struct RuleEditDialogs {
  std::function<bool(const QString& question)> ask;
  std::function<void(const QString& warning)> warn;
};

/// Replaces a series by one with a new rule, from its old beginning, and puts back the changed occurrences that still
/// fit. True when it was replaced; otherwise nothing has changed. A recordset opened before is void afterwards.
bool EditRecurrentEvent(Store& store, const RuleEdit& edit, const SpawnTime& time, const RuleEditDialogs& dialogs);

/// How the deletion of a row is asked for.
enum class DeleteWay {
  Single,     ///< "Smazat záznam?", then DeleteSingle
  Exception,  ///< "Smazat záznam?", then DeleteOccurrence
  Series      ///< the two-way dialog, then DeleteOccurrence or DeleteWholeSeries
};
DeleteWay WayToDelete(const ScheduleRecord& row);
QString DeleteQuestion();  ///< "Smazat záznam?"

/// What a deletion leaves to the form.
struct DeleteOutcome {
  bool done = false;           ///< false: the store failed and nothing was deleted
  bool alarmsTouched = false;  ///< RegisterAlarm is due
  bool closeForm = false;      ///< the editor is unloaded
};

/// Removes the current row. closeForm is set when no row is left; otherwise the recordset has moved on.
DeleteOutcome DeleteSingle(Recordset& rows);
/// Turns the current row into a tombstone; after the last live exception of a series the whole series goes.
DeleteOutcome DeleteOccurrence(Store& store, Recordset& rows, const ZoneBiases& biases);
/// Removes every row of the series and its notes in the Record folder.
DeleteOutcome DeleteWholeSeries(Store& store, const QString& guid, const QString& recordFolder);

/// Removes a series of which only the root and tombstones are left.
bool DeleteSeriesIfEmpty(Store& store, const QString& guid);

/// True while a row names exactly this file as its voice note.
bool CheckSoundFileUsage(Store& store, const QString& name);

/// Deletes the voice note at `path` unless a row still names it. Release the player before.
void RemoveUnusedNote(Store& store, const QString& path);

}  // namespace talnik
