#pragma once

#include "editor/AlarmLead.h"
#include "platform/TimeZone.h"
#include "recurrence/RecurrPopulate.h"
#include "store/Recordset.h"

#include <QString>

#include <optional>

namespace talnik {

/// What the editor's fields show.
struct EditorTexts {
  QString Text1;  ///< the appointment's text
  QString Text2;  ///< path of the voice note
  QString Text3;  ///< start
  QString Text4;  ///< end
  AlarmLead lead;
};

/// The values that are written of them.
struct RecordFields {
  QString appointment;
  Date start;
  std::optional<Date> end;
  QString wav;
  std::optional<Date> alarm;
};

enum class SaveRefusal { None, BadDate, EndBeforeStart };

/// What a save will do, and what is to be told before it does.
struct SavePlan {
  SaveRefusal refusal = SaveRefusal::None;
  bool alarmPassed = false;     ///< saved without the alarm
  bool semicolonsGone = false;  ///< saved without the semicolons
  RecordFields fields;
};

SavePlan PlanSave(const EditorTexts& texts, const Date& now);

QString BadDateText();
QString EndBeforeStartText();
QString AlarmPassedText();
QString SemicolonText();

/// True when the end lies before the start; what is no date has no order.
bool EndPrecedesStart(const QString& start, const QString& end, const Date& today);

/// Adds a record, with the occurrences of its rule if there is one. False when nothing was written.
bool SaveNewRecord(Store& store, Recordset& rows, const RecordFields& fields, const QString& rule,
                   const SpawnTime& time);

/// Writes the fields into the current row. False when nothing was written.
bool SavePlainEdit(Recordset& rows, const RecordFields& fields);

/// Turns the current row into the root of a series. False when nothing was written.
bool SaveAsRoot(Store& store, Recordset& rows, const RecordFields& fields, const QString& rule, const SpawnTime& time);

/// Turns the current row into an exception of its series. `origStart` is its start before the change.
bool SaveAsException(Recordset& rows, const RecordFields& fields, const Date& origStart, const ZoneBiases& biases);

}  // namespace talnik
