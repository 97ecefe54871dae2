// Measures spawning against the raw costs of the machine, and the walk against other engines that are installed.

#include "recurrence/RecurrPopulate.h"
#include "recurrence/RuleWalk.h"
#include "store/Store.h"
#include "store/Template.h"
#include "store/Text.h"

#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#ifdef TALNIK_BENCH_LIBICAL
#include <libical/ical.h>
#endif
#ifdef TALNIK_BENCH_KCALENDARCORE
#include <KCalendarCore/Recurrence>
#endif

namespace {

using namespace talnik;

const Date kNow = Date::FromParts(2024, 1, 1, 8).value();
constexpr int kRuns = 3;

/// Processor time: other work on the machine does not count, and neither does waiting for the disk.
double MillisecondsOf(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}

double Median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

double MedianOf(
    const std::function<void()>& work, const std::function<void()>& prepare = [] {}) {
  std::vector<double> times;
  for (int run = 0; run < kRuns; ++run) {
    prepare();
    times.push_back(MillisecondsOf(work));
  }
  return Median(times);
}

void Check(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(1);
}

// The walk.

constexpr int kWalks = 2000;
std::size_t walked = 0;  // keeps the compiler from leaving the work out

void PrintWalk(const char* engine, double milliseconds, std::size_t dates) {
  std::printf("walk, daily for two years, %-14s %8.2f us a series, %6.2f million dates a second\n", engine,
              milliseconds * 1000 / kWalks, static_cast<double>(dates) * kWalks / milliseconds / 1000);
}

void BenchWalk() {
  const RuleText rule = RuleText::Read(QStringLiteral("RRULE:FREQ=DAILY INTERVAL=1 "));
  const WalkStart from{.start = Date::FromParts(2024, 1, 1, 9).value(), .now = kNow};
  std::size_t dates = 0;
  const double time = MedianOf([&] {
    for (int i = 0; i < kWalks; ++i) walked += dates = WalkRule(rule, from).dates.size();
  });
  PrintWalk("ours", time, dates);
#ifdef TALNIK_BENCH_LIBICAL
  const double libical = MedianOf([&] {
    for (int i = 0; i < kWalks / 20; ++i) {
      const icalrecurrencetype recurrence = icalrecurrencetype_from_string("FREQ=DAILY;UNTIL=20251231T090000");
      icalrecur_iterator* iterator = icalrecur_iterator_new(recurrence, icaltime_from_string("20240101T090000"));
      dates = 0;
      while (!icaltime_is_null_time(icalrecur_iterator_next(iterator))) ++dates;
      icalrecur_iterator_free(iterator);
      walked += dates;
    }
  });
  PrintWalk("libical", libical * 20, dates);
#endif
#ifdef TALNIK_BENCH_KCALENDARCORE
  const double kcalendarcore = MedianOf([&] {
    for (int i = 0; i < kWalks / 20; ++i) {
      KCalendarCore::Recurrence recurrence;
      const QDateTime start(QDate(2024, 1, 1), QTime(9, 0));
      recurrence.setStartDateTime(start, false);
      recurrence.setDaily(1);
      dates = static_cast<std::size_t>(recurrence.timesInInterval(start, start.addDays(730)).size());
      walked += dates;
    }
  });
  PrintWalk("KCalendarCore", kcalendarcore * 20, dates);
#endif
}

// The rebuild.

ScheduleRecord Root(int number) {
  ScheduleRecord root;
  root.apptime = Date::FromParts(2024, 1, 2, 6 + number % 12, number % 60).value();
  root.appdur = DateAdd(DateUnit::Minute, 45, *root.apptime);
  root.appointment = QStringLiteral("Pravidelná schůzka číslo %1").arg(number);
  root.alarm = true;
  root.alarmtime = DateAdd(DateUnit::Minute, -15, *root.apptime);
  root.status = StatusRoot;
  root.guid = NewGuidText();
  root.recur = QStringLiteral("RRULE:FREQ=DAILY INTERVAL=1");
  return root;
}

class SeriesStore {
 public:
  SeriesStore(const QString& folder, int series) : path_(folder + QStringLiteral("/talnik.MDB")), store_(path_) {
    QFile::remove(path_);
    Check(CreateStore(path_), "create");
    Check(store_.InTransaction([&] {
      for (int i = 0; i < series; ++i) {
        if (!store_.Insert(Root(i))) return false;
      }
      return true;
    }),
          "roots");
    Rebuild();
  }

  void Rebuild() { Check(RebuildOccurrences(store_, {.now = kNow}), "rebuild"); }
  void Run(const QString& sql) { Check(store_.Execute({sql, {}}), "statement"); }
  qint64 Occurrences() {
    return store_.Number({QStringLiteral("SELECT count(*) FROM schedule WHERE status=1"), {}}).value();
  }

  /// A plain prepared insert of the same rows, in one transaction, into the same table that holds the roots alone.
  double RawInsert();

