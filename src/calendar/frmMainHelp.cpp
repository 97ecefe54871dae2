#include "calendar/MainServices.h"
#include "calendar/frmMain.h"

#include <QCoreApplication>

namespace talnik {

/// In the help viewer of the family where it is installed, else in what the desktop has for pages.
void frmMain::mnuOpenHelp_Click() {
  const QString page = paths_.HelpPage;
  if (!FileExists(page)) return TellOfHelp(tr("Stránka nápovědy nebyla nalezena: ") + page);
  speech().Say(tr("Otevírám nápovědu."));
  if (FileExists(look_.HelpViewer) && platform_.shell->Start(look_.HelpViewer, {page})) return;
  const auto failed = [this, page] {
    TellOfHelp(tr("Nápovědu není čím otevřít. Nainstalujte prohlížeč webových stránek a otevřete v něm soubor ") +
               page);
  };
  if (!platform_.shell->Open(page, failed)) failed();
}

void frmMain::mnuHelpCheckUpdate_Click() {
  const QString program = look_.FamilyFolderWithSlash() + u"lm_download1.exe"_qs;
  if (!FileExists(program)) {
    const QString version = tr("Nainstalovaná verze je ") + QCoreApplication::applicationVersion() + u'.';
    return TellOfHelp(tr("Aktualizace tu nelze zkontrolovat, chybí program ") + program + u'\n' + version);
  }
  if (platform_.shell->Start(program, {u"/lmupdate1"_qs})) return speech().Say(tr("Kontroluji aktualizace."));
  TellOfHelp(tr("Program pro aktualizace se nepodařilo spustit: ") + program);
}

/// Where nothing is installed to tell about the program, it tells itself.
void frmMain::mnuAbout_Click() {
  if (platform_.shell->Open(look_.FamilyFolderWithSlash() + u"lm_about.vbs"_qs)) return WaitForForeignWindow();
  TellOfHelp(tr("Talník") + u' ' + QCoreApplication::applicationVersion() + u'\n' +
             tr("Mluvící diář pro lidi, kteří nevidí na obrazovku."));
}

void frmMain::TellOfHelp(const QString& text) {
  if (ended_) return;
  RunModal(Afterwards::IsSilent, [this, &text] { dialogs().Tell(text); });
}

}  // namespace talnik
