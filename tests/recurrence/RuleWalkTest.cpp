#include "recurrence/RuleWalk.h"
#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

QStringList Walked(const char* start, const char* rule, const char* now) {
  const WalkResult walk =
      WalkRule(RuleText::Read(QString::fromLatin1(rule)), {.start = Moment(start), .now = Moment(now)});
  QStringList dates;
  if (walk.first) dates << DateText(Moment(start));
  for (const Date& date : walk.dates) dates << DateText(date);
  return dates;
}

struct WalkCase {
  const char* what;
  const char* start;
  const char* rule;
  const char* now;
  const char* dates;  ///< the start included when it is one of them
};

/// What the walk of another engine, which ours is held against, does not show.
const std::vector<WalkCase> kWalks = {
    {"count of one, past", "10.1.2024 9:00", "FREQ=DAILY COUNT=1", "11.1.2024", ""},
    {"count begun a month ago writes one less", "10.1.2024 9:00", "RRULE:FREQ=DAILY INTERVAL=1 COUNT=3",
     "10.2.2024 12:00", "11.2.2024 9:00:00, 12.2.2024 9:00:00"},
    {"exactly now is not past", "10.1.2024 9:00", "FREQ=DAILY COUNT=2", "10.1.2024 9:00",
     "10.1.2024 9:00:00, 11.1.2024 9:00:00"},
    {"one second later it is", "10.1.2024 9:00", "FREQ=DAILY COUNT=2", "10.1.2024 9:00:01", "11.1.2024 9:00:00"},
    {"endless, begun over two years ago", "1.1.2022 9:00", "FREQ=DAILY", "2.1.2024", ""},
    {"endless, its horizon counts from the start", "1.1.2022 9:00", "FREQ=MONTHLY BYMONTHDAY=1 INTERVAL=4", "1.6.2023",
     "1.9.2023 9:00:00"},
    {"the end date is exclusive", "10.1.2024 9:00", "FREQ=DAILY UNTIL=20240113T090000Z", "1.1.2024",
     "10.1.2024 9:00:00, 11.1.2024 9:00:00, 12.1.2024 9:00:00"},
    {"a later minute of the end day", "10.1.2024 9:00", "FREQ=DAILY UNTIL=20240111T090100Z", "1.1.2024",
     "10.1.2024 9:00:00, 11.1.2024 9:00:00"},
    {"end before the start", "10.1.2024 9:00", "FREQ=DAILY UNTIL=20230113T090000Z", "1.1.2024", "10.1.2024 9:00:00"},
    {"an end date without time ends at once", "10.1.2024 9:00", "FREQ=DAILY UNTIL=20250101", "1.1.2024",
     "10.1.2024 9:00:00"},
    {"count and end date together", "10.1.2024", "FREQ=DAILY COUNT=9 UNTIL=20240112T000000Z", "1.1.2024",
     "10.1.2024, 11.1.2024"},
    {"a step that does not move", "10.1.2024", "FREQ=DAILY INTERVAL=0", "1.1.2024", "10.1.2024"},
    {"months that do not move", "10.1.2024", "FREQ=MONTHLY BYMONTHDAY=10 INTERVAL=0 COUNT=5", "1.1.2024", "10.1.2024"},
    {"years that do not move", "10.1.2024", "FREQ=YEARLY INTERVAL=0 COUNT=5", "1.1.2024", "10.1.2024"},
    {"no frequency", "10.1.2024", "INTERVAL=1 COUNT=5", "1.1.2024", "10.1.2024"},
    {"weekly, interval 0 is every week", "10.1.2024", "FREQ=WEEKLY BYDAY=WE INTERVAL=0 COUNT=3", "1.1.2024",
     "10.1.2024, 17.1.2024, 24.1.2024"},
    {"every other week", "8.1.2024", "FREQ=WEEKLY BYDAY=MO,WE INTERVAL=2 COUNT=5", "1.1.2024",
     "8.1.2024, 10.1.2024, 22.1.2024, 24.1.2024, 5.2.2024"},
    {"the Sunday that opens a week comes before the jump", "7.1.2024", "FREQ=WEEKLY BYDAY=SU INTERVAL=2 COUNT=4",
     "1.1.2024", "7.1.2024, 14.1.2024, 28.1.2024, 11.2.2024"},
    {"the Sunday on which a jump lands is not tested", "8.1.2024", "FREQ=WEEKLY BYDAY=SU,MO INTERVAL=2 COUNT=5",
     "1.1.2024", "8.1.2024, 14.1.2024, 22.1.2024, 28.1.2024, 5.2.2024"},
    {"the new year breaks a week", "30.12.2024", "FREQ=WEEKLY BYDAY=MO,FR INTERVAL=2 COUNT=5", "1.1.2024",
     "30.12.2024, 10.1.2025, 20.1.2025, 24.1.2025, 3.2.2025"},
    {"a jump past the end drops the Sunday before it", "7.1.2024",
     "FREQ=WEEKLY BYDAY=SU INTERVAL=2 UNTIL=20240116T000000Z", "1.1.2024", "7.1.2024"},
    {"the 31st dies in February", "31.1.2024", "FREQ=MONTHLY BYMONTHDAY=31 INTERVAL=1 COUNT=9", "1.1.2024",
     "31.1.2024, 29.2.2024"},
    {"also when February has passed", "31.1.2024", "FREQ=MONTHLY BYMONTHDAY=31 INTERVAL=1", "1.3.2024", ""},
    {"the 31st that meets long months only", "31.1.2024", "FREQ=MONTHLY BYMONTHDAY=31 INTERVAL=2 COUNT=3", "1.1.2024",
     "31.1.2024, 31.3.2024, 31.5.2024"},
    {"a day that is not the start's", "10.1.2024", "FREQ=MONTHLY BYMONTHDAY=11 COUNT=9", "1.1.2024", "10.1.2024"},
    {"monthly without a day", "10.1.2024", "FREQ=MONTHLY INTERVAL=1", "1.1.2024", "10.1.2024"},
    {"the interval of months acts once", "9.1.2024", "FREQ=MONTHLY BYDAY=2TU INTERVAL=2 COUNT=4", "1.1.2024",
     "9.1.2024, 12.3.2024, 9.4.2024, 14.5.2024"},
    {"several weekdays with one ordinal", "1.1.2024", "FREQ=MONTHLY BYDAY=1MO,1FR INTERVAL=1 COUNT=5", "1.1.2024",
     "1.1.2024, 2.2.2024, 5.2.2024, 1.3.2024, 4.3.2024"},
    {"an ordinal that no month has", "1.1.2024", "FREQ=MONTHLY BYDAY=6MO COUNT=5", "1.1.2024", "1.1.2024"},
    {"a start on the 31st finds the month that follows", "31.1.2024", "FREQ=MONTHLY BYDAY=1TH COUNT=3", "1.1.2024",
     "31.1.2024, 1.2.2024, 7.3.2024"},
    {"29 February falls to the 28th and stays", "29.2.2024 8:00", "FREQ=YEARLY INTERVAL=1 COUNT=6", "1.1.2024",
     "29.2.2024 8:00:00, 28.2.2025 8:00:00, 28.2.2026 8:00:00, 28.2.2027 8:00:00, 28.2.2028 8:00:00, 28.2.2029 "
     "8:00:00"},
    {"an ordinal moves a yearly walk to the month's eve", "10.1.2024", "FREQ=YEARLY BYDAY=2TU INTERVAL=1 COUNT=3",
     "1.1.2024", "10.1.2024, 31.1.2025, 31.1.2026"},
    {"at the end of all dates", "30.12.9999", "FREQ=DAILY COUNT=9", "1.1.2024", "30.12.9999, 31.12.9999"},
    {"a horizon beyond all dates", "30.12.9999", "FREQ=DAILY", "1.1.2024", "30.12.9999, 31.12.9999"},
    {"a jump beyond all dates", "20.12.9999", "FREQ=WEEKLY BYDAY=SU,TU INTERVAL=1000000000 COUNT=9", "1.1.2024",
     "20.12.9999, 21.12.9999"},
    {"a year before 1900", "30.12.1799 23:59", "FREQ=DAILY COUNT=3", "1.1.1700",
     "30.12.1799 23:59:00, 31.12.1799 23:59:00, 1.1.1800 23:59:00"},
};

}  // namespace

