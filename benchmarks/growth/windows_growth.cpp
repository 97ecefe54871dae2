// What is seen and heard: the start, a key, the overview of a day, a folder.

#include "../MainDesk.h"
#include "../OverviewDesk.h"
#include "../PickerDesk.h"
#include "../RawRows.h"
#include "Subjects.h"

#include <QRadioButton>

namespace talnik::bench {
namespace {

constexpr int kKeys = 300;

double StartTime(const QString& folder) {
  constexpr int starts = 5;
  double shortest = 1e9;
  for (int i = 0; i < starts; ++i) {
    MainDesk desk(folder);
    shortest = std::min(shortest, desk.Start().value_or(shortest));
  }
  return shortest;
}

double KeyTime(const QString& folder) {
  MainDesk desk(folder);
  Check(desk.Start().has_value(), "start");
  return MedianToSpeech(*desk.voice, desk.main->List1, Qt::Key_Down, kKeys);
}

/// With its free time, of a day with 100 tasks.
double OverviewTime(const QString& path) {
  constexpr int tasks = 100;
  const Date day = GrowthStores::SpanOf(0).now;
  Store store(path);
  Check(FillDay(store, day, tasks), "tasks");
  OverviewDesk desk;
  const auto form = desk.MakeForm(store, day, QString());
  form->optFreeTime.at(1)->setChecked(true);
  return ShortestOf([&form] { form->GetSpareTime(); });
}

double FolderTime(int files) {
  const QTemporaryDir folder;
  FillFolder(folder.path(), files);
  PickerDesk desk;
  const auto nothing = [](fFileOpen&) {};
  return std::min(desk.Opening(folder.path(), nothing), desk.Opening(folder.path(), nothing));
}

}  // namespace

void MeasureWindows(GrowthTable& table, GrowthStores& stores) {
  constexpr int mostFiles = 100'000;
  table.Measure({"start until the month is spoken, in process", Grows::Hardly, 300,
                 [&](int rows) { return StartTime(stores.Folder(rows)); }});
  table.Measure({"key Down in the month list to the speech call", Grows::Hardly, 5,
                 [&](int rows) { return KeyTime(stores.Folder(rows)); }});
  table.Measure({"overview of a day with 100 tasks", Grows::Hardly, 5,
                 [&](int rows) { return OverviewTime(stores.Path(rows)); }});
  table.Measure({"file dialog of so many files, until spoken", Grows::WithRows, 100, FolderTime, mostFiles});
}

}  // namespace talnik::bench
