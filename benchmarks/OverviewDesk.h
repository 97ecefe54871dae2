#pragma once

#include "calendar/frmDayView.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "store/Store.h"
#include "store/Text.h"
#include "support/FakePlatform.h"

#include <memory>

namespace talnik::bench {

/// Adds short tasks with free time between them until the day holds so many. False if they cannot be written.
inline bool FillDay(Store& store, const Date& day, int tasks) {
  return store.InTransaction([&] {
    for (auto i = ItemsOfDay(store, day, {})->size(); i < tasks; ++i) {
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

/// What the overview of a day needs, over fakes.
struct OverviewDesk {
  std::unique_ptr<frmDayView> MakeForm(Store& store, const Date& day, const QString& recordFolder) {
    return std::make_unique<frmDayView>(forms, DayViewContext{.store = store,
                                                              .day = day,
                                                              .timeZone = world.timeZone,
                                                              .recordFolder = recordFolder,
                                                              .recurrChoice = choice,
                                                              .extendSeries = [] {},
                                                              .registerAlarm = [] {},
                                                              .showTasks = {},
                                                              .newTask = {}});
  }

  test::FakeWorld world;
  Speech speech{world.platform.voice.get(), world.braille, world.sound, QString()};
  cSetting setting{world.profile, world.shell};
  CommonSettings look;
  FormServices forms{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{forms};
  int choice = 0;
};

}  // namespace talnik::bench
