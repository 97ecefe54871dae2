#include "editor/FieldText.h"
#include "editor/MMControl.h"
#include "editor/NoteFiles.h"
#include "editor/StoreFailures.h"
#include "editor/frmSchedule.h"
#include "recurrence/EditSeries.h"
#include "shell/Paths.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>

namespace talnik {

QString frmSchedule::FreshRecording() const {
  return NewRecordingPath(context_.paths.RecordFolder);
}

void frmSchedule::SetHasSound(bool hasSound) {
  bHasSound = hasSound;
  SetState(menu_.value(u"mnuPlay"_qs), hasSound);
  SetState(menu_.value(u"mnuSndDel"_qs), hasSound);
}

void frmSchedule::mnuRec_Click() {
  if (!state().RecordDate.isEmpty()) Text2->clear();
  if (!TrimBlanks(Text2->text()).isEmpty() && !dialogs().Ask(tr("Přemazat nahrávku?"))) return;
  if (MMControl1->Mode() == ModeRecording) EndRecording();
  if (Text3->text().isEmpty()) return dialogs().Tell(tr("Nejprve vytvořte datum."));
  SetHasSound(true);
  focusBeforeRecording_ = focusWidget();
  cmdSound->setText(tr("Nahrávám"));
  cmdSound->setEnabled(true);
  cmdSound->setFocus();
  MMControl1->Record(FreshRecording(), services().setting.CopyFromFile);
}

void frmSchedule::cmdSound_Click() {
  if (MMControl1->Mode() != ModeRecording) return;
  if (EndRecording()) mnuPlay_Click();
}

/// Ends the recording and keeps it. False when there was no sound to keep.
bool frmSchedule::EndRecording() {
  const bool kept = MMControl1->Close();
  if (kept) {
    ShowRecorded();
  } else {
    ShowNothingRecorded();
  }
  return kept;
}

void frmSchedule::ShowRecorded() {
  cmdSound->setText(tr("Nahrávka"));
  speech().VoiceCommand(Speech::Focus, 2, QString());
  cmdSound->setEnabled(false);
}

/// Everything is as it was before the recording, and so is the focus.
void frmSchedule::ShowNothingRecorded() {
  SetHasSound(!TrimBlanks(Text2->text()).isEmpty() || FileExists(FreshRecording()));
  cmdSound->setText(tr("Nahrávání"));
  if (cmdSound->hasFocus() && focusBeforeRecording_) focusBeforeRecording_->setFocus();
  cmdSound->setEnabled(false);
  speech().Signal(Speech::Refused);
}

/// Any key ends a recording and does nothing else; on the button it presses it, and the recording is heard.
bool frmSchedule::KeyEndsRecording(Key& key) {
  if (MMControl1->Mode() != ModeRecording) return false;
  key.Swallow();
  const bool presses = cmdSound->hasFocus() && (key.Is(Qt::Key_Return) || key.Is(Qt::Key_Space));
  if (presses) {
    cmdSound_Click();
  } else if (EndRecording()) {
    speech().Signal(Speech::EmptyField);
  }
  return true;
}

void frmSchedule::OnRecordingEnded(Recorder::Ending ending) {
  if (ending == Recorder::Ending::Failed) return ShowNothingRecorded();
  ShowRecorded();
  dialogs().Warn(RecordingEndText(ending));
}

void frmSchedule::mnuPlay_Click() {
  speech().VoiceCommand(Speech::Prepare, 43, QString());
  if (MMControl1->Mode() == ModeRecording) EndRecording();
  speech().StopSpeech();
  const QString note = TrimBlanks(Text2->text());
  const bool fresh = FileExists(FreshRecording());
  if (note.isEmpty() && !fresh) return dialogs().Tell(tr("Není zvukový záznam."));
  MMControl1->Play(fresh ? FreshRecording() : FindNote(note, context_.paths.RecordFolder));
}

void frmSchedule::mnuSndDel_Click() {
  if (!dialogs().Ask(tr("Smazat nahrávku?"))) return;
  if (MMControl1->Mode() == ModeRecording) EndRecording();
  MMControl1->Close();
  const QString note = TrimBlanks(Text2->text());
  if (!note.isEmpty() && !DeleteNote(note)) return;
  DropNewRecording(context_.paths.RecordFolder);
  SetHasSound(false);
}

/// Takes the note from the record and from the disk. False when the record could not be written; the note stays then.
bool frmSchedule::DeleteNote(const QString& note) {
  if (!bNew && HasRow()) {
    const StoreFailures failures(context_.store);
    ScheduleRecord row = Data1->Row();
    row.wav.clear();
    if (!Data1->Update(row)) {
      dialogs().Warn(failures.Message());
      return false;
    }
  }
  Text2->clear();
  RemoveNote(FindNote(note, context_.paths.RecordFolder));
  ListWholeTable();
  return true;
}

/// The search for other rows with the note leaves the editor with the whole table, on the same record.
void frmSchedule::ListWholeTable() {
  if (bNew || !HasRow()) return;
  auto table = Recordset::Open(context_.store, statements::All());
  if (!table || !table->FindRowOf(*Data1)) return;
  Data1 = std::move(table);
  ShowPosition();
}

}  // namespace talnik
