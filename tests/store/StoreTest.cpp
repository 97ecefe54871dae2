#include "platform/Places.h"
#include "store/StoreFile.h"
#include "store/Text.h"

#include <QFile>
#include <QFileInfo>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace talnik::test {
namespace {

using StoreTest = StoreFile;

ScheduleRecord FullRow() {
  ScheduleRecord row = Row(u"Žluťoučký kůň"_qs, u"15.1.2024 8:30:01"_qs, u"16.1.2024"_qs, StatusRoot);
  row.wav = u"K15083.241"_qs;
  row.alarm = true;
  row.alarmtime = At(u"15.1.2024 8:20"_qs);
  row.alarmfired = true;
  row.guid = NewGuidText();
  row.recur = u" RRULE:FREQ=DAILY INTERVAL=1 "_qs;
  row.reftime = At(u"1.1.1 1:0:0"_qs);
  row.spawntime = At(u"31.12.9999 23:59:59"_qs);
  return row;
}

ScheduleRecord OnlyRow(Store& store) {
  ScheduleRecord found;
  store.ForEach(statements::All(), [&found](const ScheduleRecord& row) {
    found = row;
    return true;
  });
  return found;
}

TEST_F(StoreTest, GivesBackWhatWasWrittenCutToTheColumns) {
  const QString hostile = u"a\"'%_*?#;--\r\n"_qs + QChar(0) + u"😀ř"_qs;
  for (const ScheduleRecord& row : {FullRow(), ScheduleRecord(), Row(hostile, u"15.1.2024"_qs)}) {
    ASSERT_TRUE(store.Execute(statements::DeleteAll()) && store.Insert(row));
    store.Close();
    EXPECT_TRUE(OnlyRow(store) == row);
  }
  EXPECT_EQ(Found(statements::Containing(u"x\" OR 1 OR \"*'"_qs, At(u"1.1.1 1:0:0"_qs))), "");
  EXPECT_EQ(Found(statements::OfSeries(u"'; DELETE FROM schedule; --"_qs)), "");
  EXPECT_EQ(Count(), 1);
  ScheduleRecord row;
  row.appointment = row.wav = row.guid = row.recur = QString(10'000'000, u'ř');
  ASSERT_TRUE(store.Execute(statements::DeleteAll()) && store.Insert(row));
  const ScheduleRecord cut = OnlyRow(store);
  EXPECT_TRUE(cut.appointment.size() == 255 && cut.wav.size() == 255 && cut.guid.size() == 250 &&
              cut.recur.size() == 250);
}

TEST_F(StoreTest, NeverMakesAStoreOfWhatIsNone) {
  WriteFile(folder.filePath(u"empty"_qs), "");
  WriteFile(folder.filePath(u"text"_qs), QByteArray("no database at all\n").repeated(500));
  for (const QString& name : {u"absent"_qs, u"empty"_qs, u"text"_qs, u"."_qs}) {
    const QString other = folder.filePath(name);
    const qint64 size = QFileInfo(other).size();
    Store foreign(other);
    EXPECT_FALSE(foreign.Open());
    EXPECT_FALSE(foreign.Insert(FullRow()));
    EXPECT_FALSE(foreign.InTransaction([] { return true; }));
    EXPECT_FALSE(foreign.Number(statements::CountAll()));
    EXPECT_EQ(Recordset::Open(foreign, statements::All()), nullptr);
    EXPECT_EQ(QFileInfo(other).size(), size) << name.toStdString();
  }
  EXPECT_FALSE(QFile::exists(folder.filePath(u"absent"_qs)));
}

TEST_F(StoreTest, IsForItsUserAlone) {
  EXPECT_EQ(ModeOf(path), 0600);
  QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadGroup | QFile::ReadOther);
  ASSERT_TRUE(store.Open());
  EXPECT_EQ(ModeOf(path), 0600);
  EXPECT_FALSE(CreateStore(path)) << "it replaces nothing";
}

TEST_F(StoreTest, FindsAFileThatGoesAndComesBack) {
  store.Insert(Row(u"old"_qs, u"15.1.2024"_qs));
  QFile::rename(path, folder.filePath(u"away"_qs));
  EXPECT_FALSE(store.Insert(Row(u"lost"_qs, u"15.1.2024"_qs)));
  EXPECT_FALSE(QFile::exists(path));
  QFile::rename(folder.filePath(u"away"_qs), path);
  EXPECT_EQ(Found(statements::All()), "old");

  // Another file in its place, as when a backup is put back.
  QFile::remove(path);
  CreateStore(path);
  EXPECT_EQ(Found(statements::All()), "");
}

TEST_F(StoreTest, CountsAfreshAfterEveryWrite) {
  EXPECT_EQ(Count(), 0);
  Store other(path);
  for (Store* writer : {&store, &other, &store}) {
    const qint64 before = Count();
    ASSERT_TRUE(writer->Insert(FullRow())) << "another program's row may be the last";
    EXPECT_EQ(Count(), before + 1);
  }
  store.InTransaction([&] {
    store.Insert(FullRow());
    EXPECT_EQ(Count(), 4);
    return false;
  });
  EXPECT_EQ(Count(), 3);
}

TEST_F(StoreTest, ATransactionIsAllOrNothing) {
  const auto insert = [&] { return store.Insert(FullRow()); };
  const auto giveUp = [&] { return insert() && false; };
  EXPECT_TRUE(store.InTransaction([&] { return insert() && store.InTransaction(insert); }));
  EXPECT_FALSE(store.InTransaction(giveUp));
  EXPECT_FALSE(store.InTransaction([&] {
    insert();
    store.Execute({u"INSERT INTO nowhere VALUES(1)"_qs, {}});
    EXPECT_FALSE(insert()) << "a write behind a failed one";
    return true;
  }));
  EXPECT_FALSE(store.InTransaction([&] {
    store.InTransaction(giveUp);
    return insert();
  })) << "a nested one that gave up";
  EXPECT_EQ(Count(), 2);
}

TEST_F(StoreTest, AKilledProcessLeavesTheOldState) {
  store.InTransaction([&] {
    for (int i = 0; i < 2000; ++i) store.Insert(Row(u"old"_qs, u"15.1.2024"_qs));
    return true;
  });
  store.Close();
  const pid_t child = fork();
  if (child == 0) {
    Store own(path);
    own.InTransaction([&] {
      own.Execute({u"PRAGMA cache_size=10"_qs, {}});
      own.Execute(statements::DeleteAll());
      for (int i = 0; i < 5000; ++i) own.Insert(Row(u"new"_qs, u"15.1.2024"_qs));
      kill(getpid(), SIGKILL);
      return true;
    });
    _exit(1);
  }
  int state = 0;
  waitpid(child, &state, 0);
  ASSERT_TRUE(WIFSIGNALED(state));
  ASSERT_TRUE(QFile::exists(path + u"-journal"_qs)) << "the half-made change must have reached the disk";
  EXPECT_EQ(Count(), 2000);
  EXPECT_EQ(Texts(statements::All()).count(u"old"_qs), 2000);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(u"talnik.MDB"_qs)) << "a copy of it is whole";
}

}  // namespace
}  // namespace talnik::test
