#include "recurrence/RecurrPopulate.h"

#include "recurrence/SpawnedRows.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"

namespace talnik {

bool RecurrPopulate(const AddRow& add, const SpawnSeries& series, bool& addFirst, const SpawnTime& time) {
  if (!HasRule(series.rule)) return true;
  const SpawnedRows rows(series, addFirst, time.now);
  bool allAdded = true;
  for (const Date& date : rows.Dates()) allAdded = add(rows.At(date)) && allAdded;
  if (time.ids) rows.AddIdentities(*time.ids, time.biases);
  return allAdded;
}

namespace {

bool Extend(Store& store, Recordset& roots, const Date& limit, const SpawnTime& time) {
  ScheduleRecord root = roots.Row();
  if (!root.spawntime || *root.spawntime >= limit) return true;
  if (root.recur.contains(u"COUNT"_qs) || root.recur.contains(u"UNTIL"_qs)) return true;
  auto series = SeriesOfRoot(root);
  if (!series) return true;
  // Extended rows go under an identity of their own, not under that of the series.
  series->id.clear();
  series->spawnTime = root.spawntime;
  bool addFirst = true;
  const AddRow add = [&store](const ScheduleRecord& row) { return store.Insert(row); };
  if (!RecurrPopulate(add, *series, addFirst, time)) return false;
  root.spawntime = DateAdd(DateUnit::Year, 2, *root.spawntime);
  return roots.Update(root);
}

}  // namespace

bool ExtendSeries(Store& store, const Date& limit, const SpawnTime& time) {
  // Only other programs write spawntime: the index has nothing to give, and nothing is read.
  const auto roots = Recordset::Open(store, statements::RootsWithSpawnTime());
  if (!roots) return false;
  if (roots->RecordCount() == 0) return true;
  return store.InTransaction([&] {
    for (roots->MoveFirst(); !roots->Eof(); roots->MoveNext()) {
      if (!Extend(store, *roots, limit, time)) return false;
    }
    return true;
  });
}

}  // namespace talnik
