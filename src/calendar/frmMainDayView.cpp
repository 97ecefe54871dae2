#include "calendar/MainServices.h"
#include "calendar/frmDayView.h"
#include "calendar/frmMain.h"
#include "recurrence/RecurrPopulate.h"
#include "shell/TextControls.h"
#include "store/Statements.h"
#include "timetools/MonthList.h"

namespace talnik {

void frmMain::mnuSpareTime_Click() {
  const auto day = SelectedDate(List1, view_.CurrentDate);
  if (!day) return;
  // The editor would move the month list under the overview; it moves when that has closed.
  std::optional<Date> shown;
  const bool goesOn = RunModal(Afterwards::Speaks, [this, &day, &shown] {
    frmDayView form(services(),
                    DayViewContext{.store = *store_,
                                   .day = *day,
                                   .timeZone = *platform_.timeZone,
                                   .recordFolder = paths_.RecordFolder,
                                   .recurrChoice = editor_.RecurrChoice,
                                   .extendSeries = [this, &day] { ExtendSeries(*store_, *day, Spawning()); },
                                   .registerAlarm = [this] { alarms_->RegisterAlarm(); },
                                   .showTasks =
                                       [this, &day, &shown](QWidget* over, int recordsBefore) {
                                         ShowTasksOf(*day, recordsBefore, over, shown);
                                       },
                                   .newTask =
                                       [this, &day, &shown](QWidget* over, const std::optional<Date>& suggested) {
                                         EnterNewRecord({DayText(*day), suggested, over, &shown});
                                       }},
                    this);
    form.Open();
  });
  if (!goesOn) return;
  if (shown && *shown != *day) calendar_->ShowDate(*shown);
  calendar_->SetTodayState(false);
}

void frmMain::ShowTasksOf(const Date& day, int recordsBefore, QWidget* over, std::optional<Date>& shown) {
  editor_.FilterDate = DayText(day);
  editor_.FilterMode = ModeCustom;
  editor_.CustomQuery = statements::OfDay(day);
  editor_.CustomSkip = recordsBefore;
  editor_.RecordDate.clear();
  OpenEditor(over, &shown);
}

}  // namespace talnik
