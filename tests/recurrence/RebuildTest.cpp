#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

constexpr const char* kFiveDays = "RRULE:FREQ=DAILY INTERVAL=1 COUNT=5";

struct HeldCase {
  const char* what;
  int status;
  const char* guid;  ///< behind the id of the series; "" in front stands for a guid of its own
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

TEST(RebuildOccurrences, SpawnsWhatTheRootsYield) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
  EXPECT_EQ(series.Summary(),
            "9 2.1.2024 9:00:00, 1 2.1.2024 9:00:00, 1 3.1.2024 9:00:00, 1 4.1.2024 9:00:00, "
            "1 5.1.2024 9:00:00, 1 6.1.2024 9:00:00");
}

TEST(RebuildOccurrences, PassesOverRootsWithoutARule) {
  SeriesStore series;
  for (const char* rule : {"", " "}) {
    series.AddRoot(series.Root("2.1.2024", rule));
    EXPECT_EQ(series.Occurrences(), "");
  }
}

TEST(RebuildOccurrences, KeepsDaysFreeThatAreHeld) {
  for (const HeldCase& c : kHeld) {
    SeriesStore series;
    series.AddMember(c.status, QString::fromLatin1(c.guid), c.start, c.reftime);
    series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
    EXPECT_EQ(series.Occurrences().find("3.1.2024") == std::string::npos, c.holds) << c.what;
    EXPECT_NE(series.Occurrences().find("4.1.2024"), std::string::npos) << c.what;
  }
}

TEST(RebuildOccurrences, DropsTheDaysThatHavePassed) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", "RRULE:FREQ=DAILY INTERVAL=1 UNTIL=20240105T090000Z"));
  series.time.now = Moment("3.1.2024 9:00");
  series.Rebuild();
  EXPECT_EQ(series.Occurrences(), "1 3.1.2024 9:00:00, 1 4.1.2024 9:00:00");
  series.time.now = Moment("4.1.2024 9:01");
  series.Rebuild();
  EXPECT_EQ(series.Occurrences(), "");
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

TEST(RebuildOccurrences, MendsEveryColumnAndNothingElse) {
  SeriesStore series;
  ScheduleRecord root = series.Root("2.1.2024 9:00", kFiveDays);
  root.alarm = true;
  root.alarmtime = Moment("2.1.2024 8:45");
  series.AddRoot(root);
  const auto rows = series.Rows();
  const QStringList damages = {u"apptime=apptime+0.25"_qs,
                               u"apptime=NULL"_qs,
                               u"appointment='jiné'"_qs,
                               u"appdur=NULL"_qs,
                               u"appdur=apptime+3"_qs,
                               u"wav='zvuk.1'"_qs,
                               u"alarm=0"_qs,
                               u"alarmtime=NULL"_qs,
                               u"alarmfired=1"_qs,
                               u"recur='FREQ=YEARLY'"_qs,
                               u"reftime=NULL"_qs,
                               u"spawntime=4"_qs,
                               u"guid='a stranger'"_qs,
                               u"guid=NULL"_qs};
  for (const QString& damage : damages) {
    series.store.Execute({u"UPDATE schedule SET "_qs + damage +
                              u" WHERE rowid IN (SELECT rowid FROM schedule WHERE status=1 LIMIT 1 OFFSET 2)"_qs,
                          {}});
    const auto keys = series.Keys();
    EXPECT_TRUE(series.Rebuild());
    EXPECT_EQ(series.Rows(), rows) << damage.toStdString();
    const auto mended = series.Keys();
    EXPECT_LE(std::mismatch(keys.rbegin(), keys.rend(), mended.rbegin()).first - keys.rbegin(), 6);
  }
}

TEST(RebuildOccurrences, DropsWhatHasNoRootAndDoubles) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
  const auto rows = series.Rows();
  series.AddMember(StatusOccurrence, u"an orphan"_qs, "2.2.2024 9:00");
  EXPECT_TRUE(series.store.Insert(rows[3]));
  series.Rebuild();
  EXPECT_EQ(series.Rows(), rows);
}

