#include "calendar/TaskFilters.h"

#include "editor/EditorState.h"
#include "shell/Paths.h"
#include "store/Statements.h"

namespace talnik {
namespace {

using Test = TaskFilter::Test;

constexpr TaskFilter kFilters[] = {
    {"mnuTaskToday", ModeCustom, true, Test::TasksOfDay},
    {"mnuTaskTodayAfter", ModeFromDay, true, Test::RecordsFromFilterDate},
    {"mnuTaskAll", ModeAll, false, Test::AllRecords},
    {"mnuTaskAlarm", ModeWithAlarm, false, Test::RecordsWithAlarm},
};

Statement CountStatement(int kind, const std::optional<Date>& filterDate) {
  if (kind == 1) return statements::CountAlarms();
  return kind == 0 && filterDate ? statements::CountFrom(*filterDate) : statements::CountAll();
}

}  // namespace

const TaskFilter* FindTaskFilter(const QString& command) {
  for (const TaskFilter& filter : kFilters) {
    if (command == QLatin1String(filter.command)) return &filter;
  }
  return nullptr;
}

qint64 CountRecords(Store& store, int kind, const std::optional<Date>& filterDate) {
  return store.Number(CountStatement(kind, filterDate)).value_or(0);
}

bool HasPassed(const QString& dateText, const QString& timeText, const Date& now) {
  const QString text = timeText.isEmpty() ? dateText : QString(dateText + u' ' + timeText);
  const auto moment = CDate(text, now);
  if (!moment) return false;
  return text.contains(u':') ? *moment < now : *moment < now.DateValue();
}

QStringList SynchronisationFiles(const Paths& paths) {
  const QString folder = paths.DataFolder + u'/';
  return {paths.LmData,
          paths.GgData,
          paths.LmDataSaved,
          paths.GgDataSaved,
          folder + u"LmData.log"_qs,
          folder + u"GgData.log"_qs};
}

}  // namespace talnik
