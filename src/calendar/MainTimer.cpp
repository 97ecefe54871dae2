#include "calendar/MainTimer.h"

#include "alarms/AlarmQueue.h"
#include "platform/Clock.h"
#include "shell/cSetting.h"
#include "timetools/Countdown.h"

namespace talnik {

Date MainTimer::Now() const {
  return Date::FromQDateTime(clock_.Now());
}

void MainTimer::Tick() {
  const Date now = Now();
  if (host_.ShownTime() != TimeText(now)) {
    if (TickOfCountdown(now)) return;
    TickOfAlarms();
    host_.ShowTime(TimeText(Now()));
  }
  host_.AnnounceTime(Now().Minute(), DingDone);
}

/// True when the countdown has ended in this tick, which is the end of the tick.
bool MainTimer::TickOfCountdown(const Date& now) {
  if (!countdown_.CountdownRunning) return false;
  if (now >= countdown_.CountdownEnd && !countdown_.CountdownRung && !host_.AlarmBoxIsOpen()) {
    countdown_.CountdownRung = true;
    host_.RunCountdownBox();
    countdown_.CountdownRunning = false;
    host_.CountdownIsOver();
    return true;
  }
  if (now < countdown_.CountdownEnd) countdown_.CountdownRung = false;
  host_.ShowCountdownLeft();
  return false;
}

void MainTimer::TickOfAlarms() {
  if (setting_.AlarmWatch < 1 || host_.AlarmBoxIsOpen() || !alarms_.Due()) return;
  // Marked before it is given, so that a crash does not give it twice.
  if (alarms_.AlarmSetOff(QString(), alarms_.NextAlarmTime())) host_.RunAlarmBox();
}

bool AutSyncCount::Tick(int autSync) {
  constexpr int most = 32767;
  if (SyncMinutes < most) ++SyncMinutes;
  if (SyncMinutes < autSync) return false;
  SyncMinutes = 0;
  return true;
}

}  // namespace talnik
