#include "store/StoreFile.h"
#include "store/Text.h"

namespace talnik::test {
namespace {

namespace sql = statements;

/// Rows named for their role: one of each status on three days, with and without alarm.
class StatementsTest : public StoreFile {
 protected:
  StatementsTest() {
    Add("none", "16.1.2024 9:00", {});
    Add("single", "15.1.2024 9:00", StatusSingle);
    Add("day", "15.1.2024", StatusSingle);
    Add("late", "15.1.2024 23:59", StatusSingle);
    Add("spawned", "15.1.2024 10:00", StatusOccurrence, "1");
    Add("changed", "16.1.2024 10:00", StatusChanged, "1_20240116T090000Z");
    Add("deleted", "17.1.2024 10:00", StatusDeleted, "1_20240117T090000Z");
    Add("root", "15.1.2024 10:00", StatusRoot, "1");
  }
  void Add(const char* text, const char* start, std::optional<int> status, const char* series = nullptr) {
    ScheduleRecord row = Row(QString::fromUtf8(text), QString::fromUtf8(start), {}, status);
    if (series) row.guid = identity_ + QString::fromLatin1(series);
    if (series) row.recur = u" RRULE:FREQ=DAILY"_qs;
    store.Insert(row);
  }
  /// 31 digits that every guid of the series begins with; the 32nd tells the series.
  QString identity_ = NewGuidText().left(31);
  Date day_ = At(u"15.1.2024 12:00"_qs);
};

TEST_F(StatementsTest, ChooseTheirRowsByStatusAndDay) {
  const std::pair<Statement, const char*> cases[] = {
      {sql::All(), "none single day late spawned changed deleted root"},
      {sql::AllByStart(), "day single spawned root late none changed deleted"},
      {sql::Visible(), "day single spawned late none changed"},
      {sql::VisibleFrom(day_), "day single spawned late changed"},
      {sql::Roots(), "root"},
      {sql::RootsWithRule(), "root"},
      {sql::Exceptions(), "changed deleted"},
      {sql::Occurrences(), "spawned"},
      {sql::Before(At(u"16.1.2024 9:30"_qs)), "single day late spawned root"},
      {sql::Containing(u"E*D"_qs, At(u"16.1.2024 23:00"_qs)), "changed deleted"},
      {sql::Containing(QString(), At(u"17.1.2024"_qs)), "deleted"},
      {sql::StartingAt(At(u"15.1.2024 10:00"_qs)), "spawned root"},
  };
  for (const auto& [statement, rows] : cases) EXPECT_EQ(Found(statement), rows) << statement.sql.toStdString();
  EXPECT_EQ(store.Number(sql::CountFrom(day_)), 8);
  EXPECT_EQ(store.Number(sql::CountFrom(At(u"16.1.2024 9:30"_qs))), 3);
}

TEST_F(StatementsTest, DeleteWhatTheyName) {
  const std::pair<Statement, const char*> cases[] = {
      {sql::DeleteBefore(At(u"16.1.2024 9:30"_qs)), "none changed deleted"},
      {sql::DeleteDay(day_), "none day late changed deleted root"},
      {sql::DeleteOccurrences(), "none single day late changed deleted root"},
      {sql::DeleteOccurrencesOfDay(identity_, day_), "none single day late changed deleted root"},
      {sql::DeleteOccurrencesOfDay(identity_, At(u"16.1.2024"_qs)),
       "none single day late spawned changed deleted root"},
      {sql::DeleteOccurrencesOfDay(QString(), day_), "none single day late spawned changed deleted root"},
      {sql::DeleteSeries(QString(identity_ + u"1_x"_qs)), "none single day late"},
      {sql::DeleteSeries(QString()), "none single day late spawned changed deleted root"},
      {sql::DeleteAll(), ""},
  };
  for (const auto& [statement, left] : cases) {
    store.InTransaction([&] {
      EXPECT_TRUE(store.Execute(statement));
      EXPECT_EQ(Found(sql::All()), left) << statement.sql.toStdString();
      return false;
    });
  }
}

TEST_F(StatementsTest, FindASeriesByItsBase) {
  const QString guid = identity_ + u'1';
  const char* const all = "spawned root changed deleted";
  const std::pair<Statement, const char*> cases[] = {
      {sql::OfSeries(guid), all},
      {sql::OfSeries(QString(guid + u"_20240116T090000Z"_qs)), all},
      {sql::OfSeries(guid.toUpper()), all},
      {sql::OfSeries(u"*"_qs), all},  // a wildcard, no text
      {sql::OfSeries(QString(identity_ + u'2')), ""},
      {sql::OfSeriesBelow8(guid), "spawned changed"},
      {sql::OfSeriesNotRoot(guid), "spawned changed deleted"},
      {sql::OfSeriesWithStatus(guid, StatusRoot), "root"},
      {sql::WithGuid(guid), "spawned root"},
      {sql::WithGuid(guid.toUpper()), ""},
  };
  for (const auto& [statement, rows] : cases) EXPECT_EQ(Found(statement), rows) << statement.sql.toStdString();
}

TEST_F(StatementsTest, FindASeriesWhereverItsBaseStands) {
  store.Execute(sql::DeleteAll());
  const QString own = identity_ + u'1';
  const QStringList guids = {own,
                             own.toUpper(),
                             own + u"_20240115T070000Z"_qs,
                             u"x"_qs + own,
                             NewGuidText() + u'_' + own,
                             own + QChar(0) + u"tail"_qs,
                             u"ž"_qs + own.toUpper() + u"@example.org"_qs,
                             identity_ + u'2',
                             NewGuidText() + u"_20240115T070000Z"_qs,
                             own.left(30),
                             QString()};
  for (const QString& guid : guids) {
    ScheduleRecord row = Row(QString::number(guids.indexOf(guid)), u"15.1.2024"_qs);
    row.guid = guid;
    store.Insert(row);
  }
  for (const QString& base : {own, own.toUpper(), identity_, u"@EXAMPLE"_qs, u"Ž"_qs, u"tail"_qs}) {
    const Statement scan{u"SELECT * FROM schedule WHERE talnik_like(?,+guid) ORDER BY rowid"_qs,
                         {QString(u'*' + base + u'*')}};
    EXPECT_EQ(Texts(sql::OfSeries(base)), Texts(scan)) << base.toStdString();
    EXPECT_FALSE(Texts(scan).isEmpty());
  }
}

TEST_F(StatementsTest, QueueThePendingAlarms) {
  store.Execute(sql::DeleteAll());
  const auto add = [&](const char* text, const char* alarm, bool on, bool fired, std::optional<int> status,
                       const QString& start = u"20.1.2024 8:00"_qs) {
    ScheduleRecord row = Row(QString::fromUtf8(text), start, {}, status);
    row.alarmtime = At(QString::fromUtf8(alarm));
    row.alarm = on;
    row.alarmfired = fired;
    store.Insert(row);
  };
  add("off", "15.1.2024 8:00", false, false, StatusRoot);
  add("second", "15.1.2024 8:00", true, false, StatusSingle);
  add("first", "15.1.2024 7:59:59", true, false, {});
  add("fired", "15.1.2024 7:00", true, true, StatusSingle);
  add("tombstone", "15.1.2024 7:00", true, false, StatusDeleted, u"20.1.2024"_qs);
  store.Insert(Row(u"without"_qs, u"20.1.2024"_qs));
  const std::pair<Statement, const char*> cases[] = {
      {sql::AlarmQueue(), "first second off"},
      {sql::AlarmOn(), "second first fired tombstone"},
      {sql::WithAlarmTime(), "off second first fired tombstone"},
      {sql::WithAlarmAt(At(u"15.1.2024 8:00"_qs)), "off second"},
      {sql::WithAlarmAfter(At(u"20.1.2024 7:00"_qs)), "first second fired"},
      {sql::WithAlarmAfter(At(u"21.1.2024 7:00"_qs)), ""},
  };
  for (const auto& [statement, rows] : cases) EXPECT_EQ(Found(statement), rows) << statement.sql.toStdString();
  EXPECT_EQ(store.Number(sql::CountAlarms()), 4);
}

/// What every move, tick and start asks must not read the whole table, however large it grows.
TEST_F(StatementsTest, NeverScanTheTableForWhatIsAskedOften) {
  const auto read = [this](auto... asked) {
    for (const Statement& statement : {asked...}) {
      Statement plan = statement;
      plan.sql.replace(u"SELECT * FROM schedule"_qs, u"SELECT rowid FROM schedule"_qs)
          .prepend(u"EXPLAIN QUERY PLAN "_qs);
      const bool isLong = statement.sql == sql::Visible().sql || statement.sql == sql::AlarmQueue().sql;
      store.ForEachRow(plan, [&](const StoreRow& step) {
        const QString detail = step.Text(3);
        const bool scans = detail.startsWith(u"SCAN schedule"_qs) && !detail.contains(u"INDEX schedule_"_qs);
        const bool sorts = isLong && detail.contains(u"TEMP B-TREE"_qs);
        EXPECT_FALSE(scans || sorts) << detail.toStdString() << " in " << statement.sql.toStdString();
        return true;
      });
    }
  };
  const auto nothing = [](const char* column) {
    return Statement{u"SELECT rowid FROM schedule WHERE %1 IS NULL"_qs.arg(QString::fromLatin1(column)), {}};
  };
  const QString other = NewGuidText();
  read(sql::CountOfDay(day_), sql::OfDay(day_), sql::OfDayAnyStatus(day_), sql::Touching(day_, day_),
       sql::StartingAt(day_), sql::AlarmQueue(), sql::WithAlarmAt(day_), sql::AlarmOn(), sql::CountAlarms(),
       sql::OfSeries(identity_), sql::OfSeries(other), sql::DeleteSeries(other), sql::WithGuid(identity_), sql::Roots(),
       sql::RootsWithSpawnTime(), sql::RootsWithRule(), sql::Exceptions(), sql::Occurrences(), sql::Visible(),
       sql::VisibleFrom(day_), sql::CountAll(), sql::CountFrom(day_), nothing("guid"), nothing("appdur"),
       nothing("status"), sql::DeleteOccurrencesOfDay(identity_, day_));
}

}  // namespace
}  // namespace talnik::test
