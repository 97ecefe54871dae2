#include "shell/TextControls.h"
#include "timetools/StopWatch.h"
#include "timetools/TimeWorld.h"
#include "timetools/frmLapTime.h"
#include "timetools/frmStopWatch.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimerEvent>

namespace talnik::test {
namespace {

/// The watch as it stands some seconds after eight.
std::string Shown(StopWatch& watch, int second) {
  watch.Tick(At(2024, 1, 15, 8, 0, second));
  return JoinedFields(watch.Fields).toStdString();
}

TEST(StopWatch, WhatIsZeroIsNotSpokenButTheLastFigure) {
  const struct {
    StopWatchFields fields;
    const char* text;
  } cases[] = {{{u"00"_qs, u"00"_qs, u"05"_qs, u"3"_qs}, "5 sekund 3 milisekund "},
               {{u"01"_qs, u"10"_qs, u"00"_qs, u"0"_qs}, "1 hodin 10 minut 0 milisekund "},
               {{u"00"_qs, u"00"_qs, u"00"_qs, u" 7 "_qs}, "7 milisekund "}};
  for (const auto& test : cases) EXPECT_EQ(StopWatchText(test.fields).toStdString(), test.text);
  EXPECT_EQ(StripLeadingZero(u" 00 "_qs).toStdString(), "0");
  EXPECT_EQ(StripLeadingZero(u"10"_qs).toStdString(), "10");
}

TEST(StopWatch, CountsTicksWithinTheSecond) {
  StopWatch watch;
  EXPECT_EQ(JoinedFields(watch.Fields).toStdString(), "00:00:00:0");
  watch.StartOrStop(At(2024, 1, 15, 8));
  EXPECT_FALSE(watch.Tick(At(2024, 1, 15, 8)));
  EXPECT_EQ(Shown(watch, 0), "00:00:00:2");
  EXPECT_TRUE(watch.Tick(At(2024, 1, 15, 8, 0, 1)));
  EXPECT_EQ(Shown(watch, 1), "00:00:01:1");
  watch.Tick(At(2024, 1, 16, 9, 2, 3));
  EXPECT_EQ(watch.Fields[0].toStdString(), "01") << "beyond a day the time of day is shown";
  watch.Tick(At(2024, 1, 15, 7));
  EXPECT_EQ(watch.Fields[0].toStdString(), "00") << "a clock set back has measured nothing";
}

TEST(StopWatch, AStopKeepsTheTimeAndAStartForgetsTheLaps) {
  StopWatch watch;
  watch.StartOrStop(At(2024, 1, 15, 8));
  watch.AddLap(At(2024, 1, 15, 8, 0, 4));
  watch.StartOrStop(At(2024, 1, 15, 8, 0, 10));
  EXPECT_EQ(watch.Laps.size(), 1);
  watch.StartOrStop(At(2024, 1, 15, 8, 0, 30));
  EXPECT_TRUE(watch.Laps.isEmpty());
  EXPECT_EQ(Shown(watch, 35), "00:00:15:0");
}

TEST(StopWatch, AResetBeginsAtZero) {
  StopWatch watch;
  watch.StartOrStop(At(2024, 1, 15, 8));
  watch.StartOrStop(At(2024, 1, 15, 8, 0, 10));
  watch.Reset(At(2024, 1, 15, 8, 0, 20));
  EXPECT_EQ(JoinedFields(watch.Fields).toStdString(), "00:00:00:0");
  watch.StartOrStop(At(2024, 1, 15, 8, 0, 30));
  EXPECT_EQ(Shown(watch, 33), "00:00:03:0");
  watch.Reset(At(2024, 1, 15, 8, 0, 40));
  EXPECT_EQ(Shown(watch, 42), "00:00:02:0");
  watch.StartOrStop(At(2024, 1, 15, 8, 0, 43));
  watch.StartOrStop(At(2024, 1, 15, 8, 0, 50));
  EXPECT_EQ(Shown(watch, 51), "00:00:04:0") << "a reset while it ran does not spoil a later stop";
}

TEST(StopWatch, LapsAreWrittenWithTheirDifferences) {
  StopWatch watch;
  watch.StartOrStop(At(2024, 1, 15, 8));
  for (const int second : {5, 12}) watch.AddLap(At(2024, 1, 15, 8, 1, second));
  Shown(watch, 20);
  EXPECT_EQ(LapFileText(watch.Laps, watch.Fields).toStdString(),
            "Pořadí\tMezičas\tRozdílový mezičas\r\n1\t0:01:05\t0:00:00\r\n2\t0:01:12\t0:00:07\r\n"
            "Koncový čas 00:00:20:0");
}

struct WatchWorld : TimeWorld {
  void Open(std::function<void(QWidget*)> user) {
    Next(std::move(user));
    frmStopWatch form(services, world.registry, world.codePage);
    form.InitMe();
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }
  /// A tick of the display, so many seconds later.
  void Tick(QWidget* window, int seconds) {
    world.clock.Moment = world.clock.Moment.addSecs(seconds);
    auto* timer = window->findChild<QTimer*>(u"Timer1"_qs);
    ASSERT_TRUE(timer->isActive());
    QTimerEvent tick(timer->timerId());
    QApplication::sendEvent(timer, &tick);
  }
};

TEST(StopWatchForm, RunsByItsKeysAndTicks) {
  WatchWorld w;
  w.Open([&](QWidget* window) {
    EXPECT_EQ(window->property("windowTag").toInt(), 1723);
    EXPECT_EQ(w.Heard(), "say: Stopky; and: Start F3");
    const auto* set = FormDriver::Find<QPushButton>(window, "cmdSet");
    w.driver.Press(Qt::Key_F3);
    EXPECT_EQ(set->text().toStdString(), "Stop F3");
    w.Tick(window, 61);
    EXPECT_EQ(w.Heard(), "sound: del.wav");
    const QString said = u"1 minut 1 sekund %1 milisekund "_qs;
    const QString ticks = WatchWorld::Text(window, 3)->text();
    EXPECT_EQ(w.After(Qt::Key_F2), "say: " + said.arg(ticks).toStdString());
    EXPECT_EQ(w.After(Qt::Key_F4), "say: " + said.arg(ticks).toStdString());
    EXPECT_EQ(w.After(Qt::Key_F3), "say: " + said.arg(ticks).toStdString());
    EXPECT_EQ(set->text().toStdString(), "Start F3");
    w.Next([&](QWidget* laps) {
      EXPECT_EQ(laps->property("windowTag").toInt(), 1716);
      EXPECT_EQ(w.Heard(), "say: Mezičasy; and: 1 0:01:01");
      EXPECT_FALSE(FormDriver::Find<QPushButton>(laps, "Command1")->isEnabled());
      w.driver.Press(Qt::Key_Escape);
    });
    w.driver.Press(Qt::Key_F4);
    EXPECT_TRUE(FormDriver::Until([&] { return window->isActiveWindow(); }));
    EXPECT_EQ(w.After(Qt::Key_F5), "say: 0 milisekund ");
    auto* sound = FormDriver::Find<QCheckBox>(window, "chkSound");
    sound->setFocus();
    EXPECT_EQ(w.Heard(), "say: Zvuk zaškrtnuto");
    EXPECT_EQ(w.After(Qt::Key_Space), "say: nezaškrtnuto");
    WatchWorld::Text(window, 0)->setFocus();
    EXPECT_EQ(w.Heard(), "say: 00:00:00:0");
    w.driver.Press(Qt::Key_Escape);
  });
  EXPECT_EQ(w.world.registry.Values[u"Software\\Quenta\\Talnik\\Set|PlayTick"_qs].toString().toStdString(), "0");
  w.Open([&](QWidget* window) {
    w.driver.Press(Qt::Key_F3);
    w.Heard();
    w.Tick(window, 5);
    EXPECT_EQ(w.Heard(), "") << "the tick is off, and the next start knows it";
    EXPECT_EQ(WatchWorld::Text(window, 2)->text().toStdString(), "05");
    w.driver.Press(Qt::Key_Escape);
  });
}

TEST(LapTimeForm, ReadsAndSavesTheLaps) {
  WatchWorld w;
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"časy.txt"_qs);
  QFile old(path);
  ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("something much longer than the laps that replace it") > 0);
  old.close();
  QStringList asked;
  QString chosen = path;
  w.dialogs.PickFile = [&](int kind, const QString& text) {
    asked << QString::number(kind) + u' ' + text;
    w.world.registry.SetText(CommonKey(), u"SelectedFile"_qs, chosen);
    return chosen.isEmpty() ? 0 : 1;
  };
  const QList<Lap> laps{{1, At(1899, 12, 30, 0, 0, 5), Date()},
                        {2, At(1899, 12, 30, 0, 1), At(1899, 12, 30, 0, 0, 55)}};
  const StopWatchFields fields{u"00"_qs, u"01"_qs, u"00"_qs, u"4"_qs};
  w.Next([&](QWidget* window) {
    EXPECT_EQ(w.After(Qt::Key_Down), "say: 2 0:01:00");
    EXPECT_EQ(w.After(Qt::Key_Down), "sound: end.wav");
    EXPECT_EQ(w.After(Qt::Key_Tab), "say: Mezičas: 0:01:00");
    EXPECT_EQ(w.After(Qt::Key_Tab), "say: Rozdílový mezičas: 0:00:55");
    auto* save = FormDriver::Find<QPushButton>(window, "Command1");
    save->click();
    chosen.clear();
    save->click();
    chosen = u"/no/such/folder/x"_qs;
    w.Next([&](QWidget*) {
      EXPECT_NE(w.Heard().find("/no/such/folder/x"), std::string::npos);
      w.driver.Press(Qt::Key_Return);
    });
    save->click();
    w.driver.Press(Qt::Key_Escape);
  });
  frmLapTime form(w.services, laps, fields, w.world.registry, w.world.codePage);
  form.Open();
  EXPECT_EQ(asked.value(0).toStdString(), "10 *.*|||Uložit");
  QFile written(path);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(written.readAll().toStdString(), LapFileText(laps, fields).toStdString());
}

TEST(LapTimeForm, ShowsEmptyFieldsWithoutLaps) {
  WatchWorld w;
  w.Next([&](QWidget* window) {
    EXPECT_EQ(w.Heard(), "say: Mezičasy; sound: empty.wav");
    EXPECT_EQ(FormDriver::Find<QLineEdit>(window, "Text1")->text().toStdString(), "");
    EXPECT_EQ(w.After(Qt::Key_Down), "sound: end.wav");
    w.driver.Press(Qt::Key_Escape);
  });
  frmLapTime form(w.services, {}, {}, w.world.registry, w.world.codePage);
  form.Open();
}

}  // namespace
}  // namespace talnik::test
