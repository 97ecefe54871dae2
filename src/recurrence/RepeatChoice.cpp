#include "recurrence/RepeatChoice.h"

#include "store/Text.h"

#include <QCoreApplication>

#include <array>

namespace talnik {

namespace {

constexpr std::array<RuleFrequency, 4> kUnits = {RuleFrequency::Daily, RuleFrequency::Weekly, RuleFrequency::Monthly,
                                                 RuleFrequency::Yearly};

/// The day at the time of day of `start`, without its seconds.
Date OnDay(const Date& day, const Date& start) {
  return Date::FromParts(day.Year(), day.Month(), day.Day(), start.Hour(), start.Minute()).value_or(day);
}

}  // namespace

RuleText ComposeRule(const RepeatChoice& choice, const Date& start) {
  RuleText rule;
  rule.frequency = kUnits.at(static_cast<std::size_t>(choice.unit));
  rule.interval = choice.interval;
  if (rule.frequency == RuleFrequency::Weekly) rule.days = choice.days;
  if (rule.frequency == RuleFrequency::Monthly && choice.byMonthDay) rule.monthDay = start.Day();
  if (rule.frequency == RuleFrequency::Monthly && !choice.byMonthDay) {
    rule.days.Add(start.WeekdayNumber());
    rule.ordinal = WeekdayOrdinal(start);
  }
  if (choice.end == RepeatEnd::ByCount) rule.count = choice.count;
  if (choice.end == RepeatEnd::ByDate) {
    rule.endsByDate = true;
    rule.until = OnDay(choice.deadLine, start);
  }
  return rule;
}

Date StartOnCheckedDay(const Date& start, const WeekdaySet& days) {
  for (int ahead = 0; ahead < 7; ++ahead) {
    const auto date = DateAdd(DateUnit::Day, ahead, start);
    if (date && days.Has(date->WeekdayNumber())) return *date;
  }
  return start;
}

std::optional<int> UnitOf(const RuleText& rule) {
  for (std::size_t unit = 0; unit < kUnits.size(); ++unit) {
    if (kUnits.at(unit) == rule.frequency) return static_cast<int>(unit);
  }
  return {};
}

QString DeadLineText(const Date& date) {
  const auto digits = [](int number, int width) { return QString::number(number).rightJustified(width, u'0'); };
  return digits(date.Day(), 2) + u'.' + digits(date.Month(), 2) + u'.' + digits(date.Year(), 4);
}

std::optional<Date> DayOfText(const QString& text, const Date& today) {
  const auto date = CDate(text, today);
  if (!date || date->DateValue() == Date()) return {};
  return date->DateValue();
}

namespace {

/// Carries a start that the dialog moved into the form; the end goes with it.
void TakeStart(const RepeatHost& host, const Date& today) {
  const auto before = CDate(host.text3(), today);
  const auto after = CDate(host.state.Repeat_StartTime, today);
  if (!before || !after || *before == *after) return;
  const auto end = CDate(host.text4(), today);
  const std::int64_t later = after->Seconds() - before->Seconds();
  if (end && later > 0) {
    if (const auto moved = DateAdd(DateUnit::Second, later, *end)) host.setText4(TrimSeconds(DateText(*moved)));
  }
  host.setText3(TrimSeconds(host.state.Repeat_StartTime));
}

}  // namespace

void OpenRepeatEditor(const RepeatHost& host, const Date& today) {
  const QString remembered = host.state.Repeat_Rule;
  host.state.Repeat_StartTime = host.text3();
  host.showDialog();
  const QString rule = host.state.Repeat_Rule;
  if (!rule.isEmpty()) TakeStart(host, today);
  host.setRepeatCaption(RepeatCaption(rule));
  if (remembered.isEmpty() || SameRule(remembered, rule)) return;
  if (host.editSeries(rule)) {
    host.unload();
  } else {
    host.state.Repeat_Rule = remembered;
  }
}

QString RepeatCaption(const QString& rule) {
  return rule.isEmpty() ? QCoreApplication::translate("RepeatChoice", "Nastavit opakování")
                        : QCoreApplication::translate("RepeatChoice", "Upravit opakování");
}

}  // namespace talnik
