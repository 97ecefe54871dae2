#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

constexpr const char* kFiveDays = "RRULE:FREQ=DAILY INTERVAL=1 COUNT=5";

struct HeldCase {
  const char* what;
  int status;
  const char* guid;
  const char* start;
  const char* reftime;
  bool holds;
};

const std::vector<HeldCase> kHeld = {
    {"a moved occurrence holds the day the rule gave it", StatusChanged,
     "0123456789abcdef0123456789abcdef_20240103T080000Z", "20.1.2024 15:00", "3.1.2024 9:00", true},
    {"a tombstone", StatusDeleted, "0123456789abcdef0123456789abcdef_20240103T080000Z", "3.1.2024 9:00",
     "3.1.2024 9:00", true},
    {"without a nominal start its own counts", StatusDeleted, "0123456789abcdef0123456789abcdef_20240103T080000Z",
     "3.1.2024 23:59", nullptr, true},
    {"a part of the identity is enough", StatusDeleted, "6789ABCDEF01_x", "3.1.2024", nullptr, true},
    {"a pattern", StatusDeleted, "0123*cdef_x", "3.1.2024", nullptr, true},
    {"another series", StatusDeleted, "ffffffffffffffffffffffffffffffff_20240103T080000Z", "3.1.2024", nullptr, false},
    {"nothing in front of the stamp", StatusDeleted, "_20240103T080000Z", "3.1.2024", nullptr, false},
    {"a single record", StatusSingle, "0123456789abcdef0123456789abcdef", "3.1.2024 9:00", nullptr, false},
};

}  // namespace

TEST(RebuildOccurrences, KeepsDaysFreeThatAreHeld) {
  for (const HeldCase& c : kHeld) {
    SeriesStore series;
    series.AddMember(c.status, QString::fromLatin1(c.guid), c.start, c.reftime);
    series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
    EXPECT_EQ(series.Occurrences().find("3.1.2024") == std::string::npos, c.holds) << c.what;
    EXPECT_NE(series.Occurrences().find("4.1.2024"), std::string::npos) << c.what;
  }
}

TEST(RebuildOccurrences, WritesNothingWhenNothingChanged) {
  SeriesStore series;
  ScheduleRecord root = series.Root("2.1.2024 9:00", "  RRULE:FREQ=WEEKLY BYDAY=TU,SU INTERVAL=2 COUNT=30");
  root.alarm = true;
  root.alarmtime = Moment("2.1.2024 8:30");
  // A rule as long as the column leaves no room for the blank in front.
  ScheduleRecord longRule = series.Root("2.1.2024 9:00", kFiveDays);
  longRule.guid = u"x@elsewhere"_qs;
  longRule.recur += QString(RecurSize - longRule.recur.size(), u'x');
  series.AddMember(StatusDeleted, series.id + u"_20240107T080000Z"_qs, "7.1.2024 9:00");
  series.store.Insert(longRule);
  series.AddRoot(root);
  const qint64 writes = series.Writes();
  EXPECT_TRUE(series.Rebuild());
  EXPECT_EQ(series.Writes(), writes);
  // Opened anew it has to look at every row, and finds them all the same.
  series.store.Close();
  EXPECT_TRUE(series.Rebuild());
  EXPECT_EQ(series.Writes(), writes);
  EXPECT_EQ(series.Rows(statements::Occurrences()).size(), 34U);
}

TEST(RebuildOccurrences, MendsEveryColumnInItsRow) {
  SeriesStore series;
  ScheduleRecord root = series.Root("2.1.2024 9:00", kFiveDays);
  root.alarm = true;
  root.alarmtime = Moment("2.1.2024 8:45");
  series.AddRoot(root);
  const auto rows = series.Rows();
  const auto keys = series.Keys();
  for (const char* damage : {"apptime=apptime+0.25", "appointment='jiné'", "appdur=NULL", "wav='zvuk.1'", "alarm=0",
                             "alarmtime=NULL", "alarmfired=1", "recur='FREQ=YEARLY'", "reftime=NULL", "spawntime=4"}) {
    series.store.Execute({u"UPDATE schedule SET "_qs + QString::fromUtf8(damage) +
                              u" WHERE rowid IN (SELECT rowid FROM schedule WHERE status=1 LIMIT 1 OFFSET 2)"_qs,
                          {}});
    EXPECT_TRUE(series.Rebuild());
    EXPECT_EQ(series.Rows(), rows) << damage;
    EXPECT_EQ(series.Keys(), keys) << damage;
  }
}

TEST(RebuildOccurrences, KeepsTheOldRowsWhenTheNewOnesCannotAllBeWritten) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
  series.store.Execute({u"UPDATE schedule SET appointment='nové',recur='FREQ=DAILY COUNT=8' WHERE status=9"_qs, {}});
  const auto rows = series.Rows();
  series.RefuseInserts();
  EXPECT_FALSE(series.Rebuild());
  EXPECT_EQ(series.Rows(), rows);
  series.store.Execute({u"DROP TRIGGER full"_qs, {}});
  EXPECT_TRUE(series.Rebuild());
  EXPECT_EQ(series.Rows(statements::Occurrences()).size(), 8U);
}

TEST(RebuildOccurrences, NamesTheHeldDaysToo) {
  SeriesStore series;
  SyncIdList ids;
  series.time.ids = &ids;
  series.AddMember(StatusChanged, series.id + u"_20240103T080000Z"_qs, "3.1.2024 10:00", "3.1.2024 9:00");
  series.AddRoot(series.Root("2.1.2024 9:00", "FREQ=DAILY COUNT=2"));
  EXPECT_EQ(ids.Ids(), QSet<QString>{series.id + u"_20240103T080000Z"_qs});
  ids.Clear();
  EXPECT_TRUE(series.Rebuild());
  EXPECT_EQ(ids.Ids().size(), 1) << "also when there is nothing to write";
}

TEST(RebuildOccurrences, TellsOfAStoreThatIsGone) {
  Store store(u"/nowhere/talnik.MDB"_qs);
  EXPECT_FALSE(RebuildOccurrences(store, {.now = Moment("1.1.2024")}));
}

}  // namespace talnik::test
