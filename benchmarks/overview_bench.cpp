// The overview of a day with 100 tasks over a store of 100,000 rows of ten years: from the wish to the filled list.

#include "Promises.h"
#include "TenYears.h"
#include "calendar/frmDayView.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QRadioButton>
#include <QTemporaryDir>

namespace {

using namespace talnik;

constexpr int kRows = 100000;
constexpr int kTasks = 100;
constexpr int kRuns = 200;
constexpr double kPromisedMs = 5;

/// Adds short tasks with free time between them until the day holds as many as are promised for.
bool FillDay(Store& store, const Date& day) {
  return store.InTransaction([&] {
    for (auto i = ItemsOfDay(store, day, {})->size(); i < kTasks; ++i) {
      ScheduleRecord row;
      row.apptime = DateAdd(DateUnit::Minute, i * 14, day);
      row.appdur = DateAdd(DateUnit::Minute, 5, *row.apptime);
      row.appointment = QStringLiteral("Schůzka číslo %1").arg(i);
      row.status = StatusSingle;
      row.guid = NewGuidText();
      if (!store.Insert(row)) return false;
    }
    return true;
  });
}

/// What a window needs, over fakes.
struct Desk {
  test::FakeWorld world;
  Speech speech{world.platform.voice.get(), world.braille, world.sound, QString()};
  cSetting setting{world.profile, world.shell};
  CommonSettings look;
  FormServices forms{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{forms};
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("talnik.MDB"));
  const Date day = *DateAdd(DateUnit::Day, 1, bench::kFirstDay);
  Store store(path);
  if (!bench::MakeTenYears(path, kRows) || !FillDay(store, day)) return 1;

  Desk desk;
  int choice = 0;
  frmDayView form(desk.forms, {.store = store,
                               .day = day,
                               .timeZone = desk.world.timeZone,
                               .recordFolder = folder.path(),
                               .recurrChoice = choice,
                               .extendSeries = [] {},
                               .registerAlarm = [] {},
                               .showTasks = {},
                               .newTask = {}});

  bench::Promises promises;
  const auto measure = [&](const char* what, std::size_t option) {
    form.optFreeTime.at(option)->setChecked(true);
    promises.Below(what, bench::MedianOf(kRuns, [&form] { form.GetSpareTime(); }), kPromisedMs, "ms");
  };
  measure("overview of a day with 100 tasks among 100,000, tasks", 0);
  measure("the same, with the free time", 1);
  return promises.ExitCode();
}
