#include "calendar/MainServices.h"
#include "calendar/StoreTaken.h"
#include "calendar/frmMain.h"
#include "editor/StoreFailures.h"
#include "platform/WholeFile.h"
#include "shell/ChooseFile.h"
#include "shell/frmProgress.h"
#include "store/CsvExchange.h"
#include "store/Statements.h"

#include <QLabel>

namespace talnik {
namespace {

/// What is done in a moment needs no window.
constexpr qint64 RowsOfAMoment = 2000;
constexpr qsizetype LettersOfAMoment = 200'000;

/// A folder as a field of the file dialog's text; one that would break the fields is left to the dialog.
QString FolderField(const QString& folder) {
  return folder.contains(u'|') ? QString() : folder;
}

}  // namespace

/// The path that the user has chosen; empty when there is none.
QString frmMain::PickCsv(int kind, const QString& fieldsBeforeFolder, const QString& title) {
  QString path;
  const QString fields = fieldsBeforeFolder + FolderField(exchangeFolder_) + u'|' + title;
  const bool goesOn = RunModal(Afterwards::Speaks, [&] {
    // This window may be passed through before the dialog has returned.
    quietReturn_ = true;
    path = ChooseFile(dialogs(), *platform_.registry, kind, fields);
  });
  if (!goesOn) return QString();
  if (!path.isEmpty()) return path;
  quietReturn_ = false;
  if (isActiveWindow()) calendar_->ReadDay(windowTitle(), false);
  return path;
}

/// Runs a job of the store, under a window that shows how far it is and lets it be given up unless it is `brief`. False
/// when it was swept away.
bool frmMain::RunExchange(const QString& title, const QString& phase, bool brief,
                          const std::function<void(const CsvProgress&)>& job) {
  return RunModal(Afterwards::Speaks, [&] {
    quietReturn_ = true;
    frmProgress form(services(), title, this);
    form.Label1->setText(phase);
    form.SayPercent = true;
    const StoreTaken taken(storeIsTaken_, ended_, {&Timer1, &AutSync_Timer});
    if (!brief) form.Open(Qt::ApplicationModal);
    job([&form, brief](qint64 done, qint64 total) {
      form.SetShape(done, total);
      return brief || !form.Cancelled();
    });
    form.Unload();
  });
}

void frmMain::mnuExport_Click() {
  const QString title = tr("Export dat talníku");
  const QString picked = PickCsv(Dialogs::SaveFile, u"*.csv||"_qs, title);
  if (picked.isEmpty()) return;
  if (picked.endsWith(u'/')) return dialogs().Tell(tr("Chybné jméno souboru."));
  exchangeFolder_ = CsvFolder(picked);
  const QString path = WithCsvEnding(picked);

  CsvExport file;
  QString failure;
  const bool brief = store_->Number(statements::CountAll()).value_or(0) <= RowsOfAMoment;
  const bool goesOn = RunExchange(title, tr("Zápis do souboru"), brief, [&](const CsvProgress& progress) {
    const StoreFailures failures(*store_);
    file = ExportCsv(*store_, progress);
    failure = failures.Message();
  });
  if (!goesOn) return;
  QString reason;
  const bool written =
      file.end == CsvEnd::Done && WriteWholeFile(path, platform_.codePage->Encode(file.text), Readers::AsUsual, reason);
  if (written) return speech().Say(tr("Počet exportovaných záznamů: ") + QString::number(file.rows));
  if (file.end == CsvEnd::Done) failure = tr("Soubor se nepodařilo uložit: ") + path + u'\n' + reason;
  if (file.end == CsvEnd::Cancelled) failure = tr("Export byl zrušen, soubor nebyl zapsán.");
  RunModal(Afterwards::IsSilent, [&] { dialogs().Tell(failure); });
}

void frmMain::mnuImport_Click() {
  const QString title = tr("Import dat talníku");
  const QString picked = PickCsv(Dialogs::OpenFile, u"*.csv|"_qs, title);
  if (picked.isEmpty()) return;
  exchangeFolder_ = CsvFolder(picked);
  const QString path = WithCsvEnding(picked);
  QString reason;
  const auto bytes = ReadWholeFile(path, reason);
  if (!bytes) return dialogs().Tell(tr("Soubor se nepodařilo otevřít: ") + path + u'\n' + reason);

  const QString text = platform_.codePage->Decode(*bytes);
  CsvImport result;
  QString failure;
  const bool brief = text.size() <= LettersOfAMoment;
  const bool goesOn = RunExchange(title, tr("Načítání do talníku"), brief, [&](const CsvProgress& progress) {
    const StoreFailures failures(*store_);
    result = ImportCsv(*store_, text, Now(), progress);
    failure = failures.Message();
  });
  if (result.hasAlarms && !ended_) alarms_->RegisterAlarm();
  if (goesOn) TellImport(result, failure);
}

void frmMain::TellImport(const CsvImport& result, const QString& failure) {
  const QString counts = tr("Počet importovaných záznamů: ") + QString::number(result.imported) +
                         tr(", počet odmítnutých záznamů: ") + QString::number(result.rejected);
  const QString message = result.end == CsvEnd::Done ? counts
                          : result.end == CsvEnd::Cancelled
                              ? tr("Import byl zrušen, talník zůstal beze změny.")
                              : QString(tr("Import se nezdařil, talník zůstal beze změny.") + u'\n' + failure);
  const bool goesOn = RunModal(Afterwards::Speaks, [&] {
    quietReturn_ = true;
    dialogs().Tell(message);
  });
  if (goesOn) calendar_->SetTodayState(false);
}

}  // namespace talnik
