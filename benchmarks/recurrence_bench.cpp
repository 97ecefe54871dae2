// What the walk of a rule costs, and what a rebuild of the spawned rows costs beside a raw insert of the same rows,
// against what was promised.

#include "Promises.h"
#include "RawRows.h"
#include "SeriesStore.h"
#include "recurrence/RuleWalk.h"

#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace talnik;

constexpr double kPromisedMillionDates = 5;
constexpr double kPromisedTimesRaw = 1.3;
constexpr double kPromisedUnchangedMs = 60;
constexpr double kPromisedRealUserMs = 10;

constexpr int kRuns = 5;
bench::Promises promises;

using bench::Work;

double MedianOf(
    const Work& work, const Work& prepare = [] {}) {
  return bench::MedianOf(kRuns, work, prepare);
}

// The walk.

constexpr int kWalks = 2000;
std::size_t walked = 0;  // keeps the compiler from leaving the work out

void BenchWalk() {
  const RuleText rule = RuleText::Read(QStringLiteral("RRULE:FREQ=DAILY INTERVAL=1 "));
  const WalkStart from{.start = Date::FromParts(2024, 1, 1, 9).value(), .now = bench::kSeriesNow};
  std::size_t dates = 0;
  const double ours = MedianOf([&] {
    for (int i = 0; i < kWalks; ++i) walked += dates = WalkRule(rule, from).dates.size();
  });
  const double millions = static_cast<double>(dates) * kWalks / ours / 1000;
  promises.Above("the walk, daily for two years", millions, kPromisedMillionDates, "million dates a second");
}

// The rebuild.

enum class Rules { Daily, Mixed };

/// What a calendar in use holds: a few things every day, most of them every week, some every month or year.
const std::array<const char*, 8> kMixedRules = {"RRULE:FREQ=DAILY INTERVAL=1",
                                                "RRULE:FREQ=WEEKLY BYDAY=TU INTERVAL=1",
                                                "RRULE:FREQ=WEEKLY BYDAY=MO,TU INTERVAL=1",
                                                "RRULE:FREQ=MONTHLY BYDAY=1TU INTERVAL=1",
                                                "RRULE:FREQ=YEARLY INTERVAL=1",
                                                "RRULE:FREQ=WEEKLY BYDAY=TU INTERVAL=2",
                                                "RRULE:FREQ=MONTHLY BYMONTHDAY=2 INTERVAL=1",
                                                "RRULE:FREQ=YEARLY INTERVAL=1"};

ScheduleRecord Root(int number, Rules rules) {
  const std::size_t rule = rules == Rules::Daily ? 0 : static_cast<std::size_t>(number) % kMixedRules.size();
  return bench::SeriesRoot(number, QString::fromLatin1(kMixedRules.at(rule)));
}

class TimedStore : public bench::SeriesStore {
 public:
  TimedStore(const QString& folder, int series, Rules rules)
      : SeriesStore(folder + QStringLiteral("/talnik.MDB"), series,
                    [rules](int number) { return Root(number, rules); }) {}

  double MedianAfter(const char* change) {
    return MedianOf([this] { Rebuild(); }, [&] { Run(change); });
  }

  /// A plain prepared insert of the same rows, in one transaction, into the same table that holds the roots alone.
  double RawInsert() {
    Close();
    const bench::RawFile file(Path());
    const bench::RawRows rows(file, "SELECT * FROM schedule WHERE status=1");
    return MedianOf([&] { rows.InsertInto(file); }, [&] { file.Run("DELETE FROM schedule WHERE status=1"); });
  }
};

struct Change {
  const char* what;
  const char* sql;
};

constexpr std::array<Change, 5> kAllChanged = {{
    {"none there yet", "DELETE FROM schedule WHERE status=1"},
    {"all texts changed", "UPDATE schedule SET appointment=appointment||'.' WHERE status=9"},
    {"all moved by an hour",
     "UPDATE schedule SET apptime=apptime+1.0/24,appdur=appdur+1.0/24,alarmtime=alarmtime+1.0/24 WHERE status=9"},
    {"all moved, other texts, the alarm gone or come",
     "UPDATE schedule SET apptime=apptime+1.0/24,appdur=appdur+1.0/24,appointment=appointment||'!',"
     "alarmtime=iif(alarmtime IS NULL,apptime,NULL) WHERE status=9"},
    {"all of other series", "UPDATE schedule SET guid=lower(hex(randomblob(16))) WHERE status=9"},
}};

void BenchManySeries(const QString& folder) {
  TimedStore store(folder, 200, Rules::Daily);
  std::printf("\n200 endless daily series, %lld rows\n", store.Occurrences());
  const double raw = store.RawInsert();
  store.Rebuild();
  promises.Tell("  raw insert of these rows", raw, "ms");
  for (const Change& change : kAllChanged) {
    const double time = store.MedianAfter(change.sql);
    promises.Tell((std::string("  rebuild of 200 series, ") + change.what).c_str(), time, "ms");
    promises.Below((std::string("    beside the raw insert, ") + change.what).c_str(), time / raw, kPromisedTimesRaw,
                   "times");
  }
  const double unchanged = MedianOf([&] { store.Rebuild(); });
  promises.Below("  rebuild of 200 series, nothing changed since the last one", unchanged, kPromisedUnchangedMs, "ms");
  promises.Tell("  rebuild of 200 series, nothing changed, but the file just opened",
                MedianOf([&] { store.Rebuild(); }, [&] { store.OpenAnew(); }), "ms");
}

void BenchFewSeries(const QString& folder, Rules rules) {
  TimedStore store(folder, 20, rules);
  std::printf("\n20 series, %s, %lld rows\n", rules == Rules::Daily ? "all daily" : "as in use", store.Occurrences());
  const auto print = [&](const char* what, double time) {
    if (rules == Rules::Daily) return promises.Tell(what, time, "ms");
    promises.Below(what, time, kPromisedRealUserMs, "ms");
  };
  print("  rebuild of 20 series, nothing changed since the last one", MedianOf([&] { store.Rebuild(); }));
  print("  rebuild of 20 series, nothing changed, but the file just opened",
        MedianOf([&] { store.Rebuild(); }, [&] { store.OpenAnew(); }));
  print("  rebuild of 20 series, another record saved",
        store.MedianAfter("INSERT INTO schedule(apptime,appointment,status,guid) VALUES(45400,'',0,'x')"));
  print("  rebuild of 20 series, one series moved",
        store.MedianAfter("UPDATE schedule SET apptime=apptime+1.0/24 WHERE status=9 AND rowid=2"));
}

}  // namespace

int main() {
  const QTemporaryDir folder;
  BenchWalk();
  BenchManySeries(folder.path());
  BenchFewSeries(folder.path(), Rules::Mixed);
  BenchFewSeries(folder.path(), Rules::Daily);
  return walked > 0 ? promises.ExitCode() : 1;
}
