#pragma once

#include "dates/MonthLines.h"
#include "support/FormWorld.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QLocale>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>

namespace talnik::test {

inline CalendarNames CzechNames() {
  return LocaleCalendarNames(QLocale(u"cs_CZ"_qs));
}

/// A window of the time tools. It is Monday 15.1.2024, 8:30.
struct TimeWorld : FormWorld {
  CalendarNames names = CzechNames();

  /// Plays `user` in the next window, from its own event loop, so that windows may open over it.
  void Next(std::function<void(QWidget*)> user) {
    driver.Expect(
        [user = std::move(user)](QWidget* window) { QTimer::singleShot(0, window, [user, window] { user(window); }); });
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
