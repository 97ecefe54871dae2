// The store: what is asked of it by a move, a day, a start, a search.

#include "../RawRows.h"
#include "Subjects.h"
#include "store/Recordset.h"
#include "store/Repair.h"

#include <optional>

namespace talnik::bench {
namespace {

/// The time of one question of many about some days, as few as a user moves between.
double OfOneDay(int rows, const std::function<void(const Date& day)>& ask) {
  constexpr quint32 questions = 100;
  constexpr quint32 days = 10;
  const Span span = GrowthStores::SpanOf(rows);
  return ShortestOf([&] {
           for (quint32 i = 0; i < questions; ++i) {
             QRandomGenerator random(i % days);
             ask(RandomDay(random, span));
           }
         }) /
         questions;
}

void OpenRecords(Store& store, const Statement& statement) {
  Check(Recordset::Open(store, statement) != nullptr, "read");
}

/// What the store adds to the start of the program.
void Begin(const QString& path) {
  Store store(path);
  RepairSchedule(store);
  store.Number(statements::CountOfDay(kFirstDay));
  store.ForEach(statements::AlarmQueue(), [](const ScheduleRecord&) { return false; });
}

}  // namespace

void MeasureStore(GrowthTable& table, GrowthStores& stores) {
  const auto overStore = [&stores](double (*measure)(int, Store&)) {
    return [&stores, measure](int rows) {
      Store store(stores.Path(rows));
      return measure(rows, store);
    };
  };
  table.Measure({"move in the month list, in the store", Grows::Hardly, 0.2, overStore([](int rows, Store& store) {
                   return OfOneDay(rows, [&](const Date& day) { MoveTo(day, store); });
                 })});
  table.Measure({"rows of a day read", Grows::Hardly, 5, overStore([](int rows, Store& store) {
                   return OfOneDay(rows, [&](const Date& day) { OpenRecords(store, statements::OfDay(day)); });
                 })});
  table.Measure({"rows of a series read", Grows::Hardly, 5, overStore([](int, Store& store) {
                   return ShortestOf([&] { OpenRecords(store, statements::OfSeries(NewGuidText())); });
                 })});
  table.Measure({"store opened, the first day and alarm", Grows::Hardly, 100,
                 [&](int rows) { return ShortestOf([&] { Begin(stores.Path(rows)); }); }});
  table.Measure({"all rows counted, store just opened", Grows::WithRows, 5, [&](int rows) {
                   std::optional<Store> store;
                   return ShortestOf([&] { Check(store->Number(statements::CountAll()) == rows, "count"); },
                                     [&] { Check(store.emplace(stores.Path(rows)).Open(), "open"); });
                 }});
  table.Measure({"search of a text", Grows::WithRows, 100, overStore([](int, Store& store) {
                   const Date from = *Date::FromParts(1, 1, 1, 1);
                   const Statement search = statements::Containing(QStringLiteral("ČÍSLO 12345"), from);
                   return ShortestOf([&] { OpenRecords(store, search); });
                 })});
  table.Measure({"all rows browsed", Grows::WithRows, 100, overStore([](int, Store& store) {
                   return ShortestOf([&] { OpenRecords(store, statements::Visible()); });
                 })});
}

}  // namespace talnik::bench
