#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

constexpr const char* kDaily = "RRULE:FREQ=DAILY INTERVAL=1 COUNT=5";

/// An edit of the occurrence of 3.1.2024 9:00 to 10:00 that changes nothing.
RootEdit FromOccurrence(const SeriesStore& series) {
  RootEdit edit;
  edit.title = u"Plavání"_qs;
  edit.start = Moment("3.1.2024 9:00");
  edit.end = Moment("3.1.2024 10:00");
  edit.rule = QString::fromLatin1(kDaily);
  edit.guid = series.id;
  edit.status = StatusOccurrence;
  edit.origStart = edit.start;
  edit.origEnd = edit.end;
  return edit;
}

ScheduleRecord RootAfter(SeriesStore& series, const RootEdit& edit) {
  EXPECT_TRUE(EditRootEvent(series.store, edit));
  return series.Rows(statements::Roots()).at(0);
}

/// The user's part of a change of rule.
struct Dialogs {
  bool answer = true;
  QStringList heard;
  RuleEditDialogs callables{[this](const QString& question) {
                              heard << question;
                              return answer;
                            },
                            [this](const QString& warning) { heard << warning; }};
};

struct RuleChangeTest : testing::Test {
  SeriesStore series;
  Dialogs user;
  RuleEdit edit;

  RuleChangeTest() {
    series.AddRoot(series.Root("2.1.2024 9:00", kDaily));
    edit.guid = series.id;
    edit.newRule = u"RRULE:FREQ=DAILY INTERVAL=2 COUNT=3"_qs;
    edit.title = u"Plavání"_qs;
    edit.start = Moment("3.1.2024 9:00");
  }

  bool Change() { return EditRecurrentEvent(series.store, edit, series.time, user.callables); }
};

}  // namespace

TEST(WayToSave, FollowsTheRuleAndTheRow) {
  ScheduleRecord row;
  EXPECT_EQ(WayToSave(QString(), row), SaveWay::Plain);
  EXPECT_EQ(WayToSave(u"FREQ=DAILY"_qs, row), SaveWay::NewSeries);
  row.recur = u" FREQ=DAILY"_qs;
  for (const auto& [status, way] :
       {std::pair(StatusOccurrence, SaveWay::AskWhichOnes), std::pair(StatusRoot, SaveWay::AskWhichOnes),
        std::pair(StatusChanged, SaveWay::Exception)}) {
    row.status = status;
    EXPECT_EQ(WayToSave(u"FREQ=DAILY"_qs, row), way) << status;
  }
}

TEST(ExceptionGuid, GetsItsStampOnce) {
  const ZoneBiases winter{-60, 0, -60, false};
  EXPECT_EQ(ExceptionGuid(u"abc"_qs, Moment("5.1.2024 8:30"), winter), u"abc_20240105T073000Z"_qs);
  EXPECT_EQ(ExceptionGuid(u"abc"_qs, Moment("5.1.2024"), winter), u"abc_20240105"_qs);
  EXPECT_EQ(ExceptionGuid(u"abc_x"_qs, Moment("5.1.2024 8:30"), winter), u"abc_x"_qs);
  EXPECT_EQ(ExceptionGuid(u"abc\0rubbish"_qs, Moment("5.1.2024"), winter), u"abc_20240105"_qs);
}

TEST(ShiftBySeconds, DropsTheSecondsFirst) {
  EXPECT_EQ(ShiftBySeconds(Date::FromParts(2024, 1, 5, 8, 30, 59).value(), 90), Date::FromParts(2024, 1, 5, 8, 31, 30));
  EXPECT_EQ(ShiftBySeconds(Moment("31.12.9999 23:59"), 60), std::nullopt);
}

struct RootEditTest : testing::Test {
  SeriesStore series;
  RootEditTest() { series.AddRoot(series.Root("2.1.2024 9:00", kDaily)); }
};

TEST_F(RootEditTest, AnOccurrenceMovesTheRootByItsShift) {
  RootEdit edit = FromOccurrence(series);
  edit.start = Moment("3.1.2024 9:30");
  edit.end = Moment("3.1.2024 12:00");
  edit.guid += u"_20240103T080000Z"_qs;
  ScheduleRecord root = RootAfter(series, edit);
  EXPECT_EQ(root.appointment, u"Plavání"_qs);
  EXPECT_EQ(root.apptime, Moment("2.1.2024 9:30"));
  EXPECT_EQ(root.appdur, Moment("2.1.2024 12:00"));
  EXPECT_EQ(root.recur, QString::fromLatin1(kDaily));
  EXPECT_EQ(series.Occurrences().substr(0, 17), "1 2.1.2024 9:00:0") << "they follow at the next rebuild";

  edit = FromOccurrence(series);
  edit.end.reset();
  root = RootAfter(series, edit);
  EXPECT_EQ(root.appdur, root.apptime) << "an end that was taken away";
}

