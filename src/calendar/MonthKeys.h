#pragma once

#include "shell/ControlEvents.h"

#include <functional>

namespace talnik {

class MonthCalendar;

/// The keys of the month list. A menu command that equals a key runs the same handler, so that the two cannot differ.
class MonthKeys {
 public:
  struct Commands {
    std::function<void()> TasksOfTheDay;  ///< Enter
    std::function<bool()> DayOverview;    ///< Enter with a modifier; false when the command is not to be had
    std::function<void()> PreviousMonth;  ///< as the button Command2
    std::function<void()> NextMonth;      ///< as the button Command4
  };

  MonthKeys(MonthCalendar& calendar, Commands commands);

  void List1_KeyDown(Key& key);
  void List1_KeyPress(Key& key);
  void List1_KeyUp(Key& key);

 private:
  MonthCalendar& calendar_;
  Commands commands_;
};

}  // namespace talnik
