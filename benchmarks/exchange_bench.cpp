// What the exchange by CSV costs: 10,000 and 100,000 rows into an empty store, the same again as duplicates, and the
// way out, with encoding and writing of the file. Exit code 0 only if what was promised is kept.

#include "MadeEvents.h"
#include "Promises.h"
#include "platform/WholeFile.h"
#include "store/CsvExchange.h"
#include "store/Store.h"
#include "store/Template.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace talnik {
namespace {

constexpr int kRuns = 5;

bool GoOn(qint64, qint64) {
  return true;
}

struct ImportTimes {
  double fresh = 0;
  double again = 0;
};

ImportTimes MeasureImport(const QString& path, int rows) {
  const QString text = bench::CsvOfEvents(rows);
  std::unique_ptr<Store> store;
  const auto import = [&] { ImportCsv(*store, text, bench::kFirstEventDay, GoOn); };
  const auto makeEmpty = [&] {
    store.reset();
    QFile::remove(path);
    CreateStore(path);
    store = std::make_unique<Store>(path);
  };
  const double fresh = bench::MedianOf(kRuns, import, makeEmpty);
  return {fresh, bench::MedianOf(kRuns, import)};
}

double MeasureExport(const QString& path, const QString& csv) {
  Store store(path);
  return bench::MedianOf(kRuns, [&] {
    QString reason;
    WriteWholeFile(csv, ExportCsv(store, GoOn).text.toUtf8(), Readers::AsUsual, reason);
  });
}

int Measure() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"talnik.MDB"_qs);
  const ImportTimes few = MeasureImport(path, 10'000);
  const ImportTimes many = MeasureImport(path, 100'000);
  bench::Promises promises;
  promises.Below("import of 10,000 rows into an empty store", few.fresh, 400, "ms");
  promises.Below("the same again, all duplicates", few.again, 400, "ms");
  promises.Tell("import of 100,000 rows into an empty store", many.fresh, "ms");
  promises.Tell("the same again, all duplicates", many.again, "ms");
  // Ten times the rows; a quarter more is left to deeper indexes and a restless machine.
  promises.Below("growth of the import from 10,000 to 100,000 rows", many.fresh / few.fresh, 12.5, "times");
  promises.Below("export of 100,000 rows", MeasureExport(path, folder.filePath(u"a.csv"_qs)), 500, "ms");
  return promises.ExitCode();
}

}  // namespace
}  // namespace talnik

int main() {
  return talnik::Measure();
}
