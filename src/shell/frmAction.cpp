#include "shell/frmAction.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace talnik {

namespace {

constexpr int ActionTag = 809;
constexpr int FocusInterval = 500;
constexpr int LargeSize = 40;
constexpr int SmallSize = 30;
constexpr int ChoiceListCode = 34;
constexpr int OuterGap = 10;
constexpr int InnerGap = 20;

/// The height of a line of type, in pixels.
int HeightOf(int size) {
  return size * 17 / 10;
}

}  // namespace

frmAction::frmAction(FormServices& services, QWidget* parent)
    : Form(services, u"frmAction"_qs, ActionTag, parent), area_(new QScrollArea(this)) {
  auto* list = new QWidget;
  auto* lines = new QVBoxLayout(list);
  lines->setContentsMargins(InnerGap, InnerGap, InnerGap, InnerGap);
  for (int i = 1; i <= LabelCount; ++i) {
    auto* label = new QLabel(list);
    NameControl(label, u"lblAction_%1"_qs.arg(i));
    label->setWordWrap(true);
    label->setMargin(InnerGap / 2);
    label->setFocusPolicy(Qt::ClickFocus);
    label->installEventFilter(this);
    lines->addWidget(label);
    labels_[static_cast<std::size_t>(i - 1)] = label;
  }
  lines->addStretch();
  area_->setFocusPolicy(Qt::NoFocus);
  area_->setWidgetResizable(true);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area_->setWidget(list);
  auto* frame = new QVBoxLayout(this);
  frame->setContentsMargins(OuterGap, OuterGap, OuterGap, OuterGap);
  frame->addWidget(area_);

  FocusTimer.setInterval(FocusInterval);
  QObject::connect(&FocusTimer, &QTimer::timeout, this, [this] { KeepFocus(); });
  HandleKeys();
}

void frmAction::InitActions(const QString& text) {
  QStringList fields = text.split(u';');
  title_ = fields.takeFirst();
  choices_ = fields.mid(0, LabelCount);
  choiceCount_ = static_cast<int>(choices_.size());
  ChosenAction = -1;
  ChosenActionText.clear();
  if (choiceCount_ == 0) return;
  LayOut();
  choiceSize_ = ChoiceSize();
  speakChanges_ = false;
  Select(1, true);
  speakChanges_ = true;
  FocusTimer.start();
  setGeometry(screen()->availableGeometry());
  setWindowState(Qt::WindowMaximized);
  exec();
  FocusTimer.stop();
  blockOnActionMode_ = false;
}

void frmAction::ActionOnShortCut(int index, int action) {
  if (index >= 0 && index <= LabelCount) shortCutActions_[static_cast<std::size_t>(index)] = action;
}

void frmAction::LayOut() {
  for (int i = 1; i <= LabelCount; ++i) {
    Label(i)->setText(i <= choiceCount_ ? choices_[i - 1] : QString());
    Label(i)->setVisible(i <= choiceCount_);
  }
}

int frmAction::ChoiceSize() const {
  constexpr int room = 4 * (OuterGap + InnerGap);
  QFont font(u"Arial"_qs);
  font.setPixelSize(HeightOf(LargeSize));
  const QFontMetrics large(font);
  int widest = 0;
  for (const QString& choice : choices_) widest = std::max(widest, large.horizontalAdvance(choice));
  return widest > screen()->availableSize().width() - room ? SmallSize : LargeSize;
}

void frmAction::HandleKeys() {
  events().FormKeyDown([this](Key& key) { ListKeyDown(key); });
  events().FormKeyUp([this](Key& key) { ListKeyUp(key); });
}

void frmAction::ListKeyDown(Key& key) {
  switch (key.code) {
    case Qt::Key_Down:
      Move(1);
      break;
    case Qt::Key_Up:
      Move(-1);
      break;
    case Qt::Key_Tab:
      Move(key.shift & Qt::ShiftModifier ? -1 : 1);
      break;
    case Qt::Key_Home:
      Select(1, true);
      break;
    case Qt::Key_End:
      Select(choiceCount_, true);
      break;
    case Qt::Key_Return:
      Accept();
      break;
    case Qt::Key_Escape:
      reject();
      break;
    default:
      GoToLetter(key);
      return;
  }
  key.Swallow();
}

void frmAction::ListKeyUp(Key& key) {
  if (key.Is(Qt::Key_Return)) {
    key.Swallow();
  } else if (key.Is(Qt::Key_Backspace)) {
    reject();
  } else if (pendingAction_) {
    Accept();
  }
}

void frmAction::GoToLetter(const Key& key) {
  if (key.text.isEmpty() || !key.text[0].isLetter()) return;
  for (int i = 1; i <= choiceCount_; ++i) {
    if (!choices_[i - 1].startsWith(key.text.left(1), Qt::CaseInsensitive)) continue;
    Select(i, !blockOnActionMode_);
    pendingAction_ = blockOnActionMode_;
    return;
  }
}

void frmAction::Move(int by) {
  const int target = currentChoice_ + by;
  if (target < 1 || target > choiceCount_) {
    speech().Signal(Speech::EndOfList);
  } else {
    Select(target, true);
  }
}

void frmAction::Select(int choice, bool speak) {
  const QString sheet = u"color: %1; background-color: %2; font-size: %3px;"_qs;
  const CommonSettings& look = services().look;
  for (int i = 1; i <= choiceCount_; ++i) {
    const bool chosen = i == choice;
    Label(i)->setStyleSheet(
        sheet.arg((chosen ? look.BackColor : look.ForeColor).name(), (chosen ? look.ForeColor : look.BackColor).name())
            .arg(HeightOf(choiceSize_)));
  }
  currentChoice_ = choice;
  Label(choice)->setFocus();
  area_->ensureWidgetVisible(Label(choice));
  setWindowTitle(title_ + u' ' + choices_[choice - 1]);
  if (speak && speakChanges_) speech().Say(choices_[choice - 1]);
}

void frmAction::Accept() {
  pendingAction_ = false;
  ChosenAction = currentChoice_;
  ChosenActionText = choices_[currentChoice_ - 1];
  const int action = shortCutActions_[static_cast<std::size_t>(currentChoice_)];
  if (action > 0) speech().VoiceCommand(Speech::Focus, action, QString());
  accept();
}

/// The title and the choice are read when the window comes to the front.
void frmAction::Activate() {
  speech().VoiceCommand(Speech::Prepare, ChoiceListCode, QString());
  speech().FocusRead(title_, choices_.value(currentChoice_ - 1));
}

void frmAction::KeepFocus() {
  if (QGuiApplication::applicationState() == Qt::ApplicationActive) return;
  raise();
  activateWindow();
}

bool frmAction::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) Activate();
  return Form::event(event);
}

bool frmAction::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    for (int i = 1; i <= choiceCount_; ++i) {
      if (watched != Label(i)) continue;
      Select(i, false);
      Accept();
      return true;
    }
  }
  return Form::eventFilter(watched, event);
}

}  // namespace talnik
