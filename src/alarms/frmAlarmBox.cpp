#include "alarms/frmAlarmBox.h"

#include "shell/TextControls.h"
#include "shell/cSetting.h"
#include "shell/cStandardEditBox.h"
#include "store/Text.h"
#include "timetools/frmSetSysTime.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QPushButton>
#include <QShowEvent>
#include <QTextCursor>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

Q_LOGGING_CATEGORY(boxTrace, "talnik.trace", QtWarningMsg)

constexpr int AlarmTag = 1711;
constexpr int CountdownTag = 1732;
constexpr int OffsetInterval = 1000;
/// However small the screen, so much of the event can be seen at once.
constexpr int EventLinesAtLeast = 4;
constexpr int EventLetters = 26;
/// A round shorter than this was no sound; then the next one waits a while.
constexpr int SilentRound = 50;
constexpr int SilentPause = 200;

}  // namespace

frmAlarmBox::frmAlarmBox(FormServices& services, AlarmBoxContext context, Role role, QWidget* parent)
    : Form(services, u"frmAlarmBox"_qs, AlarmTag, parent), context_(std::move(context)), role_(role) {
  BuildControls();
  ConnectKeys();
  LoadAlarm();
  if (IsCountdown()) LoadCountdown();
}

frmAlarmBox::~frmAlarmBox() = default;

void frmAlarmBox::BuildControls() {
  auto* column = new QVBoxLayout(this);
  Text1 = new QPlainTextEdit(this);
  Text1->setReadOnly(true);
  NameControl(Text1, u"Text1"_qs, tr("Událost"));
  MakeTextBox(Text1, 0, events(), speech());
  Text1->setFocusPolicy(Qt::ClickFocus);
  WidenFor(Text1, QString(EventLetters, u'n'));
  Text1->setMinimumHeight(EventLinesAtLeast * Text1->fontMetrics().lineSpacing());
  column->addWidget(Text1);

  const auto button = [&](const char* name, const QString& caption, void (frmAlarmBox::*click)()) {
    auto* made = new QPushButton(caption, this);
    NameControl(made, QString::fromLatin1(name));
    LetButtonSpeak(made, events(), speech(), title_);
    connect(made, &QPushButton::clicked, this, [this, click] { (this->*click)(); });
    column->addWidget(made);
    return made;
  };
  cmdShow = button("cmdShow", tr("Zobrazit"), &frmAlarmBox::cmdShow_Click);
  cmdPlay = button("cmdPlay", tr("Přehrát F6"), &frmAlarmBox::cmdPlay_Click);
  cmdDelay = button("cmdDelay", tr("Odložit F9"), &frmAlarmBox::cmdDelay_Click);
  cmdDel = button("cmdDel", tr("Smazat F8"), &frmAlarmBox::cmdDel_Click);
  cmdCancel = button("cmdCancel", tr("Zavřít"), &frmAlarmBox::cmdCancel_Click);
  SetControlId(cmdShow, 1);
  SetControlId(cmdDel, 3);
  SetControlId(cmdDelay, 4);
  SetControlId(cmdCancel, 5);

  txtDelayReceptor = new QLineEdit(this);
  NameControl(txtDelayReceptor, u"txtDelayReceptor"_qs);
  txtDelayReceptor->hide();
  Timer_Offset.setInterval(OffsetInterval);
}

void frmAlarmBox::ConnectKeys() {
  events().FormKeyDown([this](Key& key) { FormKeyDown(key); });
  events().FormKeyUp([this](Key& key) { FormKeyUp(key); });
  events().GotFocus(Text1, [this] { Text1_GotFocus(); });
  connect(&Timer_Offset, &QTimer::timeout, this, [this] {
    if (Text1->isVisible()) ShowEventText();
  });
}

void frmAlarmBox::LoadAlarm() {
  setWindowTitle(tr("Alarm"));
  title_.Set(windowTitle());
  AlarmTimeText = TrimSeconds(context_.queue.NextAlarmTime());
  Text1->setPlainText(AlarmTimeText);
  cmdPlay->setEnabled(!context_.queue.NextAlarmSound.trimmed().isEmpty());
  context_.entry.DelayDateChosen = false;
  cmdShow->setDefault(true);
  cmdShow->setFocus();
}

void frmAlarmBox::LoadCountdown() {
  SetTag(CountdownTag);
  setWindowTitle(tr("Minutník"));
  const QString text = windowTitle() + tr(" skončil");
  Text1->setPlainText(text);
  title_.Set(text);
  for (QPushButton* button : {cmdShow, cmdPlay, cmdDelay, cmdDel}) button->hide();
  cmdCancel->setDefault(true);
  cmdCancel->setFocus();
}

void frmAlarmBox::showEvent(QShowEvent* event) {
  Form::showEvent(event);
  if (!AlarmBoxGone || unloaded_) return;
  AlarmBoxGone = false;
  // The end of a countdown is no answer to an alarm that falls due at the same time.
  if (!IsCountdown()) context_.queue.AlarmRung = true;
  qCDebug(boxTrace) << " *** AlarmForm.Activate: AlarmSounded = True";
  // Queued, so that the window is on the screen and has the keyboard before the first sound.
  QMetaObject::invokeMethod(
      this, [this] { AlarmSoundLoop(IsCountdown()); }, Qt::QueuedConnection);
}

/// True while another round is due, if nobody has acted.
bool frmAlarmBox::OnceMore(bool isCountdown, int rounds) const {
  const cSetting& setting = services().setting;
  if (isCountdown) return setting.RepeatTimeout == 1 || rounds < 1;
  return setting.AlarmLoop == 0 || rounds < setting.AlarmLoop;
}

