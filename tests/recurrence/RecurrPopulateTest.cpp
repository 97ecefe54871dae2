#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

SpawnSeries Daily(const char* start) {
  SpawnSeries series;
  series.title = u"Léky"_qs;
  series.start = Moment(start);
  series.rule = u"RRULE:FREQ=DAILY INTERVAL=1 COUNT=3"_qs;
  series.id = u"0123456789abcdef0123456789abcdef"_qs;
  return series;
}

std::vector<ScheduleRecord> Spawned(const SpawnSeries& series, const SpawnTime& time, bool addFirst = true) {
  std::vector<ScheduleRecord> rows;
  const auto add = [&rows](const ScheduleRecord& row) {
    rows.push_back(row);
    return true;
  };
  EXPECT_TRUE(RecurrPopulate(add, series, addFirst, time));
  return rows;
}

const SpawnTime kTime{.now = Moment("1.1.2024 8:00"), .biases = {-60, 0, -60, false}};

}  // namespace

TEST(RecurrPopulate, WritesRowsLikeTheFirst) {
  SpawnSeries series = Daily("2.1.2024 9:00");
  series.end = Moment("2.1.2024 9:45");
  series.alarm = Moment("1.1.2024 20:30");
  const auto rows = Spawned(series, kTime);
  ASSERT_EQ(rows.size(), 3U);
  ScheduleRecord expected;
  expected.appointment = series.title;
  expected.alarm = true;
  expected.status = StatusOccurrence;
  expected.guid = series.id;
  expected.recur = u" RRULE:FREQ=DAILY INTERVAL=1 COUNT=3"_qs;
  for (int day = 0; day < 3; ++day) {
    expected.apptime = expected.reftime = DateAdd(DateUnit::Day, day, series.start);
    expected.appdur = DateAdd(DateUnit::Day, day, *series.end);
    expected.alarmtime = DateAdd(DateUnit::Day, day, *series.alarm);
    EXPECT_EQ(rows[static_cast<std::size_t>(day)], expected) << day;
  }
}

TEST(RecurrPopulate, ARowWithoutAnEndEndsWhenItStartsAndItsRuleHasOneBlankInFront) {
  for (const auto& [end, rule] :
       {std::pair("", "FREQ=DAILY COUNT=2 "), std::pair("2.1.2024 9:00", " FREQ=DAILY COUNT=2 "),
        std::pair("0:00:00", "   FREQ=DAILY COUNT=2 ")}) {
    SpawnSeries series = Daily("2.1.2024 9:00");
    series.end = MaybeMoment(end);
    series.rule = QString::fromLatin1(rule);
    for (const ScheduleRecord& row : Spawned(series, kTime)) {
      EXPECT_EQ(row.appdur, row.apptime) << end;
      EXPECT_FALSE(row.alarm || row.alarmtime) << end;
      EXPECT_EQ(row.recur, u" FREQ=DAILY COUNT=2 "_qs) << rule;
    }
  }
}

TEST(RecurrPopulate, AddFirstFallsOnlyWithAStartThatHasPassed) {
  for (const auto& [rule, left] : {std::pair("", true), std::pair("FREQ=DAILY COUNT=3", false)}) {
    bool addFirst = true;
    int rows = 0;
    SpawnSeries series = Daily("31.12.2023");
    series.rule = QString::fromLatin1(rule);
    RecurrPopulate([&rows](const ScheduleRecord&) { return ++rows > 0; }, series, addFirst, kTime);
    EXPECT_EQ(addFirst, left);
    EXPECT_EQ(rows, left ? 0 : 2);
  }
}

TEST(RecurrPopulate, WithoutAnIdTheRowsOfOneCallShareAFreshOne) {
  SpawnSeries series = Daily("2.1.2024");
  series.id.clear();
  const auto rows = Spawned(series, kTime);
  const auto others = Spawned(series, kTime);
  EXPECT_EQ(rows[0].guid.size(), 32);
  EXPECT_EQ(rows[2].guid, rows[0].guid);
  EXPECT_NE(others[0].guid, rows[0].guid);
}

TEST(RecurrPopulate, NamesWhatExceptionsWouldBeCalled) {
  SyncIdList ids;
  SpawnTime time = kTime;
  time.ids = &ids;
  const SpawnSeries series = Daily("2.1.2024 9:00");
  Spawned(series, time);
  EXPECT_EQ(ids.Ids(), QSet<QString>({series.id + u"_20240103T080000Z"_qs, series.id + u"_20240104T080000Z"_qs}));
  EXPECT_TRUE(ids.Contains(series.id + u"_20240104T080000Z"_qs));
  Spawned(Daily("2.1.2024"), time);
  EXPECT_TRUE(ids.Contains(series.id + u"_20240103"_qs));
  EXPECT_EQ(ids.Ids().size(), 4);
  ids.Clear();
  EXPECT_FALSE(ids.Contains(series.id + u"_20240103"_qs));
}

TEST(RecurrPopulate, GoesOnAfterARowThatWasRefused) {
  bool addFirst = true;
  int rows = 0;
  EXPECT_FALSE(
      RecurrPopulate([&rows](const ScheduleRecord&) { return ++rows != 1; }, Daily("2.1.2024"), addFirst, kTime));
  EXPECT_EQ(rows, 3);
}

TEST(ExtendSeries, SpawnsTwoMoreYearsFromTheSpawnTimeOnceItHasPassed) {
  const struct {
    const char *rule, *spawnTime, *now, *after;
  } cases[] = {
      {"FREQ=YEARLY INTERVAL=1 ", "5.5.2024 10:00", "6.5.2024", "9 5.5.2022 10:00:00, 1 5.5.2025 10:00:00"},
      {"FREQ=YEARLY INTERVAL=1 ", "5.5.2024 10:00", "5.5.2024 10:00", "9 5.5.2022 10:00:00"},
      {"FREQ=YEARLY INTERVAL=1 ", "", "1.1.2030", "9 5.5.2022 10:00:00"},
      {"FREQ=YEARLY COUNT=9", "5.5.2023", "1.1.2030", "9 5.5.2022 10:00:00"},
      {"FREQ=YEARLY UNTIL=20300101T000000Z", "5.5.2023", "1.1.2030", "9 5.5.2022 10:00:00"},
  };
  for (const auto& c : cases) {
    SeriesStore series;
    ScheduleRecord root = series.Root("5.5.2022 10:00", c.rule);
    root.spawntime = MaybeMoment(c.spawnTime);
    series.store.Insert(root);
    EXPECT_TRUE(ExtendSeries(series.store, Moment(c.now), series.time));
    EXPECT_EQ(series.Summary(), c.after) << c.rule << c.now;
    const auto rows = series.Rows();
    if (rows.size() < 2) continue;
    EXPECT_EQ(rows[0].spawntime, Moment("5.5.2026 10:00"));
    EXPECT_EQ(rows[1].appdur, Moment("5.5.2025 11:00"));
    EXPECT_NE(rows[1].guid, series.id);
  }
}

}  // namespace talnik::test
