#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

/// What the month list remembers between two keys.
struct MonthView {
  Date CurrentDate;              ///< a date in the month on show; moving in the list does not change its day
  Date SelectedDay;              ///< the day under the cursor at the last count
  bool SkipFocusSpeech = false;  ///< the next focus of the list is silent
  bool TitleOnFocus = true;      ///< the next focus of the list speaks the window's caption first
  bool SuppressClick = false;    ///< a change of the selected line does nothing
  bool SkipKeyUp = false;        ///< the next release of a key in the list does nothing
  bool SilentSync = false;       ///< an automatic synchronisation runs: refreshing the day says nothing
  bool ShownByHotKey = false;    ///< the next focus of the list is read in the short way
  QString DigitBuffer;           ///< the last two digits typed in the list
  QString DayPrefix;             ///< first letter of a two-letter weekday search
};

}  // namespace talnik