void frmAlarmBox::AlarmSoundLoop(bool isCountdown) {
  QCoreApplication::processEvents();
  for (int rounds = 0; AlarmLoopAllowed && !AlarmBoxGone && OnceMore(isCountdown, rounds); ++rounds) {
    QElapsedTimer round;
    round.start();
    PlayAlarmSound(cmdPlay->isHidden());
    if (AlarmBoxGone) return;
    QCoreApplication::processEvents();
    if (round.elapsed() < SilentRound && OnceMore(isCountdown, rounds + 1)) PauseAfterSilence();
  }
}

/// Without a sound the rounds would follow each other as fast as the machine goes.
void frmAlarmBox::PauseAfterSilence() {
  bool over = false;
  QTimer pause;
  pause.setSingleShot(true);
  connect(&pause, &QTimer::timeout, this, [&over] { over = true; });
  pause.start(SilentPause);
  while (!over && AlarmLoopAllowed && !AlarmBoxGone) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
}

QString frmAlarmBox::SoundFile(bool useDefault) const {
  const QString note = context_.queue.NextAlarmSound.trimmed();
  // A record saved again holds the whole path of its note.
  if (!useDefault && !note.isEmpty()) return context_.recordFolder + u'/' + ExtractFileName(note);
  return cmdPlay->isHidden() ? services().setting.TimeOutSndFile : services().setting.AlarmSndFile;
}

void frmAlarmBox::PlayAlarmSound(bool useDefault) {
  speech().PlayToEnd(SoundFile(useDefault));
}

QString frmAlarmBox::EventText() const {
  const QString distance = context_.queue.AppTimeFromAlarm();
  return (distance.isEmpty() ? tr("Nyní") : distance) + u'\n' + context_.queue.NextAlarmText.trimmed();
}

/// Shows how far the event lies now; the cursor of somebody who reads the text stays where it is.
void frmAlarmBox::ShowEventText() {
  const QString text = EventText();
  if (text == Text1->toPlainText()) return;
  QTextCursor cursor = Text1->textCursor();
  const int anchor = cursor.anchor();
  const int position = cursor.position();
  Text1->setPlainText(text);
  const int end = static_cast<int>(text.size());
  cursor = Text1->textCursor();
  cursor.setPosition(std::min(anchor, end));
  cursor.setPosition(std::min(position, end), QTextCursor::KeepAnchor);
  Text1->setTextCursor(cursor);
}

void frmAlarmBox::FormKeyDown(Key& key) {
  if (key.Is(Qt::Key_Escape)) {
    key.Swallow();
    return cmdCancel_Click();
  }
  if (!key.Plain() || (!key.Is(Qt::Key_Return) && !key.Is(Qt::Key_Space))) return;
  key.Swallow();
  if (cmdDel->isHidden()) return cmdCancel_Click();
  // The keys show the event wherever the focus is; the button that has it does its own work behind that.
  auto* focused = qobject_cast<QPushButton*>(focusWidget());
  cmdShow_Click();
  if (focused && focused != cmdShow) focused->click();
}

void frmAlarmBox::FormKeyUp(Key& key) {
  if (key.Is(Qt::Key_F6)) cmdPlay_Click();
  if (key.Is(Qt::Key_F8)) cmdDel_Click();
  if (key.Is(Qt::Key_F9)) cmdDelay_Click();
}

void frmAlarmBox::Text1_GotFocus() {
  AlarmLoopAllowed = false;
  const QTextCursor cursor = Text1->textCursor();
  speech().FocusRead(QString(), Text1->toPlainText(), cursor.selectionStart(),
                     cursor.selectionEnd() - cursor.selectionStart());
}

void frmAlarmBox::cmdShow_Click() {
  SetControlId(Text1, 7);
  AlarmLoopAllowed = false;
  speech().StopSpeech();
  ShowEventText();
  Timer_Offset.start();
  Text1->setFocus();
  cmdShow->hide();
}

void frmAlarmBox::cmdPlay_Click() {
  PlayAlarmSound(cmdPlay->isHidden());
}

void frmAlarmBox::cmdDelay_Click() {
  AlarmLoopAllowed = false;
  TimeEntry& entry = context_.entry;
  entry.DelayStartText = AlarmTimeText;
  entry.DelayTimeSet = false;
  AlarmQueue& queue = context_.queue;
  {
    frmSetSysTime dialog(
        services(), context_.names, entry, context_.countdown,
        [&queue](int hours, int minutes, const QString& dateText) { queue.ShiftAlarm(hours, minutes, dateText); },
        this);
    dialog.SysTimeMode = dialog.CountdownMode = false;
    dialog.PostponeMode = true;
    dialog.Open();
  }
  if (entry.DelayTimeSet) queue.ShiftAlarm(entry.DelayValue.Hour(), entry.DelayValue.Minute(), QString());
  if (entry.DelayTimeSet || entry.DelayDateChosen) accept();
  if (entry.DelayDateChosen && context_.refreshMonth) context_.refreshMonth();
}

void frmAlarmBox::cmdDel_Click() {
  context_.queue.DelAlarm();
  accept();
  if (context_.refreshMonth) context_.refreshMonth();
}

void frmAlarmBox::cmdCancel_Click() {
  AlarmLoopAllowed = false;
  accept();
}

void frmAlarmBox::done(int result) {
  const bool wasVisible = isVisible();
  AlarmBoxGone = true;
  AlarmLoopAllowed = false;
  Timer_Offset.stop();
  Form::done(result);
  const TimeEntry& entry = context_.entry;
  const bool postponed = entry.DelayTimeSet || entry.DelayDateChosen;
  if (std::exchange(unloaded_, true) || !wasVisible || context_.countdown.CountdownRunning || postponed) return;
  context_.queue.AlarmFinished();
}

}  // namespace talnik
