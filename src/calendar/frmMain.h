#pragma once

#include "alarms/AlarmQueue.h"
#include "alarms/frmAlarmBox.h"
#include "calendar/BackToMain.h"
#include "calendar/MainTimer.h"
#include "calendar/MonthCalendar.h"
#include "calendar/MonthKeys.h"
#include "calendar/MonthView.h"
#include "calendar/NameDays.h"
#include "calendar/NamesField.h"
#include "editor/EditorState.h"
#include "platform/Platform.h"
#include "shell/ControlEvents.h"
#include "shell/FormServices.h"
#include "shell/Paths.h"
#include "shell/TakeSettings.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "store/Store.h"
#include "sync/PasswordHandOver.h"
#include "sync/SyncDriver.h"
#include "timetools/Countdown.h"
#include "timetools/TimeEntry.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <memory>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QToolButton;

namespace talnik {

class NoteBox;
class OwnMenus;
struct CsvImport;
struct KeyCommand;
struct TaskFilter;
struct SpawnTime;

/// The one window of the program's life: the month list, the menus, the timers and the tray. It owns what the whole
/// process shares and hands references on.
class frmMain : public QMainWindow, private TickHost {
  Q_OBJECT

 public:
  /// `arguments` is the command line without the program.
  frmMain(Platform platform, QStringList arguments);
  ~frmMain() override;

  /// Starts the program. False when another process runs already and this one is to end.
  bool Load();

  /// Ends the program as its exit does, but asks nothing: the system ends it, and nobody may be there to answer.
  void EndSession();

  /// The command with this name in the main menu.
  QAction* Menu(const char* name) const { return menu_.value(QString::fromLatin1(name)); }

  /// What every message, question and file dialog goes through, once the program is loaded.
  Dialogs& dialogs() const;

  /// True for a name of the main menu that a command stands behind.
  bool KnowsCommand(const QString& name) const;

  ListBox* List1 = nullptr;
  QLabel* Label1 = nullptr;
  QPushButton* Command1 = nullptr;
  QPushButton* Command2 = nullptr;
  QPushButton* Command4 = nullptr;
  QToolButton* Image1 = nullptr;
  QToolButton* Image2 = nullptr;
  NoteBox* txtNames = nullptr;
  QLineEdit* lblTime = nullptr;
  QWidget* Shape1 = nullptr;
  QWidget* Shape2 = nullptr;

  QTimer Timer1;
  QTimer AutSync_Timer;
  QTimer BackToMainTimer;

 Q_SIGNALS:
  /// The program has ended in good order; the event loop may stop.
  void Ended();

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  /// Speech, messages and what every window gets of them.
  struct Services;
  /// What a command does when its window has closed.
  enum class Afterwards { Speaks, IsSilent };

  // Window (frmMainLayout.cpp).
  void BuildControls();
  void LayOut();
  void PaintControls();
  void ConnectControls();
  void ConnectFocus();
  void OnFocus(QWidget* control, const std::function<void()>& handler);
  void Form_KeyDown(Key& key);
  void Form_Activate();
  void List1_GotFocus();
  bool TakeSilentReturn();
  void CheckVoiceSupport();

  // Start (frmMain.cpp).
  void StartServices();
  void ChooseSpeaker();
  void CheckStore();
  /// Runs a statement of the user's; a failure is told.
  bool Write(const Statement& statement);
  bool TellIfSecond();
  void StartCalendar();
  void StartOutside();
  void ShowIcon();
  void ShowFirst();
  int CountTasks(const Date& day);
  SpawnTime Spawning() const;

  // End, tray and the front (frmMainLife.cpp).
  bool Form_Unload();
  bool AskHowToClose(bool& exitAnyway);
  int ChooseExit();
  bool CountdownForbidsExit();
  void End();
  void HideWindow();
  void ShowNormal();
  /// Over the windows of all programs, with the keyboard.
  void BringToFront(QWidget* window);
  static void CloseMenus();
  void ComeToFront();
  void DiscardForms();
  void Told(const QString& word);
  void WatchHotKey();
  void HotKeyReleased();
  void HotKeyRefused();
  void TrayLeftClick();
  void RefreshMenus();
  void TrayMenu();
  void RunTrayCommand(int id, const QString& command);
  bool GoToOpenWindow();
  /// Shows a window modally; false when it was swept away and the command is to stop.
  bool RunModal(Afterwards afterwards, const std::function<void()>& open);

