#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

const ZoneBiases kWinter{-60, 0, -60, false};

struct DeleteTest : testing::Test {
  SeriesStore series;

  DeleteTest() {
    ScheduleRecord root = series.Root("2.1.2024 9:00", "RRULE:FREQ=DAILY INTERVAL=1 COUNT=3");
    root.alarm = true;
    root.alarmtime = Moment("2.1.2024 8:00");
    series.AddRoot(root);
  }

  ScheduleRecord Single(const char* start) {
    ScheduleRecord row = series.Root(start, "");
    row.guid = u"f"_qs.repeated(32);
    row.status = StatusSingle;
    return row;
  }

  DeleteOutcome DeleteFirst(int status) {
    const auto rows = series.StandingOn(status);
    return DeleteOccurrence(series.store, *rows, kWinter);
  }
};

}  // namespace

TEST(WayToDelete, FollowsRuleAndGuid) {
  ScheduleRecord row;
  row.guid = u"abc_20240105"_qs;
  EXPECT_EQ(WayToDelete(row), DeleteWay::Single);
  row.recur = u" FREQ=DAILY"_qs;
  EXPECT_EQ(WayToDelete(row), DeleteWay::Exception);
  row.guid = u"abc\0_x"_qs;
  EXPECT_EQ(WayToDelete(row), DeleteWay::Series);
}

TEST_F(DeleteTest, AnOccurrenceBecomesAStampedTombstone) {
  const DeleteOutcome outcome = DeleteFirst(StatusOccurrence);
  EXPECT_TRUE(outcome.done && outcome.alarmsTouched && outcome.closeForm);
  const ScheduleRecord tombstone = series.Rows(statements::Exceptions()).at(0);
  EXPECT_EQ(tombstone.status, StatusDeleted);
  EXPECT_EQ(tombstone.guid, series.id + u"_20240102T080000Z"_qs);
  EXPECT_EQ(tombstone.alarmtime, Moment("2.1.2024 8:00"));
  EXPECT_EQ(series.Occurrences(), "1 3.1.2024 9:00:00, 1 4.1.2024 9:00:00");
}

TEST_F(DeleteTest, TheLastLiveExceptionTakesTheSeriesAlong) {
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(DeleteFirst(StatusOccurrence).done);
  series.store.Execute({u"UPDATE schedule SET status=2,guid=guid||'_20240104T080000Z' WHERE status=1"_qs, {}});
  series.store.Insert(Single("9.1.2024"));
  EXPECT_TRUE(DeleteFirst(StatusChanged).done);
  EXPECT_EQ(series.Summary(), "0 9.1.2024");
}

TEST_F(DeleteTest, ASeriesOfHiddenRowsStaysUntilItIsAskedForOrOneOfThemIsDeleted) {
  for (const bool asked : {true, false}) {
    series.store.Execute(statements::DeleteAll());
    series.AddRoot(series.Root("2.1.2024 9:00", "RRULE:FREQ=DAILY INTERVAL=1 COUNT=3"));
    for (int i = 0; i < 3; ++i) {
      // Asked by the guid of one of its tombstones, the series is still meant as a whole.
      EXPECT_TRUE(DeleteSeriesIfEmpty(series.store, series.id + u"_20240102T080000Z"_qs));
      EXPECT_TRUE(DeleteFirst(StatusOccurrence).done);
      EXPECT_EQ(series.Rows().size(), 4U);
    }
    EXPECT_TRUE(asked ? DeleteSeriesIfEmpty(series.store, series.id + u"_20240102T080000Z"_qs)
                      : DeleteFirst(StatusDeleted).done);  // one that a search has found
    EXPECT_EQ(series.Rows().size(), 0U);
  }
}

TEST_F(DeleteTest, TheWholeSeriesGoesWithItsNotes) {
  QDir(series.folder.path()).mkdir(u"Record"_qs);
  for (const char* note : {"A01.2", "Record/B01.2"}) series.Touch(series.folder.filePath(QString::fromLatin1(note)));
  series.store.Execute({u"UPDATE schedule SET wav=iif(status=9,'B01.2','../A01.2')"_qs, {}});
  series.AddMember(StatusDeleted, series.id + u"_20240104T080000Z"_qs, "4.1.2024 9:00");
  series.store.Insert(Single("9.1.2024"));
  const DeleteOutcome outcome = DeleteWholeSeries(series.store, series.id, series.folder.filePath(u"Record"_qs));
  EXPECT_TRUE(outcome.done && outcome.alarmsTouched && outcome.closeForm);
  EXPECT_EQ(series.Summary(), "0 9.1.2024");
  EXPECT_FALSE(QFile::exists(series.folder.filePath(u"Record/B01.2"_qs)));
  EXPECT_TRUE(QFile::exists(series.folder.filePath(u"A01.2"_qs))) << "a name must not lead out of the folder";
}

TEST_F(DeleteTest, AnEmptyGuidNamesNoSeries) {
  const auto rows = series.Rows();
  EXPECT_TRUE(DeleteWholeSeries(series.store, QString(), series.folder.path()).done);
  EXPECT_TRUE(DeleteSeriesIfEmpty(series.store, QString()));
  EXPECT_TRUE(DeleteSeriesIfEmpty(series.store, u"_20240104"_qs));
  EXPECT_EQ(series.Rows(), rows);
}

TEST_F(DeleteTest, ASingleRecordLeavesTheNextOneCurrent) {
  SeriesStore singles;
  for (const char* start : {"1.2.2024", "2.2.2024", "3.2.2024"}) singles.store.Insert(Single(start));
  const auto rows = Recordset::Open(singles.store, ByStart());
  rows->MoveNext();
  for (const char* next : {"3.2.2024", "1.2.2024", ""}) {
    const DeleteOutcome outcome = DeleteSingle(*rows);
    EXPECT_TRUE(outcome.done && !outcome.alarmsTouched);
    EXPECT_EQ(outcome.closeForm, !*next);
    EXPECT_TRUE(!*next || rows->Row().apptime == Moment(next)) << next;
  }
}

TEST_F(DeleteTest, NotesAreInUseByTheirExactName) {
  const QString note = series.folder.filePath(u"A01.2"_qs);
  series.Touch(note);
  EXPECT_FALSE(CheckSoundFileUsage(series.store, QString()));
  EXPECT_FALSE(CheckSoundFileUsage(series.store, u"A01.2"_qs));
  series.store.Execute({u"UPDATE schedule SET wav='A01.2' WHERE status=9"_qs, {}});
  EXPECT_TRUE(CheckSoundFileUsage(series.store, u"A01.2"_qs));
  RemoveUnusedNote(series.store, note);
  EXPECT_TRUE(QFile::exists(note));
  // A row that names the file by its path does not count.
  series.store.Execute({u"UPDATE schedule SET wav=? WHERE status=9"_qs, {note}});
  RemoveUnusedNote(series.store, note);
  EXPECT_FALSE(QFile::exists(note));
}

TEST_F(DeleteTest, AStoreThatIsGoneDeletesNothing) {
  const auto rows = series.StandingOn(StatusOccurrence);
  QFile::remove(series.path);
  const QString note = series.folder.filePath(u"A01.2"_qs);
  series.Touch(note);
  EXPECT_FALSE(DeleteOccurrence(series.store, *rows, kWinter).done);
  EXPECT_FALSE(DeleteWholeSeries(series.store, series.id, series.folder.path()).done);
  RemoveUnusedNote(series.store, note);
  EXPECT_TRUE(QFile::exists(note));
}

}  // namespace talnik::test
