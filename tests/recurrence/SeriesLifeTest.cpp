#include "recurrence/RuleText.h"
#include "recurrence/SeriesStore.h"
#include "store/Text.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <array>
#include <map>
#include <set>

namespace talnik::test {

namespace {

/// A user who does whatever can be done with series, in any order, while time goes by.
class Life {
 public:
  explicit Life(quint32 seed) : random_(seed) {}
  const QStringList& Diary() const { return diary_; }

  void Step() {
    justRebuilt_ = false;
    if (series_.Rows(statements::Roots()).size() < 2) return Create();
    using Act = void (Life::*)();
    static constexpr std::array<Act, 12> acts = {&Life::ChangeOne, &Life::ChangeOne,  &Life::ChangeAll,
                                                 &Life::DeleteOne, &Life::DeleteOne,  &Life::DeleteByAlarm,
                                                 &Life::DeleteAll, &Life::ChangeRule, &Life::MoveTheClock,
                                                 &Life::Rebuild,   &Life::Rebuild,    &Life::Rebuild};
    if (series_.Rows(statements::Roots()).size() < 6 && Below(6) == 0) return Create();
    (this->*acts.at(static_cast<std::size_t>(Below(acts.size()))))();
  }

  /// What must hold after every step.
  void Check() {
    static const QRegularExpression identity(u"^[0-9a-f]{32}$"_qs);
    static const QRegularExpression exception(u"^[0-9a-f]{32}_[0-9]{8}(T-?[0-9]{5,6}Z)?$"_qs);
    std::map<QString, int> roots;
    std::set<std::pair<QString, Date>> held;
    const Rows rows = series_.Rows();
    for (const ScheduleRecord& row : rows) {
      const bool single = row.status == StatusChanged || row.status == StatusDeleted;
      EXPECT_TRUE((single ? exception : identity).match(row.guid).hasMatch()) << row.guid.toStdString();
      EXPECT_FALSE(row.recur.trimmed().isEmpty());
      EXPECT_EQ(row.alarm, row.alarmtime.has_value());
      if (row.status == StatusRoot) ++roots[row.guid];
      if (single) held.insert({SeriesBase(row.guid), row.reftime.value_or(*row.apptime).DateValue()});
    }
    for (const auto& [guid, count] : roots) EXPECT_EQ(count, 1) << guid.toStdString();
    for (const ScheduleRecord& row : rows) {
      EXPECT_TRUE(roots.contains(SeriesBase(row.guid))) << "no root";
      if (row.status != StatusOccurrence) continue;
      EXPECT_TRUE(row.recur.startsWith(u' ') && !row.recur.startsWith(u"  "_qs));
      EXPECT_EQ(row.reftime, row.apptime);
      if (justRebuilt_) {
        EXPECT_FALSE(held.contains({row.guid, row.apptime->DateValue()}));
        EXPECT_GE(*row.apptime, series_.time.now);
      }
    }
  }

 private:
  using Rows = std::vector<ScheduleRecord>;

  int Below(int limit) { return static_cast<int>(random_.bounded(limit)); }
  void Note(const QString& what) { diary_ << what; }

  QString Rule(const Date& start) {
    RuleText rule;
    rule.interval = 1 + Below(3);
    switch (Below(5)) {
      case 0:
        rule.frequency = RuleFrequency::Daily;
        break;
      case 1:
        rule.frequency = RuleFrequency::Weekly;
        for (int i = 0; i < 3; ++i) rule.days.Add(1 + Below(7));
        break;
      case 2:
        rule.frequency = RuleFrequency::Monthly;
        rule.monthDay = start.Day();
        break;
      case 3:
        rule.frequency = RuleFrequency::Monthly;
        rule.ordinal = WeekdayOrdinal(start);
        rule.days.Add(start.WeekdayNumber());
        break;
      default:
        rule.frequency = RuleFrequency::Yearly;
    }
    if (Below(3) > 0 || rule.frequency == RuleFrequency::Daily) {
      rule.count = 1 + Below(20);
    } else if (Below(2) == 0) {
      rule.endsByDate = true;
      rule.until = DateAdd(DateUnit::Day, Below(90), start);
    }
    return rule.Write();
  }

  Date Soon() {
    const Date day = DateAdd(DateUnit::Day, Below(20) - 3, series_.time.now.DateValue()).value();
    return Below(5) == 0 ? day : DateAdd(DateUnit::Minute, Below(96) * 15, day).value();
  }

  /// A recordset on any of the rows that fit; nothing without one.
  std::unique_ptr<Recordset> Any(const std::function<bool(const ScheduleRecord&)>& fits) {
    std::vector<std::size_t> places;
    const Rows rows = series_.Rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (fits(rows[i])) places.push_back(i);
    }
    if (places.empty()) return nullptr;
    const std::size_t chosen = places[static_cast<std::size_t>(Below(static_cast<int>(places.size())))];
    auto recordset = Recordset::Open(series_.store, ByStart());
    for (std::size_t i = 0; i < chosen; ++i) recordset->MoveNext();
    return recordset;
  }

  std::unique_ptr<Recordset> AnyWithStatus(std::set<int> statuses) {
    return Any([&statuses](const ScheduleRecord& row) { return statuses.contains(row.status.value_or(-1)); });
  }

