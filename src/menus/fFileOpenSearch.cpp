#include "menus/FolderView.h"
#include "menus/fFileOpen.h"

#include <QLineEdit>
#include <QPushButton>

namespace talnik {

void fFileOpen::cmdFind_Click() {
  if (!search_.IsRunning()) return StartSearch();
  EndSearch();
  ShowFound();
}

void fFileOpen::StartSearch() {
  const QString text = txtFind->text().trimmed();
  if (text.isEmpty()) {
    speech().Signal(Speech::EmptyField);
    txtFind->setFocus();
    return;
  }
  if (folder_.isEmpty()) return speech().Signal(Speech::Refused);
  cmdFind->setText(tr("Zastavit"));
  speech().Say(tr("Hledám"));
  progress_.start();
  search_.Start(folder_, text, Filter());
}

void fFileOpen::EndSearch() {
  search_.Stop();
  progress_.stop();
  cmdFind->setText(tr("Hledat"));
}

/// What was found takes the place of the folder in the list; Backspace brings that back.
void fFileOpen::ShowFound() {
  const QString unread =
      search_.Unread > 0 ? tr(", nepřístupných složek: ") + QString::number(search_.Unread) : QString();
  if (search_.Found.isEmpty()) return speech().Say(tr("Nic nenalezeno") + unread);
  showsFound_ = true;
  typed_.clear();
  heading_ = tr("Nalezeno ") + QString::number(search_.Found.size()) + unread;
  ShowHeading(QString());
  dirList->Show(search_.Found);
  MirrorLine();
  // Whoever has gone on to another field meanwhile is told, and stays there.
  if (dirList->hasFocus() || txtFind->hasFocus() || cmdFind->hasFocus()) return FocusList();
  speech().Say(heading_);
}

void fFileOpen::SayProgress() {
  if (speech().IsSpeaking()) return;
  speech().Say(
      tr("Nalezeno %1, hledám ve složce %2")
          .arg(QString::number(search_.Found.size()), FolderName(search_.At.isEmpty() ? folder_ : search_.At)));
}

}  // namespace talnik
