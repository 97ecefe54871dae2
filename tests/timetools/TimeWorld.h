#pragma once

#include "dates/MonthLines.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QLineEdit>
#include <QLocale>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>

namespace talnik::test {

inline CalendarNames CzechNames() {
  return LocaleCalendarNames(QLocale(u"cs_CZ"_qs));
}

/// The services of a window over fakes, and a user at the keyboard. It is Monday 15.1.2024, 8:30.
struct TimeWorld {
  FakeWorld world;
  Speech speech{&world.voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  CalendarNames names = CzechNames();
  FormDriver driver;

  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }

  /// Plays `user` in the next window, from its own event loop, so that windows may open over it.
  void Next(std::function<void(QWidget*)> user) {
    driver.Expect(
        [user = std::move(user)](QWidget* window) { QTimer::singleShot(0, window, [user, window] { user(window); }); });
  }

  void Keys(std::initializer_list<int> keys) {
    for (const int key : keys) driver.Press(key);
  }

  /// What one key is answered with.
  std::string After(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Heard();
    driver.Press(key, modifiers);
    return Heard();
  }

  static QLineEdit* Text(QWidget* window, int index) {
    return FormDriver::Find<QLineEdit>(window, qPrintable(u"Text1(%1)"_qs.arg(index)));
  }
};

inline Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Date::FromParts(year, month, day, hour, minute, second).value();
}

}  // namespace talnik::test
