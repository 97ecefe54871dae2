#include "platform/Places.h"
#include "store/Repair.h"
#include "store/StoreFile.h"

#include <sqlite3.h>

namespace talnik::test {
namespace {

class RepairTest : public StoreFile {
 protected:
  /// A store as some older version has left it.
  Store& Old(const char* sql) {
    const QString oldPath = folder.filePath(u"old.MDB"_qs);
    sqlite3* db = nullptr;
    sqlite3_open(oldPath.toUtf8().constData(), &db);
    EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
    return old_.emplace(oldPath);
  }
  std::optional<Store> old_;
};

TEST_F(RepairTest, BringsAnOldStoreUpToDate) {
  Store& old =
      Old("CREATE TABLE Schedule(AppTime REAL, Appointment TEXT(255), AppDur REAL, Wav TEXT(255), Alarm INTEGER);"
          "INSERT INTO Schedule VALUES(45306.5,'first',NULL,NULL,0),(45307,'second',45307.25,'n.wav',1)");
  EXPECT_FALSE(old.Insert(ScheduleRecord())) << "columns are missing yet";
  ASSERT_TRUE(RepairSchedule(old));
  std::vector<ScheduleRecord> rows;
  old.ForEach(statements::All(), [&rows](const ScheduleRecord& row) { return (rows.push_back(row), true); });
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].appdur, rows[0].apptime);
  EXPECT_EQ(rows[1].appdur, At(u"16.1.2024 6:00"_qs));
  for (const ScheduleRecord& row : rows) {
    EXPECT_TRUE(row.status == StatusSingle && row.guid.size() == 32);
    EXPECT_FALSE(row.alarmfired || row.alarmtime || row.reftime || row.spawntime);
  }
  EXPECT_NE(rows[0].guid, rows[1].guid);
  EXPECT_TRUE(old.Insert(rows[0]));
  EXPECT_EQ(old.Number({u"SELECT count(*) FROM sqlite_schema WHERE type='index'"_qs, {}}),
            store.Number({u"SELECT count(*) FROM sqlite_schema WHERE type='index'"_qs, {}}));
}

TEST_F(RepairTest, LeavesWhatIsSoundUntouched) {
  ScheduleRecord full = Row(u"full"_qs, u"15.1.2024 8:00"_qs, u"15.1.2024 9:00"_qs, StatusRoot);
  full.guid = u"kept"_qs;
  store.Insert(full);
  ASSERT_TRUE(RepairSchedule(store));
  EXPECT_TRUE(Browse(statements::All())->Row() == full);
  store.Close();
  const QByteArray before = ReadFile(path);
  ASSERT_TRUE(RepairSchedule(store));
  store.Close();
  EXPECT_TRUE(ReadFile(path) == before);
}

TEST_F(RepairTest, RefusesWhatHasNoTableOrCannotBeWritten) {
  EXPECT_FALSE(RepairSchedule(Old("CREATE TABLE other(x)")));
  Store absent(folder.filePath(u"absent"_qs));
  EXPECT_FALSE(RepairSchedule(absent));
  Store other(path);
  other.InTransaction([&] {
    EXPECT_FALSE(RepairSchedule(store)) << "another program holds it";
    return true;
  });
}

}  // namespace
}  // namespace talnik::test
