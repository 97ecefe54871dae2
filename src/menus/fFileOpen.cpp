#include "menus/fFileOpen.h"

#include "menus/FolderView.h"
#include "shell/LineDelegate.h"
#include "shell/TextControls.h"
#include "shell/VoiceDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

/// The folders around a path, the nearest first, behind the path itself.
QStringList WithFoldersAbove(const QString& path) {
  QStringList paths;
  for (QString at = path; !at.isEmpty(); at = FolderAbove(at)) paths << at;
  return paths;
}

/// A name within a message, whose fields are separated by the same sign.
QString InMessage(QString name) {
  return name.replace(u'|', u'\u00A6');
}

}  // namespace

QString fFileOpen::Pick(const QString& otherFolder) {
  title_.Set(windowTitle());
  (request_.saves ? static_cast<QWidget*>(Text1) : dirList)->setFocus();
  Begin(otherFolder);
  ShowModal();
  return chosen_;
}

void fFileOpen::Read(const QString& path, std::function<void(const Answer&)> then) {
  EndSearch();
  slow_.start();
  const QPointer<fFileOpen> alive(this);
  folders_.Read(path, [alive, then = std::move(then)](const Answer& answer) {
    if (!alive || !alive->isVisible()) return;
    alive->slow_.stop();
    then(answer);
  });
}

void fFileOpen::Begin(const QString& otherFolder) {
  QStringList paths = WithFoldersAbove(request_.startFolder.isEmpty() ? QString() : CleanPath(request_.startFolder));
  // The root can be read as a rule, but nobody wants to begin there.
  paths.removeAll(u"/"_qs);
  if (!otherFolder.isEmpty()) paths << otherFolder;
  for (const Folders::Place& place : std::as_const(places_)) paths << place.path;
  focusIsTaken_ = false;
  Walk(paths, request_.fileName.section(u'/', -1), Reach::NearestReadable);
}

/// Shows the first of the paths that there is, or that can be read.
void fFileOpen::Walk(QStringList paths, const QString& cursorAt, Reach reach) {
  if (paths.isEmpty()) return speech().Signal(Speech::Refused);
  const QString path = paths.takeFirst();
  Read(path, [this, path, paths, cursorAt, reach](const Answer& answer) {
    if (answer.outcome == Outcome::Folder) return ShowFolder(path, answer, cursorAt);
    const bool isGone = answer.outcome == Outcome::Missing || answer.outcome == Outcome::NoFolder;
    if (!paths.isEmpty() && (isGone || reach == Reach::NearestReadable)) return Walk(paths, cursorAt, reach);
    speech().Signal(Speech::Refused);
    if (answer.outcome == Outcome::NoAnswer) speech().Say(tr("Složka neodpovídá."));
  });
}

void fFileOpen::ShowFolder(const QString& path, const Answer& answer, const QString& cursorAt) {
  folder_ = path;
  entries_ = answer.entries;
  ListFolder(cursorAt);
  if (focusIsTaken_ || dirList->hasFocus()) FocusList();
  focusIsTaken_ = true;
}

/// The folder as the filter shows it.
void fFileOpen::ListFolder(const QString& cursorAt) {
  showsFound_ = false;
  typed_.clear();
  heading_ = FolderName(folder_);
  ShowHeading(tr("S&ložka: "));
  const QList<Folders::Entry> lines = FolderList(entries_, Filter());
  const auto found =
      std::find_if(lines.begin(), lines.end(), [&cursorAt](const auto& line) { return line.name == cursorAt; });
  dirList->Show(lines, found == lines.end() ? 0 : static_cast<int>(found - lines.begin()));
  MirrorLine();
}

void fFileOpen::GoUp() {
  if (showsFound_) {
    ListFolder(QString());
    return ReadList();
  }
  const QStringList above = WithFoldersAbove(FolderAbove(folder_));
  if (above.isEmpty()) return speech().Signal(Speech::EndOfList);
  Walk(above, folder_.section(u'/', -1), Reach::NearestLeft);
}

void fFileOpen::EnterLine() {
  const Folders::Entry* line = dirList->Line();
  if (!line) return speech().Signal(Speech::Refused);
  if (!line->isFolder) return Accept(PathOfLine());
  Walk({PathOfLine()}, QString(), Reach::NearestLeft);
}

void fFileOpen::GoToDrive() {
  const int row = drvList->ListIndex();
  if (row < 0) return speech().Signal(Speech::Refused);
  Walk({places_[row].path}, QString(), Reach::NearestLeft);
}

