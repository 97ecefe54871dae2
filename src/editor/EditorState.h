#pragma once

#include "recurrence/frmDeleteRecurrentEvent.h"
#include "recurrence/frmRepeat.h"
#include "store/Store.h"

#include <QString>

#include <functional>

namespace talnik {

class Clock;
class Recorder;
class TimeZone;
struct CalendarNames;
struct Paths;

/// Which records the editor browses.
enum FilterModeValue {
  ModeAll = 0,        ///< all visible ones
  ModeFromDay = 1,    ///< from FilterDate (or today) on
  ModeReserved = 3,   ///< every row, standing on the first from FilterDate on
  ModeCustom = 4,     ///< CustomQuery
  ModeWithAlarm = 5,  ///< with an alarm, today's and later ones
  ModeSearch = 6      ///< SearchText from SearchFrom on
};

/// What the callers of the editor hand to it and what it hands back. Owned by the main window.
struct EditorState {
  int FilterMode = ModeAll;
  QString RecordDate;  ///< start text of a new record; not empty: the editor opens for a new record
  bool HasEndPreset = false;
  Date EndPreset;      ///< the end of the new record, with HasEndPreset
  QString FilterDate;  ///< "d.m.yyyy"; empty is today
  QString SearchText;
  Date SearchFrom;
  Statement CustomQuery;
  int CustomSkip = 0;             ///< rows to step over in CustomQuery; 0 again when used
  RepeatState Repeat;             ///< Repeat_Rule of the record on screen
  QString LastShownStart;         ///< the start text of the record left by a move
  int RecurrChoice = RecurrNone;  ///< the last answer to whether one occurrence or the series is meant
};

/// What the editor works on besides the services of every window.
struct EditorContext {
  Store& store;
  EditorState& state;
  TimeZone& timeZone;
  Recorder& recorder;
  const Paths& paths;
  const CalendarNames& names;
  std::function<void()> registerAlarm;
  std::function<void(const Date& day)> showDate;  ///< moves the month list
  std::function<void()> skipFocusSpeech;          ///< the month list is silent at its next focus
};

}  // namespace talnik
