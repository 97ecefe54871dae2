// How what the program does grows from 1,000 rows to 1,000,000, against what was promised.
//   bench_growth           all sizes; the exponents and the times that were promised
//   bench_growth WORD      only what has it in its name
//   bench_growth --short   1,000 and 10,000 rows, against promises that leave room for a machine with other work

#include "../MainDesk.h"
#include "Subjects.h"

#include <QApplication>

#include <string>

namespace talnik::bench {

Span GrowthStores::SpanOf(int rows) {
  constexpr int rowsADay = 27;
  const int days = rows / rowsADay;
  const Date now = *Date::FromParts(2024, 1, 15);
  return {*DateAdd(DateUnit::Day, -days / 2, now), days, now};
}

QString GrowthStores::Folder(int rows) {
  QString folder = folder_.filePath(QString::number(rows));
  Path(rows);
  return folder;
}

QString GrowthStores::Path(int rows) {
  QString path = MainDesk::StoreIn(folder_.filePath(QString::number(rows)));
  if (!QFile::exists(path) && !MakeTenYears(path, rows, SpanOf(rows))) qFatal("no room for the measurement");
  return path;
}

}  // namespace talnik::bench

int main(int argc, char** argv) {
  using namespace talnik::bench;
  KeepMemory();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const std::string word = argc > 1 ? argv[1] : "";
  GrowthTable table = word == "--short" ? GrowthTable({1'000, 10'000}, 5, 0.4, "")
                                        : GrowthTable({1'000, 10'000, 100'000, 1'000'000}, 1, 0, word);
  GrowthStores stores;
  MeasureStore(table, stores);
  MeasureExchange(table, stores);
  MeasureSeries(table, stores);
  MeasureMerge(table, stores);
  MeasureWindows(table, stores);
  return table.ExitCode();
}
