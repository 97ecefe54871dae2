#pragma once

#include "recurrence/RuleText.h"

#include <QString>

#include <functional>
#include <optional>

namespace talnik {

/// The rule of the record being edited and its start; the dialog reads them on load and writes them on OK.
struct RepeatState {
  QString Repeat_Rule = {};
  QString Repeat_StartTime = {};  ///< local date text
};

enum class RepeatEnd { Never, ByCount, ByDate };

/// What is chosen in the dialog.
struct RepeatChoice {
  int unit = 0;  ///< line of the list: daily, weekly, monthly, yearly
  int interval = 1;
  WeekdaySet days = {};
  bool byMonthDay = true;  ///< monthly: on the start's day of the month, else on its weekday
  RepeatEnd end = RepeatEnd::Never;
  int count = 1;
  Date deadLine = {};  ///< the day on which the series ends
};

/// The rule of a choice for a record that starts at `start`.
RuleText ComposeRule(const RepeatChoice& choice, const Date& start);

/// The first day from `start` on that is checked, at the same time of day; `start` itself when none is.
Date StartOnCheckedDay(const Date& start, const WeekdaySet& days);

/// The line of the list of units for a rule; nothing without a frequency.
std::optional<int> UnitOf(const RuleText& rule);

/// "05.01.2024"
QString DeadLineText(const Date& date);

/// The day that a text names; nothing for what is no date or a time alone.
std::optional<Date> DayOfText(const QString& text, const Date& today);

/// What OpenRepeatEditor needs of the record's form.
struct RepeatHost {
  RepeatState& state;
  std::function<QString()> text3;  ///< start
  std::function<void(const QString&)> setText3;
  std::function<QString()> text4;  ///< end
  std::function<void(const QString&)> setText4;
  std::function<void(const QString&)> setRepeatCaption;    ///< caption of cmdRepeat
  std::function<void()> showDialog;                        ///< frmRepeat, modally
  std::function<bool(const QString& newRule)> editSeries;  ///< EditRecurrentEvent with the current row; true when done
  std::function<void()> unload;
};

/// The handler of cmdRepeat: lets the user compose the rule and carries what came of it into the form.
void OpenRepeatEditor(const RepeatHost& host, const Date& today);

/// The caption of cmdRepeat for a record with this rule.
QString RepeatCaption(const QString& rule);

}  // namespace talnik
