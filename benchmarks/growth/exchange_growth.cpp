// Files of appointments: in, in again, out.

#include "../MadeEvents.h"
#include "../RawRows.h"
#include "Subjects.h"
#include "platform/WholeFile.h"
#include "store/CsvExchange.h"
#include "store/Store.h"
#include "store/Template.h"

#include <QFile>

#include <optional>

namespace talnik::bench {
namespace {

bool GoOn(qint64, qint64) {
  return true;
}

void Import(Store& store, const QString& text) {
  Check(ImportCsv(store, text, kFirstEventDay, GoOn).end == CsvEnd::Done, "import");
}

double ImportTime(const QString& path, int rows, bool again) {
  const QString text = CsvOfEvents(rows);
  std::optional<Store> store;
  const auto makeEmpty = [&] {
    store.reset();
    QFile::remove(path);
    CreateStore(path);
    store.emplace(path);
  };
  if (!again) return ShortestOf([&] { Import(*store, text); }, makeEmpty);
  makeEmpty();
  Import(*store, text);
  return ShortestOf([&] { Import(*store, text); });
}

}  // namespace

void MeasureExchange(GrowthTable& table, GrowthStores& stores) {
  const QString path = stores.Scratch("import.MDB");
  table.Measure({"CSV imported into an empty store", Grows::WithRows, 400,
                 [&](int rows) { return ImportTime(path, rows, false); }});
  table.Measure({"CSV imported again, all duplicates", Grows::WithRows, 400,
                 [&](int rows) { return ImportTime(path, rows, true); }});
  table.Measure({"CSV exported", Grows::WithRows, 50, [&](int rows) {
                   Store store(stores.Path(rows));
                   return ShortestOf([&] {
                     QString reason;
                     const QByteArray bytes = ExportCsv(store, GoOn).text.toUtf8();
                     Check(WriteWholeFile(stores.Scratch("a.csv"), bytes, Readers::AsUsual, reason), "export");
                   });
                 }});
}

}  // namespace talnik::bench
