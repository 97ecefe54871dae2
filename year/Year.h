#pragma once

#include "Program.h"
#include "Rules.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <map>
#include <string>

namespace talnik::soak {

/// What the process holds on to.
struct Held {
  qint64 files = 0;
  qint64 inUse = 0;     ///< bytes that were asked for and not given back
  qint64 resident = 0;  ///< bytes
};
Held HeldNow();

/// Days of a user whose program runs in the background: the clock goes through the changes of daylight time, stands
/// still while the machine sleeps and is set; appointments come and go. All of it follows from the seed. What the
/// program gives is held against the rules after every tick.
class Year {
 public:
  Year(int days, int alarms, quint32 seed);

  /// False as soon as something else was heard than the rules say; what, and when, is printed.
  bool Run();

  std::map<std::string, qint64> counts;
  Held warm, end;  ///< one month into the last run of the program, and at its end

 private:
  int Below(int limit) { return static_cast<int>(random_.bounded(limit)); }
  bool OneIn(int chances) { return Below(chances) == 0; }
  QDateTime Clock() const { return QDateTime::fromSecsSinceEpoch(now_ + skew_); }
  Moment Local() const;
  int Day() const;

  void Fill();
  Entry AnyRecord(Moment from, int days);
  void AddSeries();
  void BeginRun();
  void EndRun();
  void Hour();
  void PassTime(Moment until);
  void Step(Moment seconds);
  void Tick();
  void Happen();
  void SetClock();
  void ImportSome();
  void EnterRecord();
  void LookIntoEditor();
  void StartCountdown();
  void User(QWidget& window);
  void AnswerBox(QWidget& box);
  void AnswerEditor(QWidget& editor);
  void Postpone(QWidget& box);
  void Compare();

  int days_;
  int alarms_;
  quint32 seed_;
  QRandomGenerator random_;
  /// In memory where the machine has a place for that: nothing of it need outlive the machine.
  QTemporaryDir folder_{QFile::exists(u"/dev/shm"_qs) ? u"/dev/shm/talnik-XXXXXX"_qs : u"talnik-XXXXXX"_qs};
  Program program_{folder_.path()};
  Rules rules_;
  Moment start_;
  Moment now_;       ///< true seconds since the epoch
  Moment skew_ = 0;  ///< by how much the user has set the clock wrong
  Moment endOfRun_ = 0;
  int number_ = 0;  ///< of the last record
  int left_ = 0;    ///< records that are still to come
  int postponeBy_ = 0;
  bool opened_ = false;
  std::optional<Entry> entered_;
  QString field_;  ///< what the user types into the next time dialog, "h:m"
  bool kept_ = true;
};

}  // namespace talnik::soak