TEST(RebuildOccurrences, FollowsAChangedRoot) {
  SeriesStore series;
  const ScheduleRecord root = series.Root("2.1.2024 9:00", kFiveDays);
  series.AddRoot(root);
  for (const char* change :
       {"appointment='Tělocvik'", "apptime=apptime+0.5,appdur=appdur+1", "alarmtime=apptime,alarm=1",
        "recur='FREQ=DAILY COUNT=2'", "recur='FREQ=DAILY COUNT=9'", "alarmtime=NULL,alarm=0"}) {
    series.store.Execute({u"UPDATE schedule SET "_qs + QString::fromUtf8(change) + u" WHERE status=9"_qs, {}});
    series.Rebuild();
    const auto mended = series.Rows();
    series.store.Execute({u"DELETE FROM schedule WHERE status=1"_qs, {}});
    series.Rebuild();
    EXPECT_EQ(series.Rows(), mended) << change;
  }
}

TEST(RebuildOccurrences, TwoRootsOfOneIdentityBothSpawn) {
  SeriesStore series;
  series.store.Insert(series.Root("2.1.2024 9:00", "FREQ=DAILY COUNT=2"));
  series.AddRoot(series.Root("2.1.2024 15:00", "FREQ=DAILY COUNT=2"));
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(series.Occurrences(), "1 2.1.2024 9:00:00, 1 2.1.2024 15:00:00, 1 3.1.2024 9:00:00, 1 3.1.2024 15:00:00");
    series.Rebuild();
  }
}

TEST(RebuildOccurrences, KeepsTheOldRowsWhenTheNewOnesCannotAllBeWritten) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
  series.store.Execute({u"UPDATE schedule SET appointment='nové',recur='FREQ=DAILY COUNT=8' WHERE status=9"_qs, {}});
  const auto rows = series.Rows();
  series.store.Execute(
      {u"CREATE TRIGGER full BEFORE INSERT ON schedule WHEN NEW.apptime>?+0 BEGIN SELECT "
       u"RAISE(ABORT,'full'); END"_qs.replace(u"?"_qs, QString::number(Moment("8.1.2024").Serial())),
       {}});
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
  EXPECT_EQ(ids.Ids(), QStringList{QString(series.id + u"_20240103T080000Z"_qs)});
}

TEST(RebuildOccurrences, SeesWhatAnotherProgramHasWritten) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
  const auto rows = series.Rows();
  series.watcher.Execute({u"DELETE FROM schedule WHERE status=1 AND apptime<?"_qs, {Moment("4.1.2024").Serial()}});
  EXPECT_TRUE(series.Rebuild());
  EXPECT_EQ(series.Rows(), rows);
}

TEST(RebuildOccurrences, SeesWhatAnUndoneTransactionHadWritten) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kFiveDays));
  const auto rows = series.Rows();
  const Statement damage{u"UPDATE schedule SET appointment='jiné' WHERE status=1"_qs, {}};
  series.store.InTransaction([&] {
    EXPECT_TRUE(series.store.Execute(damage));
    EXPECT_TRUE(series.Rebuild());
    EXPECT_TRUE(series.store.Execute(damage));
    return false;
  });
  EXPECT_EQ(series.Rows(), rows);
  EXPECT_TRUE(series.store.Execute(damage));
  EXPECT_TRUE(series.Rebuild());
  EXPECT_EQ(series.Rows(), rows);
}

TEST(RebuildOccurrences, SeesAClockThatWasSetBack) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", "FREQ=DAILY UNTIL=20240105T000000Z"));
  const std::string all = series.Occurrences();
  series.time.now = Moment("4.1.2024");
  series.Rebuild();
  EXPECT_EQ(series.Occurrences(), "1 4.1.2024 9:00:00");
  series.time.now = Moment("1.1.2024");
  series.Rebuild();
  EXPECT_EQ(series.Occurrences(), all);
}

TEST(RebuildOccurrences, AHeldDayThatHasPassedCountsForTheRule) {
  SeriesStore series;
  series.AddMember(StatusDeleted, series.id + u"_20240102T080000Z"_qs, "2.1.2024 9:00");
  series.AddRoot(series.Root("1.1.2024 9:00", "FREQ=DAILY COUNT=2"));
  EXPECT_EQ(series.Occurrences(), "1 1.1.2024 9:00:00");
  series.time.now = Moment("2.1.2024 10:00");
  series.Rebuild();
  EXPECT_EQ(series.Occurrences(), "1 3.1.2024 9:00:00");
}

TEST(RebuildOccurrences, TellsOfAStoreThatIsGone) {
  Store store(u"/nowhere/talnik.MDB"_qs);
  EXPECT_FALSE(RebuildOccurrences(store, {.now = Moment("1.1.2024")}));
}

}  // namespace talnik::test