 private:
  QString path_;
  Store store_;
};

double SeriesStore::RawInsert() {
  store_.Close();
  sqlite3* db = nullptr;
  Check(sqlite3_open(QFile::encodeName(path_).constData(), &db) == SQLITE_OK, "open");
  const auto run = [db](const char* sql) { Check(sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql); };
  run("PRAGMA synchronous=FULL; PRAGMA cache_size=-65536");
  run("CREATE TEMP TABLE rows AS SELECT * FROM schedule WHERE status=1");
  std::vector<double> times;
  for (int i = 0; i < kRuns; ++i) {
    run("DELETE FROM schedule WHERE status=1");
    sqlite3_stmt* read = nullptr;
    sqlite3_stmt* write = nullptr;
    std::vector<std::array<sqlite3_value*, 12>> rows;
    Check(sqlite3_prepare_v2(db, "SELECT * FROM temp.rows", -1, &read, nullptr) == SQLITE_OK, "read");
    Check(sqlite3_prepare_v2(db, "INSERT INTO schedule VALUES(?,?,?,?,?,?,?,?,?,?,?,?)", -1, &write, nullptr) ==
              SQLITE_OK,
          "write");
    while (sqlite3_step(read) == SQLITE_ROW) {
      auto& row = rows.emplace_back();
      for (int column = 0; column < 12; ++column) {
        row[static_cast<std::size_t>(column)] = sqlite3_value_dup(sqlite3_column_value(read, column));
      }
    }
    times.push_back(MillisecondsOf([&] {
      run("BEGIN IMMEDIATE");
      for (const auto& row : rows) {
        for (int column = 0; column < 12; ++column) {
          sqlite3_bind_value(write, column + 1, row[static_cast<std::size_t>(column)]);
        }
        Check(sqlite3_step(write) == SQLITE_DONE, "insert");
        sqlite3_reset(write);
      }
      run("COMMIT");
    }));
    for (const auto& row : rows) {
      for (sqlite3_value* value : row) sqlite3_value_free(value);
    }
    sqlite3_finalize(read);
    sqlite3_finalize(write);
  }
  sqlite3_close(db);
  return Median(times);
}

void BenchChanged(SeriesStore& store, const char* what, const char* sql, double raw) {
  const double time = MedianOf([&] { store.Rebuild(); }, [&] { store.Run(QString::fromUtf8(sql)); });
  std::printf("rebuild, %-42s %8.1f ms, %.2f times a raw insert\n", what, time, time / raw);
}

void BenchRebuild(const QString& folder) {
  SeriesStore store(folder, 200);
  const double raw = store.RawInsert();
  store.Rebuild();
  std::printf("rows of 200 endless daily series: %lld\n", static_cast<long long>(store.Occurrences()));
  std::printf("raw insert of these rows                            %8.1f ms\n", raw);
  BenchChanged(store, "none there yet", "DELETE FROM schedule WHERE status=1", raw);
  BenchChanged(store, "all texts changed", "UPDATE schedule SET appointment=appointment||'.' WHERE status=9", raw);
  BenchChanged(
      store, "all moved by an hour",
      "UPDATE schedule SET apptime=apptime+1.0/24,appdur=appdur+1.0/24,alarmtime=alarmtime+1.0/24 WHERE status=9", raw);
  BenchChanged(store, "all moved, with other texts and no alarm or one",
               "UPDATE schedule SET apptime=apptime+1.0/24,appdur=appdur+1.0/24,appointment=appointment||'!',"
               "alarmtime=iif(alarmtime IS NULL,apptime,NULL) WHERE status=9",
               raw);
  BenchChanged(store, "all of other series", "UPDATE schedule SET guid=lower(hex(randomblob(16))) WHERE status=9", raw);
  std::printf("rebuild, nothing changed                            %8.1f ms\n", MedianOf([&] { store.Rebuild(); }));
}

void BenchRealUser(const QString& folder) {
  SeriesStore store(folder, 20);
  std::printf("rebuild of 20 series, nothing changed               %8.1f ms\n", MedianOf([&] { store.Rebuild(); }));
  const double one = MedianOf(
      [&] { store.Rebuild(); },
      [&] {
        store.Run(QStringLiteral(
            "UPDATE schedule SET apptime=apptime+1.0/24 WHERE rowid=(SELECT min(rowid) FROM schedule WHERE status=9)"));
      });
  std::printf("rebuild of 20 series, one of them moved             %8.1f ms\n", one);
  std::printf(
      "rebuild of 20 series, all spawned                   %8.1f ms\n",
      MedianOf([&] { store.Rebuild(); }, [&] { store.Run(QStringLiteral("DELETE FROM schedule WHERE status=1")); }));
}

}  // namespace

int main() {
  std::setbuf(stdout, nullptr);
  QTemporaryDir folder;
  BenchWalk();
  BenchRebuild(folder.path());
  BenchRealUser(folder.path());
  return walked == 0 ? 1 : 0;
}
