#include "recurrence/AtRandom.h"
#include "store/Text.h"

#include <QRegularExpression>

#include <array>
#include <map>
#include <set>

namespace talnik::test {

namespace {

bool IsException(const ScheduleRecord& row) {
  return row.status == StatusChanged || row.status == StatusDeleted;
}

bool HasItsIdentity(const ScheduleRecord& row) {
  static const QRegularExpression series(u"^[0-9a-f]{32}$"_qs);
  static const QRegularExpression exception(u"^[0-9a-f]{32}_[0-9]{8}(T-?[0-9]{5,6}Z)?$"_qs);
  return (IsException(row) ? exception : series).match(row.guid).hasMatch();
}

/// What holds of each row of a series at any time.
const struct {
  const char* name;
  bool (*holds)(const ScheduleRecord& row);
} kInvariants[] = {
    {"exceptions have a stamp behind the identity of their series, others have none", HasItsIdentity},
    {"a rule", [](const ScheduleRecord& row) { return !row.recur.trimmed().isEmpty(); }},
    {"an alarm is on if it has a time",
     [](const ScheduleRecord& row) { return row.alarm == row.alarmtime.has_value(); }},
    {"one blank in front of the rule that is spawned",
     [](const ScheduleRecord& row) {
       return row.status != StatusOccurrence || (row.recur.startsWith(u' ') && !row.recur.startsWith(u"  "_qs));
     }},
    {"what is spawned starts as the rule says",
     [](const ScheduleRecord& row) { return row.status != StatusOccurrence || row.reftime == row.apptime; }},
};

/// A user who does whatever can be done with series, in any order, while time goes by.
struct Life : AtRandom<SeriesStore> {
  explicit Life(quint32) {}

  void Act() {
    justRebuilt = false;
    const std::size_t roots = Rows(statements::Roots()).size();
    if (roots < 2 || (roots < 6 && Below(6) == 0)) {
      Create();
    } else {
      DoOneOf<Life>({&Life::ChangeOne, &Life::ChangeOne, &Life::ChangeAll, &Life::DeleteOne, &Life::DeleteOne,
                     &Life::DeleteByAlarm, &Life::DeleteAll, &Life::ChangeRule, &Life::GoOn, &Life::Look, &Life::Look,
                     &Life::Look});
    }
    Check();
  }

  void Check() {
    std::map<QString, int> roots;
    std::set<std::pair<QString, Date>> held;
    const auto rows = Rows();
    for (const ScheduleRecord& row : rows) {
      for (const auto& [name, holds] : kInvariants) Must(holds(row), QString::fromUtf8(name));
      if (row.status == StatusRoot) ++roots[row.guid];
      if (IsException(row)) held.insert({SeriesBase(row.guid), row.reftime.value_or(*row.apptime).DateValue()});
    }
    for (const ScheduleRecord& row : rows) {
      Must(roots[SeriesBase(row.guid)] == 1, u"each row has one root"_qs);
      if (!justRebuilt || row.status != StatusOccurrence) continue;
      Must(!held.contains({row.guid, row.apptime->DateValue()}), u"held days are free after a rebuild"_qs);
      Must(*row.apptime >= time.now, u"nothing is spawned in the past"_qs);
    }
  }

  QString AnyRule(const Date& start) {
    RuleText rule = Rule(start, 3);
    if (Below(3) > 0 || rule.frequency == RuleFrequency::Daily) {
      rule.count = 1 + Below(20);
    } else if (Below(2) == 0) {
      rule.endsByDate = true;
      rule.until = DateAdd(DateUnit::Day, Below(90), start);
    }
    return rule.Write();
  }

  Date Soon() {
    const Date day = DateAdd(DateUnit::Day, Below(20) - 3, time.now.DateValue()).value();
    return Below(5) == 0 ? day : DateAdd(DateUnit::Minute, Below(96) * 15, day).value();
  }

  /// A recordset on any row of one of two roles; null without one.
  std::unique_ptr<Recordset> AnyOf(int role, int other, const QString& deed) {
    auto rows = AnyRow([&](const ScheduleRecord& row) { return row.status == role || row.status == other; });
    if (rows) Note(deed + u' ' + DateText(*rows->Row().apptime));
    return rows;
  }

