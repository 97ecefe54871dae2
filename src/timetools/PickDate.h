#pragma once

#include "dates/MonthLines.h"
#include "shell/FormServices.h"

class QLineEdit;
class QWidget;

namespace talnik {

/// The numbers of the date picker's window, by who opens it.
constexpr int PickDateTagOfMain = 1730;
constexpr int PickDateTagOfSetSysTime = 1717;

/// Lets the user choose a date and time, starting from the text of `control`, and writes the choice back without its
/// seconds. False when the user gave up; the control is left as it was then. A text that is no date starts today.
bool PickDate(FormServices& services, const CalendarNames& names, QLineEdit* control, QWidget* parent,
              int tag = PickDateTagOfMain);

}  // namespace talnik
