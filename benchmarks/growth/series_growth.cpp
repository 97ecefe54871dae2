// The walk of a rule and the rows that rules spawn.

#include "../SeriesStore.h"
#include "Subjects.h"
#include "recurrence/RuleWalk.h"

namespace talnik::bench {
namespace {

constexpr int kRowsOfASeries = 100;

SeriesStore MakeSeries(const QString& path, int rows) {
  return {path, rows / kRowsOfASeries, [](int number) {
            return SeriesRoot(number, QStringLiteral("RRULE:FREQ=DAILY COUNT=%1 INTERVAL=1").arg(kRowsOfASeries));
          }};
}

double WalkTime(int dates) {
  const RuleText rule = RuleText::Read(QStringLiteral("RRULE:FREQ=DAILY COUNT=%1 INTERVAL=1").arg(dates));
  const WalkStart from{.start = kSeriesNow, .now = kSeriesNow};
  return ShortestOf([&] { Check(WalkRule(rule, from).dates.size() + 1 >= static_cast<std::size_t>(dates), "walk"); });
}

}  // namespace

void MeasureSeries(GrowthTable& table, GrowthStores& stores) {
  const auto rebuild = [&stores](void (*change)(SeriesStore&)) {
    return [&stores, change](int rows) {
      SeriesStore store = MakeSeries(stores.Scratch("series.MDB"), rows);
      return ShortestOf([&] { store.Rebuild(); }, [&] { change(store); });
    };
  };
  table.Measure({"dates of a rule walked", Grows::WithRows, 2, WalkTime});
  table.Measure({"rebuild, no spawned rows there", Grows::WithRows, 400,
                 rebuild([](SeriesStore& store) { store.Run("DELETE FROM schedule WHERE status=1"); })});
  table.Measure({"rebuild, nothing changed, file just opened", Grows::WithRows, 60,
                 rebuild([](SeriesStore& store) { store.OpenAnew(); })});
  table.Measure({"rebuild, nothing changed", Grows::WithRows, 60, rebuild([](SeriesStore&) {})});
}

}  // namespace talnik::bench
