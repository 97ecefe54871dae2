#include "recurrence/RuleWalk.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace talnik {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

/// A day of the walk: days since 1 January 1970.
using DayNumber = std::int64_t;

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr DayNumber kScaleStart = sys_days(std::chrono::year(1899) / 12 / 30).time_since_epoch().count();
constexpr DayNumber kLastDay = sys_days(std::chrono::year(9999) / 12 / 31).time_since_epoch().count();

/// Months are counted through: 12 times the year and the month from 0.
using MonthNumber = std::int64_t;
constexpr MonthNumber kLastMonth = 9999 * 12 + 11;

struct MonthDay {
  MonthNumber month;
  int day;
};

sys_days SysDays(DayNumber day) {
  return sys_days(std::chrono::days(day));
}

MonthDay Split(DayNumber day) {
  const year_month_day ymd{SysDays(day)};
  return {static_cast<int>(ymd.year()) * 12 + static_cast<int>(static_cast<unsigned>(ymd.month())) - 1,
          static_cast<int>(static_cast<unsigned>(ymd.day()))};
}

DayNumber FirstOf(MonthNumber month) {
  const year_month_day ymd(std::chrono::year(static_cast<int>(month / 12)),
                           std::chrono::month(static_cast<unsigned>(month % 12 + 1)), std::chrono::day(1));
  return sys_days(ymd).time_since_epoch().count();
}

int LengthOf(MonthNumber month) {
  return DaysInMonth(static_cast<int>(month / 12), static_cast<int>(month % 12) + 1);
}

/// 1 is Sunday.
int WeekdayOf(DayNumber day) {
  return static_cast<int>(std::chrono::weekday(SysDays(day)).c_encoding()) + 1;
}

/// Weeks begin on Sunday and week 1 holds January 1, so that a week may break in two at the new year.
std::int64_t WeekOf(DayNumber day) {
  const DayNumber newYear = FirstOf(Split(day).month / 12 * 12);
  return (day - newYear + WeekdayOf(newYear) - 1) / 7 + 1;
}

/// The state of one walk. Each way of walking moves `next_` and settles what it found there.
class Walker {
 public:
  Walker(const RuleText& rule, const Date& start, std::int64_t end, const Date& now, std::vector<Date>* past)
      : rule_(rule), end_(end), now_(now.Seconds()), past_(past) {
    const std::int64_t midnight = start.DateValue().Seconds();
    timeOfDay_ = start.Seconds() - midnight;
    next_ = midnight / kSecondsOfDay + kScaleStart;
  }

  void Walk() {
    if (rule_.ordinal > 0 && rule_.frequency == RuleFrequency::Monthly) return Ordinal();
    const DayNumber start = next_;
    if (rule_.ordinal > 0 && !GoBeforeFirstMonth()) return;
    switch (rule_.frequency) {
      case RuleFrequency::Daily:
        return Daily();
      case RuleFrequency::Weekly:
        return Weekly(WeekOf(start));
      case RuleFrequency::Monthly:
        return ByMonths(rule_.interval, Split(start).day == rule_.monthDay, true);
      case RuleFrequency::Yearly:
        return ByMonths(rule_.interval * 12, true, false);
      case RuleFrequency::None:
        return;
    }
  }

  std::vector<Date> Dates() { return std::move(dates_); }

 private:
  /// The interval of a weekly rule skips weeks and leaves the step at one day.
  std::int64_t MonthsToFirst() const { return rule_.frequency == RuleFrequency::Weekly ? 1 : rule_.interval; }

  /// An ordinal moves the walk to the day before the first month that is searched.
  bool GoBeforeFirstMonth() {
    const MonthNumber month = Split(next_).month + MonthsToFirst();
    if (month > kLastMonth) return false;
    next_ = FirstOf(month) - 1;
    return true;
  }

