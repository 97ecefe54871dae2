#include "menus/FolderView.h"
#include "menus/fFileOpen.h"
#include "shell/TextControls.h"
#include "shell/cStandardEditBox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <chrono>
#include <iterator>

namespace talnik {

namespace {

using namespace std::chrono_literals;

constexpr auto SlowReading = 1s;
constexpr auto ProgressInterval = 3s;
constexpr auto TypingPause = 1s;
constexpr int ShownDrives = 3;
constexpr int ShownLines = 6;
constexpr int WidthInLetters = 34;

void StartLater(QTimer& timer, const QString& name, std::chrono::milliseconds interval) {
  timer.setObjectName(name);
  timer.setInterval(interval);
}

bool MovesUp(const Key& key) {
  return key.Is(Qt::Key_Up) || key.Is(Qt::Key_PageUp) || key.Is(Qt::Key_Home);
}

bool MovesDown(const Key& key) {
  return key.Is(Qt::Key_Down) || key.Is(Qt::Key_PageDown) || key.Is(Qt::Key_End);
}

bool TypesLetter(const Key& key) {
  const bool isCommand = key.shift & (Qt::ControlModifier | Qt::AltModifier);
  return !isCommand && !key.text.isEmpty() && key.text[0].isPrint();
}

}  // namespace

fFileOpen::fFileOpen(FormServices& services, Folders& folders, const PickerRequest& request, QWidget* parent)
    : Form(services, u"fFileOpen"_qs, request.tag, parent),
      folders_(folders),
      request_(request),
      search_(folders),
      slow_(this),
      progress_(this),
      typing_(this) {
  setWindowTitle(request_.caption);
  BuildControls();
  LayOut();
  ConnectButtons();
  ConnectFields();
  ConnectDrives();
  ConnectFilter();
  ConnectFolder();
  StartLater(slow_, u"SlowTimer"_qs, SlowReading);
  StartLater(progress_, u"ProgressTimer"_qs, ProgressInterval);
  StartLater(typing_, u"TypingTimer"_qs, TypingPause);
  slow_.setSingleShot(true);
  typing_.setSingleShot(true);
  connect(&slow_, &QTimer::timeout, this, [this] { title_.FocusRead(speech(), QString(), tr("Čtu složku.")); });
  connect(&progress_, &QTimer::timeout, this, [this] { SayProgress(); });
  connect(&typing_, &QTimer::timeout, this, [this] { typed_.clear(); });
  search_.Ended = [this] {
    EndSearch();
    ShowFound();
  };
}

/// In the order of the Tab key.
void fFileOpen::BuildControls() {
  drvList = new ListBox(this);
  dirList = new FolderView(this);
  cbFilter = new QComboBox(this);
  Text1 = new QLineEdit(request_.fileName, this);
  txtFind = new QLineEdit(this);
  cmdFind = new QPushButton(tr("Hledat"), this);
  Command1 = new QPushButton(SharedText(request_.button), this);
  cmdCancel = new QPushButton(SharedText(TextId::Storno), this);
  NameControl(drvList, u"drvList"_qs, tr("Místa:"));
  NameControl(dirList, u"dirList"_qs, tr("Složka:"));
  NameControl(cbFilter, u"cbFilter"_qs);
  NameControl(Text1, u"Text1"_qs);
  NameControl(txtFind, u"txtFind"_qs);
  NameControl(cmdFind, u"cmdFind"_qs);
  NameControl(Command1, u"Command1"_qs);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  lblDrives = AddLabel("lblDrives", tr("&Místa:"), drvList);
  lblFolder = AddLabel("lblFolder", tr("S&ložka:"), dirList);
  lblFilter = AddLabel("lblFilter", tr("&Filtr:"), cbFilter);
  lblName = AddLabel("lblName", tr("&Jméno souboru:"), Text1);
  lblFind = AddLabel("lblFind", tr("&Hledat jméno:"), txtFind);
  lblFolder->setWordWrap(true);
  Command1->setDefault(true);
  BuildFilter();
  ListPlaces();
}

/// The caller's filter comes first; the user can always see all files.
void fFileOpen::BuildFilter() {
  const QString all = u"*.*"_qs;
  lstMask << (request_.filter.isEmpty() ? all : request_.filter);
  if (lstMask.first() != all) lstMask << all;
  for (const QString& mask : std::as_const(lstMask)) {
    cbFilter->addItem(mask == all ? tr("všechny soubory ") + mask : mask);
  }
  cbFilter->setVisible(request_.choosesFilter);
  lblFilter->setVisible(request_.choosesFilter);
}

QLabel* fFileOpen::AddLabel(const char* name, const QString& caption, QWidget* buddy) {
  auto* label = new QLabel(caption, this);
  NameControl(label, QString::fromLatin1(name));
  label->setBuddy(buddy);
  return label;
}

void fFileOpen::LayOut() {
  ensurePolished();
  drvList->ensurePolished();
  const QFontMetrics metrics(drvList->font());
  drvList->setFixedHeight(ShownDrives * metrics.lineSpacing() + metrics.height() / 2);
  dirList->setMinimumHeight(ShownLines * metrics.lineSpacing());
  dirList->setMinimumWidth(WidthInLetters * metrics.averageCharWidth());
  auto* grid = new QGridLayout(this);
  int row = 0;
  for (const auto& [label, control] :
       std::initializer_list<std::pair<QLabel*, QWidget*>>{{lblDrives, drvList}, {lblFolder, dirList}}) {
    grid->addWidget(label, row++, 0, 1, 3);
    grid->addWidget(control, row++, 0, 1, 3);
  }
  grid->setRowStretch(row - 1, 1);
  for (const auto& [label, control] : std::initializer_list<std::pair<QLabel*, QWidget*>>{
           {lblFilter, cbFilter}, {lblName, Text1}, {lblFind, txtFind}}) {
    grid->addWidget(label, row, 0);
    grid->addWidget(control, row, 1, 1, control == txtFind ? 1 : 2);
    if (control == txtFind) grid->addWidget(cmdFind, row, 2);
    ++row;
  }
  grid->addWidget(Command1, row, 1);
  grid->addWidget(cmdCancel, row, 2);
}

void fFileOpen::ConnectButtons() {
  for (QPushButton* button : {cmdFind, Command1, cmdCancel}) LetButtonSpeak(button, events(), speech(), title_);
  connect(cmdFind, &QPushButton::clicked, this, [this] { cmdFind_Click(); });
  connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
  events().FormKeyDown([this](Key& key) {
    if (!key.Is(Qt::Key_Escape) || !search_.IsRunning()) return;
    key.Swallow();
    cmdFind_Click();
  });
}

void fFileOpen::ConnectFields() {
  for (const auto& [label, edit] :
       std::initializer_list<std::pair<QLabel*, QLineEdit*>>{{lblName, Text1}, {lblFind, txtFind}}) {
    events().GotFocus(edit, [this, label = label, edit = edit] {
      title_.FocusRead(speech(), label->text().remove(u'&'), edit->text(), static_cast<int>(edit->text().size()));
    });
    MakeTextBox(edit, 0, events(), speech());
  }
  events().KeyPress(txtFind, [this](Key& key) {
    if (!key.Is(Qt::Key_Return)) return;
    key.Swallow();
    StartSearch();
  });
}

void fFileOpen::ListPlaces() {
  const QSignalBlocker quiet(drvList);
  const int row = std::max(0, drvList->ListIndex());
  places_ = folders_.Places();
  drvList->clear();
  for (const Folders::Place& place : std::as_const(places_)) drvList->addItem(PlaceName(place));
  drvList->SetListIndex(std::min(row, drvList->ListCount() - 1));
}

void fFileOpen::ConnectDrives() {
  events().GotFocus(drvList, [this] {
    // What was plugged in meanwhile is here too.
    ListPlaces();
    title_.FocusRead(speech(), lblDrives->text().remove(u'&'), drvList->Text());
  });
  connect(drvList, &ListBox::Click, this, [this] {
    if (drvList->hasFocus()) speech().Say(drvList->Text());
  });
  events().KeyDown(drvList, [this](Key& key) {
    const bool pastStart = MovesUp(key) && drvList->ListIndex() <= 0;
    const bool pastEnd = MovesDown(key) && drvList->ListIndex() >= drvList->ListCount() - 1;
    if (pastStart || pastEnd) speech().Signal(Speech::EndOfList);
  });
  events().KeyPress(drvList, [this](Key& key) {
    if (!key.Is(Qt::Key_Return) && !key.Is(Qt::Key_Space)) return;
    key.Swallow();
    GoToDrive();
  });
  connect(drvList, &QListWidget::itemDoubleClicked, this, [this] { GoToDrive(); });
}

void fFileOpen::ConnectFilter() {
  events().GotFocus(cbFilter,
                    [this] { title_.FocusRead(speech(), lblFilter->text().remove(u'&'), cbFilter->currentText()); });
  connect(cbFilter, &QComboBox::currentIndexChanged, this, [this] {
    if (!folder_.isEmpty()) ListFolder(QString());
    if (cbFilter->hasFocus()) speech().Say(cbFilter->currentText());
  });
  connect(cbFilter, &QComboBox::textHighlighted, this, [this](const QString& line) { speech().Say(line); });
  events().KeyDown(cbFilter, [this](Key& key) {
    if (key.shift != Qt::NoModifier) return;
    const bool pastStart = MovesUp(key) && cbFilter->currentIndex() <= 0;
    const bool pastEnd = MovesDown(key) && cbFilter->currentIndex() >= cbFilter->count() - 1;
    if (pastStart || pastEnd) speech().Signal(Speech::EndOfList);
  });
}

void fFileOpen::ConnectFolder() {
  events().GotFocus(dirList, [this] { ReadList(); });
  events().KeyDown(dirList, [this](Key& key) { FolderKeyDown(key); });
  events().KeyPress(dirList, [this](Key& key) { FolderKeyPress(key); });
  connect(dirList, &FolderView::Moved, this, [this] {
    MirrorLine();
    if (!dirList->hasFocus()) return;
    speech().Say(LineText());
    LineWasSaid();
  });
  connect(dirList, &QListView::doubleClicked, this, [this] { EnterLine(); });
}

void fFileOpen::FolderKeyDown(const Key& key) {
  const bool moves = MovesUp(key) || MovesDown(key);
  if (moves) typed_.clear();
  const bool pastStart = MovesUp(key) && dirList->Row() <= 0;
  const bool pastEnd = MovesDown(key) && dirList->Row() >= dirList->Lines().size() - 1;
  if (pastStart || pastEnd) speech().Signal(Speech::EndOfList);
}

void fFileOpen::FolderKeyPress(Key& key) {
  if (key.Is(Qt::Key_Return)) {
    EnterLine();
  } else if (key.Is(Qt::Key_Backspace)) {
    GoUp();
  } else if (key.Is(Qt::Key_Space) && typed_.isEmpty()) {
    SayWhere();
  } else if (TypesLetter(key)) {
    FindLetters(key.text);
  } else {
    return;
  }
  key.Swallow();
}

/// Goes on to the next line that begins with the letters typed in a row. One letter again and again goes through its
/// lines, so a name that begins with a doubled letter is come to by the first of them.
void fFileOpen::FindLetters(const QString& letters) {
  typing_.start();
  if (typed_ == letters) typed_.clear();
  const int row = dirList->Row();
  const int from = typed_.isEmpty() ? row + 1 : row;
  typed_ += letters;
  const int found = FindByLetters(dirList->Lines(), typed_, from, showsFound_);
  if (found < 0) {
    typed_.chop(letters.size());
    return speech().Signal(Speech::Refused);
  }
  if (found != row) return dirList->SetRow(found);
  speech().Say(LineText());
  LineWasSaid();
}

/// The line once more, which of how many it is, and the whole of its path.
void fFileOpen::SayWhere() {
  if (!dirList->Line()) return speech().Say(heading_ + u' ' + LineText());
  speech().Say(tr("%1, %2 z %3, %4, %5")
                   .arg(LineText(), QString::number(dirList->Row() + 1), QString::number(dirList->Lines().size()),
                        SpokenCount(dirList->Lines()), PathOfLine()));
}

}  // namespace talnik
