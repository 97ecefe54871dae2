#include "recurrence/RuleWalk.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>
#include <libical/ical.h>

#include <memory>
#include <vector>

namespace talnik::test {

namespace {

/// Rules of the part of the grammar in which an interval, a list of days and an end mean the same to everybody:
/// weekly rules have interval 1, months go by a day that each of them has or by a weekday in every month, the start is
/// a date of the rule. Where ours differs on purpose is tabled with the tests of the walk.
struct CommonRule {
  RuleText rule;
  QString published;
};

class Rules {
 public:
  explicit Rules(quint32 seed) : random_(seed) {}

  Date Start() {
    const Date start = Date::FromParts(2024, 1, 1, Below(24), Below(60)).value();
    return DateAdd(DateUnit::Day, Below(1500), start).value();
  }

  CommonRule Next(const Date& start) {
    CommonRule made;
    switch (Below(5)) {
      case 0:
        Take(made, RuleFrequency::Daily, u"FREQ=DAILY"_qs, 1 + Below(40));
        break;
      case 1:
        Take(made, RuleFrequency::Weekly, u"FREQ=WEEKLY"_qs, 1);
        Days(made, start);
        break;
      case 2:
        Take(made, RuleFrequency::Monthly, u"FREQ=MONTHLY"_qs, 1 + Below(14));
        made.rule.monthDay = start.Day();
        made.published += u";BYMONTHDAY="_qs + QString::number(start.Day());
        break;
      case 3:
        Take(made, RuleFrequency::Monthly, u"FREQ=MONTHLY"_qs, 1);
        made.rule.ordinal = WeekdayOrdinal(start);
        made.rule.days.Add(start.WeekdayNumber());
        made.published += u";BYDAY="_qs + QString::number(made.rule.ordinal) + DayCode(start.WeekdayNumber());
        break;
      default:
        Take(made, RuleFrequency::Yearly, u"FREQ=YEARLY"_qs, 1 + Below(3));
    }
    End(made, start);
    return made;
  }

 private:
  int Below(int limit) { return static_cast<int>(random_.bounded(limit)); }

  static void Take(CommonRule& made, RuleFrequency frequency, const QString& published, int interval) {
    made.rule.frequency = frequency;
    made.rule.interval = interval;
    made.published = published + u";INTERVAL="_qs + QString::number(interval);
  }

  void Days(CommonRule& made, const Date& start) {
    QStringList codes;
    for (int day = 1; day <= 7; ++day) {
      if (day != start.WeekdayNumber() && Below(3) > 0) continue;
      made.rule.days.Add(day);
      codes << DayCode(day);
    }
    made.published += u";BYDAY="_qs + codes.join(u',');
  }

  /// The others count the moment of UNTIL in, so it is one second earlier to them; the same goes for the horizon.
  void End(CommonRule& made, const Date& start) {
    Date end = DateAdd(DateUnit::Year, 2, start).value();
    switch (Below(3)) {
      case 0:
        made.rule.count = 1 + Below(60);
        made.published += u";COUNT="_qs + QString::number(made.rule.count);
        return;
      case 1:
        end = DateAdd(DateUnit::Minute, 1 + Below(1500 * 1440), start).value();
        if (Below(2) == 0) end = Date::FromSeconds(start.Seconds() + 86400LL * (1 + Below(900))).value();
        made.rule.endsByDate = true;
        made.rule.until = end;
        break;
      default:
        break;
    }
    const Date last = Date::FromSeconds(end.Seconds() - 1).value();
    made.published += u";UNTIL="_qs + MakeRuleStamp(last).chopped(2) + QString::number(last.Second());
  }

  QRandomGenerator random_;
};

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
  Rules rules(20240101);
  std::size_t compared = 0;
  for (int i = 0; i < 3000; ++i) {
    const Date start = rules.Start();
    const CommonRule made = rules.Next(start);
    const bool everyMonthHasTheDay = start.Day() <= 28;
    if (!everyMonthHasTheDay && (made.rule.monthDay > 0 || made.rule.frequency == RuleFrequency::Yearly)) continue;
    const std::vector<Date> dates = Dates(made.rule, start);
    ASSERT_TRUE(dates == IcalDates(made.published, start))
        << made.published.toStdString() << " from " << DateText(start).toStdString();
    compared += dates.size();
  }
  EXPECT_GT(compared, 100'000U);
}

}  // namespace talnik::test
