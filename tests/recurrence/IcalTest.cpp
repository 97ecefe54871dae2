#include "recurrence/AtRandom.h"
#include "recurrence/RuleWalk.h"

#include <libical/ical.h>

#include <memory>
#include <vector>

namespace talnik::test {

namespace {

/// A rule of the part of the grammar in which an interval, a list of days and an end mean the same to everybody:
/// rules with days have interval 1, the start is a date of the rule. Where ours differs on purpose is tabled with the
/// tests of the walk.
RuleText CommonRule(Chance& chance, const Date& start) {
  RuleText rule = chance.Rule(start, 40);
  if (rule.frequency == RuleFrequency::Yearly) rule.interval = 1 + chance.Below(3);
  if (!rule.days.IsEmpty()) rule.interval = 1;
  if (!rule.days.IsEmpty()) rule.days.Add(start.WeekdayNumber());
  const int end = chance.Below(3);
  if (end == 0) rule.count = 1 + chance.Below(60);
  if (end == 1) {
    rule.endsByDate = true;
    rule.until = DateAdd(DateUnit::Minute,
                         chance.Below(2) == 0 ? 1440 * (1 + chance.Below(900)) : 1 + chance.Below(1500 * 1440), start);
  }
  return rule;
}

/// As the others write it. They count the moment of UNTIL in, so it is one second earlier to them; the same goes for
/// the horizon.
QString Published(RuleText rule, const Date& start) {
  const Date end = rule.until.value_or(DateAdd(DateUnit::Year, 2, start).value());
  const bool byCount = rule.EndsByCount();
  rule.until.reset();
  const QString text = rule.Write().remove(u"RRULE:"_qs).simplified().replace(u' ', u';');
  const Date last = Date::FromSeconds(end.Seconds() - 1).value();
  return byCount ? text : text + u";UNTIL="_qs + MakeRuleStamp(last).chopped(2) + QString::number(last.Second());
}

std::vector<Date> Dates(const RuleText& rule, const Date& start) {
  WalkResult walk = WalkRule(rule, {.start = start, .now = start});
  if (walk.first) walk.dates.insert(walk.dates.begin(), start);
  return walk.dates;
}

std::vector<Date> IcalDates(const QString& published, const Date& start) {
  const icalrecurrencetype rule = icalrecurrencetype_from_string(published.toLatin1().constData());
  const icaltimetype from = icaltime_from_string(MakeRuleStamp(start).toLatin1().constData());
  const std::unique_ptr<icalrecur_iterator, decltype(&icalrecur_iterator_free)> walk(icalrecur_iterator_new(rule, from),
                                                                                     icalrecur_iterator_free);
  std::vector<Date> dates;
  for (icaltimetype at = icalrecur_iterator_next(walk.get()); !icaltime_is_null_time(at);
       at = icalrecur_iterator_next(walk.get())) {
    dates.push_back(Date::FromParts(at.year, at.month, at.day, at.hour, at.minute, at.second).value());
  }
  return dates;
}

}  // namespace

TEST(RuleWalk, AgreesWithAnotherEngineWhereTheGrammarsAgree) {
  Chance chance{QRandomGenerator(20240101)};
  std::size_t compared = 0;
  for (int i = 0; i < 3000; ++i) {
    const Date start = DateAdd(DateUnit::Minute, chance.Below(1500 * 1440), Moment("1.1.2024")).value();
    const RuleText rule = CommonRule(chance, start);
    const bool everyMonthHasTheDay = start.Day() <= 28;
    if (!everyMonthHasTheDay && (rule.monthDay > 0 || rule.frequency == RuleFrequency::Yearly)) continue;
    ASSERT_EQ(RuleText::Read(rule.Write()), rule) << rule.Write().toStdString();
    const std::vector<Date> dates = Dates(rule, start);
    const QString published = Published(rule, start);
    ASSERT_TRUE(dates == IcalDates(published, start))
        << published.toStdString() << " from " << DateText(start).toStdString();
    compared += dates.size();
  }
  EXPECT_GT(compared, 100'000U);
}

}  // namespace talnik::test
