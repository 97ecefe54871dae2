#include "alarms/AlarmShift.h"
#include "alarms/AlarmWords.h"
#include "alarms/AlarmWorld.h"

#include <QFile>

namespace talnik::test {
namespace {

TEST(AlarmWords, SayHowFarTheEventLies) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"17.1.2024 9:33", "15.1.2024 8:30", "Za 2 dny 1 hodinu 3 minuty "},
      {"15.1.2024 8:29", "15.1.2024 8:30", "Před 1 minutou "},
      {"15.1.2024 8:35:59", "15.1.2024 8:30", "Za 5 minut "},
      {"15.1.2024 8:30:59", "15.1.2024 8:30", ""},
      {"15.1.2024 8:30", "15.1.2024 8:30:59", ""},
      {"14.1.2025 8:30", "15.1.2024 8:30", "Za 1 rok "},
      {"15.1.2022 6:30", "15.1.2024 8:30", "Před 2 roky 2 hodinami "},
      {"1.1.1", "31.12.9999", "Před 10005 roky 233 dny "},
  };
  for (const auto& [event, now, words] : cases) {
    EXPECT_EQ(EventDistance(At(event), At(now)).toStdString(), words) << event << " at " << now;
  }
}

TEST(AlarmShift, CarriesTheEventAsTheAlarmLaysToIt) {
  struct Case {
    const char *start, *end, *to, *newStart, *newEnd;
  };
  // The alarm lies at 8:00.
  const Case cases[] = {
      {"15.1.2024 8:10", "15.1.2024 9:00", "15.1.2024 8:05", "15.1.2024 8:10", "15.1.2024 9:05"},
      {"15.1.2024 8:10", "15.1.2024 9:00", "15.1.2024 8:30", "15.1.2024 8:30", "15.1.2024 9:30"},
      {"15.1.2024 8:10", "15.1.2024 9:00", "15.1.2024 8:10", "15.1.2024 8:20", "15.1.2024 9:10"},
      {"15.1.2024 8:00", "", "16.1.2024 8:00", "16.1.2024 8:00", ""},
      {"15.1.2024", "15.1.2024", "14.1.2024 8:00", "15.1.2024", "14.1.2024"},
      {"31.12.9999", "31.12.9999 23:59", "30.12.9999", "31.12.9999", "31.12.9999 23:59"},
  };
  for (const Case& test : cases) {
    ScheduleRecord row;
    row.apptime = At(test.start);
    if (*test.end) row.appdur = At(test.end);
    row.alarmfired = true;
    const ScheduleRecord moved = ShiftedAlarm(row, At("15.1.2024 8:00"), At(test.to));
    EXPECT_EQ(DateText(*moved.apptime), DateText(At(test.newStart))) << test.to;
    EXPECT_EQ(moved.appdur ? DateText(*moved.appdur) : QString(), *test.newEnd ? DateText(At(test.newEnd)) : QString())
        << test.to;
    EXPECT_EQ(moved.alarmtime, At(test.to));
    EXPECT_TRUE(moved.alarm && moved.alarmfired);
  }
}

using AlarmQueueTest = AlarmWorld;

TEST_F(AlarmQueueTest, KnowsNoneUntilItIsAsked) {
  EXPECT_FALSE(queue.Due());
  EXPECT_EQ(queue.AppTimeFromAlarm(), QString());
  queue.DelAlarm();
  queue.ShiftAlarm(1, 0, QString());
  EXPECT_TRUE(queue.AlarmRung);
  queue.RegisterAlarm();
  EXPECT_EQ(queue.NextAlarmTime(), u"31.12.3000"_qs);
}

TEST_F(AlarmQueueTest, GivesAMonthOfAlarmsEachOnce) {
  std::string expected;
  for (int day = 16; day <= 31; ++day) {
    const QString text = u"%1.1.2024 9:00"_qs.arg(day);
    Add(text.toUtf8().constData(), text.toUtf8().constData(), text.toUtf8().constData());
    expected += text.toStdString() + ';';
  }
  queue.RegisterAlarm();
  std::string given;
  for (int minute = 0; minute < 31 * 1440; ++minute) {
    world.clock.Moment = world.clock.Moment.addSecs(60);
    const std::string text = Tick();
    if (text != "-") given += text + ';';
  }
  EXPECT_EQ(given, expected);
  EXPECT_EQ(store.Number(statements::CountAlarms()), 0);
}