  // Menu commands (frmMainCommands.cpp, frmMainTasks.cpp).
  using Command = void (*)(frmMain&);
  static Command FindCommand(const QString& name);
  void RunCommand(const QString& name);
  void RunKeyCommand(const KeyCommand& command);
  void MoveLine(int by);
  void mnuTimeOut_Click();
  void mnuAnnounceTimeOut_Click();
  void mnuSetTime_Click();
  void mnuRaceTime_Click();
  void mnuDingHour_Click();
  void OpenSetSysDate(bool setSystem);
  void mnuHolFind_Click();
  void FindName();
  void mnuExit_Click();
  void mnuSettings_Click(bool account);
  void mnuSetServer_Click();
  void WaitForForeignWindow();
  void mnuInsertToClip_Click();
  void SetMenuEnabled(const char* name, bool enabled);
  void ShowTaskState(bool hasTasks);
  void RunFilter(const TaskFilter& filter);
  bool HoldsAnything(const TaskFilter& filter);
  /// A new record to be asked for: its day, the time to begin with, and the window that asks when it is not this one,
  /// with where the day goes on which the editor closes.
  struct NewRecord {
    QString dayText;
    std::optional<Date> suggested = {};
    QWidget* over = nullptr;
    std::optional<Date>* shown = nullptr;
  };
  void mnuNewRecord_Click();
  bool EnterNewRecord(const NewRecord& wanted);
  bool TimePassedQuestion(const QString& dateText, const QString& timeText);
  /// Opens the editor, above `over` unless that is empty. The day on which it closes is shown in the month list, or
  /// goes to `shown` if there is one. False when it was swept away.
  bool OpenEditor(QWidget* over = nullptr, std::optional<Date>* shown = nullptr);
  void mnuDelTodayTasks_Click();
  void mnuDelSchedule_Click();
  void mnuSearchRecord_Click();
  QString SelectedDayText() const;

  // Help (frmMainHelp.cpp).
  void mnuOpenHelp_Click();
  void mnuHelpCheckUpdate_Click();
  void mnuAbout_Click();
  void TellOfHelp(const QString& text);

  // Files of appointments (frmMainExchange.cpp).
  void mnuImport_Click();
  void mnuExport_Click();
  QString PickCsv(int kind, const QString& fieldsBeforeFolder, const QString& title);
  bool RunExchange(const QString& title, const QString& phase, bool brief,
                   const std::function<void(const std::function<bool(qint64, qint64)>& progress)>& job);
  void TellImport(const CsvImport& result, const QString& failure);

  // Synchronisation (frmMainSync.cpp).
  void PrepareSync();
  bool MergeIntoStore(const std::function<void()>& merge);
  void mnuSyncLog_Click();

  // Day overview (frmMainDayView.cpp).
  void mnuSpareTime_Click();
  void ShowTasksOf(const Date& day, int recordsBefore, QWidget* over, std::optional<Date>& shown);

  // Timers (frmMainTimer.cpp).
  QString ShownTime() const override;
  void ShowTime(const QString& text) override;
  void ShowCountdownLeft() override;
  void RunCountdownBox() override;
  void CountdownIsOver() override;
  void RunAlarmBox() override;
  bool AlarmBoxIsOpen() const override { return alarmBoxOpen_; }
  void AnnounceTime(int minute, bool& dingDone) override;
  void RunBox(frmAlarmBox::Role role);
  void SetCaption(const QString& caption);
  void SyncTimerSetting();
  void AutSync_Timer_Timer();
  void BackToMainTimer_Timer();

  Speech& speech() const;
  FormServices& services() const;
  Date Now() const;

  Platform platform_;
  QStringList arguments_;
  QHash<QString, QAction*> menu_;
  ControlEvents events_;

  CalendarNames names_;
  CommonSettings look_;
  Paths paths_;
  cSetting setting_;
  std::unique_ptr<Store> store_;
  std::unique_ptr<Services> services_;
  MonthView view_;
  Countdown countdown_;
  TimeEntry entry_;
  EditorState editor_;
  NameDays nameDays_;
  NameSearch nameSearch_;
  AutSyncCount autSync_;
  BackToMain backToMain_;
  std::unique_ptr<AlarmQueue> alarms_;
  std::unique_ptr<SyncDriver> sync_;
  std::unique_ptr<PasswordHandOver> passwords_;
  SettingsState settings_;
  std::unique_ptr<NamesField> namesField_;
  std::unique_ptr<MonthCalendar> calendar_;
  std::unique_ptr<MonthKeys> keys_;
  std::unique_ptr<MainTimer> mainTimer_;
  std::unique_ptr<OwnMenus> ownMenus_;

  bool HideOnClose = false;
  int ExitCommand = 0;
  int lastKey_ = 0;
  Qt::KeyboardModifiers lastShift_;
  bool started_ = false;  ///< the month list has had the focus once
  bool unloading_ = false;
  bool ended_ = false;
  bool alarmBoxOpen_ = false;
  bool trayMenuOpen_ = false;
  bool hotKeyIsNew_ = false;  ///< set by the user since the start
  bool quietReturn_ = false;  ///< the next activation is silent: the command that ran has spoken
  bool justActivated_ = false;
  QPointer<QWidget> focusWhenHidden_;
  QString exchangeFolder_;     ///< of the last file that was exported or imported
  bool storeIsTaken_ = false;  ///< a long job is in the middle of a transaction
  int sweeps_ = 0;             ///< how often open windows were swept away
};

}  // namespace talnik
