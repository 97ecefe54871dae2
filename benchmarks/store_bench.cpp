// What the store costs with 100,000 and 1,000,000 rows of ten years. Durations: most within a day, the longest three
// years. The files are made once, in the folder for temporary files.

#include "Promises.h"
#include "TenYears.h"
#include "store/Recordset.h"
#include "store/Repair.h"
#include "store/Statements.h"

#include <QDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace talnik {
namespace {

using namespace bench;

QString StorePath(int rows) {
  return QDir::temp().filePath(u"talnik-bench-"_qs + QString::number(rows) + u".MDB"_qs);
}

Store& Filled(int rows) {
  static std::map<int, std::unique_ptr<Store>> stores;
  auto& store = stores[rows];
  if (!store) {
    MakeTenYears(StorePath(rows), rows);
    store = std::make_unique<Store>(StorePath(rows));
  }
  return *store;
}

/// Each move to some other year.
void MoveByDay(benchmark::State& state) {
  Store& store = Filled(static_cast<int>(state.range(0)));
  QRandomGenerator random(1);
  for (auto _ : state) benchmark::DoNotOptimize(MoveTo(RandomDay(random), store));
}

/// The median of moves as a user makes them: day by day, with a jump to some other year now and then.
double MoveMilliseconds(int rows) {
  constexpr int moves = 2000;
  constexpr int together = 20;
  Store& store = Filled(rows);
  QRandomGenerator random(1);
  int move = 0;
  Date day = kFirstDay;
  return MedianOf(
      moves, [&] { MoveTo(day, store); },
      [&] { day = move++ % together == 0 ? RandomDay(random) : *DateAdd(DateUnit::Day, 1, day); });
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

/// Any argument also runs the measurements that nothing was promised of; see --help.
int main(int argc, char** argv) {
  talnik::bench::Promises promises;
  promises.Below("one move in the month list, in the store, 100,000 rows", talnik::MoveMilliseconds(100000), 0.2, "ms");
  promises.Below("one move in the month list, in the store, 1,000,000 rows", talnik::MoveMilliseconds(1000000), 0.5,
                 "ms");
  if (argc > 1) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
  }
  return promises.ExitCode();
}