  /// False when the walk has come to its end.
  bool Settle(bool accepted, DayNumber event) {
    if (next_ > kLastDay || Moment(next_) >= end_) return false;
    if (!accepted) return true;
    const std::int64_t moment = Moment(event);
    const auto date = Date::FromSeconds(moment);
    if (!date) return false;
    if (moment < now_) {
      if (past_) past_->push_back(*date);
      return true;
    }
    dates_.push_back(*date);
    ++counter_;
    return !rule_.EndsByCount() || counter_ < rule_.count;
  }

  std::int64_t Moment(DayNumber day) const { return (day - kScaleStart) * kSecondsOfDay + timeOfDay_; }

  void Daily() {
    if (rule_.interval == 0) return;
    do next_ += rule_.interval;
    while (Settle(true, next_));
  }

  /// The day is tested before the weeks are skipped: the Sunday that opens a new week counts, the one on which the
  /// skip lands does not.
  void Weekly(std::int64_t refWeek) {
    if (rule_.days.IsEmpty()) return;
    const std::int64_t skip = rule_.interval - 1;
    DayNumber event = 0;
    bool accepted = false;
    do {
      if (++next_ > kLastDay) return;
      accepted = rule_.days.Has(WeekdayOf(next_));
      if (accepted) event = next_;
      if (skip > 0 && WeekOf(next_) != refWeek) {
        next_ += skip * 7;
        if (next_ > kLastDay) return;
        refWeek = WeekOf(next_);
      }
    } while (Settle(accepted, event));
  }

  /// Every month from the first one on is searched: the interval has acted once.
  void Ordinal() {
    if (rule_.days.IsEmpty() || rule_.ordinal > 5) return;
    for (MonthNumber month = Split(next_).month + rule_.interval; month <= kLastMonth; ++month) {
      const int last = std::min(rule_.ordinal * 7, LengthOf(month));
      for (int day = rule_.ordinal * 7 - 6; day <= last; ++day) {
        next_ = FirstOf(month) + day - 1;
        if (!Settle(rule_.days.Has(WeekdayOf(next_)), next_)) return;
      }
    }
  }

  /// Each step counts from the last, so a day that a short month has cut stays cut. `stopWhenCut` ends the walk there:
  /// the rule's day of the month is lost for good.
  void ByMonths(std::int64_t months, bool accepts, bool stopWhenCut) {
    if (months == 0 || !accepts) return;
    MonthDay at = Split(next_);
    bool cut = false;
    do {
      at.month += months;
      if (at.month > kLastMonth) return;
      cut = at.day > LengthOf(at.month);
      at.day = std::min(at.day, LengthOf(at.month));
      next_ = FirstOf(at.month) + at.day - 1;
    } while (Settle(true, next_) && !(cut && stopWhenCut));
  }

  const RuleText& rule_;
  std::int64_t end_;
  std::int64_t now_;
  std::vector<Date>* past_;
  std::int64_t timeOfDay_;
  DayNumber next_;
  std::int64_t counter_ = 1;  ///< the start counts, written or not
  std::vector<Date> dates_;
};

constexpr std::int64_t kNoEnd = std::numeric_limits<std::int64_t>::max();

}  // namespace

WalkResult WalkRule(const RuleText& rule, const WalkStart& from, std::vector<Date>* past) {
  WalkResult result;
  Date start = from.start;
  std::int64_t end = kNoEnd;
  if (rule.IsEndless()) {
    start = from.spawnTime.value_or(start);
    if (const auto horizon = DateAdd(DateUnit::Year, 2, start)) end = horizon->Seconds();
  }
  result.start = start;
  result.first = from.addFirst && !from.spawnTime && start >= from.now;
  if (rule.EndsByCount() && rule.count == 1) return result;
  if (rule.endsByDate) {
    // An UNTIL that cannot be read still ends the series: at once.
    if (!rule.until) return result;
    end = rule.until->Seconds();
  }
  Walker walker(rule, start, end, from.now, past);
  walker.Walk();
  result.dates = walker.Dates();
  return result;
}

}  // namespace talnik
