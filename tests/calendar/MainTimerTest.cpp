#include "alarms/AlarmQueue.h"
#include "calendar/MainTimer.h"
#include "calendar/MainWindow.h"
#include "store/Repair.h"
#include "store/Template.h"
#include "timetools/Countdown.h"

#include <QDir>

namespace talnik::test {
namespace {

/// Writes down what a tick does to the window; a box may run ticks of its own.
class RecordingHost : public TickHost {
 public:
  QString ShownTime() const override { return shown; }
  void ShowTime(const QString& text) override {
    done << u"time "_qs + text;
    shown = text;
  }
  void ShowCountdownLeft() override { done << u"left"_qs; }
  void RunCountdownBox() override { RunBox(u"countdown box"_qs); }
  void CountdownIsOver() override { done << u"over"_qs; }
  void RunAlarmBox() override { RunBox(u"alarm box"_qs); }
  bool AlarmBoxIsOpen() const override { return open; }
  void AnnounceTime(int minute, bool&) override { announced << minute; }

  std::string Done() { return std::exchange(done, {}).join(u", "_qs).toStdString(); }

  QString shown = u"8:29:59"_qs;
  QStringList done;
  QList<int> announced;
  bool open = false;
  std::function<void()> inBox;

 private:
  void RunBox(const QString& name) {
    done << name;
    open = true;
    if (inBox) inBox();
    open = false;
  }
};

class Tick : public MainWindow {
 protected:
  Tick() {
    EXPECT_TRUE(QDir().mkpath(InData("")) && CreateStore(InData("talnik.MDB")));
    store_ = std::make_unique<Store>(InData("talnik.MDB"));
    EXPECT_TRUE(RepairSchedule(*store_));
    alarms_ = std::make_unique<AlarmQueue>(AlarmSurroundings{*store_, world_.clock, world_.timeZone, {}, {}});
    timer_ = std::make_unique<MainTimer>(world_.clock, countdown_, *alarms_, setting_, host_);
  }
  void Seconds(int seconds) { world_.clock.Moment = world_.clock.Moment.addSecs(seconds); }

  cSetting setting_{world_.profile, world_.shell};
  std::unique_ptr<Store> store_;
  std::unique_ptr<AlarmQueue> alarms_;
  Countdown countdown_;
  RecordingHost host_;
  std::unique_ptr<MainTimer> timer_;
};

TEST_F(Tick, RunsOnceASecondAndAnnouncesTwice) {
  timer_->Tick();
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "time 8:30:00");
  Seconds(-3600);
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "time 7:30:00");
  EXPECT_EQ(host_.announced, (QList<int>{30, 30, 30}));
}

TEST_F(Tick, TheCountdownRingsOnceAndEndsTheTick) {
  countdown_.CountdownRunning = true;
  countdown_.CountdownRung = true;
  countdown_.CountdownEnd = *CDate(u"15.1.2024 8:30:02"_qs, Date());
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "left, time 8:30:00");
  EXPECT_FALSE(countdown_.CountdownRung) << "a new end is ahead";
  Seconds(2);
  host_.inBox = [this] {
    Seconds(1);
    timer_->Tick();
  };
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "countdown box, left, time 8:30:03, over");
  EXPECT_FALSE(countdown_.CountdownRunning);
  EXPECT_EQ(host_.announced.size(), 2) << "none in the tick that ended with the box";
}

TEST_F(Tick, TheCountdownWaitsForTheBoxAndGoesBeforeAnAlarmWhichWaitsToBeWatched) {
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs, {}, u"15.1.2024 8:30"_qs);
  alarms_->RegisterAlarm();
  countdown_ = {true, *CDate(u"15.1.2024 8:30"_qs, Date()), false};
  host_.open = true;
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "left, time 8:30:00") << "another box is open";
  host_.open = false;
  Seconds(1);
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "countdown box, over");
  setting_.AlarmWatch = 0;
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "time 8:30:01");
  setting_.AlarmWatch = 1;
  host_.inBox = [this] {
    alarms_->AlarmRung = true;
    Seconds(1);
    timer_->Tick();
  };
  Seconds(1);
  timer_->Tick();
  EXPECT_EQ(host_.Done(), "alarm box, time 8:30:03, time 8:30:03");
}

TEST(AutSyncCount, CountsMinutesUpToTheSetting) {
  AutSyncCount count;
  for (int minute = 1; minute <= 7; ++minute) EXPECT_FALSE(count.Tick(10)) << minute;
  EXPECT_TRUE(count.Tick(5)) << "a smaller setting is reached at once";
  EXPECT_FALSE(count.Tick(2));
  EXPECT_TRUE(count.Tick(2));
}

}  // namespace
}  // namespace talnik::test