TEST(RuleWalk, YieldsTheDatesOfTheRule) {
  for (const WalkCase& c : kWalks) {
    EXPECT_EQ(Walked(c.start, c.rule, c.now).join(u", "_qs).toStdString(), c.dates) << c.what;
  }
}

TEST(RuleWalk, EndsWhateverTheRule) {
  const std::vector<const char*> rules = {"FREQ=DAILY COUNT=1000000000",
                                          "FREQ=WEEKLY COUNT=5",
                                          "FREQ=WEEKLY BYDAY=SU INTERVAL=2 COUNT=1000000000",
                                          "FREQ=MONTHLY COUNT=5",
                                          "FREQ=MONTHLY BYDAY=5FR COUNT=1000000000",
                                          "FREQ=MONTHLY BYMONTHDAY=31 COUNT=100",
                                          "FREQ=YEARLY COUNT=1000000000"};
  for (const char* rule : rules) {
    const WalkResult walk =
        WalkRule(RuleText::Read(QString::fromLatin1(rule)), {.start = Moment("1.1.1"), .now = Moment("31.12.9999")});
    EXPECT_FALSE(walk.first);
    EXPECT_LE(walk.dates.size(), 1U) << rule;
  }
}

TEST(RuleWalk, ASpawnTimeTakesTheStartsPlace) {
  const RuleText endless = RuleText::Read(u"FREQ=YEARLY INTERVAL=1"_qs);
  const WalkStart from = {.start = Moment("5.5.2020"), .now = Moment("1.1.2020"), .spawnTime = Moment("1.6.2024")};
  WalkResult walk = WalkRule(endless, from);
  EXPECT_FALSE(walk.first);
  EXPECT_EQ(walk.dates, std::vector<Date>{Moment("1.6.2025")});

  // A series with an end of its own starts where it started.
  walk = WalkRule(RuleText::Read(u"FREQ=YEARLY COUNT=2"_qs), from);
  EXPECT_FALSE(walk.first);
  EXPECT_EQ(walk.dates, std::vector<Date>{Moment("5.5.2021")});
}

TEST(RuleWalk, TellsWhatItPassedOver) {
  std::vector<Date> past;
  WalkRule(RuleText::Read(u"FREQ=DAILY COUNT=2"_qs), {.start = Moment("1.1.2024"), .now = Moment("3.1.2024")}, &past);
  EXPECT_EQ(past, std::vector<Date>{Moment("2.1.2024")});
}

}  // namespace talnik::test
