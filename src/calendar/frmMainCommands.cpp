#include "calendar/MainMenu.h"
#include "calendar/MainServices.h"
#include "calendar/TaskFilters.h"
#include "calendar/frmFindHolDay.h"
#include "calendar/frmMain.h"
#include "menus/OwnMenus.h"
#include "shell/TextControls.h"
#include "shell/frmSettings.h"
#include "timetools/frmDingPeriod.h"
#include "timetools/frmSetSysDate.h"
#include "timetools/frmSetSysTime.h"
#include "timetools/frmStopWatch.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QLineEdit>

namespace talnik {
namespace {

constexpr int ExitForGoodCommand = 99;

}  // namespace

void frmMain::SetMenuEnabled(const char* name, bool enabled) {
  if (Menu(name)->isEnabled() != enabled) ownMenus_->SetState(Menu(name), enabled);
}

void frmMain::ShowTaskState(bool hasTasks) {
  for (const char* name : {"mnuSpareTime", "mnuDelTodayTasks", "mnuTaskToday"}) SetMenuEnabled(name, hasTasks);
}

frmMain::Command frmMain::FindCommand(const QString& name) {
  static const QHash<QString, Command> commands = {
      {u"mnuDayForward"_qs, [](frmMain& form) { form.MoveLine(1); }},
      {u"mnuDayBack"_qs, [](frmMain& form) { form.MoveLine(-1); }},
      {u"mnuFirstDayInMonth"_qs, [](frmMain& form) { form.calendar_->SelectLine(0); }},
      {u"mnuLastDayInMonth"_qs, [](frmMain& form) { form.calendar_->SelectLine(form.List1->ListCount() - 1); }},
      {u"mnuSetDate"_qs, [](frmMain& form) { form.OpenSetSysDate(false); }},
      {u"mnuSetSysDate"_qs, [](frmMain& form) { form.OpenSetSysDate(true); }},
      {u"mnuTime"_qs, [](frmMain& form) { form.speech().Say(form.lblTime->text()); }},
      {u"mnuSetTime"_qs, [](frmMain& form) { form.mnuSetTime_Click(); }},
      {u"mnuRaceTime"_qs, [](frmMain& form) { form.mnuRaceTime_Click(); }},
      {u"mnuDingHour"_qs, [](frmMain& form) { form.mnuDingHour_Click(); }},
      {u"mnuTimeOut"_qs, [](frmMain& form) { form.mnuTimeOut_Click(); }},
      {u"mnuAnnounceTimeOut"_qs, [](frmMain& form) { form.mnuAnnounceTimeOut_Click(); }},
      {u"mnuHolFind"_qs, [](frmMain& form) { form.mnuHolFind_Click(); }},
      {u"mnuHolFindNext"_qs, [](frmMain& form) { form.FindName(); }},
      {u"mnuHolSave"_qs, [](frmMain& form) { form.namesField_->Keep(); }},
      {u"mnuInsertToClip"_qs, [](frmMain& form) { form.mnuInsertToClip_Click(); }},
      {u"mnuNewRecord"_qs, [](frmMain& form) { form.mnuNewRecord_Click(); }},
      {u"mnuSpareTime"_qs, [](frmMain& form) { form.mnuSpareTime_Click(); }},
      {u"mnuSearchRecord"_qs, [](frmMain& form) { form.mnuSearchRecord_Click(); }},
      {u"mnuDelTodayTasks"_qs, [](frmMain& form) { form.mnuDelTodayTasks_Click(); }},
      {u"mnuDelSchedule"_qs, [](frmMain& form) { form.mnuDelSchedule_Click(); }},
      {u"mnuImport"_qs, [](frmMain& form) { form.mnuImport_Click(); }},
      {u"mnuExport"_qs, [](frmMain& form) { form.mnuExport_Click(); }},
      {u"mnuGoogleSync"_qs, [](frmMain& form) { form.sync_->Start(false); }},
      {u"mnuSyncLog"_qs, [](frmMain& form) { form.mnuSyncLog_Click(); }},
      {u"mnuHide"_qs, [](frmMain& form) { form.HideWindow(); }},
      {u"mnuExit"_qs, [](frmMain& form) { form.mnuExit_Click(); }},
      {u"mnuSettings"_qs, [](frmMain& form) { form.mnuSettings_Click(false); }},
      {u"mnuSettingsAccount"_qs, [](frmMain& form) { form.mnuSettings_Click(true); }},
      {u"mnuSetServer"_qs, [](frmMain& form) { form.mnuSetServer_Click(); }},
      {u"mnuOpenHelp"_qs, [](frmMain& form) { form.mnuOpenHelp_Click(); }},
      {u"mnuHelpCheckUpdate"_qs, [](frmMain& form) { form.mnuHelpCheckUpdate_Click(); }},
      {u"mnuAbout"_qs, [](frmMain& form) { form.mnuAbout_Click(); }},
  };
  return commands.value(name);
}

bool frmMain::KnowsCommand(const QString& name) const {
  return FindKeyCommand(name) || FindTaskFilter(name) || FindCommand(name);
}

void frmMain::RunCommand(const QString& name) {
  if (!calendar_ || ended_) return;
  if (const KeyCommand* command = FindKeyCommand(name)) return RunKeyCommand(*command);
  if (const TaskFilter* filter = FindTaskFilter(name)) return RunFilter(*filter);
  if (const Command command = FindCommand(name)) command(*this);
}

void frmMain::RunKeyCommand(const KeyCommand& command) {
  for (const KeyCommand::Stroke& stroke : command.strokes) {
    Key key;
    key.code = stroke.key;
    key.shift = command.shift;
    stroke.atKeyDown ? keys_->List1_KeyDown(key) : keys_->List1_KeyUp(key);
  }
}

/// The command stops at the edge of the month; the key goes on over it.
void frmMain::MoveLine(int by) {
  calendar_->SelectLine(List1->ListIndex() + by);
}

void frmMain::mnuExit_Click() {
  ExitCommand = ExitForGoodCommand;
  HideOnClose = false;
  close();
}

void frmMain::mnuSettings_Click(bool account) {
  const int hotKey = setting_.HotKeyCall;
  settings_.OpenGoogleTab = account;
  const bool goesOn = RunModal(Afterwards::IsSilent, [this] {
    frmSettings form(services(),
                     SettingsHost{.state = settings_,
                                  .shell = *platform_.shell,
                                  .keyboardHook = *platform_.keyboardHook,
                                  .registry = *platform_.registry,
                                  .SyncTimerSetting = [this] { SyncTimerSetting(); },
                                  .handOver = [this](const QString& password,
                                                     QString& reason) { return passwords_->Give(password, reason); }},
                     this);
    form.Open();
  });
  settings_.OpenGoogleTab = false;
  hotKeyIsNew_ = hotKeyIsNew_ || hotKey != setting_.HotKeyCall;
  if (goesOn) RefreshMenus();
}

void frmMain::mnuSetServer_Click() {
  if (platform_.shell->OpenAccessibilitySettings()) return WaitForForeignWindow();
  RunModal(Afterwards::IsSilent, [this] { dialogs().Tell(tr("Nastavení prostředí tu není k dispozici.")); });
}

void frmMain::mnuInsertToClip_Click() {
  QGuiApplication::clipboard()->setText(SelectedDayText());
  speech().Say(tr("vkládám do schránky"));
}

void frmMain::OpenSetSysDate(bool setSystem) {
  const bool goesOn = RunModal(Afterwards::IsSilent, [this, setSystem] {
    frmSetSysDate form(
        services(), [this](const Date& date) { calendar_->ShowDate(date); }, this);
    form.SetSystem = setSystem;
    form.Open();
  });
  if (goesOn) List1->setFocus();
}

void frmMain::mnuSetTime_Click() {
  RunModal(Afterwards::IsSilent, [this] {
    frmSetSysTime form(services(), names_, entry_, countdown_, {}, this);
    form.SysTimeMode = true;
    form.Open();
  });
}

void frmMain::mnuRaceTime_Click() {
  RunModal(Afterwards::IsSilent, [this] {
    frmStopWatch form(services(), *platform_.registry, *platform_.codePage, this);
    form.InitMe();
    form.Open();
  });
}

void frmMain::mnuDingHour_Click() {
  RunModal(Afterwards::IsSilent, [this] {
    frmDingPeriod form(services(), *platform_.registry, this);
    form.Open();
  });
}

void frmMain::mnuTimeOut_Click() {
  const bool wasRunning = countdown_.CountdownRunning;
  const Date oldEnd = countdown_.CountdownEnd;
  const bool goesOn = RunModal(Afterwards::Speaks, [this] {
    frmSetSysTime form(services(), names_, entry_, countdown_, {}, this);
    form.CountdownMode = true;
    form.Open();
  });
  if (ended_) return;
  // The dialog has said what it did; only where it did nothing does the list tell that it is back.
  const bool changed = wasRunning != countdown_.CountdownRunning || oldEnd != countdown_.CountdownEnd;
  quietReturn_ = quietReturn_ && goesOn && changed;
  if (countdown_.CountdownRunning) {
    countdown_.CountdownRung = false;
    ShowCountdownLeft();
  } else {
    SetCaption(tr("Talník"));
  }
  SetMenuEnabled("mnuAnnounceTimeOut", countdown_.CountdownRunning);
}

void frmMain::mnuAnnounceTimeOut_Click() {
  if (countdown_.CountdownRunning) speech().Say(CountdownLeftSentence(countdown_, Now()));
}

void frmMain::mnuHolFind_Click() {
  SetMenuEnabled("mnuHolFindNext", false);
  nameSearch_.Restart();
  const bool goesOn = RunModal(Afterwards::IsSilent, [this] {
    frmFindHolDay form(services(), this);
    nameSearch_.SearchText = form.Open();
  });
  if (goesOn) FindName();
}

void frmMain::FindName() {
  if (nameSearch_.SearchText.isEmpty()) return;
  switch (nameSearch_.Next(nameDays_)) {
    case NameSearch::Outcome::NoNames:
      return dialogs().Tell(tr("Databáze jmen není dostupná"));
    case NameSearch::Outcome::End:
      SetMenuEnabled("mnuHolFindNext", false);
      return dialogs().Tell(tr("Konec hledání."));
    case NameSearch::Outcome::Found:
      break;
  }
  SetMenuEnabled("mnuHolFindNext", true);
  quietReturn_ = isVisible() && !isActiveWindow();
  // The names of 29 February are found in every year, the day is not.
  const auto day = CDate(NameDays::DayFromLine(nameSearch_.LastHit()), Now());
  day ? calendar_->ShowDate(*day) : calendar_->Refuse();
}

}  // namespace talnik
