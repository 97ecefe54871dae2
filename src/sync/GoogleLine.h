#pragma once

#include "dates/Date.h"
#include "platform/TimeZone.h"
#include "store/ScheduleRecord.h"

#include <QString>

namespace talnik {

/// The rule text of a recurrence field. `start` and `end` receive DTSTART and DTEND as local date texts where the field
/// holds them, which then stand in front of the rule as well.
QString ParseGoogleRule(const QString& field, QString& start, QString& end);

/// One line of the merged calendar as the agent has written it. Moments are date texts, readable or not.
struct GoogleLine {
  QString title;
  QString start;
  QString end;
  bool hasAlarm = false;
  QString alarm;  ///< for a root counted from its start, alarm or not
  QString rule;
  QString ruleStart;  ///< DTSTART
  QString ruleEnd;    ///< DTEND
  QString id;         ///< as the column of identities can hold it
  QString seriesId;
  QString exceptionTime;  ///< of an exception: the start that the rule gave it
  int status = StatusSingle;
  QString stamp;  ///< of the start that was taken from the rule; empty until then
};

/// Never fails: what is missing is empty.
GoogleLine ReadGoogleLine(const QString& text, const ZoneBiases& biases, const Date& today);

}  // namespace talnik
