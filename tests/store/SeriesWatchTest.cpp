#include "store/StoreFile.h"
#include "store/WithoutIndexes.h"

namespace talnik::test {

namespace {

struct SeriesWatchTest : StoreFile {
  ScheduleRecord Member(const QString& guid, int status) {
    ScheduleRecord row = Row(guid, u"1.2.2024 8:00"_qs, u"1.2.2024 9:00"_qs, status);
    row.guid = guid;
    return row;
  }

  /// The guids written to since the mark, or "?".
  std::string Since(qint64 mark) {
    const auto guids = store.SeriesWrittenSince(mark);
    if (!guids) return "?";
    QStringList sorted(guids->begin(), guids->end());
    sorted.sort();
    return sorted.join(u' ').toStdString();
  }

  QStringList Indexes() {
    QStringList indexes;
    store.ForEachRow({u"SELECT sql FROM sqlite_schema WHERE type='index' ORDER BY name"_qs, {}},
                     [&indexes](const StoreRow& row) {
                       indexes << row.Text(0);
                       return true;
                     });
    return indexes;
  }
};

}  // namespace

TEST_F(SeriesWatchTest, NotesTheSeriesThatEachKindOfWriteTouches) {
  ASSERT_TRUE(store.Open());
  const qint64 mark = store.MarkSeries();
  for (const auto& [guid, status] :
       {std::pair(u"single"_qs, 0), std::pair(u"spawned"_qs, 1), std::pair(u"changed"_qs, 2),
        std::pair(u"deleted"_qs, 8), std::pair(u"root"_qs, 9)}) {
    EXPECT_TRUE(store.Insert(Member(guid, status)));
  }
  EXPECT_EQ(Since(mark), "changed deleted root spawned");
  const std::pair<QString, const char*> writes[] = {
      {u"UPDATE schedule SET appointment='x' WHERE status=9"_qs, "root"},
      {u"UPDATE schedule SET guid='other' WHERE status=1"_qs, "other spawned"},
      {u"UPDATE schedule SET status=0 WHERE status=2"_qs, "changed"},
      {u"UPDATE schedule SET status=9 WHERE guid='single'"_qs, "single"},
      {u"UPDATE schedule SET alarm=1 WHERE status=0"_qs, ""},
      {u"DELETE FROM schedule WHERE status=8"_qs, "deleted"},
      {u"UPDATE schedule SET guid=NULL WHERE status=1"_qs, " other"},
      {u"DELETE FROM schedule"_qs, " root single"},
  };
  for (const auto& [sql, guids] : writes) {
    const qint64 before = store.MarkSeries();
    EXPECT_TRUE(store.Execute({sql, {}}));
    EXPECT_EQ(Since(before), guids) << sql.toStdString();
  }
}

TEST_F(SeriesWatchTest, KnowsNothingBeforeItsMarkAndNotVeryManySeries) {
  EXPECT_EQ(Since(0), "?");
  ASSERT_TRUE(store.Open());
  EXPECT_EQ(Since(0), "?");
  const qint64 first = store.MarkSeries();
  EXPECT_EQ(Since(first), "");
  const qint64 second = store.MarkSeries();
  EXPECT_EQ(Since(first), "?");
  store.Close();
  ASSERT_TRUE(store.Open());
  EXPECT_EQ(Since(second), "?");
  const qint64 third = store.MarkSeries();
  store.InTransaction([this] {
    for (int i = 0; i < 300; ++i) store.Insert(Member(QString::number(i), StatusRoot));
    return true;
  });
  EXPECT_EQ(Since(third), "?") << "too many to tell";
}

TEST_F(SeriesWatchTest, IndexesAreMadeAgainBehindManyWrites) {
  ASSERT_TRUE(store.Open());
  const QStringList indexes = Indexes();
  ASSERT_FALSE(indexes.isEmpty());
  EXPECT_TRUE(WithoutIndexes(store, [&] {
    EXPECT_TRUE(Indexes().isEmpty());
    return store.Insert(Row(u"kept"_qs, u"1.2.2024"_qs));
  }));
  EXPECT_EQ(Indexes(), indexes);
  EXPECT_FALSE(WithoutIndexes(store, [&] {
    store.Insert(Row(u"undone"_qs, u"1.2.2024"_qs));
    return false;
  }));
  EXPECT_EQ(Indexes(), indexes);
  EXPECT_EQ(Found(statements::All()), "kept");
}

}  // namespace talnik::test
