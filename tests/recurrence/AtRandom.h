#pragma once

#include "recurrence/RuleText.h"
#include "recurrence/SeriesStore.h"

#include <QRandomGenerator>

#include <initializer_list>

namespace talnik::test {

/// A seeded source of what is done next.
struct Chance {
  QRandomGenerator random;

  int Below(std::size_t limit) { return static_cast<int>(random.bounded(static_cast<quint32>(limit))); }

  template <typename List>
  const auto& OneOf(const List& list) {
    return list[static_cast<decltype(std::size(list))>(Below(static_cast<std::size_t>(std::size(list))))];
  }

  /// A rule without an end, of which the start is a date unless it is weekly.
  RuleText Rule(const Date& start, std::size_t maxInterval) {
    RuleText rule;
    rule.interval = 1 + Below(maxInterval);
    const int kind = Below(5);
    rule.frequency = std::array{RuleFrequency::Daily, RuleFrequency::Weekly, RuleFrequency::Monthly,
                                RuleFrequency::Monthly, RuleFrequency::Yearly}[static_cast<std::size_t>(kind)];
    for (int i = 0; kind == 1 && i < 3; ++i) rule.days.Add(1 + Below(7));
    if (kind == 2) rule.monthDay = start.Day();
    if (kind == 3) rule.ordinal = WeekdayOrdinal(start);
    if (kind == 3) rule.days.Add(start.WeekdayNumber());
    return rule;
  }
};

/// A store to which something is done at random. A derived class has `Act()`.
template <typename Kind>
struct AtRandom : Kind, Chance {
  QStringList diary;
  QString fault;   ///< the first thing that did not hold
  int lastId = 0;  ///< identities are the same each time a run is played

  void Note(const QString& done) { diary << done; }
  void Must(bool holds, const QString& what) {
    if (!holds && fault.isEmpty()) fault = what;
  }

  template <typename World>
  void DoOneOf(std::initializer_list<void (World::*)()> deeds) {
    (static_cast<World*>(this)->*deeds.begin()[Below(deeds.size())])();
  }

  QString NewId() { return QString::number(++lastId).rightJustified(32, u'e'); }

  /// A recordset on any row that fits; null without one.
  std::unique_ptr<Recordset> AnyRow(const std::function<bool(const ScheduleRecord&)>& fits) {
    std::vector<ScheduleRecord> rows = this->Rows();
    std::erase_if(rows, [&](const ScheduleRecord& row) { return !fits(row); });
    if (rows.empty()) return nullptr;
    const ScheduleRecord chosen = OneOf(rows);
    auto found = Recordset::Open(this->store, ByStart());
    found->FindFirst([&chosen](const ScheduleRecord& row) { return row == chosen; });
    return found;
  }

  void MoveTheClock(int hours) {
    this->time.now = DateAdd(DateUnit::Hour, hours, this->time.now).value();
    Note(u"it is "_qs + DateText(this->time.now));
  }

  /// Rebuilds, and holds the rows of status 1 against what dropping and spawning them anew gives.
  void RebuildAsAnew() {
    Note(u"rebuild"_qs);
    Must(this->Rebuild(), u"a rebuild goes through"_qs);
    const std::string rows = this->Spawned(), anew = this->SpawnedAnew();
    Must(rows == anew, u"the rows are as if spawned anew:\n%1\ninstead of\n%2"_qs.arg(QString::fromStdString(rows),
                                                                                      QString::fromStdString(anew)));
  }
};

/// The number that a world is made from, and one for each act, so that others can be left out of a run.
using Acts = std::vector<quint32>;

/// Gives what did not hold and the last steps in front of it; empty when all did.
template <typename World>
std::string Play(const Acts& acts) {
  World world(acts.front());
  for (std::size_t act = 1; act < acts.size() && world.fault.isEmpty(); ++act) {
    world.random.seed(acts[act]);
    world.Act();
  }
  if (world.fault.isEmpty()) return {};
  const QStringList last = world.diary.last(std::min<qsizetype>(12, world.diary.size()));
  return (QStringList{world.fault, u"after:"_qs} + last).join(u'\n').toStdString();
}

/// Leaves out what a fault does not need.
template <typename World>
std::string Reduced(Acts acts) {
  for (std::size_t act = acts.size() - 1; act > 0; --act) {
    Acts fewer = acts;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(act));
    if (!Play<World>(fewer).empty()) acts = fewer;
  }
  std::string text;
  for (const quint32 act : acts) text += std::to_string(act) + "U, ";
  return text + '\n' + Play<World>(acts);
}

/// Plays so many runs, or TALNIK_RUNS where that is more.
template <typename World>
void PlayRuns(int runs, int length) {
  const auto last = static_cast<quint32>(std::max(runs, qEnvironmentVariableIntValue("TALNIK_RUNS")));
  for (quint32 seed = 1; seed <= last; ++seed) {
    QRandomGenerator random(seed);
    Acts acts{seed};
    for (int act = 0; act < length; ++act) acts.push_back(random.generate());
    ASSERT_EQ(Play<World>(acts), "") << "shortest run: " << Reduced<World>(acts);
  }
}

}  // namespace talnik::test