/// Screen readers get no name of the list from its label, and none of the breaks that the eye needs.
void fFileOpen::ShowHeading(const QString& prefix) {
  const QString heading = LetterWidths(lblFolder->font()).WithBreaks(heading_, dirList->minimumWidth());
  lblFolder->setText(prefix + QString(heading).replace(u'&', u"&&"_qs));
  lblFolder->setAccessibleName(QString(prefix).remove(u'&') + heading_);
  // As it stands: the name of a folder may look like the marks of rich text.
  lblFolder->setToolTip(Qt::convertFromPlainText(folder_));
  dirList->setAccessibleName(lblFolder->accessibleName());
}

void fFileOpen::FocusList() {
  if (dirList->hasFocus()) return ReadList();
  dirList->setFocus();
}

void fFileOpen::ReadList() {
  // What is being read yet is read out when it is there.
  if (folder_.isEmpty()) return;
  title_.FocusRead(speech(), heading_, LineText());
  LineWasSaid();
}

QString fFileOpen::LineText() const {
  if (const Folders::Entry* line = dirList->Line()) return SpokenEntry(*line);
  if (entries_.isEmpty()) return SpokenCount(entries_);
  return tr("žádný soubor ") + lstMask.value(cbFilter->currentIndex());
}

NameFilter fFileOpen::Filter() const {
  return NameFilter(lstMask.value(cbFilter->currentIndex()));
}

/// Where a file is opened, its name follows the cursor; a name to save under is the user's own.
void fFileOpen::MirrorLine() {
  if (request_.saves) return;
  const Folders::Entry* line = dirList->Line();
  Text1->setText(line && !line->isFolder ? line->name : QString());
}

QString fFileOpen::PathOfLine() const {
  const Folders::Entry* line = dirList->Line();
  return line ? PathIn(folder_, line->name) : QString();
}

QString fFileOpen::FileOfLine() const {
  const Folders::Entry* line = dirList->Line();
  return line && !line->isFolder ? PathOfLine() : QString();
}

// Choosing.

void fFileOpen::Command1_Click() {
  const Folders::Entry* line = dirList->Line();
  const QString typed = Text1->text();
  // The button opens the folder under the cursor too. A name with blanks around it is right if it came from the list.
  const bool isFolder = line && line->isFolder && typed.isEmpty() && Command1->hasFocus();
  if (isFolder || (!request_.saves && line && typed == line->name)) return EnterLine();
  if (typed.trimmed().isEmpty()) {
    speech().Signal(Speech::EmptyField);
    Text1->setFocus();
    return;
  }
  const auto home = std::find_if(places_.begin(), places_.end(),
                                 [](const Folders::Place& place) { return place.kind == Folders::Place::Kind::Home; });
  Accept(TypedPath(typed.trimmed(), folder_, home == places_.end() ? QString() : home->path));
}

/// A folder is entered, a file is chosen; a name without the extension that it is to have gets it.
void fFileOpen::Accept(const QString& path) {
  if (path.contains(QChar::ReplacementCharacter)) {
    return dialogs().Warn(tr("Jméno obsahuje znaky, které nelze přečíst: ") + InMessage(path));
  }
  Read(path, [this, path](const Answer& answer) {
    if (answer.outcome == Outcome::Folder) {
      Text1->clear();
      return ShowFolder(path, answer, QString());
    }
    const QString whole = WithExtension(path, request_.filter);
    const bool isShort = answer.outcome == Outcome::Missing || (request_.saves && answer.outcome == Outcome::File);
    if (!isShort || whole == path) return Judge(path, answer.outcome);
    Read(whole, [this, whole](const Answer& second) { Judge(whole, second.outcome); });
  });
}

void fFileOpen::Judge(const QString& path, Outcome outcome) {
  switch (outcome) {
    case Outcome::File: {
      const QString question = tr("Soubor %1 již existuje. Přepsat?").arg(InMessage(path.section(u'/', -1)));
      if (!request_.saves || dialogs().Ask(question, Dialogs::Default::Second)) Finish(path);
      return;
    }
    case Outcome::Missing:
      return request_.saves ? Finish(path) : dialogs().Warn(tr("Soubor nebyl nalezen: ") + InMessage(path));
    case Outcome::NoFolder:
      return dialogs().Warn(tr("Složka neexistuje: ") + InMessage(FolderAbove(path)));
    case Outcome::NoAnswer:
      return dialogs().Warn(tr("Disk nebo síť neodpovídá: ") + InMessage(path));
    case Outcome::Folder:
    case Outcome::Refused:
      return dialogs().Warn(tr("Zde nelze soubor otevřít ani uložit: ") + InMessage(path));
  }
}

void fFileOpen::Finish(const QString& path) {
  chosen_ = path;
  accept();
}

}  // namespace talnik
