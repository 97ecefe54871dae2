#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace talnik::soak {

/// Seconds of local wall-clock time, whatever the zone.
using Moment = std::int64_t;
inline constexpr Moment kDay = 86400;

/// "d.m.yyyy h:mm:ss", and no time at midnight.
QString MomentText(Moment moment);
/// "h:mm:ss".
QString TimeOfDay(Moment moment);

/// A row of the store, as far as alarms go.
struct Entry {
  enum class Role { Single, Root, Occurrence, Tombstone };
  int number = 0;
  Moment start = 0;
  Moment alarm = 0;
  bool hasNote = false;
  Role role = Role::Single;
  int days = 0;  ///< of a root: one every so many days, without an end
  bool fired = false;

  QString Text() const { return u"Úkol "_qs + QString::number(number); }
  QString Note() const { return hasNote ? QString(u'K' + QString::number(number)) : QString(); }
};

/// What must be heard and when, by the rules alone: a second opinion that shares nothing with the program.
class Rules {
 public:
  enum class Opens { Nothing, Alarm, Countdown };

  // What stands in the store.
  void Reserve(std::size_t entries) { entries_.reserve(entries); }
  void Add(const Entry& entry, Moment now);

  // What happens to the program.
  void Start(Moment now);
  void Visit(Moment now);  ///< the editor opens: occurrences are made anew
  void Register();
  void SetCountdown(Moment end);
  /// A tick; its end is EndOfBox when something opens.
  Opens Tick(Moment now);
  void EndOfBox(Moment now);

  // How an open box is answered.
  void Close();
  void Delete();
  void Postpone(Moment to);

  /// What was to be heard since the last call.
  QStringList Heard();

  bool watched = true;
  int dingMinutes = 0;  ///< 0 for never
  bool CountdownRuns() const { return countdown_.has_value(); }
  /// True when nothing of a series has its alarm at the moment of the one in waiting.
  bool NextIsSingle() const;
  /// The next moment at which something may be due, from `now` on.
  Moment Next(Moment now) const;

 private:
  Opens Countdown(Moment now);
  Opens RingIfDue(Moment now);
  void Spawn(const Entry& root, Moment now);
  void Announce(Moment now);

  std::vector<Entry> entries_;  ///< in the order of the store
  std::optional<Entry> next_;
  bool alarmRung_ = false;
  std::optional<Moment> countdown_;
  bool countdownRung_ = false;
  Opens open_ = Opens::Nothing;
  QString shown_;
  bool dingDone_ = false;
  QStringList heard_;
};

}  // namespace talnik::soak
