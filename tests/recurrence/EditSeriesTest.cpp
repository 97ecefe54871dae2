#include "recurrence/SeriesStore.h"

namespace talnik::test {

namespace {

constexpr const char* kDaily = "RRULE:FREQ=DAILY INTERVAL=1 COUNT=5";

/// "start|end|alarm"; the alarm behind "!" when it is on.
std::string Times(const ScheduleRecord& row) {
  const auto text = [](const std::optional<Date>& moment) { return moment ? DateText(*moment) : QString(); };
  return QStringList{text(row.apptime), text(row.appdur), (row.alarm ? u"!"_qs : QString()) + text(row.alarmtime)}
      .join(u'|')
      .toStdString();
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

TEST(EditRootEvent, CarriesIntoTheRootWhatChangedInTheRowThatIsShown) {
  struct Case {
    const char* what;
    const char* rootAlarm;
    int shown;  ///< an occurrence of 3.1.2024 9:00 to 10:00, or the root
    const char *shownAlarm, *start, *end, *alarm;
    const char* root;
  };
  const char *shown = "3.1.2024 9:00", *until = "3.1.2024 10:00";
  const Case cases[] = {
      {"moved", "", 1, "", "3.1.2024 9:30", "3.1.2024 12:00", "", "2.1.2024 9:30:00|2.1.2024 12:00:00|"},
      {"its end taken away", "", 1, "", shown, "", "", "2.1.2024 9:00:00|2.1.2024 9:00:00|"},
      {"its alarm moved", "2.1.2024 8:45", 1, "3.1.2024 8:45", shown, until, "3.1.2024 8:30",
       "2.1.2024 9:00:00|2.1.2024 10:00:00|!2.1.2024 8:30:00"},
      {"its alarm taken away", "2.1.2024 8:45", 1, "3.1.2024 8:45", shown, until, "",
       "2.1.2024 9:00:00|2.1.2024 10:00:00|"},
      {"a new alarm", "", 1, "", shown, until, "2.1.2024 21:00",
       "2.1.2024 9:00:00|2.1.2024 10:00:00|!1.1.2024 21:00:00"},
      {"the alarm as it was", "2.1.2024 8:45", 1, "3.1.2024 8:45", shown, until, "3.1.2024 8:45",
       "2.1.2024 9:00:00|2.1.2024 10:00:00|!2.1.2024 8:45:00"},
      {"the root, whose alarm cannot be taken away here", "2.1.2024 8:00", 9, "", shown, until, "",
       "3.1.2024 9:00:00|3.1.2024 10:00:00|!2.1.2024 8:00:00"},
      {"the root with another alarm and no end", "2.1.2024 8:00", 9, "", shown, "", "3.1.2024 7:00",
       "3.1.2024 9:00:00|3.1.2024 9:00:00|!3.1.2024 7:00:00"},
  };
  for (const Case& c : cases) {
    SeriesStore series;
    ScheduleRecord root = series.Root("2.1.2024 9:00", kDaily);
    root.alarmtime = MaybeMoment(c.rootAlarm);
    root.alarm = root.alarmtime.has_value();
    series.AddRoot(root);
    const std::string occurrences = series.Occurrences();
    const RootEdit edit{.title = u"Plavání"_qs,
                        .start = Moment(c.start),
                        .end = MaybeMoment(c.end),
                        .alarm = MaybeMoment(c.alarm),
                        .rule = root.recur,
                        .guid = series.id + u"_20240103T080000Z"_qs,
                        .status = c.shown,
                        .origStart = Moment(shown),
                        .origEnd = Moment(until),
                        .origAlarm = MaybeMoment(c.shownAlarm)};
    EXPECT_TRUE(EditRootEvent(series.store, edit));
    const ScheduleRecord after = series.Rows(statements::Roots()).at(0);
    EXPECT_EQ(Times(after), c.root) << c.what;
    EXPECT_EQ(after.appointment, edit.title) << c.what;
    EXPECT_EQ(after.recur, root.recur) << c.what;
    EXPECT_EQ(series.Occurrences(), occurrences) << "they follow at the next rebuild";
  }
}

TEST(EditRootEvent, AnIdentityThatBeginsWithABarNamesItselfAlone) {
  SeriesStore series;
  series.AddRoot(series.Root("2.1.2024 9:00", kDaily));
  ScheduleRecord foreign = series.Root("2.1.2024 9:00", kDaily);
  foreign.guid = u"_60q30c1g"_qs;
  series.AddRoot(foreign);
  foreign.status = StatusOccurrence;
  EXPECT_TRUE(EditRootEvent(series.store, Shifted(foreign, u"Plavání"_qs, 0)));
  EXPECT_EQ(series.Rows(statements::Roots()).at(0).appointment, u"Cvičení"_qs);
  EXPECT_EQ(series.Rows(statements::Roots()).at(1).appointment, u"Plavání"_qs);
}

TEST_F(RuleChangeTest, AsksOverExceptionsOnlyAndPutsBackThoseThatFit) {
  const char* const question =
      "Události od počátku této série budou nahrazeny aktuálně zvolenou událostí a bude obnoveno pravidelné "
      "opakování událostí podle vámi zvoleného nastavení.";
  const char* const noRoot = "Nelze najít výchozí záznam pro událost Plavání";
  const struct {
    const char* what;
    QString guid;
    bool exceptions, answer;
    const char* heard;
    const char* after;  ///< null when nothing has changed
  } cases[] = {
      {"no exceptions", series.id, false, false, "",
       "9 2.1.2024 9:00:00, 1 2.1.2024 9:00:00, 1 4.1.2024 9:00:00, 1 6.1.2024 9:00:00"},
      {"exceptions", series.id, true, true, question,
       "9 2.1.2024 9:00:00, 1 2.1.2024 9:00:00, 2 4.1.2024 15:00:00, 1 6.1.2024 9:00:00"},
      {"a refusal", series.id, true, false, question, nullptr},
      {"the identity of an exception", series.id + u"_20240104T080000Z"_qs, false, true, noRoot, nullptr},
      {"nobody's identity", u"nobody"_qs, false, true, noRoot, nullptr},
      {"no identity", QString(), false, true, noRoot, nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    series.store.Execute(statements::DeleteAll());
    if (c.exceptions) {
      series.AddMember(StatusChanged, series.id + u"_20240104T080000Z"_qs, "4.1.2024 15:00", "4.1.2024 9:00");
      series.AddMember(StatusChanged, series.id + u"_20240103T080000Z"_qs, "3.1.2024 15:00", "3.1.2024 9:00");
      series.AddMember(StatusDeleted, series.id + u"_20240106T080000Z"_qs, "6.1.2024 9:00", "6.1.2024 9:00");
    }
    series.AddRoot(series.Root("2.1.2024 9:00", kDaily));
    const auto before = series.Rows();
    edit.guid = c.guid;
    user.answer = c.answer;
    user.heard.clear();
    EXPECT_EQ(Change(), c.after != nullptr);
    EXPECT_EQ(user.heard.join(u'|').toStdString(), c.heard);
    EXPECT_TRUE(c.after || series.Rows() == before);
    if (!c.after) continue;
    EXPECT_EQ(series.Summary(), c.after);
    const ScheduleRecord root = series.Rows(statements::Roots()).at(0);
    EXPECT_EQ(root.appointment, u"Plavání"_qs);
    EXPECT_EQ(root.recur, edit.newRule);
    EXPECT_EQ(root.guid, series.id);
    EXPECT_EQ(Times(root), "2.1.2024 9:00:00|2.1.2024 10:00:00|");
    EXPECT_EQ(series.Spawned(), series.SpawnedAnew());
    for (const ScheduleRecord& row : series.Rows(statements::Exceptions())) {
      EXPECT_EQ(row.appointment, u"Cvičení"_qs);
      EXPECT_EQ(row.guid, series.id + u"_20240104T080000Z"_qs);
      EXPECT_EQ(row.reftime, Moment("4.1.2024 9:00"));
      EXPECT_EQ(Times(row), "4.1.2024 15:00:00|4.1.2024 16:00:00|");
    }
  }
}

TEST_F(RuleChangeTest, TheAlarmKeepsItsDistanceInMinutes) {
  edit.alarm = Date::FromParts(2024, 1, 3, 8, 44, 59).value();
  EXPECT_TRUE(Change());
  for (const ScheduleRecord& row : series.Rows()) {
    EXPECT_TRUE(row.alarm);
    EXPECT_EQ(row.alarmtime, DateAdd(DateUnit::Minute, -16, *row.apptime));
  }
}

TEST_F(RuleChangeTest, RemovesTheNotesOfTheOldSeriesButTheOneThatTheNewNames) {
  series.AddMember(StatusDeleted, series.id + u"_20240106T080000Z"_qs, "6.1.2024 9:00");
  series.AddMember(StatusChanged, series.id + u"_20240107T080000Z"_qs, "7.1.2024 9:00");
  const struct {
    int status;
    QString note;
    bool stays;
  } notes[] = {{StatusRoot, series.folder.filePath(u"K15083.241"_qs), true},
               {StatusChanged, series.folder.filePath(u"K15083.242"_qs), false},
               {StatusDeleted, series.folder.filePath(u"note"_qs), true}};  // a name without a dot is none of a note
  for (const auto& [status, note, stays] : notes) {
    series.Touch(note);
    series.store.Execute({u"UPDATE schedule SET wav=? WHERE status=?"_qs, {note, status}});
  }
  edit.note = u" "_qs + notes[0].note;
  EXPECT_TRUE(Change());
  for (const auto& [status, note, stays] : notes) EXPECT_EQ(QFile::exists(note), stays) << note.toStdString();
  EXPECT_EQ(series.Rows(statements::Roots()).at(0).wav, notes[0].note);
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