TEST_F(RootEditTest, AnIdentityThatBeginsWithABarNamesItselfAlone) {
  ScheduleRecord foreign = series.Root("2.1.2024 9:00", kDaily);
  foreign.guid = u"_60q30c1g"_qs;
  series.AddRoot(foreign);
  RootEdit edit = FromOccurrence(series);
  edit.guid = foreign.guid;
  EXPECT_EQ(RootAfter(series, edit).appointment, u"Cvičení"_qs);
  EXPECT_EQ(series.Rows(statements::Roots()).at(1).appointment, u"Plavání"_qs);
}

TEST(EditRootEvent, TheAlarmFollowsTheOccurrences) {
  struct Case {
    const char* what;
    std::optional<Date> rootAlarm, origAlarm, alarm, expected;
  };
  const std::vector<Case> cases = {
      {"moved", Moment("2.1.2024 8:45"), Moment("3.1.2024 8:45"), Moment("3.1.2024 8:30"), Moment("2.1.2024 8:30")},
      {"taken away", Moment("2.1.2024 8:45"), Moment("3.1.2024 8:45"), {}, {}},
      {"new", {}, {}, Moment("2.1.2024 21:00"), Moment("1.1.2024 21:00")},
      {"the same", Moment("2.1.2024 8:45"), Moment("3.1.2024 8:45"), Moment("3.1.2024 8:45"), Moment("2.1.2024 8:45")},
      {"none", {}, {}, {}, {}},
  };
  for (const Case& c : cases) {
    SeriesStore series;
    ScheduleRecord root = series.Root("2.1.2024 9:00", kDaily);
    root.alarmtime = c.rootAlarm;
    root.alarm = c.rootAlarm.has_value();
    series.AddRoot(root);
    RootEdit edit = FromOccurrence(series);
    edit.origAlarm = c.origAlarm;
    edit.alarm = c.alarm;
    const ScheduleRecord after = RootAfter(series, edit);
    EXPECT_EQ(after.alarmtime, c.expected) << c.what;
    EXPECT_EQ(after.alarm, c.expected.has_value()) << c.what;
  }
}

TEST(EditRootEvent, FromTheRootValuesAreTakenAsTheyAre) {
  SeriesStore series;
  ScheduleRecord root = series.Root("2.1.2024 9:00", kDaily);
  root.alarmtime = Moment("2.1.2024 8:00");
  root.alarm = true;
  series.AddRoot(root);
  RootEdit edit = FromOccurrence(series);
  edit.status = StatusRoot;
  ScheduleRecord after = RootAfter(series, edit);
  EXPECT_EQ(after.apptime, edit.start);
  EXPECT_EQ(after.appdur, edit.end);
  EXPECT_EQ(after.alarmtime, root.alarmtime) << "an alarm cannot be taken away here";
  EXPECT_TRUE(after.alarm);
  edit.alarm = Moment("3.1.2024 7:00");
  edit.end.reset();
  after = RootAfter(series, edit);
  EXPECT_EQ(after.alarmtime, edit.alarm);
  EXPECT_EQ(after.appdur, edit.start);
}

TEST_F(RuleChangeTest, WithoutExceptionsNothingIsAsked) {
  EXPECT_TRUE(Change());
  EXPECT_TRUE(user.heard.isEmpty());
  EXPECT_EQ(series.Summary(), "9 2.1.2024 9:00:00, 1 2.1.2024 9:00:00, 1 4.1.2024 9:00:00, 1 6.1.2024 9:00:00");
  const ScheduleRecord root = series.Rows(statements::Roots()).at(0);
  EXPECT_EQ(root.appointment, u"Plavání"_qs);
  EXPECT_EQ(root.recur, edit.newRule);
  EXPECT_EQ(root.guid, series.id);
  EXPECT_EQ(root.appdur, Moment("2.1.2024 10:00"));
  EXPECT_EQ(series.Spawned(), series.SpawnedAnew());
}

TEST_F(RuleChangeTest, TheAlarmKeepsItsDistanceInMinutes) {
  edit.alarm = Date::FromParts(2024, 1, 3, 8, 44, 59).value();
  EXPECT_TRUE(Change());
  for (const ScheduleRecord& row : series.Rows()) {
    EXPECT_TRUE(row.alarm);
    EXPECT_EQ(row.alarmtime, DateAdd(DateUnit::Minute, -16, *row.apptime));
  }
}

