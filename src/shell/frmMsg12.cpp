#include "shell/frmMsg12.h"

#include "shell/Texts.h"
#include "shell/cSetting.h"
#include "shell/cStandardEditBox.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace talnik {

namespace {

constexpr int LoadTag = 1703;
constexpr int PollInterval = 200;
constexpr int SmallestType = 10;
constexpr int LargestType = 200;  ///< that a setting can ask for
constexpr int ResizeStep = 10;
/// What quotes more than this of a record would take seconds to lay out.
constexpr qsizetype LongestMessage = 10'000;
/// Around the text of a message, with its scroll bar.
constexpr int Margins = 60;

int WidestOn(const QSize& screen) {
  return screen.width() * 4 / 5;
}

int HighestOn(const QSize& screen) {
  return screen.height() / 2;
}

/// The type in which two lines of some letters can be seen at once, so that there is something to read.
int LargestTypeOn(const QSize& screen) {
  constexpr int sample = 100;
  constexpr int lines = 2;
  constexpr int letters = 8;
  const QFontMetrics metrics(QFont(u"Arial"_qs, sample));
  const int high = sample * (HighestOn(screen) - Margins) / (lines * metrics.lineSpacing());
  const int wide = sample * (WidestOn(screen) - Margins) / (letters * metrics.averageCharWidth());
  return std::min(high, wide);
}

}  // namespace

frmMsg12::frmMsg12(FormServices& services, QWidget* parent)
    : Form(services, u"frmMsg12"_qs, LoadTag, parent),
      txtMessage(new QPlainTextEdit(this)),
      cmdYES(new QPushButton(this)),
      cmdNO(new QPushButton(this)),
      cmdOK(new QPushButton(this)) {
  NameControl(txtMessage, u"txtMessage"_qs, tr("Zpráva"));
  NameControl(cmdYES, u"cmdYES"_qs);
  NameControl(cmdNO, u"cmdNO"_qs);
  NameControl(cmdOK, u"cmdOK"_qs);
  txtMessage->setReadOnly(true);
  MakeTextBox(txtMessage, 2, events(), speech());
  PrepereForm();
  cmdOK->hide();
  cmdYES->setDefault(true);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdYES);
  buttons->addWidget(cmdNO);
  buttons->addStretch();
  auto* all = new QVBoxLayout(this);
  all->addWidget(txtMessage);
  all->addLayout(buttons);
  txtMessage->setFocus();

  Timer1.setInterval(PollInterval);
  QObject::connect(&Timer1, &QTimer::timeout, this, [this] {
    if (!speech().IsSpeaking()) Close(0);
  });
  HandleKeys();
}

void frmMsg12::PrepereForm() {
  cmdYES->setText(SharedText(TextId::Yes));
  cmdNO->setText(SharedText(TextId::No));
  cmdOK->setText(SharedText(TextId::OK));
}

void frmMsg12::SetMessage(const QString& message, const QString& caption) {
  const bool cut = message.size() > LongestMessage;
  txtMessage->setPlainText(cut ? message.left(LongestMessage) + u'…' : message);
  setWindowTitle(caption);
  // A window that bears no title is told apart by what a screen reader calls it.
  setAccessibleName(caption.isEmpty() ? tr("Talník") : QString());
}

void frmMsg12::OfferOnlyOK() {
  cmdNO->setEnabled(false);
  cmdNO->hide();
  cmdYES->setText(cmdOK->text());
}

void frmMsg12::AnswerNoByEnter() {
  cmdNO->setDefault(true);
}

int frmMsg12::Show() {
  const int largest = std::clamp(LargestTypeOn(screen()->availableSize()), SmallestType, LargestType);
  SetTypeSize(txtMessage, std::clamp(services().setting.InfoTextSize, SmallestType, largest));
  GiveRoom();
  ShowModal();
  return dialogResult_;
}

void frmMsg12::HandleKeys() {
  events().GotFocus(txtMessage, [this] { MessageGotFocus(); });
  events().KeyDown(txtMessage, [this](Key& key) { MessageKeyDown(key); });
  events().KeyPress(txtMessage, [this](Key& key) { MessageKeyPress(key); });
  for (QPushButton* button : {cmdYES, cmdNO}) {
    events().GotFocus(button, [this, button] { speech().FocusRead(QString(), button->text().remove(u'&')); });
  }
  QObject::connect(cmdYES, &QPushButton::clicked, this, [this] { Close(1); });
  QObject::connect(cmdNO, &QPushButton::clicked, this, [this] { Close(0); });
}

void frmMsg12::MessageGotFocus() {
  const QTextCursor cursor = txtMessage->textCursor();
  speech().FocusRead(windowTitle(), txtMessage->toPlainText(), cursor.selectionStart(),
                     cursor.selectionEnd() - cursor.selectionStart());
  if (!voiceWaitMode_) return;
  QTimer::singleShot(0, this, [this] {
    if (!voiceWaitMode_) return;
    Timer1.start();
    speech().VoiceCommand(Speech::Focus, 1, QString());
  });
}

void frmMsg12::MessageKeyDown(Key& key) {
  const bool arrow = key.Is(Qt::Key_Left) || key.Is(Qt::Key_Up) || key.Is(Qt::Key_Right) || key.Is(Qt::Key_Down);
  if (arrow && voiceWaitMode_) {
    voiceWaitMode_ = false;
    Timer1.stop();
  }
  if (key.NumericPlus()) ResizeType(ResizeStep);
  if (key.NumericMinus() && txtMessage->font().pointSize() >= SmallestType + ResizeStep) ResizeType(-ResizeStep);
}

void frmMsg12::MessageKeyPress(Key& key) {
  if (key.Is(Qt::Key_Return)) {
    key.Swallow();
    (cmdNO->isDefault() ? cmdNO : cmdYES)->click();
  } else if (key.Is(Qt::Key_Escape)) {
    key.Swallow();
    Close(0);
  } else if (key.Is(Qt::Key_Space)) {
    key.Swallow();
    speech().Say(txtMessage->toPlainText());
  } else if (key.Is(Qt::Key_Backspace)) {
    key.Swallow();
  }
}

void frmMsg12::ResizeType(int step) {
  SetTypeSize(txtMessage, txtMessage->font().pointSize() + step);
  GiveRoom();
  layout()->activate();
  FitToScreen();
  speech().Say(SharedText(step > 0 ? TextId::Larger : TextId::Smaller));
}

/// Room for the whole message, as far as the screen has it; the rest is scrolled.
void frmMsg12::GiveRoom() {
  const QSize available = screen()->availableSize();
  const QFontMetrics metrics(txtMessage->font());
  const int widest = WidestOn(available);
  const QRect needed =
      metrics.boundingRect(QRect(0, 0, widest - Margins, 0), Qt::TextWordWrap, txtMessage->toPlainText());
  const int height = std::min(needed.height() + metrics.height() + Margins, HighestOn(available));
  txtMessage->setMinimumSize(std::clamp(needed.width() + Margins, available.width() / 3, widest), height);
}

void frmMsg12::Close(int result) {
  Timer1.stop();
  dialogResult_ = result;
  done(result);
}

void frmMsg12::hideEvent(QHideEvent* event) {
  Timer1.stop();
  if (voiceWaitMode_) speech().StopSpeech();
  Form::hideEvent(event);
}

}  // namespace talnik
