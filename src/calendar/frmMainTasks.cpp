#include "calendar/MainServices.h"
#include "calendar/TaskFilters.h"
#include "calendar/frmMain.h"
#include "editor/frmSchedule.h"
#include "editor/frmSearchRecord.h"
#include "shell/TextControls.h"
#include "store/Statements.h"
#include "timetools/MonthList.h"
#include "timetools/frmSetSysTime.h"

#include <QFile>

namespace talnik {

QString frmMain::SelectedDayText() const {
  const auto day = SelectedDate(List1, view_.CurrentDate);
  return day ? DayText(*day) : QString();
}

bool frmMain::HoldsAnything(const TaskFilter& filter) {
  switch (filter.test) {
    case TaskFilter::Test::TasksOfDay:
      return calendar_->TasksOfDay() > 0;
    case TaskFilter::Test::RecordsFromFilterDate:
      return CountRecords(*store_, 0, CDate(editor_.FilterDate, Now())) > 0;
    case TaskFilter::Test::AllRecords:
      return CountRecords(*store_, 0) > 0;
    case TaskFilter::Test::RecordsWithAlarm:
      return CountRecords(*store_, 1) > 0;
  }
  return false;
}

void frmMain::RunFilter(const TaskFilter& filter) {
  editor_.FilterDate = filter.fromSelectedDay ? SelectedDayText() : QString();
  if (!HoldsAnything(filter)) return speech().Signal(Speech::Refused);
  editor_.FilterMode = filter.filterMode;
  editor_.CustomQuery = statements::OfDay(view_.SelectedDay);
  editor_.CustomSkip = 0;
  editor_.RecordDate.clear();
  if (OpenEditor()) calendar_->SetTodayState(false);
}

bool frmMain::OpenEditor(QWidget* over, std::optional<Date>* shown) {
  return RunModal(Afterwards::Speaks, [this, over, shown] {
    frmSchedule form(
        services(),
        EditorContext{
            .store = *store_,
            .state = editor_,
            .timeZone = *platform_.timeZone,
            .recorder = *platform_.recorder,
            .paths = paths_,
            .names = names_,
            .registerAlarm = [this] { alarms_->RegisterAlarm(); },
            .showDate = [this, shown](const Date& day) { shown ? void(*shown = day) : calendar_->ShowDate(day); },
            .skipFocusSpeech = [this] { view_.SkipFocusSpeech = true; }},
        over ? over : this);
    form.Run();
  });
}

void frmMain::mnuNewRecord_Click() {
  if (EnterNewRecord({SelectedDayText()})) calendar_->SetTodayState(false);
}

/// False when the command ends without a word: it was swept away, or the user did not want a time that has passed.
bool frmMain::EnterNewRecord(const NewRecord& wanted) {
  editor_.HasEndPreset = false;
  editor_.RecordDate = wanted.dayText;
  entry_.StartTask(editor_.RecordDate);
  const bool goesOn = RunModal(Afterwards::Speaks, [this, &wanted] {
    frmSetSysTime form(services(), names_, entry_, countdown_, {}, wanted.over ? wanted.over : this);
    if (wanted.suggested) form.Suggest(*wanted.suggested);
    form.Open();
  });
  editor_.RecordDate = goesOn && !entry_.TaskTimeCancelled ? entry_.TaskTimeText : QString();
  if (!goesOn) return false;
  if (editor_.RecordDate.isEmpty()) return true;
  bool entered = false;
  if (!TimePassedQuestion(editor_.RecordDate, QString())) {
    editor_.HasEndPreset = entry_.HasEndPreset;
    editor_.EndPreset = entry_.EndPreset;
    entered = OpenEditor(wanted.over, wanted.shown);
  }
  if (!entered) editor_.RecordDate.clear();
  return entered;
}

/// True when the time has passed and the user does not want it.
bool frmMain::TimePassedQuestion(const QString& dateText, const QString& timeText) {
  if (!HasPassed(dateText, timeText, Now())) return false;
  bool declined = true;
  const bool goesOn = RunModal(Afterwards::IsSilent, [this, &declined] {
    declined = !dialogs().Ask(tr("Zadaný čas už minul. Chcete jej zadat?"));
  });
  return declined || !goesOn;
}

void frmMain::mnuSearchRecord_Click() {
  editor_.SearchText.clear();
  const bool goesOn = RunModal(Afterwards::Speaks, [this] {
    const Date day = SelectedDate(List1, view_.CurrentDate).value_or(view_.SelectedDay);
    frmSearchRecord(services(), editor_, day, this).Open();
  });
  if (!goesOn) return;
  if (editor_.SearchText.isEmpty()) {
    quietReturn_ = false;
    return;
  }
  editor_.FilterMode = ModeSearch;
  editor_.RecordDate.clear();
  if (OpenEditor()) calendar_->SetTodayState(false);
}

void frmMain::mnuDelTodayTasks_Click() {
  if (calendar_->TasksOfDay() == 0) return;
  const Date day = view_.SelectedDay;
  bool wanted = false;
  const bool goesOn = RunModal(Afterwards::IsSilent, [this, &wanted] {
    wanted = dialogs().Ask(tr("Smazat záznamy na tento den?"), Dialogs::Default::Second);
  });
  if (!goesOn || !wanted || !Write(statements::DeleteDay(day))) return;
  alarms_->RegisterAlarm();
  quietReturn_ = isVisible() && !isActiveWindow();
  calendar_->SetTodayState(false);
}

void frmMain::mnuDelSchedule_Click() {
  bool wanted = false;
  const bool goesOn = RunModal(Afterwards::IsSilent, [this, &wanted] {
    wanted = dialogs().Ask(tr("Smazat všechny záznamy v talníku?"), Dialogs::Default::Second);
  });
  if (!goesOn || !wanted || !Write(statements::DeleteAll())) return;
  alarms_->RegisterAlarm();
  quietReturn_ = isVisible() && !isActiveWindow();
  calendar_->SetTodayState(false);
  // A trace that stays would let the next synchronisation take the empty store for the user's wish there too.
  for (const QString& path : SynchronisationFiles(paths_)) {
    if (QFile::exists(path) && !QFile::remove(path)) dialogs().Warn(tr("Chyba dat: ") + path);
  }
}

}  // namespace talnik