TEST_F(AlarmQueueTest, GivesAlarmsOfOneMomentOneAfterTheOther) {
  Add("first", "15.1.2024 9:00", "15.1.2024 8:45");
  Add("second", "15.1.2024 10:00", "15.1.2024 8:45");
  queue.RegisterAlarm();
  SetClock("15.1.2024 8:44:59");
  EXPECT_EQ(Tick(), "-");
  SetClock("15.1.2024 8:45");
  EXPECT_EQ(Tick(), "first");
  EXPECT_EQ(queue.AppTimeFromAlarm(), u"Za 1 hodinu 15 minut "_qs) << "of the second, not of the first";
  EXPECT_EQ(Tick(), "second");
  EXPECT_EQ(Tick(), "-");
}

TEST_F(AlarmQueueTest, GivesMissedAlarmsAfterAStart) {
  Add("yesterday", "14.1.2024 9:00", "14.1.2024 8:45");
  Add("last week", "8.1.2024 9:00", "8.1.2024 8:45");
  // What another program has written there is no moment; the others must not wait behind it.
  for (const char* odd : {"-1e9", "1e9", "'brzy'"}) {
    store.Execute(
        {u"INSERT INTO schedule(appointment,alarm,alarmtime) VALUES('odd',1,%1)"_qs.arg(QString::fromUtf8(odd)), {}});
  }
  queue.RegisterAlarm();
  EXPECT_EQ(Ticks(3), "last week yesterday -");
}

TEST_F(AlarmQueueTest, PassesOverARowWithoutItsAlarm) {
  ScheduleRecord root = Row("root", "15.1.2024 9:00", "15.1.2024 8:00");
  root.alarm = false;
  root.status = StatusRoot;
  store.Insert(root);
  Add("same moment", "15.1.2024 9:00", "15.1.2024 8:00");
  Add("later", "15.1.2024 9:00", "15.1.2024 8:10");
  queue.RegisterAlarm();
  EXPECT_EQ(Ticks(3), "same moment - later");
  EXPECT_TRUE(Find("root").alarmfired);
}

TEST_F(AlarmQueueTest, APostponedRowDoesNotTakeTheMarkOfAnother) {
  ScheduleRecord postponed = Row("postponed", "15.1.2024 9:00", "15.1.2024 8:00");
  postponed.alarmfired = true;
  store.Insert(postponed);
  Add("new", "15.1.2024 9:00", "15.1.2024 8:00");
  queue.RegisterAlarm();
  EXPECT_EQ(Ticks(2), "new -");
}

TEST_F(AlarmQueueTest, GivesARowThatIsGoneOnce) {
  Add("gone", "15.1.2024 9:00", "15.1.2024 8:00");
  queue.RegisterAlarm();
  store.Execute(statements::DeleteAll());
  EXPECT_EQ(Ticks(2), "gone -");
}

TEST_F(AlarmQueueTest, DoesNotRingWithoutEndWhenTheStoreTakesNoMark) {
  Add("first", "15.1.2024 9:00", "15.1.2024 8:00");
  Add("second", "15.1.2024 9:00", "15.1.2024 8:10");
  queue.RegisterAlarm();
  Store other(store.Path());
  other.InTransaction([&] {
    other.Insert(ScheduleRecord());
    EXPECT_EQ(Ticks(4), "first second - -");
    return false;
  });
  EXPECT_FALSE(Find("first").alarmfired);
  queue.RegisterAlarm();
  EXPECT_TRUE(Find("first").alarmfired && Find("second").alarmfired) << "the marks are tried anew";
}

TEST_F(AlarmQueueTest, AnUnreadableStoreLeavesTheOldAlarm) {
  Add("x", "15.1.2024 9:00", "15.1.2024 8:00");
  queue.RegisterAlarm();
  QFile::remove(store.Path());
  queue.RegisterAlarm();
  EXPECT_EQ(queue.NextAlarmText, u"x"_qs);
  EXPECT_EQ(Ticks(2), "x -");
}

