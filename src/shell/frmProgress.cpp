#include "shell/frmProgress.h"

#include "shell/FitWindow.h"
#include "shell/Texts.h"
#include "shell/cStandardEditBox.h"

#include <QCoreApplication>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace talnik {

namespace {

/// No number is given to this window for tools outside.
constexpr int ProgressTag = 0;
constexpr int ReadOnlyText = 2;
constexpr int BarHeight = 40;
constexpr int Whole = 100;
constexpr int Tens = 10;

}  // namespace

frmProgress::frmProgress(FormServices& services, const QString& caption, QWidget* parent)
    : Form(services, u"frmProgress"_qs, ProgressTag, parent),
      Label1(new QLabel(this)),
      Text1(new QLineEdit(this)),
      cmdCancel(new QPushButton(SharedText(TextId::Storno), this)),
      frame_(new QFrame(this)) {
  Shape1 = new QWidget(frame_);
  setWindowTitle(caption);
  BuildControls();
  MakeTextBox(Text1, ReadOnlyText, events(), speech());
  events().GotFocus(Text1, [this] { title_.FocusRead(speech(), Label1->text(), Text1->text()); });
  LetButtonSpeak(cmdCancel, events(), speech(), title_);
  events().FormKeyDown([this](Key& key) {
    if (!key.Is(Qt::Key_Escape)) return;
    key.Swallow();
    reject();
  });
  // Enter while reading the status must not give up what goes on.
  cmdCancel->setAutoDefault(false);
  events().KeyDown(cmdCancel, [this](Key& key) {
    if (key.Is(Qt::Key_Return)) reject();
  });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void frmProgress::BuildControls() {
  NameControl(Label1, u"Label1"_qs);
  NameControl(Text1, u"Text1"_qs, tr("Stav"));
  NameControl(Shape1, u"Shape1"_qs);
  Shape1->setAttribute(Qt::WA_StyledBackground);
  frame_->setAccessibleName(tr("Průběh"));
  Label1->setBuddy(Text1);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  Text1->setReadOnly(true);
  frame_->setFrameShape(QFrame::Box);
  frame_->setFixedHeight(BarHeight);
  // On the bar itself: the sheet of the window paints every control in the colour of the background.
  Shape1->setStyleSheet(u"background-color: "_qs + services().look.ForeColor.name());
  auto* column = new QVBoxLayout(this);
  for (QWidget* control : std::initializer_list<QWidget*>{Label1, Text1, frame_, cmdCancel}) column->addWidget(control);
}

void frmProgress::Open(Qt::WindowModality modality) {
  cancelled_ = false;
  percent_ = saidTens_ = 0;
  setWindowModality(modality);
  title_.Set(windowTitle());
  Text1->setFocus();
  ShowAndGoOn();
  DrawBar();
  QCoreApplication::processEvents();
}

void frmProgress::Unload() {
  hide();
}

void frmProgress::done(int result) {
  cancelled_ = true;
  Form::done(result);
}

void frmProgress::SetShape(qint64 step, qint64 total) {
  if (!isVisible()) return;
  if (total > 0) percent_ = static_cast<int>(std::clamp<qint64>(step, 0, total) * Whole / total);
  DrawBar();
  speech().ProgressSound(percent_);
  if (SayPercent) TellTens();
  QCoreApplication::processEvents();
}

/// What is being said is heard to its end, so a quick job is not a stammer of numbers.
void frmProgress::TellTens() {
  const int tens = percent_ / Tens;
  if (tens == saidTens_) return;
  saidTens_ = tens;
  ShowStatus(tr("%1 procent").arg(tens * Tens));
  if (!speech().IsSpeaking()) speech().Say(Text1->text());
}

/// The field grows with what stands in it, as far as the screen has room.
void frmProgress::ShowStatus(const QString& status) {
  constexpr int frame = 20;
  constexpr int margins = 60;
  Text1->ensurePolished();
  const int needed = Text1->fontMetrics().horizontalAdvance(status) + frame;
  Text1->setMinimumWidth(std::max(Text1->minimumWidth(), std::min(needed, RoomOnScreen(*this).width() - margins)));
  const int caret = Text1->cursorPosition();
  Text1->setText(status);
  Text1->setCursorPosition(std::min(caret, static_cast<int>(status.size())));
}

void frmProgress::DrawBar() {
  const QRect full = frame_->contentsRect();
  Shape1->setGeometry(full.x(), full.y(), percent_ * full.width() / Whole, full.height());
}

void frmProgress::resizeEvent(QResizeEvent* event) {
  Form::resizeEvent(event);
  DrawBar();
}

}  // namespace talnik
