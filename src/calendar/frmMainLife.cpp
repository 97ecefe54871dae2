#include "calendar/ExitQuestion.h"
#include "calendar/MainServices.h"
#include "calendar/Tray.h"
#include "calendar/frmMain.h"
#include "editor/frmSchedule.h"
#include "menus/OwnMenus.h"
#include "shell/HotKeyText.h"
#include "shell/TextControls.h"
#include "shell/frmAction.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QMenu>
#include <QTimer>

#include <utility>

namespace talnik {
namespace {

constexpr int ExitForGood = 99;
constexpr int ClosingAction = 3;

/// The windows that a second start closes, in this order.
const char* const kSwept[] = {"frmRepeat",   "frmStopWatch", "frmSetSysDate", "frmSetSysTime",
                              "frmSchedule", "frmAlarmBox",  "frmLapTime"};

void Discard(QWidget* window) {
  if (auto* editor = qobject_cast<frmSchedule*>(window)) return editor->Discard();
  if (auto* dialog = qobject_cast<QDialog*>(window)) return dialog->done(QDialog::Rejected);
  window->close();
}

bool AltIsHeld() {
  return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
}

}  // namespace

void frmMain::closeEvent(QCloseEvent* event) {
  // A window manager keeps Alt+F4 for itself: what comes here is its wish to close, while Alt is down.
  if (event->spontaneous() && AltIsHeld()) {
    lastKey_ = Qt::Key_F4;
    lastShift_ = Qt::AltModifier;
  }
  if (Form_Unload()) {
    event->ignore();
  } else {
    event->accept();
  }
}

/// True when the window stays.
bool frmMain::Form_Unload() {
  if (ended_ || !services_) return false;
  if (std::exchange(unloading_, true)) return true;
  bool exitAnyway = false;
  const bool cancelled = ExitCommand != ExitForGood && AskHowToClose(exitAnyway);
  const bool hides = !cancelled && HideOnClose && !exitAnyway;
  if (hides) HideWindow();
  const bool stays = cancelled || hides || CountdownForbidsExit();
  if (!stays) {
    namesField_->AskAboutChanges();
    End();
  }
  unloading_ = false;
  return stays;
}

/// Alt+F4 is judged by the setting; any other way of closing is not. True when nothing is to happen.
bool frmMain::AskHowToClose(bool& exitAnyway) {
  const bool altF4 = std::exchange(lastKey_, 0) == Qt::Key_F4 && lastShift_ == Qt::AltModifier;
  if (!altF4) return false;
  const ExitDecision decision = DecideExit(setting_.ExitMode, [this] { return ChooseExit(); });
  HideOnClose = decision.HideOnClose.value_or(HideOnClose);
  setting_.ExitMode = decision.ExitMode.value_or(setting_.ExitMode);
  exitAnyway = decision.exitWithoutHide;
  if (decision.stopSpeech) speech().StopSpeech();
  return decision.cancel;
}

int frmMain::ChooseExit() {
  frmAction question(services(), this);
  for (int choice = 1; choice <= 4; ++choice) question.ActionOnShortCut(choice, ClosingAction);
  question.InitActions(ExitChoices(windowTitle()));
  return question.ChosenAction;
}

bool frmMain::CountdownForbidsExit() {
  if (!countdown_.CountdownRunning) return false;
  ShowNormal();
  if (dialogs().Ask(tr("Běží minutky, ukončit?"), Dialogs::Default::Second)) return false;
  // Refused: the next close is judged anew, and the window's X hides again.
  HideOnClose = true;
  ExitCommand = 0;
  return true;
}

/// Everything of the program goes, in this order. The objects stay until the event loop has ended: routines that are
/// under way in windows that are swept away here still hold references to them.
void frmMain::End() {
  ended_ = true;
  Timer1.stop();
  AutSync_Timer.stop();
  BackToMainTimer.stop();
  sync_->Abandon();
  passwords_->Drop();
  const bool namesKept = nameDays_.SaveNames(paths_.Names, *platform_.codePage);
  if (!namesKept && namesField_->NamesChanged) dialogs().Tell(tr("Chyba dat: ") + paths_.Names);
  speech().StopSpeech();
  setting_.SaveAppSettings();
  DiscardForms();
  platform_.trayIcon->Delete();
  platform_.keyboardHook->Watch(0);
  store_->Close();
  hide();
  Q_EMIT Ended();
}

void frmMain::EndSession() {
  if (!ended_ && mainTimer_) End();
}

void frmMain::HideWindow() {
  focusWhenHidden_ = focusWidget();
  hide();
}

/// Other programs of the family change how the menus look, while this one runs for days.
void frmMain::RefreshMenus() {
  ReadMenuLook(*platform_.registry, look_);
  if (ownMenus_) ownMenus_->RefreshOwnMenus();
}

void frmMain::ShowNormal() {
  RefreshMenus();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  // A late event of the desktop may have moved the focus of the hidden window.
  if (!isVisible() && focusWhenHidden_) focusWhenHidden_->setFocus();
  show();
  BringToFront(QApplication::activeModalWidget() ? QApplication::activeModalWidget() : this);
}

void frmMain::CloseMenus() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    popup->close();
    if (popup == QApplication::activePopupWidget()) return;
  }
}

