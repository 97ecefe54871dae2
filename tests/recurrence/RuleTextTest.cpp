#include "recurrence/RuleText.h"

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

Date At(int year, int month, int day, int hour = 0, int minute = 0) {
  return Date::FromParts(year, month, day, hour, minute).value();
}

WeekdaySet Days(std::initializer_list<int> weekdays) {
  WeekdaySet set;
  for (const int weekday : weekdays) set.Add(weekday);
  return set;
}

using F = RuleFrequency;

/// Texts from elsewhere. What the dialog writes is tabled with its tests, and read again by the random walk.
const std::pair<const char*, RuleText> kRead[] = {
    {"", {}},
    {"   ", {}},
    {" 5.1.2024 08:30:00 5.1.2024 09:30:00 RRULE:FREQ=WEEKLY BYDAY=FR INTERVAL=2",
     {.frequency = F::Weekly, .days = Days({6}), .interval = 2}},
    {"RRULE:FREQ=DAILY  UNTIL=20250101", {.frequency = F::Daily, .endsByDate = true}},
    {"RRULE:FREQ=DAILY UNTIL=20251399T000000Z", {.frequency = F::Daily, .endsByDate = true}},
    {"RRULE:FREQ=DAILY COUNT=0 INTERVAL=0", {.frequency = F::Daily, .interval = 0}},
    {"RRULE:FREQ=DAILY COUNT=-3 INTERVAL=x2", {.frequency = F::Daily, .interval = 0}},
    {"RRULE:FREQ=DAILY COUNT=12abc", {.frequency = F::Daily, .count = 12}},
    {"RRULE:FREQ=DAILY INTERVAL=99999999999999999999", {.frequency = F::Daily, .interval = 1'000'000'000}},
    {"RRULE:FREQ=DAILY INTERVAL", {.frequency = F::Daily}},
    {"RRULE:FREQ=MONTHLY BYDAY=-1FR", {.frequency = F::Monthly, .days = Days({6})}},
    {"RRULE:FREQ=MONTHLY BYMONTHDAY=5,20", {.frequency = F::Monthly, .monthDay = 5}},
    {"rrule:freq=daily interval=2", {}},
    {"FREQ=HOURLY INTERVAL=3", {.interval = 3}},
};

}  // namespace

TEST(RuleText, ReadsPiecesWhereverTheyStand) {
  for (const auto& [text, rule] : kRead) EXPECT_EQ(RuleText::Read(QString::fromLatin1(text)), rule) << text;
}

TEST(RuleText, StampsAreLocalTimeWithoutSeconds) {
  EXPECT_EQ(MakeRuleStamp(Date::FromParts(2024, 12, 31, 9, 5, 59).value()), u"20241231T090500"_qs);
  EXPECT_EQ(MakeRuleStamp(At(987, 1, 2)), u"9870102T000000"_qs);
}

TEST(RuleText, ReadsStamps) {
  const std::vector<std::pair<const char*, const char*>> cases = {{"20240105T083000", "5.1.2024 08:30:00"},
                                                                  {"20241231T235959Z", "31.12.2024 23:59:59"},
                                                                  {"20240105T083000Zrubbish", "5.1.2024 08:30:00"},
                                                                  {"20240105", ""},
                                                                  {"20240105T08300", ""},
                                                                  {"20240105 083000", ""},
                                                                  {"", ""}};
  for (const auto& [stamp, text] : cases) {
    EXPECT_EQ(ParseRuleStamp(QString::fromLatin1(stamp)), QString::fromLatin1(text)) << stamp;
  }
}

TEST(RuleText, RulesAreTheSameWithoutOuterBlanks) {
  EXPECT_TRUE(SameRule(u" RRULE:FREQ=DAILY INTERVAL=1 "_qs, u"RRULE:FREQ=DAILY INTERVAL=1"_qs));
  EXPECT_FALSE(SameRule(u"RRULE:FREQ=DAILY INTERVAL=1"_qs, u"RRULE:FREQ=DAILY  INTERVAL=1"_qs));
}

}  // namespace talnik::test
