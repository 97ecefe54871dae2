// What the exchange by CSV costs: 10,000 and 100,000 rows into an empty store, the same again as duplicates, and the
// way out, with encoding and writing of the file. Exit code 0 only if what was promised is kept.

#include "store/CsvExchange.h"
#include "store/CsvFile.h"
#include "store/CsvText.h"
#include "store/Store.h"
#include "store/Template.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace talnik {
namespace {

constexpr int kRuns = 5;
const Date kFirst = *Date::FromParts(2019, 1, 1);

bool GoOn(qint64, qint64) {
  return true;
}

QString TextOf(int rows) {
  QRandomGenerator random(7);
  QString text = CsvHeader() + u"\r\n"_qs;
  for (int i = 0; i < rows; ++i) {
    ScheduleRecord row;
    row.apptime = DateAdd(DateUnit::Minute, random.bounded(3650 * 1440), kFirst);
    row.appdur = DateAdd(DateUnit::Minute, 60, *row.apptime);
    row.appointment = u"Schůzka číslo "_qs + QString::number(i);
    row.alarm = random.bounded(5) == 0;
    if (row.alarm) row.alarmtime = DateAdd(DateUnit::Minute, -10, *row.apptime);
    text += CsvLine(row) + u"\r\n"_qs;
  }
  return text;
}

/// The median of some runs, in seconds.
double Median(const std::function<double()>& run) {
  std::vector<double> seconds(kRuns);
  std::generate(seconds.begin(), seconds.end(), run);
  std::sort(seconds.begin(), seconds.end());
  return seconds[kRuns / 2];
}

double Seconds(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

bool Report(const char* what, double seconds, double limit) {
  const bool kept = seconds < limit;
  std::printf("%-46s %7.3f s, promised below %.3f s %s\n", what, seconds, limit, kept ? "" : " BROKEN");
  return kept;
}

struct Imported {
  double fresh = 0;
  double again = 0;
};

Imported MeasureImport(const QString& path, int rows) {
  const QString text = TextOf(rows);
  Imported result;
  result.fresh = Median([&] {
    QFile::remove(path);
    CreateStore(path);
    Store store(path);
    return Seconds([&] { ImportCsv(store, text, kFirst, GoOn); });
  });
  Store store(path);
  result.again = Median([&] { return Seconds([&] { ImportCsv(store, text, kFirst, GoOn); }); });
  return result;
}

double MeasureExport(const QString& path, const QString& csv) {
  Store store(path);
  return Median([&] {
    return Seconds([&] {
      QString reason;
      WriteCsvFile(csv, ExportCsv(store, GoOn).text.toUtf8(), reason);
    });
  });
}

int Measure() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"talnik.MDB"_qs);
  const Imported few = MeasureImport(path, 10'000);
  const Imported many = MeasureImport(path, 100'000);
  // Ten times the rows; a quarter more is left to deeper indexes and a restless machine.
  constexpr double linear = 10 * 1.25;
  bool kept = Report("import of 10,000 rows into an empty store", few.fresh, 0.4);
  kept = Report("the same again, all duplicates", few.again, 0.4) && kept;
  kept = Report("import of 100,000 rows into an empty store", many.fresh, few.fresh * linear) && kept;
  kept = Report("the same again, all duplicates", many.again, few.again * linear) && kept;
  return Report("export of 100,000 rows", MeasureExport(path, folder.filePath(u"a.csv"_qs)), 0.5) && kept ? 0 : 1;
}

}  // namespace
}  // namespace talnik

int main() {
  return talnik::Measure();
}
