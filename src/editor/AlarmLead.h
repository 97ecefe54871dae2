#pragma once

#include "dates/Date.h"

#include <QString>
#include <QStringList>

namespace talnik {

/// Places in the list of leads, cmbUserUnit; those between are fixed leads.
enum UserUnitPlace { LeadNone = 0, LeadExact = 1, LeadCustom = 13 };

/// Places in the list of units of a custom lead, cmbAlarmUnit.
enum AlarmUnitPlace { LeadMinutes, LeadHours, LeadDays, LeadWeeks, LeadMonths, LeadYears };

/// "žádný" to "vlastní".
QStringList UserUnitTexts();
/// "minut" to "roků".
QStringList AlarmUnitTexts();

/// An alarm as the editor shows it: how long before the start it goes off.
struct AlarmLead {
  int userUnit = LeadNone;
  int alarmUnit = LeadMinutes;  ///< with LeadCustom
  QString value;                ///< Text5, with LeadCustom
  bool freeMoment = false;      ///< no lead says it: the value is the moment itself, and the unit is hidden

  bool operator==(const AlarmLead&) const = default;
};

/// The alarm time that the lead stands for, as date text; empty for no alarm and where there is no such date.
QString AlarmTextFromLead(const AlarmLead& lead, const QString& startText, const Date& today);

/// How a stored alarm is shown. One after the start is shown as if it went off before it.
AlarmLead LeadOfAlarm(const Date& alarm, const Date& start);

/// The number at the head of a field's text, with its decimals; 0 when there is none.
double FieldNumber(const QString& text);

/// The value of a custom lead moved by `step`, within what its unit allows.
QString SpinLeadValue(const QString& text, int step, int alarmUnit);

/// Types a digit over what stands at the caret; the caret moves behind it.
void TypeLeadDigit(QString& text, int& caret, QChar digit);

}  // namespace talnik
