#include "calendar/frmMain.h"

#include "calendar/MainServices.h"
#include "editor/StoreFailures.h"
#include "menus/OwnMenus.h"
#include "recurrence/EditSeries.h"
#include "recurrence/RecurrPopulate.h"
#include "shell/Form.h"
#include "shell/TextControls.h"
#include "store/Repair.h"
#include "store/Statements.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace talnik {
namespace {

constexpr int MainTag = 1710;
constexpr int TickInterval = 500;
const char* const DayCueFile = "space.wav";

QString DataError(const QString& path) {
  return QCoreApplication::translate("frmMain", "Chyba dat: ") + path;
}

}  // namespace

frmMain::frmMain(Platform platform, QStringList arguments)
    : platform_(std::move(platform)),
      arguments_(std::move(arguments)),
      events_(this),
      setting_(*platform_.profile, *platform_.shell) {
  setObjectName(u"frmMain"_qs);
  SetFormTag(this, MainTag);
  BuildControls();
  LayOut();
}

frmMain::~frmMain() = default;

Speech& frmMain::speech() const {
  return services_->speech;
}

Dialogs& frmMain::dialogs() const {
  return services_->dialogs;
}

FormServices& frmMain::services() const {
  return services_->forms;
}

Date frmMain::Now() const {
  return Date::FromQDateTime(platform_.clock->Now());
}

bool frmMain::Load() {
  if (!platform_.instance->Acquire()) {
    platform_.instance->Tell(u"show"_qs);
    return false;
  }
  names_ = LocaleCalendarNames();
  look_ = InitCommonSettings(*platform_.registry, platform_.shell->InstalledFolder());
  paths_ = InitPaths(*platform_.shell, look_.FamilyFolderWithSlash());
  StartServices();
  CheckStore();
  setting_.Init(paths_.Settings, QString(), look_.FamilyFolderWithSlash());
  ChooseSpeaker();
  PaintControls();
  if (TellIfSecond()) return false;
  SetCaption(tr("Talník"));
  StartCalendar();
  StartOutside();
  ShowFirst();
  return true;
}

void frmMain::ChooseSpeaker() {
  using Speaker = Voice::Speaker;
  constexpr std::array speakers = {Speaker::Own, Speaker::Reader, Speaker::Automatic};
  const auto chosen = static_cast<std::size_t>(setting_.Speaker);
  if (platform_.voice)
    platform_.voice->ChooseSpeaker(chosen < speakers.size() ? speakers.at(chosen) : Speaker::Automatic);
}

/// The speech is there before the store is checked, so that what is wrong with it is heard.
void frmMain::StartServices() {
  services_ = std::make_unique<Services>(platform_, look_, setting_);
  store_ = std::make_unique<Store>(paths_.Store);
  store_->WriteFailed = [this](const QString& what) {
    // The routine that was writing comes to its end first.
    QTimer::singleShot(0, this, [this, what] { dialogs().Tell(DataError(paths_.Store) + u". "_qs + what); });
  };
}

void frmMain::CheckStore() {
  const StoreFailures toldHere(*store_);
  if (!RepairSchedule(*store_)) dialogs().Tell(DataError(paths_.Store));
}

bool frmMain::Write(const Statement& statement) {
  const StoreFailures failures(*store_);
  if (store_->Execute(statement)) return true;
  dialogs().Tell(failures.Message());
  return false;
}

/// Two programs started at the same moment: both may have passed the first test.
bool frmMain::TellIfSecond() {
  if (platform_.instance->Acquire()) return false;
  if (!platform_.instance->Tell(u"show"_qs)) dialogs().Tell(tr("Talník je již spuštěn."));
  return true;
}

SpawnTime frmMain::Spawning() const {
  return {.now = Now(), .biases = platform_.timeZone->Biases()};
}

int frmMain::CountTasks(const Date& day) {
  ExtendSeries(*store_, day, Spawning());
  const qint64 count = store_->Number(statements::CountOfDay(day)).value_or(0);
  return static_cast<int>(std::min<qint64>(count, std::numeric_limits<int>::max()));
}

