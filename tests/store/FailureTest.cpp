#include "store/FaultyDisk.h"
#include "store/Repair.h"
#include "store/StoreFile.h"

#include <QFile>

namespace talnik::test {
namespace {

using Fault = FaultyDisk::Fault;

/// A store of 100 rows on a disk that fails at a word.
class FailureTest : public StoreFile {
 protected:
  FailureTest() {
    store.WriteFailed = [this](const QString& what) {
      told << what;
      EXPECT_TRUE(!mayOpen || store.Open()) << "told within a transaction";
    };
    EXPECT_TRUE(store.InTransaction([this] {
      for (int i = 0; i < 100; ++i) store.Insert(Row(u"old"_qs, u"15.1.2024"_qs));
      return true;
    }));
  }
  bool InsertOne() { return store.Insert(Row(u"new"_qs, u"15.1.2024"_qs)); }
  bool mayOpen = true;
};

struct FaultyDiskTest : FaultyDisk, FailureTest {};

TEST_F(FaultyDiskTest, EveryFaultIsToldOnceLosesNothingAndIsFoundAtTheStart) {
  const struct {
    Fault met;
    const char* reason;
    bool openAnew = false;  ///< the fault is met at the opening
  } cases[] = {{Fault::Full, "disk je plný"},
               {Fault::ReadOnlyFile, "jen pro čtení", true},
               {Fault::ReadOnlyFolder, "nelze otevřít"},
               {Fault::WriteError, "chyba disku"},
               {Fault::SyncError, "chyba disku"}};
  qint64 kept = 100;
  for (const auto& [met, reason, openAnew] : cases) {
    SCOPED_TRACE(static_cast<int>(met));
    const auto set = [this, openAnew = openAnew](Fault next) {
      fault = next;
      if (openAnew) store.Close();
    };
    told.clear();
    set(met);
    EXPECT_FALSE(InsertOne());
    EXPECT_FALSE(store.InTransaction([&] { return InsertOne() || true; }));
    auto rows = Browse(statements::All());
    ScheduleRecord changed = rows->Row();
    changed.appointment = u"x"_qs;
    EXPECT_FALSE(rows->Update(changed) || rows->Delete());
    EXPECT_EQ(Count(), kept);
    ASSERT_EQ(told.size(), 1) << told.join(u'|').toStdString();
    EXPECT_TRUE(told[0].contains(QString::fromUtf8(reason))) << told[0].toStdString();

    // Once the disk takes a write, the next failure is a new one.
    set(Fault::None);
    EXPECT_TRUE(InsertOne());
    EXPECT_EQ(Count(), ++kept);
    set(met);
    EXPECT_FALSE(InsertOne());
    EXPECT_EQ(told.size(), 2);

    store.Close();
    // A disk that fails only when it is told to keep what it was given shows it at the first write that is kept.
    EXPECT_EQ(RepairSchedule(store), met == Fault::SyncError);
    set(Fault::None);
    EXPECT_TRUE(InsertOne());
    ++kept;
  }
}

TEST_F(FaultyDiskTest, AFaultAtAnyWriteLeavesTheOldStateOrTheNew) {
  for (writesLeft = 0; writesLeft < 60;) {
    const int writes = writesLeft;
    fault = Fault::WriteError;
    const bool kept = store.InTransaction([&] {
      return store.Execute({u"UPDATE schedule SET appointment='changed',guid=hex(randomblob(16))"_qs, {}}) || true;
    });
    fault = Fault::None;
    store.Close();
    const auto changed = store.Number({u"SELECT count(*) FROM schedule WHERE appointment='changed'"_qs, {}});
    ASSERT_EQ(changed, kept ? 100 : 0) << "after " << writes << " writes";
    if (kept) return;
    writesLeft = writes + 1;
  }
  ADD_FAILURE() << "never went through";
}

TEST_F(FaultyDiskTest, AFileThatAnotherProgramHoldsIsNotWaitedForTwice) {
  Store other(path);
  slept = 0;
  other.InTransaction([&] {
    other.Insert(Row(u"theirs"_qs, u"15.1.2024"_qs));
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(InsertOne());
    Store late(path);
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(late.Insert(ScheduleRecord()));
    return true;
  });
  EXPECT_GT(slept, 0);
  EXPECT_LE(slept, 2 * 50'000);
  EXPECT_EQ(told.size(), 1);
  EXPECT_TRUE(told.value(0).contains(u"jiný program"_qs));
  EXPECT_TRUE(InsertOne());
  EXPECT_EQ(Count(), 102);
}

TEST_F(FailureTest, AFileThatCannotBeReadIsToldOnce) {
  mayOpen = false;
  QFile::rename(path, folder.filePath(u"away"_qs));
  for (int move = 0; move < 3; ++move) EXPECT_FALSE(store.Number(statements::CountOfDay(At(u"15.1.2024"_qs))));
  EXPECT_EQ(told, QStringList(u"Data se nepodařilo přečíst, soubor chybí: %1."_qs.arg(path)));

  QFile file(folder.filePath(u"away"_qs));
  ASSERT_TRUE(file.rename(path));
  EXPECT_EQ(Count(), 100);
  store.Close();
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(4096)) << "behind the first page";
  file.write(QByteArray(static_cast<qsizetype>(file.size()) - 4096, 'x'));
  file.close();
  told.clear();
  for (int move = 0; move < 3; ++move) EXPECT_EQ(Found(statements::All()), "(unreadable)");
  EXPECT_EQ(told, QStringList(u"Data se nepodařilo přečíst, soubor je poškozený: %1."_qs.arg(path)));
  EXPECT_FALSE(RepairSchedule(store));
}

}  // namespace
}  // namespace talnik::test
