#include "editor/SaveRecord.h"

#include "editor/FieldText.h"
#include "recurrence/EditSeries.h"
#include "store/Text.h"

#include <QCoreApplication>

namespace talnik {
namespace {

void SetFields(ScheduleRecord& row, const RecordFields& fields, const std::optional<Date>& end) {
  row.appointment = CutToSize(fields.appointment, AppointmentSize);
  row.apptime = fields.start;
  row.appdur = end;
  row.wav = fields.wav;
  row.alarm = fields.alarm.has_value();
  row.alarmtime = fields.alarm;
}

/// A row of the table is found by its text trimmed; a new one keeps it as typed.
RecordFields Trimmed(RecordFields fields) {
  fields.appointment = TrimBlanks(fields.appointment);
  return fields;
}

bool Spawn(Recordset& rows, const ScheduleRecord& root, const QString& rule, const SpawnTime& time) {
  const SpawnSeries series{root.appointment, *root.apptime, root.appdur, root.alarmtime, rule, {}, root.guid};
  bool addFirst = true;
  return RecurrPopulate([&rows](const ScheduleRecord& row) { return rows.AddNew(row); }, series, addFirst, time);
}

/// The alarm that the lead gives, unless it has passed. A lead that reaches before the first of all dates has.
std::optional<Date> AlarmToSave(const EditorTexts& texts, const Date& now, bool& passed) {
  if (texts.lead.userUnit == LeadNone) return {};
  const auto alarm = CDate(AlarmTextFromLead(texts.lead, texts.Text3, now), now);
  passed = !alarm || now > *alarm;
  return passed ? std::nullopt : alarm;
}

}  // namespace

QString BadDateText() {
  return QCoreApplication::translate("SaveRecord", "Špatný časový údaj.");
}

QString EndBeforeStartText() {
  return QCoreApplication::translate("SaveRecord", "Čas ukončení je před časem počátku. Upravte tento údaj.");
}

QString AlarmPassedText() {
  return QCoreApplication::translate("SaveRecord", "Čas alarmu nebude uložen, protože již minul.");
}

QString SemicolonText() {
  return QCoreApplication::translate("SaveRecord",
                                     "V textu události je nelze použít znak středník. Tento znak bude vymazán.");
}

bool EndPrecedesStart(const QString& start, const QString& end, const Date& today) {
  const auto from = CDate(start, today);
  const auto to = CDate(end, today);
  return from && to && *from > *to;
}

SavePlan PlanSave(const EditorTexts& texts, const Date& now) {
  SavePlan plan;
  const auto start = CDate(texts.Text3, now);
  const QString endText = TrimBlanks(texts.Text4);
  const auto end = CDate(endText, now);
  if (!start || (!endText.isEmpty() && !end)) {
    plan.refusal = SaveRefusal::BadDate;
    return plan;
  }
  if (EndPrecedesStart(texts.Text3, endText, now)) {
    plan.refusal = SaveRefusal::EndBeforeStart;
    return plan;
  }
  plan.fields = {texts.Text1, *start, end, TrimBlanks(texts.Text2), {}};
  plan.fields.alarm = AlarmToSave(texts, now, plan.alarmPassed);
  plan.semicolonsGone = texts.Text1.contains(u';');
  plan.fields.appointment.remove(u';');
  return plan;
}

bool SaveNewRecord(Store& store, Recordset& rows, const RecordFields& fields, const QString& rule,
                   const SpawnTime& time) {
  ScheduleRecord record;
  SetFields(record, fields, fields.end.value_or(fields.start));
  record.recur = rule;
  record.status = rule.isEmpty() ? StatusSingle : StatusRoot;
  record.guid = NewGuidText();
  return store.InTransaction([&] {
    if (!rows.AddNew(record)) return false;
    return rule.isEmpty() || Spawn(rows, record, rule, time);
  });
}

bool SavePlainEdit(Recordset& rows, const RecordFields& fields) {
  ScheduleRecord row = rows.Row();
  SetFields(row, Trimmed(fields), fields.end);
  return rows.Update(row);
}

bool SaveAsRoot(Store& store, Recordset& rows, const RecordFields& fields, const QString& rule, const SpawnTime& time) {
  ScheduleRecord row = rows.Row();
  SetFields(row, Trimmed(fields), fields.end.value_or(fields.start));
  row.recur = rule;
  row.status = StatusRoot;
  bool updated = false;
  const bool kept = store.InTransaction([&] {
    updated = Spawn(rows, row, rule, time) && rows.Update(row);
    return updated;
  });
  if (updated && !kept) {
    // The list holds the row as it was to be; what stands in the store is read again.
    rows.MovePrevious();
    rows.MoveNext();
  }
  return kept;
}

bool SaveAsException(Recordset& rows, const RecordFields& fields, const Date& origStart, const ZoneBiases& biases) {
  ScheduleRecord row = rows.Row();
  SetFields(row, Trimmed(fields), fields.end.value_or(fields.start));
  row.status = StatusChanged;
  row.guid = ExceptionGuid(StripAtNul(row.guid), origStart, biases);
  return rows.Update(row);
}

}  // namespace talnik
