#include "store/FaultyDisk.h"
#include "store/Repair.h"
#include "store/StoreFile.h"

namespace talnik::test {
namespace {

using Fault = FaultyDisk::Fault;

class FailureTest : public testing::Test {
 protected:
  FailureTest() {
    EXPECT_TRUE(CreateStore(path));
    store.emplace(path);
    store->WriteFailed = [this](const QString& what) {
      told << what;
      EXPECT_TRUE(store->Open()) << "told within a transaction";
    };
    EXPECT_TRUE(store->InTransaction([this] {
      for (int i = 0; i < 100; ++i) store->Insert(Row(u"old"_qs, u"15.1.2024"_qs));
      return true;
    }));
  }

  bool InsertOne() { return store->Insert(Row(u"new"_qs, u"15.1.2024"_qs)); }
  qint64 Count() { return store->Number(statements::CountAll()).value_or(-1); }

  FaultyDisk disk;
  QTemporaryDir folder;
  QString path = folder.filePath(u"talnik.MDB"_qs);
  std::optional<Store> store;
  QStringList told;
};

struct FaultCase {
  const char* name;
  Fault fault;
  const char* reason;
  bool openAnew;  ///< the fault is met at the opening
};

void PrintTo(const FaultCase& test, std::ostream* stream) {
  *stream << test.name;
}

class EveryFault : public FailureTest, public testing::WithParamInterface<FaultCase> {};

TEST_P(EveryFault, IsToldOnceAndLosesNothing) {
  disk.fault = GetParam().fault;
  if (GetParam().openAnew) store->Close();
  EXPECT_FALSE(InsertOne());
  EXPECT_FALSE(store->InTransaction([&] {
    InsertOne();
    return true;
  }));
  auto rows = Recordset::Open(*store, statements::All());
  ASSERT_NE(rows, nullptr);
  ScheduleRecord changed = rows->Row();
  changed.appointment = u"x"_qs;
  EXPECT_FALSE(rows->Update(changed));
  EXPECT_FALSE(rows->Delete());
  EXPECT_EQ(Count(), 100);
  ASSERT_EQ(told.size(), 1) << told.join(u'|').toStdString();
  EXPECT_TRUE(told[0].contains(QString::fromUtf8(GetParam().reason))) << told[0].toStdString();

  // Once the disk takes a write, the next failure is a new one.
  disk.fault = Fault::None;
  if (GetParam().openAnew) store->Close();
  EXPECT_TRUE(InsertOne());
  EXPECT_EQ(Count(), 101);
  disk.fault = GetParam().fault;
  if (GetParam().openAnew) store->Close();
  EXPECT_FALSE(InsertOne());
  EXPECT_EQ(told.size(), 2);
}

TEST_P(EveryFault, IsFoundAtTheStart) {
  disk.fault = GetParam().fault;
  store->Close();
  // A disk that fails only when it is told to keep what it was given shows it at the first write that is kept.
  EXPECT_EQ(RepairSchedule(*store), GetParam().fault == Fault::SyncError);
}

INSTANTIATE_TEST_SUITE_P(Disk, EveryFault,
                         testing::Values(FaultCase{"Full", Fault::Full, "disk je plný", false},
                                         FaultCase{"ReadOnlyFile", Fault::ReadOnlyFile, "jen pro čtení", true},
                                         FaultCase{"ReadOnlyFolder", Fault::ReadOnlyFolder, "nelze otevřít", false},
                                         FaultCase{"WriteError", Fault::WriteError, "chyba disku", false},
                                         FaultCase{"SyncError", Fault::SyncError, "chyba disku", false}));

TEST_F(FailureTest, AFaultAtAnyWriteLeavesTheOldStateOrTheNew) {
  for (int writes = 0; writes < 60; ++writes) {
    disk.fault = Fault::WriteError;
    disk.writesLeft = writes;
    const bool kept = store->InTransaction([&] {
      store->Execute({u"UPDATE schedule SET appointment='changed',guid=hex(randomblob(16))"_qs, {}});
      return true;
    });
    disk.fault = Fault::None;
    store->Close();
    const auto changed = store->Number({u"SELECT count(*) FROM schedule WHERE appointment='changed'"_qs, {}});
    ASSERT_EQ(changed, kept ? 100 : 0) << "after " << writes << " writes";
    if (kept) return;
  }
  ADD_FAILURE() << "never went through";
}

TEST_F(FailureTest, AFileThatAnotherProgramHoldsIsNotWaitedForTwice) {
  Store other(path);
  disk.slept = 0;
  other.InTransaction([&] {
    other.Insert(Row(u"theirs"_qs, u"15.1.2024"_qs));
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(InsertOne());
    Store late(path);
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(late.Insert(ScheduleRecord()));
    return true;
  });
  EXPECT_GT(disk.slept, 0);
  EXPECT_LE(disk.slept, 2 * 50'000);
  EXPECT_EQ(told.size(), 1);
  EXPECT_TRUE(told.value(0).contains(u"jiný program"_qs));
  EXPECT_TRUE(InsertOne());
  EXPECT_EQ(Count(), 102);
}

}  // namespace
}  // namespace talnik::test
