#include "Rules.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace talnik::soak {

namespace {

constexpr int kHorizonYears = 2;

QDateTime OnCalendar(Moment moment) {
  return QDateTime::fromSecsSinceEpoch(moment, Qt::UTC);
}

bool IsPending(const Entry& entry) {
  return !entry.fired && entry.role != Entry::Role::Tombstone;
}

}  // namespace

QString TimeOfDay(Moment moment) {
  return OnCalendar(moment).toString(u"H:mm:ss"_qs);
}

QString MomentText(Moment moment) {
  return OnCalendar(moment).toString(moment % kDay == 0 ? u"d.M.yyyy"_qs : u"d.M.yyyy H:mm:ss"_qs);
}

void Rules::Add(const Entry& entry, Moment now) {
  entries_.push_back(entry);
  if (entry.role == Entry::Role::Root) Spawn(entry, now);
}

/// What has passed is not spawned.
void Rules::Spawn(const Entry& root, Moment now) {
  const Moment horizon = OnCalendar(root.start).addYears(kHorizonYears).toSecsSinceEpoch();
  const Moment lead = root.start - root.alarm;
  const int number = root.number;
  const Moment step = root.days * kDay;
  for (Moment start = root.start; start < horizon; start += step) {
    if (start >= now) entries_.push_back({number, start, start - lead, false, Entry::Role::Occurrence});
  }
}

/// Occurrences are thrown away and spawned anew, which forgets that their alarms have fired. A day on which the user
/// has deleted one stays free.
void Rules::Visit(Moment now) {
  std::erase_if(entries_, [](const Entry& entry) { return entry.role == Entry::Role::Occurrence; });
  const std::vector<Entry> kept = entries_;
  for (const Entry& entry : kept) {
    if (entry.role == Entry::Role::Root) Spawn(entry, now);
  }
  std::erase_if(entries_, [&kept](const Entry& spawned) {
    if (spawned.role != Entry::Role::Occurrence) return false;
    return std::any_of(kept.begin(), kept.end(), [&spawned](const Entry& entry) {
      return entry.role == Entry::Role::Tombstone && entry.number == spawned.number &&
             entry.start / kDay == spawned.start / kDay;
    });
  });
}

bool Rules::NextIsSingle() const {
  return next_ && std::all_of(entries_.begin(), entries_.end(), [this](const Entry& entry) {
           return entry.alarm != next_->alarm || entry.role == Entry::Role::Single;
         });
}

void Rules::Register() {
  next_.reset();
  alarmRung_ = false;
  for (const Entry& entry : entries_) {
    if (IsPending(entry) && (!next_ || entry.alarm < next_->alarm)) next_ = entry;
  }
}

void Rules::Start(Moment now) {
  countdown_.reset();
  countdownRung_ = dingDone_ = false;
  shown_ = TimeOfDay(now);
  Register();
}

void Rules::SetCountdown(Moment end) {
  countdown_ = end;
  countdownRung_ = false;
}

Rules::Opens Rules::Tick(Moment now) {
  if (TimeOfDay(now) != shown_) {
    Opens opens = Countdown(now);
    if (opens == Opens::Nothing) opens = RingIfDue(now);
    if (opens != Opens::Nothing) return open_ = opens;
    shown_ = TimeOfDay(now);
  }
  Announce(now);
  return Opens::Nothing;
}

Rules::Opens Rules::Countdown(Moment now) {
  if (!countdown_) return Opens::Nothing;
  if (now < *countdown_) {
    countdownRung_ = false;
  } else if (!countdownRung_ && open_ == Opens::Nothing) {
    countdownRung_ = true;
    heard_ << u"sound: minutky.wav"_qs << u"Minutník skončil"_qs;
    return Opens::Countdown;
  }
  return Opens::Nothing;
}

/// The mark comes before the box: only the first of several at one moment is marked, so that the others follow.
Rules::Opens Rules::RingIfDue(Moment now) {
  if (!watched || open_ != Opens::Nothing || !next_) return Opens::Nothing;
  if (now < next_->alarm) alarmRung_ = false;
  if (now < next_->alarm || alarmRung_) return Opens::Nothing;
  const auto row = std::find_if(entries_.begin(), entries_.end(),
                                [this](const Entry& entry) { return entry.alarm == next_->alarm && IsPending(entry); });
  if (row != entries_.end()) row->fired = true;
  alarmRung_ = true;
  const QString time = MomentText(next_->alarm);
  heard_ << u"sound: "_qs + (next_->hasNote ? next_->Note() : u"alarm.wav"_qs)
         << (time.contains(u':') ? time.chopped(3) : time) + u' ' + next_->Text();
  return Opens::Alarm;
}

void Rules::EndOfBox(Moment now) {
  shown_ = TimeOfDay(now);
  // The tick in which the countdown ends does nothing else.
  if (std::exchange(open_, Opens::Nothing) == Opens::Alarm) return Announce(now);
  countdown_.reset();
}

/// While a countdown runs, the next alarm is not looked for when a box closes.
void Rules::Close() {
  if (!countdown_) Register();
}

void Rules::Delete() {
  if (next_) {
    std::erase_if(entries_, [this](const Entry& entry) {
      return entry.alarm == next_->alarm && entry.role == Entry::Role::Single;
    });
    for (Entry& entry : entries_) {
      if (entry.alarm == next_->alarm && entry.role == Entry::Role::Occurrence) entry.role = Entry::Role::Tombstone;
    }
  }
  Register();
}

void Rules::Postpone(Moment to) {
  for (Entry& entry : entries_) {
    if (!next_ || entry.alarm != next_->alarm) continue;
    const Moment by = to - entry.alarm;
    entry.alarm = to;
    if (to == entry.start) {
      entry.start += by / 60 * 60;
    } else if (to > entry.start) {
      entry.start = to;
    }
  }
  Register();
}

void Rules::Announce(Moment now) {
  if (dingMinutes == 0) return;
  const auto minute = static_cast<int>(now / 60 % 60);
  if (minute % dingMinutes != 0) {
    dingDone_ = false;
  } else if (!dingDone_) {
    dingDone_ = true;
    const int strokes = minute == 0 ? 4 : minute / 15;
    for (int stroke = 0; stroke < strokes; ++stroke) heard_ << u"sound: ding.wav"_qs;
    heard_ << shown_.left(5);
  }
}

QStringList Rules::Heard() {
  return std::exchange(heard_, {});
}

Moment Rules::Next(Moment now) const {
  Moment next = now + kDay;
  const auto consider = [&next, now](Moment moment) {
    if (moment > now && moment < next) next = moment;
  };
  if (next_) consider(next_->alarm);
  if (countdown_) consider(*countdown_);
  if (dingMinutes > 0) consider((now / 60 / dingMinutes + 1) * dingMinutes * 60);
  return next;
}

}  // namespace talnik::soak
