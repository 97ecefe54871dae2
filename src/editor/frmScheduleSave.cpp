#include "editor/EditorControls.h"
#include "editor/FieldText.h"
#include "editor/MMControl.h"
#include "editor/NoteFiles.h"
#include "editor/SaveRecord.h"
#include "editor/StoreFailures.h"
#include "editor/frmSchedule.h"
#include "recurrence/EditSeries.h"
#include "shell/Paths.h"
#include "shell/VoiceDialog.h"
#include "store/Recordset.h"
#include "store/Text.h"

#include <QLineEdit>
#include <QLoggingCategory>

#include <utility>

namespace talnik {
namespace {

Q_LOGGING_CATEGORY(editorTrace, "talnik.trace", QtWarningMsg)

bool Differs(const char* tag, const QString& before, const QString& now) {
  if (before == now) return false;
  qCDebug(editorTrace).noquote().nospace() << tag << before << " / " << now;
  return true;
}

}  // namespace

EditorTexts frmSchedule::Texts() const {
  return {Text1->Text(), Text2->text(), Text3->text(), Text4->text(), Lead()};
}

SpawnTime frmSchedule::Spawning() const {
  return {Now(), context_.timeZone.Biases(), nullptr};
}

frmSchedule::Save frmSchedule::SaveRecord() {
  state().RecordDate.clear();
  SavePlan plan = PlanSave(Texts(), Now());
  if (plan.refusal == SaveRefusal::BadDate) {
    dialogs().Tell(BadDateText());
    (DateOf(Text3->text()) ? Text4 : Text3)->setFocus();
    return Save::Refused;
  }
  if (plan.refusal == SaveRefusal::EndBeforeStart) {
    dialogs().Warn(EndBeforeStartText());
    Text4->setFocus();
    return Save::Refused;
  }
  if (plan.alarmPassed) dialogs().Warn(AlarmPassedText());
  const QString recording = AdoptRecording();
  if (!recording.isEmpty()) {
    plan.fields.wav = recording;
    Text2->setText(NotePath(recording, context_.paths.RecordFolder));
  }
  if (plan.semicolonsGone) {
    dialogs().Warn(SemicolonText());
    Text1->Show(plan.fields.appointment);
  }
  return Write(plan.fields);
}

/// Gives a fresh recording the record's own name for it; empty when there is none.
QString frmSchedule::AdoptRecording() {
  if (MMControl1->Mode() == ModeRecording) EndRecording();
  if (!FileExists(FreshRecording())) return QString();
  MMControl1->Close();
  QString name = AdoptNewRecording(context_.paths.RecordFolder, Now());
  if (name.isEmpty()) dialogs().Warn(tr("Nahrávku nelze uložit: ") + FreshRecording());
  return name;
}

frmSchedule::Save frmSchedule::Write(const RecordFields& fields) {
  const RowWrite write = WhatToWrite();
  if (write == RowWrite::Cancelled) return Save::Refused;
  bool written = false;
  QString failure;
  {
    const StoreFailures failures(context_.store);
    written = WriteRow(write, fields);
    failure = failures.Message();
  }
  if (!written) {
    dialogs().Warn(failure);
    return Save::Failed;
  }
  if (write == RowWrite::Nothing) {
    speech().Signal(Speech::Refused);
  } else {
    RepeatRule().clear();
  }
  context_.registerAlarm();
  return Save::Saved;
}

frmSchedule::RowWrite frmSchedule::WhatToWrite() {
  if (bNew) return RowWrite::NewRecord;
  if (RecordCount() == 0) return RowWrite::Nothing;
  switch (WayToSave(RepeatRule(), Data1->Row())) {
    case SaveWay::Plain:
      return RowWrite::Plain;
    case SaveWay::NewSeries:
      qCDebug(editorTrace).noquote() << "*********** NewRepeatRule * Repeat_Rule" << RepeatRule()
                                     << "+<->+ NewRepeatRule YES";
      return RowWrite::NewSeries;
    case SaveWay::Exception:
      return RowWrite::Exception;
    case SaveWay::AskWhichOnes:
      break;
  }
  const int answer = AskWhichOnes(true);
  if (answer == RecurrAll) return RowWrite::Root;
  return answer == RecurrOnlyThis ? RowWrite::Exception : RowWrite::Cancelled;
}

bool frmSchedule::WriteRow(RowWrite write, const RecordFields& fields) {
  switch (write) {
    case RowWrite::NewRecord:
      return WriteNewRecord(fields);
    case RowWrite::Plain:
      return SavePlainEdit(*Data1, fields);
    case RowWrite::NewSeries:
      return SaveAsRoot(context_.store, *Data1, fields, RepeatRule(), Spawning());
    case RowWrite::Exception:
      return WriteException(fields);
    case RowWrite::Root:
      return WriteRoot(fields);
    case RowWrite::Cancelled:
    case RowWrite::Nothing:
      break;
  }
  return true;
}

bool frmSchedule::WriteNewRecord(const RecordFields& fields) {
  // Behind a new record the list is the whole table. Nobody goes through it any more: all that still counts is whether
  // it is long enough to return to the month.
  auto table = Recordset::Open(context_.store, {u"SELECT * FROM schedule ORDER BY rowid LIMIT 2"_qs, {}});
  if (!table || !SaveNewRecord(context_.store, *table, fields, RepeatRule(), Spawning())) return false;
  Data1 = std::move(table);
  bNew = false;
  return true;
}

bool frmSchedule::WriteException(const RecordFields& fields) {
  return SaveAsException(*Data1, fields, DateOf(OrigStart).value_or(fields.start), context_.timeZone.Biases());
}

bool frmSchedule::WriteRoot(const RecordFields& fields) {
  const ScheduleRecord& row = Data1->Row();
  RootEdit edit;
  edit.title = CutToSize(TrimBlanks(fields.appointment), AppointmentSize);
  edit.start = fields.start;
  edit.end = fields.end;
  edit.alarm = fields.alarm;
  edit.rule = RepeatRule();
  edit.guid = StripAtNul(row.guid);
  edit.status = row.status;
  edit.origStart = DateOf(OrigStart);
  edit.origEnd = DateOf(OrigEnd);
  edit.origAlarm = DateOf(OrigAlarm);
  return EditRootEvent(context_.store, edit);
}

bool frmSchedule::IsChanged() const {
  const QString alarm = AlarmTextFromLead(Lead(), Text3->text(), Now());
  const bool alarmMoved = !alarm.isEmpty() && DateOf(alarm) != DateOf(OrigAlarm);
  // Each change is a line of the trace, so all of them are looked at.
  bool changed = Differs("bChangeTitleEntry ", OrigTitle, Text1->Text());
  changed |= Differs("bChangeStartEntry ", OrigStart, Text3->text());
  changed |= Differs("bChangeEndEntry ", OrigEnd, Text4->text());
  changed |= alarmMoved && Differs("bChangeAlarmEntry ", OrigAlarm, alarm);
  return changed;
}

frmSchedule::Change frmSchedule::AskSaveChanges() {
  if (!HasRow() || !IsChanged()) return Change::None;
  if (!dialogs().Ask(tr("Uložit změny?"))) return Change::Dropped;
  if (SaveRecord() != Save::Saved) return Change::Stay;
  FillRecordset();
  return Change::Saved;
}

void frmSchedule::cmdOK_Click() {
  const Save outcome = SaveRecord();
  // A start that is no date is refused once more by the closing itself, which ends the entry of a new record.
  const bool closingRefuses = outcome == Save::Refused && RecordCount() >= 2 && !DateOf(Text3->text());
  if (outcome == Save::Saved || closingRefuses) Unload();
}

void frmSchedule::cmdStorno_Click() {
  state().RecordDate.clear();
  MMControl1->Close();
  DropNewRecording(context_.paths.RecordFolder);
  bCancelled = true;
  Unload();
}

}  // namespace talnik
