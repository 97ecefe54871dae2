#include "editor/EditorControls.h"
#include "editor/MMControl.h"
#include "editor/NoteFiles.h"
#include "editor/Purge.h"
#include "editor/SaveRecord.h"
#include "editor/StoreFailures.h"
#include "editor/frmSchedule.h"
#include "shell/Paths.h"
#include "shell/VoiceDialog.h"
#include "store/Recordset.h"
#include "store/Text.h"

#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>

namespace talnik {
namespace {

constexpr int FilesInOneGo = 50;

/// A file that cannot be deleted stays; a bare name is one of the current folder. Timers and the screen go on, keys
/// wait.
void DeleteNotes(const QStringList& notes, const QString& recordFolder) {
  int deleted = 0;
  for (const QString& note : notes) {
    const bool isBare = note == ExtractFileName(note);
    QFile::remove(isBare ? note : FindNote(note, recordFolder));
    if (++deleted % FilesInOneGo == 0) QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
}

}  // namespace

void frmSchedule::mnuDeleteOld_Click() {
  if (bNew || Text3->text().isEmpty()) return speech().Signal(Speech::Refused);
  const QString dateText = PurgeDateText(Text3->text());
  const auto day = DateOf(dateText);
  if (!day) {
    dialogs().Tell(BadDateText());
    return Text3->setFocus();
  }
  if (!dialogs().Ask(PurgeQuestion(dateText))) return;
  if (MMControl1->Mode() == ModeRecording) EndRecording();
  MMControl1->Close();
  if (!Purge(*day)) return;
  FillRecordset();
  if (RecordCount() == 0) return Unload();
  if (Text1->hasFocus()) return Text1_GotFocus();
  Text1->setFocus();
}

/// False when nothing was removed, which is told.
bool frmSchedule::Purge(const Date& day) {
  PurgeOutcome outcome;
  QString failure;
  {
    const StoreFailures failures(context_.store);
    outcome = RemoveOlderThan(context_.store, day);
    failure = failures.Message();
  }
  if (!outcome.done) {
    dialogs().Warn(failure);
    return false;
  }
  if (outcome.alarmsTouched) context_.registerAlarm();
  // Behind the rows: where these cannot be removed, their notes stay too.
  DeleteNotes(outcome.notes, context_.paths.RecordFolder);
  return !unloaded_;
}

}  // namespace talnik
