// What the store costs with 100,000 and 1,000,000 rows of ten years. Durations: most within a day, the longest three
// years. The files are made once, in the folder for temporary files.

#include "store/Recordset.h"
#include "store/Repair.h"
#include "store/Statements.h"
#include "store/Template.h"
#include "store/Text.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace talnik {
namespace {

constexpr int kDays = 3650;
const Date kFirstDay = *Date::FromParts(2019, 1, 1);

std::int64_t Duration(QRandomGenerator& random) {
  constexpr std::int64_t day = 86400;
  const int kind = static_cast<int>(random.bounded(1000));
  const std::int64_t longest = kind < 900   ? day / 4
                               : kind < 970 ? 8 * day
                               : kind < 990 ? 64 * day
                               : kind < 999 ? 512 * day
                                            : 1095 * day;
  return random.bounded(static_cast<quint32>(longest));
}

ScheduleRecord RandomRow(QRandomGenerator& random) {
  ScheduleRecord row;
  row.apptime = DateAdd(DateUnit::Minute, random.bounded(kDays * 1440), kFirstDay);
  row.appdur = DateAdd(DateUnit::Second, Duration(random), *row.apptime);
  row.appointment = u"Schůzka číslo "_qs + QString::number(random.generate());
  row.status = static_cast<int>(random.bounded(10U)) == 0 ? StatusOccurrence : StatusSingle;
  row.guid = NewGuidText();
  if (random.bounded(5U) == 0) {
    row.alarmtime = DateAdd(DateUnit::Minute, -10, *row.apptime);
    row.alarmfired = row.apptime < *Date::FromParts(2028, 11, 1);
    row.alarm = !row.alarmfired;
  }
  return row;
}

QString StorePath(int rows) {
  return QDir::temp().filePath(u"talnik-bench-"_qs + QString::number(rows) + u".MDB"_qs);
}

void MakeStore(int rows) {
  const QString path = StorePath(rows);
  QFile::remove(path);
  CreateStore(path);
  Store store(path);
  QRandomGenerator random(7);
  store.InTransaction([&] {
    for (int i = 0; i < rows; ++i) store.Insert(RandomRow(random));
    return true;
  });
}

Store& Filled(int rows) {
  static std::map<int, std::unique_ptr<Store>> stores;
  auto& store = stores[rows];
  if (!store) {
    MakeStore(rows);
    store = std::make_unique<Store>(StorePath(rows));
  }
  return *store;
}

Date RandomDay(QRandomGenerator& random) {
  return *DateAdd(DateUnit::Day, random.bounded(kDays), kFirstDay);
}

/// What one move in the month list asks of the store.
void MoveByDay(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  QRandomGenerator random(1);
  for (auto _ : state) {
    store.ForEach(statements::RootsWithSpawnTime(), [](const ScheduleRecord&) { return true; });
    benchmark::DoNotOptimize(store.Number(statements::CountAll()));
    benchmark::DoNotOptimize(store.Number(statements::CountOfDay(RandomDay(random))));
  }
}

void CountOfDay(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  QRandomGenerator random(1);
  for (auto _ : state) benchmark::DoNotOptimize(store.Number(statements::CountOfDay(RandomDay(random))));
}

void CountOfDayOpenedEachTime(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  QRandomGenerator random(1);
  for (auto _ : state) {
    store.Close();
    benchmark::DoNotOptimize(store.Number(statements::CountOfDay(RandomDay(random))));
  }
}

void OpenDay(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  QRandomGenerator random(1);
  for (auto _ : state) benchmark::DoNotOptimize(Recordset::Open(store, statements::OfDay(RandomDay(random))));
}

/// What the store adds to the start of the program.
void OpenRepairAndFirstAlarm(benchmark::State& state) {
  Filled(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Store store(StorePath(static_cast<int>(state.range(0))));
    RepairSchedule(store);
    store.Number(statements::CountOfDay(kFirstDay));
    store.Number(statements::CountAll());
    store.ForEach(statements::AlarmQueue(), [](const ScheduleRecord&) { return false; });
  }
}

void OfSeries(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(Recordset::Open(store, statements::OfSeries(NewGuidText())));
}

void OfForeignSeries(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(Recordset::Open(store, statements::OfSeries(u"0q3k8v5h@example.org"_qs)));
  }
}

void Search(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  const Date from = *Date::FromParts(1, 1, 1, 1);
  for (auto _ : state) {
    benchmark::DoNotOptimize(Recordset::Open(store, statements::Containing(u"ČÍSLO 12345"_qs, from)));
  }
}

void BrowseAll(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(Recordset::Open(store, statements::Visible()));
}

void ReadAll(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    qsizetype length = 0;
    store.ForEach(statements::All(), [&length](const ScheduleRecord& row) {
      length += row.appointment.size();
      return true;
    });
    benchmark::DoNotOptimize(length);
  }
}

void InsertInOneTransaction(benchmark::State& state) {
  const QString path = QDir::temp().filePath(u"talnik-bench-insert.MDB"_qs);
  QRandomGenerator random(3);
  std::vector<ScheduleRecord> rows(100000);
  std::generate(rows.begin(), rows.end(), [&random] { return RandomRow(random); });
  for (auto _ : state) {
    state.PauseTiming();
    QFile::remove(path);
    CreateStore(path);
    Store store(path);
    state.ResumeTiming();
    store.InTransaction([&] {
      for (const ScheduleRecord& row : rows) store.Insert(row);
      return true;
    });
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rows.size()));
  QFile::remove(path);
}

void OneInsert(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  QRandomGenerator random(4);
  for (auto _ : state) store.Insert(RandomRow(random));
}

void BothSizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(100000)->Arg(1000000);
}

BENCHMARK(CountOfDay)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(MoveByDay)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(CountOfDayOpenedEachTime)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenDay)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenRepairAndFirstAlarm)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(OfSeries)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(OfForeignSeries)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(Search)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BrowseAll)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadAll)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(InsertInOneTransaction)->Unit(benchmark::kMillisecond);
BENCHMARK(OneInsert)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace talnik

BENCHMARK_MAIN();