  void Create() {
    ScheduleRecord root = Root("1.1.2024", "");
    root.guid = NewId();
    root.apptime = Soon();
    root.appdur = DateAdd(DateUnit::Minute, Below(3) * 45, *root.apptime);
    root.recur = AnyRule(*root.apptime);
    root.alarm = Below(2) == 0;
    if (root.alarm) root.alarmtime = DateAdd(DateUnit::Minute, -Below(3000), *root.apptime);
    Note(u"create "_qs + DateText(*root.apptime) + root.recur);
    const bool created = store.InTransaction([&] { return store.Insert(root) && Spawn(store, root); });
    Must(created, u"a series is created"_qs);
  }

  void ChangeOne() {
    const auto rows = AnyOf(StatusOccurrence, StatusChanged, u"change one"_qs);
    if (!rows) return;
    ScheduleRecord row = rows->Row();
    row.guid = ExceptionGuid(row.guid, *row.apptime, time.biases);
    row.status = StatusChanged;
    row.apptime = DateAdd(DateUnit::Minute, (Below(9) - 4) * 600, *row.apptime);
    row.appdur = row.apptime;
    row.appointment = u"jinak"_qs;
    Must(rows->Update(row), u"one is changed"_qs);
  }

  void ChangeAll() {
    const auto rows = AnyOf(StatusOccurrence, StatusRoot, u"change all"_qs);
    if (!rows) return;
    RootEdit edit = Shifted(rows->Row(), u"Úkol %1"_qs.arg(Below(100)), (Below(5) - 2) * 60 * 7);
    if (Below(2) == 0) edit.alarm = DateAdd(DateUnit::Minute, -Below(200), edit.start);
    Must(EditRootEvent(store, edit), u"all are changed"_qs);
  }

  void DeleteOne() {
    const auto rows = AnyOf(StatusOccurrence, StatusChanged, u"delete one"_qs);
    Must(!rows || DeleteOccurrence(store, *rows, time.biases).done, u"one is deleted"_qs);
  }

  void DeleteByAlarm() {
    const auto rows = AnyOf(StatusOccurrence, StatusChanged, u"delete by alarm"_qs);
    if (!rows) return;
    ScheduleRecord row = rows->Row();
    row.status = StatusDeleted;
    row.guid = ExceptionGuid(row.guid, *row.apptime, time.biases);
    Must(rows->Update(row) && DeleteSeriesIfEmpty(store, row.guid), u"one is deleted by its alarm"_qs);
  }

  void DeleteAll() {
    const auto rows = AnyOf(StatusOccurrence, StatusRoot, u"delete all"_qs);
    Must(!rows || DeleteWholeSeries(store, rows->Row().guid, folder.path()).done, u"all are deleted"_qs);
  }

  void ChangeRule() {
    const auto rows = AnyOf(StatusOccurrence, StatusRoot, u"change rule"_qs);
    if (!rows) return;
    const ScheduleRecord row = rows->Row();
    const RuleEdit edit{.guid = row.guid,
                        .newRule = AnyRule(*row.apptime),
                        .title = row.appointment,
                        .start = *row.apptime,
                        .alarm = row.alarmtime};
    Note(edit.newRule);
    const bool answer = Below(4) > 0;
    bool asked = false;
    const RuleEditDialogs user{[&](const QString&) { return (asked = true) && answer; },
                               [this](const QString& warning) { Must(false, warning); }};
    const auto before = Rows();
    const bool done = EditRecurrentEvent(store, edit, time, user);
    Must(done == (answer || !asked), u"a rule is changed unless the user refuses"_qs);
    Must(done || Rows() == before, u"a refusal changes nothing"_qs);
  }

  void GoOn() { MoveTheClock(Below(8) == 0 ? -Below(48) : Below(24 * 10)); }

  void Look() {
    RebuildAsAnew();
    const qint64 writes = Writes();
    Must(Rebuild() && Writes() == writes, u"a second rebuild writes nothing"_qs);
    justRebuilt = true;
  }

  bool justRebuilt = false;
};

}  // namespace

TEST(SeriesLife, HoldsTogetherWhateverTheUserDoes) {
  PlayRuns<Life>(4, 250);
}

}  // namespace talnik::test