void frmMain::StartCalendar() {
  ownMenus_ = std::make_unique<OwnMenus>(speech(), look_);
  ownMenus_->Attach(*menuBar());
  ownMenus_->AttachOthers();
  nameDays_.LoadNames(paths_.Names, *platform_.codePage);
  nameSearch_.Restart();
  namesField_ = std::make_unique<NamesField>(txtNames, nameDays_, view_, speech(), dialogs());
  calendar_ = std::make_unique<MonthCalendar>(
      MonthCalendar::Controls{List1, Label1, Command1}, view_, names_, speech(),
      MonthCalendar::Host{.CountTasks = [this](const Date& day) { return CountTasks(day); },
                          .WindowIsVisible = [this] { return isVisible(); },
                          .Caption = [this] { return windowTitle(); },
                          .ShowTaskState = [this](bool hasTasks) { ShowTaskState(hasTasks); },
                          .ShowNameOfDay = [this](const Date& day) { namesField_->ShowNameOfDay(day); },
                          .Now = [this] { return Now(); },
                          .DayCue = look_.SoundPath(QString::fromLatin1(DayCueFile))});
  keys_ = std::make_unique<MonthKeys>(*calendar_,
                                      MonthKeys::Commands{.TasksOfTheDay = [this] { RunCommand(u"mnuTaskToday"_qs); },
                                                          .DayOverview =
                                                              [this] {
                                                                const bool built = Menu("mnuSpareTime")->isEnabled();
                                                                if (built) Menu("mnuSpareTime")->trigger();
                                                                return built;
                                                              },
                                                          .PreviousMonth = [this] { Command2->click(); },
                                                          .NextMonth = [this] { Command4->click(); }});
  ConnectControls();
  ConnectFocus();
  calendar_->Load(Now());
  SetMenuEnabled("mnuHolFindNext", false);
  SetMenuEnabled("mnuAnnounceTimeOut", false);
  ShowTime(TimeText(Now()));
}

/// The tray, the words of other processes, the alarms, the hot key and the clock.
void frmMain::StartOutside() {
  platform_.trayIcon->LeftClick = [this] { TrayLeftClick(); };
  platform_.trayIcon->RightClick = [this] { TrayMenu(); };
  // To look for the icon takes longer than all the rest here, and the month is to be heard first.
  QTimer::singleShot(TickInterval, this, [this] { ShowIcon(); });
  platform_.instance->Told = [this](const QString& word) { Told(word); };

  alarms_ = std::make_unique<AlarmQueue>(
      AlarmSurroundings{.store = *store_,
                        .clock = *platform_.clock,
                        .timeZone = *platform_.timeZone,
                        .recordFolder = paths_.RecordFolder,
                        .deleteSeriesIfEmpty = [this](const QString& guid) { DeleteSeriesIfEmpty(*store_, guid); }});
  alarms_->RegisterAlarm();
  PrepareSync();
  HideOnClose = true;

  WatchHotKey();

  connect(qApp, &QGuiApplication::applicationStateChanged, this,
          [this](Qt::ApplicationState state) { platform_.braille->SetActive(state == Qt::ApplicationActive); });
  platform_.braille->SetActive(QGuiApplication::applicationState() == Qt::ApplicationActive);

  TickHost& host = *this;
  mainTimer_ = std::make_unique<MainTimer>(*platform_.clock, countdown_, *alarms_, setting_, host);
  connect(&Timer1, &QTimer::timeout, this, [this] { mainTimer_->Tick(); });
  connect(&AutSync_Timer, &QTimer::timeout, this, [this] { AutSync_Timer_Timer(); });
  connect(&BackToMainTimer, &QTimer::timeout, this, [this] { BackToMainTimer_Timer(); });
  Timer1.start(TickInterval);
}

void frmMain::ShowIcon() {
  if (ended_) return;
  // By its name the desktop can show it in the size it wants.
  const QIcon ownFile(platform_.shell->InstalledFolder() + u"icons/talnik.png"_qs);
  setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName(), ownFile));
  platform_.trayIcon->Add(windowIcon(), windowTitle());
}

void frmMain::ShowFirst() {
  List1->setFocus();
  if (arguments_ != QStringList{u"/h"_qs}) show();
  SyncTimerSetting();
  calendar_->SetTodayState(false);
}

}  // namespace talnik