  void Create() {
    ScheduleRecord root = series_.Root("1.1.2024", "");
    root.guid = NewGuidText();
    root.apptime = Soon();
    root.appdur = DateAdd(DateUnit::Minute, Below(3) * 45, *root.apptime);
    root.recur = Rule(*root.apptime);
    root.alarm = Below(2) == 0;
    if (root.alarm) root.alarmtime = DateAdd(DateUnit::Minute, -Below(3000), *root.apptime);
    Note(u"create "_qs + DateText(*root.apptime) + root.recur);
    bool addFirst = true;
    const SpawnSeries series{root.appointment, *root.apptime, root.appdur, root.alarmtime, root.recur, {}, root.guid};
    EXPECT_TRUE(series_.store.InTransaction([&] {
      return series_.store.Insert(root) &&
             RecurrPopulate([this](const ScheduleRecord& row) { return series_.store.Insert(row); }, series, addFirst,
                            series_.time);
    }));
  }

  void ChangeOne() {
    const auto rows = AnyWithStatus({StatusOccurrence, StatusChanged});
    if (!rows) return;
    ScheduleRecord row = rows->Row();
    Note(u"change one "_qs + DateText(*row.apptime));
    row.guid = ExceptionGuid(row.guid, *row.apptime, series_.time.biases);
    row.status = StatusChanged;
    row.apptime = DateAdd(DateUnit::Minute, (Below(9) - 4) * 600, *row.apptime);
    row.appdur = row.apptime;
    row.appointment = u"jinak"_qs;
    EXPECT_TRUE(rows->Update(row));
  }

  void ChangeAll() {
    const auto rows = AnyWithStatus({StatusOccurrence, StatusRoot});
    if (!rows) return;
    const ScheduleRecord row = rows->Row();
    Note(u"change all "_qs + DateText(*row.apptime));
    const int shift = (Below(5) - 2) * 60 * 7;
    RootEdit edit{.title = u"Úkol %1"_qs.arg(Below(100)),
                  .start = DateAdd(DateUnit::Minute, shift, *row.apptime).value(),
                  .end = DateAdd(DateUnit::Minute, shift + 30, *row.appdur),
                  .rule = row.recur.trimmed(),
                  .guid = row.guid,
                  .status = row.status,
                  .origStart = row.apptime,
                  .origEnd = row.appdur,
                  .origAlarm = row.alarmtime};
    if (Below(2) == 0) edit.alarm = DateAdd(DateUnit::Minute, -Below(200), edit.start);
    EXPECT_TRUE(EditRootEvent(series_.store, edit));
  }

  void DeleteOne() {
    const auto rows = AnyWithStatus({StatusOccurrence, StatusChanged});
    if (!rows) return;
    Note(u"delete one "_qs + DateText(*rows->Row().apptime));
    EXPECT_TRUE(DeleteOccurrence(series_.store, *rows, series_.time.biases).done);
  }

  void DeleteByAlarm() {
    const auto rows = AnyWithStatus({StatusOccurrence, StatusChanged});
    if (!rows) return;
    ScheduleRecord row = rows->Row();
    Note(u"delete by alarm "_qs + DateText(*row.apptime));
    row.status = StatusDeleted;
    row.guid = ExceptionGuid(row.guid, *row.apptime, series_.time.biases);
    EXPECT_TRUE(rows->Update(row));
    EXPECT_TRUE(DeleteSeriesIfEmpty(series_.store, row.guid));
  }

  void DeleteAll() {
    const auto rows = AnyWithStatus({StatusOccurrence, StatusRoot});
    if (!rows) return;
    Note(u"delete all "_qs + rows->Row().guid);
    EXPECT_TRUE(DeleteWholeSeries(series_.store, rows->Row().guid, series_.folder.path()).done);
  }

  void ChangeRule() {
    const auto rows = AnyWithStatus({StatusOccurrence, StatusRoot});
    if (!rows) return;
    const ScheduleRecord row = rows->Row();
    RuleEdit edit{.guid = row.guid,
                  .newRule = Rule(*row.apptime),
                  .title = row.appointment,
                  .start = *row.apptime,
                  .alarm = row.alarmtime};
    Note(u"change rule "_qs + DateText(*row.apptime) + u' ' + edit.newRule);
    const bool answer = Below(4) > 0;
    bool asked = false;
    const RuleEditDialogs user{[&](const QString&) {
                                 asked = true;
                                 return answer;
                               },
                               [](const QString& warning) { ADD_FAILURE() << warning.toStdString(); }};
    const Rows before = series_.Rows();
    const bool done = EditRecurrentEvent(series_.store, edit, series_.time, user);
    EXPECT_EQ(done, answer || !asked);
    EXPECT_TRUE(done || series_.Rows() == before);
  }

  void MoveTheClock() {
    const int hours = Below(8) == 0 ? -Below(48) : Below(24 * 10);
    series_.time.now = DateAdd(DateUnit::Hour, hours, series_.time.now).value();
    Note(u"it is "_qs + DateText(series_.time.now));
  }

  void Rebuild() {
    Note(u"rebuild"_qs);
    EXPECT_TRUE(series_.Rebuild());
    EXPECT_EQ(series_.Spawned(), series_.SpawnedAnew());
    const qint64 writes = series_.Writes();
    EXPECT_TRUE(series_.Rebuild());
    EXPECT_EQ(series_.Writes(), writes);
    justRebuilt_ = true;
  }

  SeriesStore series_;
  QRandomGenerator random_;
  QStringList diary_;
  bool justRebuilt_ = false;
};

}  // namespace

TEST(SeriesLife, HoldsTogetherWhateverTheUserDoes) {
  for (quint32 seed = 1; seed <= 4; ++seed) {
    Life life(seed);
    for (int step = 0; step < 250; ++step) {
      life.Step();
      life.Check();
      ASSERT_FALSE(testing::Test::HasFailure())
          << "seed " << seed << ", after: " << life.Diary().mid(life.Diary().size() - 12).join(u"; ").toStdString();
    }
  }
}

}  // namespace talnik::test
