#include "editor/RecordList.h"

#include "store/Statements.h"

#include <utility>

namespace talnik {
namespace {

Date FilterDay(const EditorState& state, const Date& now) {
  return CDate(state.FilterDate, now).value_or(now).DateValue();
}

void StepOver(Recordset& list, int rows) {
  for (int i = 0; i < rows && !list.Eof(); ++i) list.MoveNext();
  if (list.Eof()) list.MoveLast();
}

}  // namespace

std::optional<Statement> ListStatement(const EditorState& state, const Date& now) {
  switch (state.FilterMode) {
    case ModeAll:
      return statements::Visible();
    case ModeFromDay:
      return statements::VisibleFrom(FilterDay(state, now));
    case ModeReserved:
      return statements::AllByStart();
    case ModeCustom:
      return state.CustomQuery;
    case ModeWithAlarm:
      return statements::WithAlarmAfter(now);
    case ModeSearch:
      return statements::Containing(state.SearchText, state.SearchFrom);
    default:
      return {};
  }
}

bool PlaceOnRecord(Recordset& list, EditorState& state, const Date& now) {
  if (state.FilterMode == ModeCustom) StepOver(list, std::exchange(state.CustomSkip, 0));
  if (state.FilterMode != ModeReserved) return true;
  const Date day = FilterDay(state, now);
  if (list.FindFirst([&day](const ScheduleRecord& row) { return row.apptime && *row.apptime >= day; })) return true;
  list.MoveLast();
  return false;
}

}  // namespace talnik
