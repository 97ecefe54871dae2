#include "timetools/StopWatch.h"
#include "timetools/TimeWorld.h"
#include "timetools/frmLapTime.h"
#include "timetools/frmStopWatch.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimerEvent>

namespace talnik::test {
namespace {

/// A moment of the morning in seconds after eight.
Date Eight(int second) {
  return Date::FromSeconds(At(2024, 1, 15, 8).Seconds() + second).value();
}

std::string Shown(StopWatch& watch, int second) {
  watch.Tick(Eight(second));
  return JoinedFields(watch.Fields).toStdString();
}

TEST(StopWatch, WhatIsZeroIsNotSpokenButTheLastFigure) {
  const std::pair<StopWatchFields, const char*> texts[] = {
      {{u"00"_qs, u"00"_qs, u"05"_qs, u"3"_qs}, "5 sekund 3 milisekund "},
      {{u"01"_qs, u"10"_qs, u"00"_qs, u"0"_qs}, "1 hodin 10 minut 0 milisekund "},
      {{u"00"_qs, u"00"_qs, u"00"_qs, u" 7 "_qs}, "7 milisekund "}};
  for (const auto& [fields, text] : texts) EXPECT_EQ(StopWatchText(fields).toStdString(), text);
  EXPECT_EQ(StripLeadingZero(u" 00 "_qs).toStdString(), "0");
}

TEST(StopWatch, CountsTicksWithinTheSecond) {
  StopWatch watch;
  EXPECT_EQ(JoinedFields(watch.Fields).toStdString(), "00:00:00:0");
  watch.StartOrStop(Eight(0));
  EXPECT_FALSE(watch.Tick(Eight(0)));
  EXPECT_EQ(Shown(watch, 0), "00:00:00:2");
  EXPECT_TRUE(watch.Tick(Eight(1)));
  EXPECT_EQ(Shown(watch, 1), "00:00:01:1");
  EXPECT_EQ(Shown(watch, 86400 + 3723), "01:02:03:0") << "beyond a day the time of day is shown";
  EXPECT_EQ(Shown(watch, -3600), "00:00:00:0") << "a clock set back has measured nothing";
}

TEST(StopWatch, AStopKeepsTheTimeAndAStartForgetsTheLaps) {
  StopWatch watch;
  watch.StartOrStop(Eight(0));
  watch.AddLap(Eight(4));
  watch.StartOrStop(Eight(10));
  EXPECT_EQ(watch.Laps.size(), 1);
  watch.StartOrStop(Eight(30));
  EXPECT_TRUE(watch.Laps.isEmpty());
  EXPECT_EQ(Shown(watch, 35), "00:00:15:0");
}

TEST(StopWatch, AResetBeginsAtZero) {
  StopWatch watch;
  watch.StartOrStop(Eight(0));
  watch.StartOrStop(Eight(10));
  watch.Reset(Eight(20));
  EXPECT_EQ(JoinedFields(watch.Fields).toStdString(), "00:00:00:0");
  watch.StartOrStop(Eight(30));
  EXPECT_EQ(Shown(watch, 33), "00:00:03:0");
  watch.Reset(Eight(40));
  EXPECT_EQ(Shown(watch, 42), "00:00:02:0");
  watch.StartOrStop(Eight(43));
  watch.StartOrStop(Eight(50));
  EXPECT_EQ(Shown(watch, 51), "00:00:04:0") << "a reset while it ran does not spoil a later stop";
}

TEST(StopWatch, LapsAreWrittenWithTheirDifferences) {
  StopWatch watch;
  watch.StartOrStop(Eight(0));
  for (const int second : {65, 72}) watch.AddLap(Eight(second));
  Shown(watch, 80);
  EXPECT_EQ(LapFileText(watch.Laps, watch.Fields).toStdString(),
            "Pořadí\tMezičas\tRozdílový mezičas\r\n1\t0:01:05\t0:00:00\r\n2\t0:01:12\t0:00:07\r\n"
            "Koncový čas 00:01:20:0");
}

struct WatchWorld : TimeWorld {
  void Open(std::function<void(QWidget*)> user) {
    Next(std::move(user));
    frmStopWatch form(services, world.registry, world.codePage);
    form.InitMe();
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }
  /// A tick of the display, so many seconds later; gives what is heard of it.
  std::string Tick(QWidget* window, int seconds) {
    world.clock.Moment = world.clock.Moment.addSecs(seconds);
    auto* timer = window->findChild<QTimer*>(u"Timer1"_qs);
    EXPECT_TRUE(timer->isActive());
    QTimerEvent tick(timer->timerId());
    Heard();
    QApplication::sendEvent(timer, &tick);
    return Heard();
  }
};

TEST(StopWatchForm, RunsByItsKeysAndTicks) {
  WatchWorld w;
  w.Open([&](QWidget* window) {
    EXPECT_EQ(w.Heard(), "say: Stopky; and: Start F3");
    w.Press("F3");
    EXPECT_EQ(FormDriver::Find<QAbstractButton>(window, "cmdSet")->text().toStdString(), "Stop F3");
    EXPECT_EQ(w.Tick(window, 61), "sound: del.wav");
    w.Play("F2 > say: 1 minut 1 sekund 0 milisekund  | F4 > say: 1 minut 1 sekund 0 milisekund ");
    w.Play("F3 > say: 1 minut 1 sekund 0 milisekund ");
    EXPECT_EQ(FormDriver::Find<QAbstractButton>(window, "cmdSet")->text().toStdString(), "Start F3");
    w.Next([&](QWidget* laps) {
      EXPECT_EQ(w.Heard(), "say: Mezičasy; and: 1 0:01:01");
      EXPECT_FALSE(FormDriver::Find<QAbstractButton>(laps, "Command1")->isEnabled()) << "there is no file dialog";
      w.Press("Esc");
    });
    w.Press("F4");
    EXPECT_TRUE(FormDriver::Until([&] { return window->isActiveWindow(); }));
    w.Play(
        "F5 > say: 0 milisekund  | Tab > say: Mezičas F4 | Tab > say: Ohlásit F2 | Tab > say: Reset F5 | "
        "Tab > say: Zvuk zaškrtnuto | Space > say: nezaškrtnuto | Tab > say: Storno | Tab > say: 00:00:00:0");
    w.Press("Esc");
  });
  EXPECT_EQ(w.world.registry.Values[u"Software\\Quenta\\Talnik\\Set|PlayTick"_qs].toString().toStdString(), "0");
  w.Open([&](QWidget* window) {
    w.Press("F3");
    EXPECT_EQ(w.Tick(window, 5), "") << "the next stopwatch knows that the tick is off";
    w.Press("Esc");
  });
}

TEST(LapTimeForm, ReadsAndSavesTheLaps) {
  WatchWorld w;
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"časy.txt"_qs);
  QFile old(path);
  ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("something longer than what replaces it", 38) == 38);
  old.close();
  QStringList asked;
  QStringList choices{path, QString(), u"/no/such/folder/x"_qs};
  w.dialogs.PickFile = [&](int kind, const QString& text) {
    asked << QString::number(kind) + u' ' + text;
    w.world.registry.SetText(CommonKey(), u"SelectedFile"_qs, choices.first());
    return choices.takeFirst().isEmpty() ? 0 : 1;
  };
  const QList<Lap> laps{{1, At(1899, 12, 30, 0, 0, 5), Date()}, {2, At(1899, 12, 30, 0, 1), Date()}};
  const StopWatchFields fields{u"00"_qs, u"01"_qs, u"00"_qs, u"4"_qs};
  w.Next([&](QWidget* window) {
    w.Play(
        "Down > say: 2 0:01:00 | Down > sound: end.wav | Tab > say: Mezičas: 0:01:00 | "
        "Tab > say: Rozdílový mezičas: 0:00:00");
    for (int i = 0; i < 2; ++i) w.Click(window, "Command1");
    w.Next([&](QWidget*) {
      EXPECT_NE(w.Heard().find("/no/such/folder/x"), std::string::npos);
      w.Press("Return");
    });
    w.Click(window, "Command1");
    w.Press("Esc");
  });
  frmLapTime form(w.services, laps, fields, w.world.registry, w.world.codePage);
  form.Open();
  EXPECT_EQ(asked.value(0).toStdString(), "10 *.*|||Uložit");
  QFile written(path);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(written.readAll().toStdString(), LapFileText(laps, fields).toStdString());
}

}  // namespace
}  // namespace talnik::test