void frmMain::BringToFront(QWidget* window) {
  window->raise();
  window->activateWindow();
  platform_.shell->BringToFront(window->winId());
}

/// Closes every window of the program but this one, whatever state it is in.
void frmMain::DiscardForms() {
  ++sweeps_;
  CloseMenus();
  for (const char* name : kSwept) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      // An editor that is still telling of conflicts is not to be seen yet.
      const bool open = window->isVisible() || qobject_cast<frmSchedule*>(window);
      if (open && window->objectName() == QLatin1String(name)) Discard(window);
    }
  }
  // Messages and questions stand on top of them.
  for (qsizetype left = QApplication::topLevelWidgets().size(); left > 0; --left) {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || modal == this) return;
    Discard(modal);
  }
}

void frmMain::ComeToFront() {
  DiscardForms();
  ShowNormal();
}

void frmMain::Told(const QString& word) {
  if (ended_) return;
  if (word == u"show") return ComeToFront();
  if (word != u"close") return;
  HideOnClose = false;
  close();
}

/// True when another window of the program stands over this one; it is brought to the front.
bool frmMain::GoToOpenWindow() {
  QWidget* modal = QApplication::activeModalWidget();
  if (!modal) return false;
  BringToFront(modal);
  return true;
}

void frmMain::WatchHotKey() {
  platform_.keyboardHook->Released = [this] { HotKeyReleased(); };
  // In the middle of what the desktop has to say nothing is asked of the user.
  platform_.keyboardHook->Refused = [this] { QTimer::singleShot(0, this, [this] { HotKeyRefused(); }); };
  platform_.keyboardHook->Watch(setting_.HotKeyCall);
}

void frmMain::HotKeyReleased() {
  if (ended_) return;
  const QWidget* before = QApplication::activeWindow();
  CloseMenus();
  if (GoToOpenWindow()) {
    // A window that has had the keyboard already gets no focus that would be read.
    auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
    if (form && form == before) form->ReadAgain();
    return;
  }
  const bool listIsActive = isActiveWindow() && List1->hasFocus();
  if (listIsActive) return calendar_->ReadDay(QString(), true, true);
  view_.ShownByHotKey = true;
  ShowNormal();
}

/// One that the user has just set and that cannot be had is told of; at the start the program goes on without it.
void frmMain::HotKeyRefused() {
  if (!ended_ && std::exchange(hotKeyIsNew_, false)) dialogs().Warn(HotKeyRefusedText(setting_.HotKeyCall));
}

void frmMain::TrayLeftClick() {
  if (ended_) return;
  if (alarmBoxOpen_) return speech().Signal(Speech::Refused);
  if (GoToOpenWindow()) return;
  const bool wasVisible = isVisible();
  const bool wasActive = isActiveWindow();
  ShowNormal();
  if (focusWidget() != List1) return List1->setFocus();
  // A window that comes to the front is read by the focus that it gets.
  if (wasActive) calendar_->ReadDay(windowTitle(), !wasVisible);
}

void frmMain::TrayMenu() {
  if (ended_ || std::exchange(trayMenuOpen_, true)) return;
  QMenu menu;
  menu.setObjectName(u"TrayMenu"_qs);
  for (const TrayItem& item : TrayItems()) {
    const QString command = QString::fromLatin1(item.captionOf);
    const QString own = QCoreApplication::translate("Tray", item.caption);
    const QString caption = command.isEmpty() ? own : Menu(item.captionOf)->text();
    QAction* action = caption.isEmpty() ? menu.addSeparator() : menu.addAction(caption);
    action->setData(item.id);
    if (!command.isEmpty()) action->setObjectName(command);
  }
  ReadMenuLook(*platform_.registry, look_);
  ownMenus_->Attach(menu);
  const QAction* chosen = menu.exec(QCursor::pos());
  trayMenuOpen_ = false;
  if (chosen) RunTrayCommand(chosen->data().toInt(), chosen->objectName());
}

void frmMain::RunTrayCommand(int id, const QString& command) {
  if (ended_) return;
  ExitCommand = id;
  if (id == ExitForGood) {
    HideOnClose = false;
    close();
    return;
  }
  if (GoToOpenWindow()) return;
  if (command.isEmpty()) {
    view_.TitleOnFocus = true;
    return TrayLeftClick();
  }
  ShowNormal();
  RunCommand(command);
}

bool frmMain::RunModal(Afterwards afterwards, const std::function<void()>& open) {
  const int sweeps = sweeps_;
  quietReturn_ = false;
  open();
  if (ended_ || sweeps != sweeps_) return false;
  // Coming back to this window would read the day over what the command is about to say.
  quietReturn_ = afterwards == Afterwards::Speaks && isVisible() && !isActiveWindow();
  return true;
}

}  // namespace talnik
