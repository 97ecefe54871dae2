#include "store/WithoutIndexes.h"

#include "store/Store.h"

#include <algorithm>
#include <vector>

namespace talnik {

namespace {

struct StoredIndex {
  QString name;
  QString sql;
};

std::vector<StoredIndex> StoredIndexes(Store& store) {
  std::vector<StoredIndex> indexes;
  const QString sql =
      u"SELECT name,sql FROM sqlite_schema WHERE type='index' AND tbl_name='schedule' AND sql IS NOT NULL"_qs;
  store.ForEachRow({sql, {}}, [&indexes](const StoreRow& row) {
    indexes.push_back({row.Text(0), row.Text(1)});
    return true;
  });
  return indexes;
}

}  // namespace

bool WithoutIndexes(Store& store, const std::function<bool()>& work) {
  return store.InTransaction([&] {
    const std::vector<StoredIndex> indexes = StoredIndexes(store);
    const auto drop = [&store](const StoredIndex& index) {
      return store.Execute({u"DROP INDEX \""_qs + index.name + u'"', {}});
    };
    const auto make = [&store](const StoredIndex& index) { return store.Execute({index.sql, {}}); };
    return std::all_of(indexes.begin(), indexes.end(), drop) && work() &&
           std::all_of(indexes.begin(), indexes.end(), make);
  });
}

}  // namespace talnik
