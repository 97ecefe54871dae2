// The overview of a day with 100 tasks over a store of 100,000 rows of ten years: from the wish to the filled list.

#include "OverviewDesk.h"
#include "Promises.h"
#include "TenYears.h"

#include <QApplication>
#include <QRadioButton>
#include <QTemporaryDir>

namespace {

using namespace talnik;

constexpr int kRows = 100000;
constexpr int kTasks = 100;
constexpr int kRuns = 200;
constexpr double kPromisedMs = 5;

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("talnik.MDB"));
  const Date day = *DateAdd(DateUnit::Day, 1, bench::kFirstDay);
  Store store(path);
  if (!bench::MakeTenYears(path, kRows) || !bench::FillDay(store, day, kTasks)) return 1;

  bench::OverviewDesk desk;
  const auto form = desk.MakeForm(store, day, folder.path());

  bench::Promises promises;
  const auto measure = [&](const char* what, std::size_t option) {
    form->optFreeTime.at(option)->setChecked(true);
    promises.Below(what, bench::MedianOf(kRuns, [&form] { form->GetSpareTime(); }), kPromisedMs, "ms");
  };
  measure("overview of a day with 100 tasks among 100,000, tasks", 0);
  measure("the same, with the free time", 1);
  return promises.ExitCode();
}
