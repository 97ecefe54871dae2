#include "store/WithoutIndexes.h"

#include "store/Store.h"

#include <algorithm>
#include <utility>

namespace talnik {

bool IndexesAside::PutAside() {
  QStringList drops;
  const QString stored =
      u"SELECT name,sql FROM sqlite_schema WHERE type='index' AND tbl_name='schedule' AND sql IS NOT NULL"_qs;
  const bool read = store_.ForEachRow({stored, {}}, [&](const StoreRow& row) {
    drops << u"DROP INDEX \""_qs + row.Text(0) + u'"';
    sql_ << row.Text(1);
    return true;
  });
  return read && std::all_of(drops.begin(), drops.end(), [this](const QString& sql) {
           return store_.Execute({sql, {}});
         });
}

bool IndexesAside::MakeAgain() {
  const QStringList sql = std::exchange(sql_, {});
  return std::all_of(sql.begin(), sql.end(), [this](const QString& index) { return store_.Execute({index, {}}); });
}

bool WithoutIndexes(Store& store, const std::function<bool()>& work) {
  return store.InTransaction([&] {
    IndexesAside indexes(store);
    return indexes.PutAside() && work() && indexes.MakeAgain();
  });
}

}  // namespace talnik
