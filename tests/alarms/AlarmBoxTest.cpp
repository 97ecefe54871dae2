#include "alarms/AlarmWorld.h"
#include "alarms/frmAlarmBox.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <utility>

namespace talnik::test {
namespace {

class AlarmBoxTest : public AlarmWorld {
 protected:
  AlarmBoxTest() {
    setting.AlarmLoop = 2;
    setting.AlarmSndFile = u"alarm.wav"_qs;
    setting.TimeOutSndFile = u"timer.wav"_qs;
    Add("Zubař", "15.1.2024 8:45", "15.1.2024 8:30");
    queue.RegisterAlarm();
  }

  /// Gives the alarm in waiting, or the end of the countdown, and plays the user in its box.
  void Give(const std::function<void(frmAlarmBox&)>& act, frmAlarmBox::Role role = frmAlarmBox::Role::Alarm) {
    if (role == frmAlarmBox::Role::Alarm) queue.AlarmSetOff(QString(), queue.NextAlarmTime());
    frmAlarmBox box(services, {queue, countdown, entry, names, folder.path(), [this] { ++refreshed; }}, role);
    bool acted = false;
    QTimer wait;
    QObject::connect(&wait, &QTimer::timeout, [&] {
      Listen();
      if (acted || !box.isActiveWindow() || Rounds(sound) < roundsBefore) return;
      acted = true;
      act(box);
      if (box.isVisible()) box.close();
    });
    wait.start(0);
    driver.Expect([](QWidget*) {});
    box.Open();
    Listen();
    EXPECT_TRUE(acted && driver.AllCame());
  }

  void Listen() {
    const QStringList news = world.Heard();
    heard << news;
    unread << news;
  }
  qsizetype Rounds(const char* file) {
    Listen();
    return heard.count(u"sound: "_qs + QString::fromUtf8(file));
  }
  /// What was spoken since the last call.
  std::string Spoken() {
    Listen();
    QStringList spoken;
    for (const QString& line : std::exchange(unread, {})) {
      if (!line.startsWith(u"sound: "_qs)) spoken << line;
    }
    return spoken.join(u'|').toStdString();
  }
  static std::string Shown(const frmAlarmBox& box) { return box.Text1->toPlainText().toStdString(); }

  Countdown countdown;
  TimeEntry entry;
  QStringList heard, unread;
  int refreshed = 0;
  const char* sound = "alarm.wav";
  int roundsBefore = 2;  ///< the user acts after so many rounds
};

TEST_F(AlarmBoxTest, RingsAsOftenAsSetAndWaits) {
  Give([&](frmAlarmBox& box) {
    FormDriver::Settle();
    EXPECT_EQ(Rounds("alarm.wav"), 2);
    EXPECT_EQ(Spoken(), "say: Alarm|and: Zobrazit");
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(Shown(box), "15.1.2024 8:30");
    EXPECT_FALSE(box.cmdPlay->isEnabled());
    EXPECT_TRUE(queue.AlarmRung);
    Press("Esc");
    EXPECT_FALSE(box.isVisible());
  });
  EXPECT_EQ(queue.NextAlarm, AlarmQueue::NoAlarm());
}

TEST_F(AlarmBoxTest, RingsWithoutEndUntilTheUserActs) {
  setting.AlarmLoop = 0;
  roundsBefore = 4;
  Give([&](frmAlarmBox&) {
    Press("Space");
    const auto rounds = Rounds("alarm.wav");
    FormDriver::Settle();
    EXPECT_EQ(Rounds("alarm.wav"), rounds);
  });
}

TEST_F(AlarmBoxTest, PlaysTheNoteInsteadOfTheSound) {
  store.Execute({u"UPDATE schedule SET wav='C:\\Record\\K15083.241'"_qs, {}});
  queue.RegisterAlarm();
  sound = "K15083.241";
  Give([&](frmAlarmBox& box) {
    EXPECT_TRUE(box.cmdPlay->isEnabled());
    Press("F6");
    EXPECT_EQ(Rounds("K15083.241"), 3);
  });
  EXPECT_EQ(Rounds("alarm.wav"), 0);
}

TEST_F(AlarmBoxTest, SaysTheEventOnlyWhenAsked) {
  Give([&](frmAlarmBox& box) {
    Spoken();
    Press("Return");
    EXPECT_EQ(Spoken(), "stop|say: Za 15 minut \nZubař");
    EXPECT_TRUE(box.Text1->hasFocus());
    EXPECT_FALSE(box.cmdShow->isVisible());
    Press("Return");
    EXPECT_EQ(Spoken(), "stop");

    SetClock("15.1.2024 8:45:30");
    EXPECT_TRUE(FormDriver::Until([&] { return Shown(box) == "Nyní\nZubař"; }));
    EXPECT_EQ(Spoken(), "") << "the time goes on counting in silence";
  });
}

TEST_F(AlarmBoxTest, DeletesWithoutTakingTheNextAlarmAlong) {
  Add("next", "15.1.2024 9:45", "15.1.2024 9:30");
  Give([&](frmAlarmBox& box) {
    // A button does its work under Enter too.
    box.cmdDel->setFocus();
    Press("Return");
    EXPECT_FALSE(box.isVisible());
  });
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(refreshed, 1);
  EXPECT_FALSE(Find("next").alarmfired);
  roundsBefore = 4;
  Give([&](frmAlarmBox&) { Press("F8"); });
  EXPECT_EQ(Count(), 0);
}

TEST_F(AlarmBoxTest, Postpones) {
  Give([&](frmAlarmBox& box) {
    driver.Expect([&](QWidget* dialog) {
      EXPECT_EQ(dialog->windowTitle(), u"Odložit"_qs);
      Click(dialog, "cmdCancel");
    });
    Press("F9");
    EXPECT_TRUE(box.isVisible()) << "Storno leaves the box";
    driver.Expect([&](QWidget* dialog) {
      SetTime(dialog, "00", "10");
      Click(dialog, "cmdSet");
    });
    Press("F9");
    EXPECT_FALSE(box.isVisible());
  });
  EXPECT_EQ(entry.DelayStartText, u"15.1.2024 8:30"_qs);
  EXPECT_EQ(Find("Zubař").alarmtime, At("15.1.2024 8:40"));
  EXPECT_TRUE(Find("Zubař").alarm);
  EXPECT_EQ(refreshed, 0);
}

TEST_F(AlarmBoxTest, TellsTheEndOfTheCountdown) {
  countdown.CountdownRunning = true;
  sound = "timer.wav";
  roundsBefore = 1;
  Give(
      [&](frmAlarmBox& box) {
        FormDriver::Settle();
        EXPECT_EQ(Rounds("timer.wav"), 1);
        EXPECT_EQ(box.windowTitle(), u"Minutník"_qs);
        EXPECT_EQ(box.Tag(), 1732);
        EXPECT_EQ(Spoken(), "say: Minutník skončil|and: Zavřít");
        Press("Return");
        EXPECT_FALSE(box.isVisible());
      },
      frmAlarmBox::Role::Countdown);
  EXPECT_EQ(Tick(), "Zubař") << "the alarm of the same moment comes next";
}

TEST_F(AlarmBoxTest, RepeatsTheEndOfTheCountdownIfSet) {
  setting.RepeatTimeout = 1;
  sound = "timer.wav";
  roundsBefore = 3;
  Give([&](frmAlarmBox& box) { box.close(); }, frmAlarmBox::Role::Countdown);
}

}  // namespace
}  // namespace talnik::test
