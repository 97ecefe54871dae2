#include "calendar/MainMenu.h"
#include "calendar/MainServices.h"
#include "calendar/frmMain.h"
#include "editor/EditorControls.h"
#include "shell/Form.h"
#include "shell/TextControls.h"
#include "shell/cStandardEditBox.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTextDocument>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

#include <utility>

namespace talnik {
namespace {

constexpr int MainPoints = 24;
constexpr int BarHeight = 6;
constexpr int ListLinesAtLeast = 3;
/// Characters of the names of one day that can be typed.
constexpr qsizetype LongestNames = 1000;

/// A line to look at. A frame would be one more nameless thing for a screen reader.
QWidget* MakeBar(QWidget* parent, const QString& name) {
  auto* bar = new QWidget(parent);
  NameControl(bar, name);
  bar->setAttribute(Qt::WA_StyledBackground);
  bar->setFixedHeight(BarHeight);
  return bar;
}

QToolButton* MakePicture(QWidget* parent, const QString& name) {
  auto* picture = new QToolButton(parent);
  NameControl(picture, name);
  picture->setFocusPolicy(Qt::NoFocus);
  return picture;
}

/// The tip of the icon in the notification area belongs to no window, so no window's look reaches it.
void PaintTip(const CommonSettings& look, const QFont& type) {
  QPalette colors = QToolTip::palette();
  colors.setColor(QPalette::ToolTipBase, look.BackColor);
  colors.setColor(QPalette::ToolTipText, look.ForeColor);
  QToolTip::setPalette(colors);
  QToolTip::setFont(type);
}

/// A triangle that points to the right, or to the left.
QIcon Arrow(bool right, int size, const QColor& color) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  const int back = right ? 0 : size;
  painter.drawPolygon(QPolygon({QPoint(back, 0), QPoint(size - back, size / 2), QPoint(back, size)}));
  return QIcon(pixmap);
}

}  // namespace

void frmMain::BuildControls() {
  auto* inside = new QWidget(this);
  setCentralWidget(inside);
  List1 = new ListBox(inside);
  Label1 = new QLabel(tr("month + year"), inside);
  Label1->setBuddy(List1);
  Command1 = new QPushButton(tr("Úkoly"), inside);
  Command2 = new QPushButton(u"-"_qs, inside);
  Command4 = new QPushButton(u"+"_qs, inside);
  Image1 = MakePicture(inside, u"Image1"_qs);
  Image2 = MakePicture(inside, u"Image2"_qs);
  txtNames = new NoteBox(LongestNames, inside);
  txtNames->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtNames->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  txtNames->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lblTime = new QLineEdit(inside);
  lblTime->setReadOnly(true);
  Shape1 = MakeBar(inside, u"Shape1"_qs);
  Shape2 = MakeBar(inside, u"Shape2"_qs);

  NameControl(List1, u"List1"_qs, tr("Dny v měsíci"));
  NameControl(Label1, u"Label1"_qs);
  NameControl(Command1, u"Command1"_qs);
  NameControl(Command2, u"Command2"_qs, tr("předchozí měsíc"));
  NameControl(Command4, u"Command4"_qs, tr("další měsíc"));
  Image1->setAccessibleName(Command4->accessibleName());
  Image2->setAccessibleName(Command2->accessibleName());
  NameControl(txtNames, u"txtNames"_qs, tr("Svátky"));
  NameControl(lblTime, u"lblTime"_qs, tr("Čas"));
  SetControlId(txtNames, 1);
  SetControlId(lblTime, 2);
  SetControlId(Command1, 5);
  SetControlId(List1, 7);

  menu_ = BuildMainMenu(*menuBar(), [this](const QString& name) { RunCommand(name); });
}

void frmMain::LayOut() {
  auto* grid = new QGridLayout(centralWidget());
  grid->addWidget(Image2, 0, 0);
  grid->addWidget(Label1, 0, 1, Qt::AlignCenter);
  grid->addWidget(Image1, 0, 2);
  grid->addWidget(Shape1, 1, 0, 1, 3);
  grid->addWidget(List1, 2, 0, 1, 3);
  grid->addWidget(Command2, 3, 0);
  grid->addWidget(Command1, 3, 1);
  grid->addWidget(Command4, 3, 2);
  grid->addWidget(txtNames, 4, 0, 1, 3);
  grid->addWidget(lblTime, 5, 0, 1, 3);
  grid->addWidget(Shape2, 6, 0, 1, 3);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(2, 1);
  QWidget* order[] = {List1, Command1, Command2, Command4, txtNames, lblTime};
  for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
  resize(screen()->availableSize());
  setWindowState(Qt::WindowMaximized);
}

void frmMain::PaintControls() {
  ApplyLook(this, look_, MainPoints);
  for (QWidget* bar : {Shape1, Shape2}) bar->setStyleSheet(u"background-color: %1;"_qs.arg(look_.ForeColor.name()));
  ensurePolished();
  PaintTip(look_, font());
  const int line = QFontMetrics(font()).lineSpacing();
  for (QToolButton* picture : {Image1, Image2}) {
    picture->setIcon(Arrow(picture == Image1, line, look_.ForeColor));
    picture->setIconSize(QSize(line, line));
  }
  List1->setMinimumHeight(ListLinesAtLeast * line);
  constexpr int frame = 12;
  txtNames->setFixedHeight(line + 2 * static_cast<int>(txtNames->document()->documentMargin()) + frame);
}

