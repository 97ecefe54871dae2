#include "calendar/MainServices.h"
#include "calendar/frmMain.h"
#include "timetools/HourAnnounce.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>

namespace talnik {
namespace {

constexpr int MinuteInterval = 60000;
constexpr int BackToMainInterval = 500;

}  // namespace

QString frmMain::ShownTime() const {
  return lblTime->text();
}

void frmMain::ShowTime(const QString& text) {
  const int caret = lblTime->hasSelectedText() ? lblTime->selectionStart() : lblTime->cursorPosition();
  lblTime->setText(text);
  lblTime->setCursorPosition(caret);
}

void frmMain::SetCaption(const QString& caption) {
  setWindowTitle(caption);
  platform_.trayIcon->SetTip(windowTitle());
}

void frmMain::ShowCountdownLeft() {
  SetCaption(tr("Talník") + u" - "_qs + CountdownLeftText(countdown_, Now()));
}

void frmMain::RunBox(frmAlarmBox::Role role) {
  const bool wasHidden = !isVisible();
  if (wasHidden) {
    showMinimized();
  } else if (!isMinimized()) {
    raise();
  }
  {
    // A window that is minimised would take a box of its own down with it.
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* owner = modal ? modal : isMinimized() ? nullptr : this;
    frmAlarmBox box(services(),
                    AlarmBoxContext{.queue = *alarms_,
                                    .countdown = countdown_,
                                    .entry = entry_,
                                    .names = names_,
                                    .recordFolder = paths_.RecordFolder,
                                    .refreshMonth = [this] { calendar_->SetTodayState(false); }},
                    role, owner);
    QTimer::singleShot(0, &box, [this, &box] { BringToFront(&box); });
    alarmBoxOpen_ = true;
    box.Open();
    alarmBoxOpen_ = false;
  }
  if (wasHidden && !ended_) hide();
}

void frmMain::RunCountdownBox() {
  if (isVisible()) setWindowState(windowState() & ~Qt::WindowMinimized);
  RunBox(frmAlarmBox::Role::Countdown);
}

void frmMain::CountdownIsOver() {
  if (ended_) return;
  SetCaption(tr("Talník"));
  ShowTime(TimeText(Now()));
  setWindowState(windowState() & ~Qt::WindowMinimized);
  SetMenuEnabled("mnuAnnounceTimeOut", false);
}

void frmMain::RunAlarmBox() {
  entry_.DelayTimeSet = false;
  RunBox(frmAlarmBox::Role::Alarm);
}

void frmMain::AnnounceTime(int minute, bool& dingDone) {
  AnnounceTick(
      minute, setting_, speech(), [this] { return lblTime->text(); }, dingDone);
}

void frmMain::SyncTimerSetting() {
  if (setting_.AutSync < 1) return AutSync_Timer.stop();
  AutSync_Timer.start(MinuteInterval);
}

void frmMain::AutSync_Timer_Timer() {
  if (autSync_.Tick(setting_.AutSync)) sync_->Start(true);
}

void frmMain::WaitForForeignWindow() {
  backToMain_.Start();
  BackToMainTimer.start(BackToMainInterval);
}

void frmMain::BackToMainTimer_Timer() {
  if (!backToMain_.Tick(*platform_.shell)) return;
  BackToMainTimer.stop();
  setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowMaximized);
  if (!GoToOpenWindow()) BringToFront(this);
}

}  // namespace talnik
