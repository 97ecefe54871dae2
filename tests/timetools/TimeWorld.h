#pragma once

#include "dates/MonthLines.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QAbstractButton>
#include <QKeySequence>
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

  void Press(const char* key) {
    const QKeyCombination combination = QKeySequence::fromString(QString::fromLatin1(key))[0];
    driver.Press(combination.key(), combination.keyboardModifiers());
  }

  /// Presses one key after the other and expects what each is answered with: "Down > say: 01 | Tab > say: Storno".
  void Play(const char* script) {
    for (const QString& step : QString::fromUtf8(script).split(u" | "_qs)) {
      const QString key = step.section(u" >"_qs, 0, 0);
      Heard();
      Press(key.toLatin1());
      EXPECT_EQ(Heard(), step.mid(key.size() + 3).toStdString()) << key.toStdString();
    }
  }

  static void Click(QWidget* window, const char* button) { FormDriver::Find<QAbstractButton>(window, button)->click(); }

  static QLineEdit* Text(QWidget* window, int index) {
    return FormDriver::Find<QLineEdit>(window, qPrintable(u"Text1(%1)"_qs.arg(index)));
  }

  /// "hours:minutes"
  static std::string Time(QWidget* window) {
    return Text(window, 0)->text().toStdString() + ':' + Text(window, 1)->text().toStdString();
  }
  static void SetTime(QWidget* window, const char* hours, const char* minutes) {
    Text(window, 0)->setText(QString::fromLatin1(hours));
    Text(window, 1)->setText(QString::fromLatin1(minutes));
  }
};

inline Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Date::FromParts(year, month, day, hour, minute, second).value();
}

}  // namespace talnik::test