void frmMain::ConnectControls() {
  MakeTextBox(txtNames, 2, events_, speech());
  MakeTextBox(lblTime, 0, events_, speech());

  events_.FormKeyDown([this](Key& key) { Form_KeyDown(key); });
  events_.KeyDown(List1, [this](Key& key) { keys_->List1_KeyDown(key); });
  events_.KeyPress(List1, [this](Key& key) { keys_->List1_KeyPress(key); });
  events_.KeyUp(List1, [this](Key& key) { keys_->List1_KeyUp(key); });
  connect(List1, &ListBox::Click, this, [this] { calendar_->List1_Click(); });

  connect(Command1, &QPushButton::clicked, this, [this] { RunCommand(u"mnuTaskToday"_qs); });
  const auto moveMonth = [this](bool forward) {
    calendar_->MoveMonth(forward, false);
    List1->setFocus();
  };
  connect(Command2, &QPushButton::clicked, this, [moveMonth] { moveMonth(false); });
  connect(Image2, &QToolButton::clicked, this, [moveMonth] { moveMonth(false); });
  connect(Command4, &QPushButton::clicked, this, [moveMonth] { moveMonth(true); });
  connect(Image1, &QToolButton::clicked, this, [moveMonth] { moveMonth(true); });
  connect(txtNames, &NoteBox::Refused, this, [this] { speech().Signal(Speech::Refused); });
  connect(txtNames, &QPlainTextEdit::textChanged, this, [this] { namesField_->Change(); });
}

/// The desktop may give the keyboard once more to a window that has just hidden; nobody is there to hear of it.
void frmMain::OnFocus(QWidget* control, const std::function<void()>& handler) {
  events_.GotFocus(control, [this, handler] {
    if (isVisible()) handler();
  });
}

void frmMain::ConnectFocus() {
  OnFocus(List1, [this] { List1_GotFocus(); });
  OnFocus(Command1, [this] {
    view_.TitleOnFocus = false;
    if (!TakeSilentReturn()) speech().FocusRead(QString(), Command1->text());
  });
  for (QPushButton* button : {Command2, Command4}) {
    OnFocus(button, [this, button] {
      if (!TakeSilentReturn()) speech().Say(button->accessibleName());
    });
  }
  OnFocus(txtNames, [this] { namesField_->GotFocus(); });
  events_.LostFocus(txtNames, [this] {
    if (isVisible()) namesField_->LostFocus();
  });
  OnFocus(lblTime, [this] {
    speech().FocusRead(QString(), lblTime->text());
    view_.TitleOnFocus = false;
  });
}

void frmMain::Form_KeyDown(Key& key) {
  lastKey_ = key.code;
  lastShift_ = key.shift;
  const bool inList = List1->hasFocus();
  if ((key.Is(Qt::Key_Left) || key.Is(Qt::Key_Right)) && inList) return key.Swallow();
  if (key.NumericMinus() || key.NumericPlus()) {
    key.Swallow();
    return (key.NumericPlus() ? Command4 : Command2)->click();
  }
  if (key.Is(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier)) {
    key.Swallow();
    QAction* search = Menu("mnuSearchRecord");
    return search->isEnabled() ? search->trigger() : calendar_->Refuse();
  }
  if (key.Is(Qt::Key_F1, Qt::NoModifier)) {
    key.Swallow();
    return Menu("mnuOpenHelp")->trigger();
  }
  if (key.Is(Qt::Key_F5)) {
    key.Swallow();
    return inList ? calendar_->ReadDay(QString(), true) : List1->setFocus();
  }
  // Where no window manager takes this key for itself, it comes here as any other.
  if (key.Is(Qt::Key_F4, Qt::AltModifier)) {
    key.Swallow();
    close();
  }
}

bool frmMain::event(QEvent* event) {
  const bool done = QMainWindow::event(event);
  if (event->type() == QEvent::WindowActivate && isVisible()) Form_Activate();
  if (event->type() == QEvent::Resize) {
    // The layout moves first; the selected day stays in sight.
    QTimer::singleShot(0, List1, [list = List1] { list->scrollToItem(list->currentItem()); });
  }
  return done;
}

void frmMain::Form_Activate() {
  const bool quiet = std::exchange(quietReturn_, false) || !editor_.RecordDate.isEmpty();
  view_.SkipFocusSpeech = quiet;
  if (!quiet) view_.TitleOnFocus = true;
  justActivated_ = true;
}

/// True when the focus has only come back with the window, after a command that has spoken for itself.
bool frmMain::TakeSilentReturn() {
  const bool justActivated = std::exchange(justActivated_, false);
  return justActivated && events_.ComingBack() && std::exchange(view_.SkipFocusSpeech, false);
}

void frmMain::List1_GotFocus() {
  if (!std::exchange(started_, true)) CheckVoiceSupport();
  // A menu that was left is not a focus that the list was told to pass over.
  const bool fromMenu = events_.ComingBack() && !justActivated_;
  if (fromMenu) view_.SkipFocusSpeech = false;
  justActivated_ = false;
  calendar_->List1_GotFocus();
}

/// Told once; whoever hears nothing has a screen or a Braille line to find it on.
void frmMain::CheckVoiceSupport() {
  if (ended_) return;
  const Voice::Support support = speech().Supported();
  if (support == Voice::Support::Missing) {
    dialogs().Warn(tr("Nezdařilo se spustit podporu Lumory.") + u"|Lumora"_qs);
  } else if (support == Voice::Support::Unknown) {
    constexpr int again = 250;
    QTimer::singleShot(again, this, [this] { CheckVoiceSupport(); });
  }
}

}  // namespace talnik