TEST_F(RuleChangeTest, ExceptionsThatStillFitArePutBack) {
  series.AddMember(StatusChanged, series.id + u"_20240104T080000Z"_qs, "4.1.2024 15:00", "4.1.2024 9:00");
  series.AddMember(StatusChanged, series.id + u"_20240103T080000Z"_qs, "3.1.2024 15:00", "3.1.2024 9:00");
  series.AddMember(StatusDeleted, series.id + u"_20240106T080000Z"_qs, "6.1.2024 9:00", "6.1.2024 9:00");
  EXPECT_TRUE(Change());
  EXPECT_EQ(user.heard.join(u'|').toStdString(),
            "Události od počátku této série budou nahrazeny aktuálně zvolenou událostí a bude obnoveno pravidelné "
            "opakování událostí podle vámi zvoleného nastavení.");
  EXPECT_EQ(series.Summary(), "9 2.1.2024 9:00:00, 1 2.1.2024 9:00:00, 2 4.1.2024 15:00:00, 1 6.1.2024 9:00:00");
  const ScheduleRecord changed = series.Rows(statements::Exceptions()).at(0);
  EXPECT_EQ(changed.appointment, u"Cvičení"_qs);
  EXPECT_EQ(changed.guid, series.id + u"_20240104T080000Z"_qs);
  EXPECT_EQ(changed.reftime, Moment("4.1.2024 9:00"));
  EXPECT_EQ(changed.appdur, Moment("4.1.2024 16:00"));
}

TEST_F(RuleChangeTest, ARefusalChangesNothing) {
  series.AddMember(StatusChanged, series.id + u"_20240104T080000Z"_qs, "4.1.2024 15:00", "4.1.2024 9:00");
  const auto rows = series.Rows();
  user.answer = false;
  EXPECT_FALSE(Change());
  EXPECT_EQ(user.heard.size(), 1);
  EXPECT_EQ(series.Rows(), rows);
}

TEST_F(RuleChangeTest, WithoutARootItIsToldSo) {
  const auto rows = series.Rows();
  for (const QString& guid : {QString(series.id + u"_20240104T080000Z"_qs), u"nobody"_qs, QString()}) {
    edit.guid = guid;
    user.heard.clear();
    EXPECT_FALSE(Change());
    EXPECT_EQ(user.heard.join(u'|').toStdString(), "Nelze najít výchozí záznam pro událost Plavání");
    EXPECT_EQ(series.Rows(), rows);
  }
}

TEST_F(RuleChangeTest, RemovesTheNotesOfTheOldSeriesButTheOneThatTheNewNames) {
  const QString note = series.folder.filePath(u"K15083.241"_qs);
  const QString other = series.folder.filePath(u"K15083.242"_qs);
  const QString plain = series.folder.filePath(u"note"_qs);
  for (const QString& path : {note, other, plain}) series.Touch(path);
  series.AddMember(StatusDeleted, series.id + u"_20240106T080000Z"_qs, "6.1.2024 9:00");
  series.AddMember(StatusChanged, series.id + u"_20240107T080000Z"_qs, "7.1.2024 9:00");
  series.store.Execute({u"UPDATE schedule SET wav=? WHERE status=9"_qs, {note}});
  series.store.Execute({u"UPDATE schedule SET wav=? WHERE status=8"_qs, {plain}});
  series.store.Execute({u"UPDATE schedule SET wav=? WHERE status=2"_qs, {other}});
  edit.note = u" "_qs + note;
  EXPECT_TRUE(Change());
  EXPECT_TRUE(QFile::exists(note));
  EXPECT_FALSE(QFile::exists(other));
  EXPECT_TRUE(QFile::exists(plain)) << "a name without a dot is none of a note";
  EXPECT_EQ(series.Rows(statements::Roots()).at(0).wav, note);
}

TEST_F(RuleChangeTest, AFailureLeavesTheOldSeriesWithItsNotes) {
  const QString note = series.folder.filePath(u"K15083.241"_qs);
  series.Touch(note);
  series.store.Execute({u"UPDATE schedule SET wav=? WHERE status=9"_qs, {note}});
  const auto rows = series.Rows();
  series.RefuseInserts();
  EXPECT_FALSE(Change());
  EXPECT_EQ(series.Rows(), rows);
  EXPECT_TRUE(QFile::exists(note));
}

}  // namespace talnik::test
