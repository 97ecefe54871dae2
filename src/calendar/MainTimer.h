#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

class AlarmQueue;
class Clock;
class cSetting;
struct Countdown;

/// What a tick does to the window; the rest of it is in MainTimer.
class TickHost {
 public:
  virtual ~TickHost() = default;
  virtual QString ShownTime() const = 0;
  /// Shows the time without moving the cursor in its field.
  virtual void ShowTime(const QString& text) = 0;
  virtual void ShowCountdownLeft() = 0;
  /// Shows the box of the countdown's end, until it is answered.
  virtual void RunCountdownBox() = 0;
  /// Brings caption, tip and menu back when the countdown is over.
  virtual void CountdownIsOver() = 0;
  /// Shows the box of the alarm in waiting, until it is answered.
  virtual void RunAlarmBox() = 0;
  virtual bool AlarmBoxIsOpen() const = 0;
  /// Strikes and says the time where that is due at this minute and `dingDone` is not set.
  virtual void AnnounceTime(int minute, bool& dingDone) = 0;
};

/// All that happens by itself, twice a second. A tick may be under way in a box that it has opened when the next ones
/// come: every step before a box leaves the state so that they pass through.
class MainTimer {
 public:
  MainTimer(const Clock& clock, Countdown& countdown, AlarmQueue& alarms, const cSetting& setting, TickHost& host)
      : clock_(clock), countdown_(countdown), alarms_(alarms), setting_(setting), host_(host) {}

  void Tick();

  bool DingDone = false;  ///< the announcement of this minute has been made

 private:
  Date Now() const;
  bool TickOfCountdown(const Date& now);
  void TickOfAlarms();

  const Clock& clock_;
  Countdown& countdown_;
  AlarmQueue& alarms_;
  const cSetting& setting_;
  TickHost& host_;
};

/// Counts the minutes to the next automatic synchronisation.
class AutSyncCount {
 public:
  /// One minute has passed; true when a synchronisation is due, which starts the count anew.
  bool Tick(int autSync);

 private:
  int SyncMinutes = 0;
};

}  // namespace talnik
