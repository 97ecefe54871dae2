#include "editor/EditorControls.h"
#include "editor/FieldText.h"
#include "editor/MMControl.h"
#include "editor/SaveRecord.h"
#include "editor/StoreFailures.h"
#include "editor/frmSchedule.h"
#include "recurrence/EditSeries.h"
#include "shell/Paths.h"
#include "shell/VoiceDialog.h"
#include "store/Recordset.h"
#include "store/Text.h"

#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace talnik {

void frmSchedule::cmdRepeat_Click() {
  if (!DateOf(Text3->text())) {
    dialogs().Tell(BadDateText());
    return Text3->setFocus();
  }
  const RepeatHost host{
      state().Repeat,
      [this] { return Text3->text(); },
      [this](const QString& text) { Text3->setText(text); },
      [this] { return Text4->text(); },
      [this](const QString& text) { Text4->setText(text); },
      [this](const QString& caption) { cmdRepeat->setText(caption); },
      [this] { frmRepeat(services(), context_.names, state().Repeat, this).Run(); },
      [this](const QString& newRule) { return EditSeries(newRule); },
      [this] { Unload(); },
  };
  ruleOfUnsaved_.reset();
  OpenRepeatEditor(host, Now());
  if (ruleOfUnsaved_) RepeatRule() = *std::exchange(ruleOfUnsaved_, std::nullopt);
}

bool frmSchedule::IsSavedSeries() const {
  return !bNew && HasRow() && !TrimBlanks(Data1->Row().recur).isEmpty();
}

bool frmSchedule::EditSeries(const QString& newRule) {
  if (!IsSavedSeries()) {
    ruleOfUnsaved_ = newRule;
    return false;
  }
  const ScheduleRecord row = Data1->Row();
  RuleEdit edit;
  edit.guid = StripAtNul(row.guid);
  edit.newRule = newRule;
  edit.title = Text1->Text();
  edit.note = TrimBlanks(Text2->text());
  edit.start = DateOf(Text3->text()).value_or(row.apptime.value_or(Date()));
  edit.alarm = row.alarmtime;
  const RuleEditDialogs talk{[this](const QString& question) { return dialogs().Ask(question); },
                             [this](const QString& warning) { dialogs().Warn(warning); }};
  const bool replaced = EditRecurrentEvent(context_.store, edit, Spawning(), talk);
  if (replaced) context_.registerAlarm();
  return replaced;
}

int frmSchedule::AskWhichOnes(bool forEdit) {
  frmDeleteRecurrentEvent dialog(services(), state().RecurrChoice, this);
  if (forEdit) dialog.SetCaptionForEdit();
  dialog.Run();
  return state().RecurrChoice;
}

void frmSchedule::mnuDelete_Click() {
  if (bNew || !HasRow()) return speech().Signal(Speech::Refused);
  switch (WayToDelete(Data1->Row())) {
    case DeleteWay::Single:
      if (dialogs().Ask(DeleteQuestion())) DeleteOne();
      return;
    case DeleteWay::Exception:
      if (!dialogs().Ask(DeleteQuestion())) return;
      state().RecurrChoice = RecurrOnlyThis;
      return DeleteByAnswer(RecurrOnlyThis);
    case DeleteWay::Series:
      return DeleteByAnswer(AskWhichOnes(false));
  }
}

/// Runs a deletion and tells of its failure. False when nothing was deleted.
bool frmSchedule::Deleted(const std::function<DeleteOutcome()>& deletion, bool& closeForm) {
  DeleteOutcome outcome;
  QString failure;
  {
    const StoreFailures failures(context_.store);
    outcome = deletion();
    failure = failures.Message();
  }
  closeForm = outcome.closeForm;
  if (outcome.alarmsTouched) context_.registerAlarm();
  if (!outcome.done) dialogs().Warn(failure);
  return outcome.done;
}

void frmSchedule::RemoveNote(const QString& path) {
  if (path.isEmpty()) return;
  MMControl1->Close();
  RemoveUnusedNote(context_.store, path);
}

void frmSchedule::DeleteOne() {
  const QString note = TrimBlanks(Text2->text());
  bool closeForm = false;
  if (!Deleted([this] { return DeleteSingle(*Data1); }, closeForm)) return;
  RemoveNote(note);
  if (closeForm) return Unload();
  ShowRecord();
  if (Text1->hasFocus()) return Text1_GotFocus();
  Text1->setFocus();
}

void frmSchedule::DeleteByAnswer(int answer) {
  const QString note = TrimBlanks(Text2->text());
  const QString guid = StripAtNul(Data1->Row().guid);
  bool closeForm = false;
  if (answer == RecurrOnlyThis) {
    const ZoneBiases biases = context_.timeZone.Biases();
    if (!Deleted([&] { return DeleteOccurrence(context_.store, *Data1, biases); }, closeForm)) return;
  } else if (answer == RecurrAll) {
    const QString& folder = context_.paths.RecordFolder;
    if (!Deleted([&] { return DeleteWholeSeries(context_.store, guid, folder); }, closeForm)) return;
    RemoveNote(note);
    Data1.reset();
  }
  if (!closeForm) return;
  // What was typed into the record goes with it; the month list returns to its day.
  Text3->setText(OrigStart);
  bCancelled = !DateOf(OrigStart);
  Unload();
}

}  // namespace talnik
