#include "calendar/MonthKeys.h"

#include "calendar/MonthCalendar.h"
#include "shell/TextControls.h"
#include "timetools/MonthList.h"

#include <utility>

namespace talnik {

MonthKeys::MonthKeys(MonthCalendar& calendar, Commands commands)
    : calendar_(calendar), commands_(std::move(commands)) {}

void MonthKeys::List1_KeyDown(Key& key) {
  const ListBox* list = calendar_.List();
  switch (key.code) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      key.Swallow();
      if (key.Plain()) return commands_.TasksOfTheDay();
      if (!commands_.DayOverview()) calendar_.Refuse();
      return;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      key.Swallow();
      return calendar_.MoveWeek(key.Is(Qt::Key_PageDown));
    case Qt::Key_Up:
    case Qt::Key_Down: {
      const bool forward = key.Is(Qt::Key_Down);
      if (list->ListIndex() != (forward ? list->ListCount() - 1 : 0)) return;
      key.Swallow();
      calendar_.View().SkipKeyUp = true;
      return calendar_.WalkOverEdge(forward);
    }
    default:
      return;
  }
}

void MonthKeys::List1_KeyPress(Key& key) {
  if (key.text.size() != 1 || key.text[0] < u'0' || key.text[0] > u'9') return;
  key.Swallow();
  const auto line = LineOfDigits(calendar_.View().DigitBuffer, key.text[0], calendar_.List()->ListCount());
  if (line) calendar_.SelectLine(*line);
  calendar_.SayLine();
}

void MonthKeys::List1_KeyUp(Key& key) {
  if (std::exchange(calendar_.View().SkipKeyUp, false)) return key.Swallow();
  switch (key.code) {
    case Qt::Key_F3:
    case Qt::Key_Space:
      return calendar_.SayLineAndMonth();
    case Qt::Key_Left:
    case Qt::Key_Right: {
      const bool forward = key.Is(Qt::Key_Right);
      if (!key.Plain() && key.shift != Qt::ControlModifier) return;
      key.Swallow();
      if (key.Plain()) {
        forward ? commands_.NextMonth() : commands_.PreviousMonth();
      } else {
        calendar_.MoveMonth(forward, true);
      }
      return calendar_.SayMonthAndLine();
    }
    case Qt::Key_D:
      return calendar_.ShowDate(calendar_.Now());
    case Qt::Key_V:
      return calendar_.GoToEaster(key.Plain());
    default:
      if (const auto text = WeekDayOfLetter(calendar_.View().DayPrefix, key.code)) {
        calendar_.FindWeekDay(*text, !key.Plain());
      }
  }
}

}  // namespace talnik
