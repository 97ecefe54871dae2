#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

/// What the time dialog gives back in its postpone and task modes. Owned by the main window, handed on by reference.
struct TimeEntry {
  bool DelayTimeSet = false;     ///< postpone: hours and minutes were confirmed
  Date DelayValue;               ///< postpone: those hours and minutes, as a time of day
  bool DelayDateChosen = false;  ///< postpone: a date was chosen and the alarm is shifted already
  QString DelayStartText;        ///< postpone: the alarm's time, given by the alarm box

  QString TaskTimeText;            ///< task: the day text that the dialog completes by the time; emptied by Storno
  bool TaskTimeCancelled = false;  ///< task: Storno
  bool TaskTimeEmpty = false;      ///< task: both fields were left empty
  bool HasEndPreset = false;       ///< task: an end was chosen,
  Date EndPreset;                  ///< and this is it

  /// Makes ready for the time of a new task on the day of `dayText`.
  void StartTask(const QString& dayText) {
    TaskTimeText = dayText;
    TaskTimeCancelled = TaskTimeEmpty = HasEndPreset = false;
  }
};

}  // namespace talnik