TEST_F(AlarmQueueTest, AnAlarmThatCameWhileTheBoxWasOpenIsStillGiven) {
  Add("x", "15.1.2024 9:00", "15.1.2024 8:00");
  queue.RegisterAlarm();
  queue.AlarmSetOff(QString(), queue.NextAlarmTime());
  queue.AlarmRung = true;
  Add("synchronised", "15.1.2024 9:00", "15.1.2024 8:20");
  queue.RegisterAlarm();
  queue.AlarmFinished();
  EXPECT_EQ(Tick(), "synchronised");
}

TEST_F(AlarmQueueTest, DeletesAllThatRangByItsRole) {
  const auto add = [this](const char* text, const QString& guid, int status, const char* recur) {
    ScheduleRecord row = Row(text, "15.1.2024 9:00", "15.1.2024 8:00");
    row.guid = guid;
    row.status = status;
    row.recur = QString::fromUtf8(recur);
    row.wav = folder.filePath(QString::fromUtf8(text));
    QFile(row.wav).open(QIODevice::WriteOnly);
    store.Insert(row);
  };
  add("shared", u"s"_qs, StatusSingle, "");
  add("single", u"t"_qs, StatusSingle, "");
  add("occurrence", u"a"_qs, StatusOccurrence, " RRULE:FREQ=DAILY");
  add("changed", u"b_20240101T080000Z"_qs, StatusChanged, " RRULE:FREQ=DAILY");
  add("root", u"b"_qs, StatusRoot, " RRULE:FREQ=DAILY");
  Add("other moment", "15.1.2024 9:00", "15.1.2024 8:00:01");
  queue.RegisterAlarm();
  queue.DelAlarm();

  EXPECT_EQ(Count(), 4);
  EXPECT_EQ(Find("occurrence").status, StatusDeleted);
  EXPECT_EQ(Find("occurrence").guid, u"a_20240115T080000Z"_qs);
  EXPECT_EQ(Find("changed").status, StatusDeleted);
  EXPECT_EQ(Find("changed").guid, u"b_20240101T080000Z"_qs) << "one stamp is enough";
  EXPECT_EQ(Find("root").status, StatusRoot);
  EXPECT_EQ(emptied, QStringList(u"b"_qs));
  EXPECT_TRUE(QFile::exists(folder.filePath(u"shared"_qs))) << "only the last note is looked at";
  EXPECT_FALSE(QFile::exists(folder.filePath(u"single"_qs)));

  add("note", u"n"_qs, StatusSingle, "");
  store.Execute({u"UPDATE schedule SET wav='note' WHERE appointment='other moment'"_qs, {}});
  queue.RegisterAlarm();
  queue.DelAlarm();
  EXPECT_EQ(Find("note").appointment, QString());
  EXPECT_TRUE(QFile::exists(folder.filePath(u"note"_qs))) << "another row names it";
}

TEST_F(AlarmQueueTest, ShiftsEveryRecordOfTheMoment) {
  Add("first", "15.1.2024 9:00", "15.1.2024 8:00");
  Add("second", "15.1.2024 8:10", "15.1.2024 8:00");
  Add("other", "15.1.2024 8:10", "15.1.2024 8:00:01");
  queue.RegisterAlarm();
  queue.AlarmSetOff(QString(), queue.NextAlarmTime());
  queue.ShiftAlarm(0, 15, QString());
  EXPECT_EQ(Find("first").alarmtime, At("15.1.2024 8:45"));
  EXPECT_EQ(Find("first").apptime, At("15.1.2024 9:00"));
  EXPECT_TRUE(Find("first").alarm && Find("first").alarmfired) << "it does not come back into the queue";
  EXPECT_EQ(Find("second").apptime, At("15.1.2024 8:45"));
  EXPECT_EQ(Find("other").alarmtime, At("15.1.2024 8:00:01"));
  EXPECT_EQ(queue.NextAlarmText, u"other"_qs);

  queue.ShiftAlarm(0, 0, u"no date"_qs);
  EXPECT_EQ(Find("other").alarmtime, At("15.1.2024 8:00:01"));
  queue.ShiftAlarm(5, 5, u"1.2.2024 7:00"_qs);
  EXPECT_EQ(Find("other").alarmtime, At("1.2.2024 7:00"));
  EXPECT_EQ(queue.NextAlarmText, u"second"_qs);
  queue.ShiftAlarm(0, 0, QString());
  EXPECT_EQ(Find("second").alarmtime, At("15.1.2024 8:30"));
  EXPECT_TRUE(queue.Due());
}

}  // namespace
}  // namespace talnik::test
