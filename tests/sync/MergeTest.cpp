#include "sync/MergeWorld.h"

namespace talnik::test {

namespace {

/// Rows are told as status|guid|text|start|end|alarm|reftime|rule, an alarm that is on behind "!".
ScheduleRecord RowOf(const QString& text) {
  const QStringList field = text.split(u'|');
  const auto moment = [&field](int place) { return CDate(QString(field.at(place)).remove(u'!'), Date()); };
  ScheduleRecord row;
  row.status = field.at(0).toInt();
  row.guid = field.at(1);
  row.appointment = field.at(2);
  row.apptime = moment(3);
  row.appdur = moment(4);
  row.alarm = field.at(5).startsWith(u'!');
  row.alarmtime = moment(5);
  row.reftime = moment(6);
  row.recur = field.at(7);
  return row;
}

QString Told(const ScheduleRecord& row) {
  const auto text = [](const std::optional<Date>& date) { return date ? DateText(*date) : QString(); };
  return QStringList{QString::number(row.status.value_or(-1)),
                     row.guid,
                     row.appointment,
                     text(row.apptime),
                     text(row.appdur),
                     (row.alarm ? u"!"_qs : QString()) + text(row.alarmtime),
                     text(row.reftime),
                     row.recur}
      .join(u'|');
}

const char* const kLunch = "0|a|Oběd |2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||";

/// Rows before, lines and rows after; what the lines returned, the counts of what was added, changed and removed, and
/// whether alarms were touched; the log. "(lines)" stands for a merge without rebuild and sweep.
const char* const kMergeCases = R"(
# ANewRecord
> Oběd;2.1.2024 12:00:00;2.1.2024 13:00:00;2.1.2024 11:50:00;;a;0
>
> Den;3.1.2024;;;;b
= 0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
= 0|b|Den|3.1.2024|3.1.2024|||
! 302 2 0 0
~ Přidáno: Oběd 2.1.2024 12:00:00 a
~ Přidáno: Den 3.1.2024 b
# NothingChanged
- 0|a|Oběd |2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
> Oběd;2.1.2024 12:00;2.1.2024 13:00;2.1.2024 11:50;;a;0
= 0|a|Oběd |2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
! 0 0 0 0
# ATitleThatEndsInABlankStopsNothing
- 0|a|Oběd |2.1.2024|2.1.2024|||
> Oběd ;2.1.2024;;;;a;0
> Den;3.1.2024;;;;b
= 0|a|Oběd |2.1.2024|2.1.2024|||
= 0|b|Den|3.1.2024|3.1.2024|||
! 02 1 1 0
~ Upraveno: Oběd  jméno: Oběd ,  a
~ Přidáno: Den 3.1.2024 b
# EveryColumnChanged
- 0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
> Večeře;3.1.2024 18:00:00;3.1.2024 19:00:00;;;a;0
= 0|a|Večeře|3.1.2024 18:00:00|3.1.2024 19:00:00|!||
! 0 0 1 0 alarms
~ Upraveno: Večeře jméno: Večeře,  čas počátku: 3.1.2024 18:00:00,  čas ukončení: 3.1.2024 19:00:00,  alarm: ,  a
# WhatCannotBeReadChangesNothing
- 0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
> Oběd;2.1.2024 12:00;31.2.2024;zítra;;a;0
= 0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
! 0 0 0 0
# ARejectedLineNamesNothing
- 0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
> Oběd;;2.1.2024 13:00:00;;;a;0
! 1 0 0 1 alarms
~ Smazáno: Oběd 2.1.2024 12:00:00 a
# TwoRowsOfOneIdentity
- 0|a|x|2.1.2024|2.1.2024|||
- 0|a|y|3.1.2024|3.1.2024|||
- 0|A|z|4.1.2024|4.1.2024|||
> x;2.1.2024;;;;a;0
> z;4.1.2024;;;;A;0
= 0|a|x|2.1.2024|2.1.2024|||
= 0|a|x|2.1.2024|2.1.2024|||
= 0|A|z|4.1.2024|4.1.2024|||
! 00 0 1 0
~ Upraveno: x jméno: x,  čas počátku: 2.1.2024,  čas ukončení: 2.1.2024,  a
# ANewSeriesIsSpawned
> Kolo;;;15;DTSTART :20240105T083000 DTEND :20240105T093000 RRULE:FREQ=DAILY COUNT=2;s;9
= 1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|!5.1.2024 8:15:00|5.1.2024 8:30:00| 5.1.2024 08:30:00 5.1.2024 09:30:00 RRULE:FREQ=DAILY COUNT=2
= 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|!5.1.2024 8:15:00|5.1.2024 8:30:00| 5.1.2024 08:30:00 5.1.2024 09:30:00 RRULE:FREQ=DAILY COUNT=2
= 1|s|Kolo|6.1.2024 8:30:00|6.1.2024 9:30:00|!6.1.2024 8:15:00|6.1.2024 8:30:00| 5.1.2024 08:30:00 5.1.2024 09:30:00 RRULE:FREQ=DAILY COUNT=2
! 3 1 0 0
~ Přidáno: Kolo 5.1.2024 08:30:00 s
# ASeriesRingsAtItsStartIfAtNoOtherTime
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
> Kolo;;;;DTSTART :20240105T083000 DTEND :20240105T093000 RRULE:FREQ=DAILY COUNT=2;s;9
= 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|5.1.2024 8:30:00||RRULE:X
! 0 0 1 0 alarms
~ Upraveno: Kolo alarm: 5.1.2024 8:30:00,  s
# ASingleRecordBecomesASeries (lines)
- 0|s|Kolo|5.1.2024 10:00:00|5.1.2024 11:00:00|||
> Kolo;;;;DTSTART :20240105T083000 RRULE:FREQ=DAILY COUNT=2;s;9
= 9|s|Kolo|5.1.2024 10:00:00|5.1.2024 11:00:00||| 5.1.2024 08:30:00 RRULE:FREQ=DAILY COUNT=2
! 0 0 0 0
# ASeriesDoesNotBecomeASingleRecord
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
- 1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X
> Kolo;5.1.2024 8:30;;;;s;0
= 0|s|Kolo|5.1.2024 8:30:00|5.1.2024 8:30:00|||
= 1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X
= 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
! 2 1 0 0
~ Přidáno: Kolo 5.1.2024 8:30 s
# AnExceptionIsAddedWithItsNominalStart (lines)
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
> Jinak;5.1.2024 10:00;;;RRULE:X;s_20240105T073000Z;2
= 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
= 2|s_20240105T073000Z|Jinak|5.1.2024 10:00:00|5.1.2024 10:00:00||5.1.2024 8:30:00|RRULE:X
! 2 0 1 0
~ Upraveno: Jinak 5.1.2024 10:00 s_20240105T073000Z
# ADeletedOccurrenceBecomesATombstone (lines)
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
- 1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X
- 1|s|Kolo|6.1.2024 8:30:00|6.1.2024 9:30:00||6.1.2024 8:30:00| RRULE:X
> Kolo;5.1.2024 8:30:00;;;RRULE:X;s_20240105T073000Z;8
> Kolo;5.1.2024 8:30:00;;;RRULE:X;s_20240105T073000Z;8
= 8|s_20240105T073000Z|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X
= 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
= 1|s|Kolo|6.1.2024 8:30:00|6.1.2024 9:30:00||6.1.2024 8:30:00| RRULE:X
! 00 0 0 1
~ Del:Kolo s_20240105T073000Z 5.1.2024 8:30:00
# ARowWithoutNominalStartIsJudgedByThatBefore (lines)
- 1|s|a|5.1.2024 8:30:00|||5.1.2024 8:30:00|R
- 2|s_x|b|5.1.2024 9:00:00||||R
- 1|s|c|5.1.2024 9:30:00||||R
- 1|s|d|6.1.2024 8:30:00|||6.1.2024 8:30:00|R
- 1|s|e|6.1.2024 9:30:00||||R
> Kolo;;;;R;s_20240105T073000Z;8
= 8|s_20240105T073000Z|a|5.1.2024 8:30:00|||5.1.2024 8:30:00|R
= 8|s_20240105T073000Z|b|5.1.2024 9:00:00||||R
= 8|s_20240105T073000Z|c|5.1.2024 9:30:00||||R
= 1|s|d|6.1.2024 8:30:00|||6.1.2024 8:30:00|R
= 1|s|e|6.1.2024 9:30:00||||R
! 0 0 0 3
~ Del:Kolo s_20240105T073000Z 
~ Del:Kolo s_20240105T073000Z 
~ Del:Kolo s_20240105T073000Z 
# WithTheLastOccurrenceTheSeriesGoes (lines)
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
- 1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X
- 8|s_y|Kolo|6.1.2024|6.1.2024||6.1.2024|R
- 0|a|Den|2.1.2024||||
> Kolo;5.1.2024;;;R;s_20240105T073000Z;8
= 0|a|Den|2.1.2024||||
! 0 0 0 1
~ Del:Kolo s_20240105T073000Z 5.1.2024
# ASeriesIsFoundByItsPattern (lines)
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||R
- 1|s|Kolo|5.1.2024 8:30:00|||5.1.2024 8:30:00|R
- 1|s|Kolo|6.1.2024 8:30:00|||6.1.2024 8:30:00|R
> Kolo;;;;R;?_20240105T073000Z;8
> Kolo;;;;R;S_20240106T073000Z;8
= 8|?_20240105T073000Z|Kolo|5.1.2024 8:30:00|||5.1.2024 8:30:00|R
! 00 0 0 2
~ Del:Kolo ?_20240105T073000Z 
~ Del:Kolo S_20240106T073000Z 
# WhatALineHasAddedIsFoundByTheNext (lines)
> Kolo;;;;R;s_20240101;8
> Kolo;5.1.2024;;;R;t_20240105;2
> Kolo;6.1.2024;;;R;t_20240106;2
> Kolo;;;;R;t_20240105;8
= 8|t_20240105|Kolo|5.1.2024|5.1.2024||5.1.2024|R
= 2|t_20240106|Kolo|6.1.2024|6.1.2024||6.1.2024|R
! 0220 0 2 1
~ Upraveno: Kolo 5.1.2024 t_20240105
~ Upraveno: Kolo 6.1.2024 t_20240106
~ Del:Kolo t_20240105 
# AStampThatIsNoDateDeletesNothingButNames
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
- 2|s_20240105T230000Z|Kolo|6.1.2024|6.1.2024||5.1.2024|R
> Kolo;;;;R;s_20240105T230000Z;8
> ;;;;;;8
= 2|s_20240105T230000Z|Kolo|6.1.2024|6.1.2024||5.1.2024|R
! 00 0 0 1
~ Smazáno: Kolo 5.1.2024 8:30:00 s
# ASingleRecordIsDeletedByNotBeingNamedAlone
- 0|a|Den|2.1.2024|2.1.2024|||
- 0|b|x|3.1.2024|3.1.2024|||
> Den;2.1.2024;;;;a;8
= 0|a|Den|2.1.2024|2.1.2024|||
! 0 0 0 1
~ Smazáno: x 3.1.2024 b
# AnEmptyCalendarEmptiesTheStore
- 0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||
- 9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X
- 1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X
- 8|s_y|Kolo|6.1.2024|6.1.2024||6.1.2024|R
>
! 0 0 0 2 alarms
~ Smazáno: Oběd 2.1.2024 12:00:00 a
~ Smazáno: Kolo 5.1.2024 8:30:00 s
# AnExceptionStaysByTheIdentityThatARebuildNames
- 9|t|Jiné|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:FREQ=DAILY COUNT=3
- 2|t_20240106T073000Z|Jinak|6.1.2024 9:00:00|6.1.2024 9:00:00||6.1.2024 8:30:00|R
> z;;;;DTSTART :20200101T080000 RRULE:FREQ=DAILY COUNT=1;z;
= 9|z|z|1.1.2020 8:00:00||1.1.2020 8:00:00|1.1.2020 8:00:00| 1.1.2020 08:00:00 RRULE:FREQ=DAILY COUNT=1
= 2|t_20240106T073000Z|Jinak|6.1.2024 9:00:00|6.1.2024 9:00:00||6.1.2024 8:30:00|R
! 2 1 0 1
~ Přidáno: z 1.1.2020 08:00:00 z
~ Smazáno: Jiné 5.1.2024 8:30:00 t
)";

/// The texts behind a mark at the beginning of a line.
QStringList Marked(const QString& text, char mark) {
  QStringList marked;
  for (const QString& line : text.split(u'\n')) {
    if (line.startsWith(QLatin1Char(mark))) marked << line.mid(2);
  }
  return marked;
}

TEST(Merge, DoesAsStated) {
  for (const QString& text : QString::fromUtf8(kMergeCases).split(u"\n# "_qs).mid(1)) {
    const QString name = text.section(u'\n', 0, 0);
    MergeWorld world;
    for (const QString& row : Marked(text, '-')) ASSERT_TRUE(world.store.Insert(RowOf(row)));
    ASSERT_TRUE(world.Merge(Marked(text, '>'), !name.endsWith(u"(lines)"_qs)));
    QStringList after;
    for (const ScheduleRecord& row : world.Rows(statements::AllByStart())) after << Told(row);
    EXPECT_EQ(after.join(u'\n').toStdString(), Marked(text, '=').join(u'\n').toStdString()) << name.toStdString();
    const SyncTally& tally = world.tally;
    const QString counts = u" %1 %2 %3"_qs.arg(tally.AddedCount).arg(tally.ChangedCount).arg(tally.RemovedCount);
    const QString results = world.results + counts + (world.alarmsTouched ? u" alarms"_qs : QString());
    EXPECT_EQ(results.toStdString(), Marked(text, '!').value(0).toStdString()) << name.toStdString();
    QString log;
    for (const QString& line : Marked(text, '~')) log += line + u"\r\n"_qs;
    EXPECT_EQ(tally.SyncDetail.toStdString(), log.toStdString()) << name.toStdString();
  }
}

}  // namespace

TEST(Merge, TakesBadLinesOneAfterTheOther) {
  const QString longId(300, u'x');
  const QString nul(QChar(u'\0'));
  const QString huge(10'000'000, u';');
  const QString hugeBlank(500'000, u' ');
  const QString day = u";2.1.2024;;;"_qs;
  struct Case {
    QString line;
    char result;
  };
  const Case cases[] = {
      {u"x"_qs, '1'},
      {huge, '1'},
      {u"x"_qs + day + QString(1000, u';'), '2'},
      {u"x"_qs + day + u";"_qs + longId, '2'},
      {u"x"_qs + day + u";"_qs + longId, '0'},
      {u"x"_qs + day + u";a"_qs + nul + u"b"_qs, '2'},
      {u"x"_qs + day + u";a"_qs, '0'},
      {nul + day + u";' OR 1=1; --"_qs, '2'},
      {u"x"_qs + day + u";\"*#%_?"_qs, '2'},
      {u"x"_qs + day + u";_"_qs, '2'},
      {u"x"_qs + day + u"R;*_"_qs, '2'},
      {u"x"_qs + day + u"R;*_*;8"_qs, '0'},
      {u"x;;;;R;#*%;8"_qs, '0'},
      {u";31.12.9999 23:59;1.1.10000;0:00;;far;"_qs, '3'},
      {u"x;;;99;DTSTART :99999999T999999 RRULE:FREQ=DAILY COUNT=999999999;r;"_qs, '3'},
      {u"x;;;;DTSTART :"_qs + hugeBlank + u";q;"_qs, '1'},
      {hugeBlank + u"x;"_qs + hugeBlank + u";;;;h"_qs, '1'},
      {QString(QChar(0xD800)) + day + u";\uFFFD"_qs, '2'},
  };
  MergeWorld world;
  QStringList lines;
  for (const Case& test : cases) lines << test.line;
  ASSERT_TRUE(world.Merge(lines, false));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(world.results.at(static_cast<int>(i)).toLatin1(), cases[i].result) << i;
  }
  ASSERT_TRUE(world.Merge(lines));
  ASSERT_TRUE(world.Merge(lines));
}

TEST(Merge, LeavesTheIndexesWhereTheyWere) {
  MergeWorld world;
  const auto indexes = [&world] {
    return world.store.Number({u"SELECT count(*) FROM sqlite_schema WHERE type='index'"_qs, {}}).value();
  };
  const qint64 before = indexes();
  const QString root = u"Cvičení;;;;DTSTART :%1 DTEND :%1 RRULE:FREQ=DAILY COUNT=3;root%2;9"_qs;
  QStringList lines;
  for (int i = 0; i < 6000; ++i) lines << u"Úkol;3.1.2024;;;;e%1;0"_qs.arg(i);
  EXPECT_FALSE(world.store.InTransaction([&] {
    GoogleMerge givenUp(world.store, world.time.biases, world.time.now);
    for (const QString& line : lines) givenUp.ImportDataGoogle(line);
    return indexes() == before;
  })) << "that many rows are written without";
  EXPECT_EQ(indexes(), before);
  ASSERT_TRUE(world.Merge(lines + QStringList{root.arg(u"20240105T080000"_qs).arg(1)}));
  EXPECT_EQ(world.tally.AddedCount, 6001);
  EXPECT_EQ(world.Rows().size(), 6004);
  ASSERT_TRUE(world.Merge(lines.first(3)));
  EXPECT_EQ(world.tally.RemovedCount, 5998);
  EXPECT_EQ(world.Rows().size(), 3);
  EXPECT_EQ(indexes(), before);
}

TEST(Merge, IsKeptAsAWholeOrNotAtAll) {
  MergeWorld world;
  ASSERT_TRUE(world.store.Insert(RowOf(QString::fromUtf8(kLunch))));
  const auto before = world.Rows();
  QStringList told;
  world.store.WriteFailed = [&told](const QString& what) { told << what; };
  ASSERT_TRUE(world.store.Execute({u"PRAGMA max_page_count=40"_qs, {}}));
  QStringList lines{u"Večeře;3.1.2024;;;;a;"_qs};
  for (int i = 0; i < 2000; ++i) lines << u"Úkol;3.1.2024;;;;e%1;"_qs.arg(i);
  EXPECT_FALSE(world.Merge(lines));
  EXPECT_EQ(world.Rows(), before);
  EXPECT_EQ(told.size(), 1);
  EXPECT_LT(world.tally.AddedCount, 2000);
  Store missing(world.folder.filePath(u"none.MDB"_qs));
  GoogleMerge merge(missing, {}, world.time.now);
  EXPECT_EQ(merge.ImportDataGoogle(lines.front()), NothingAdded);
  EXPECT_FALSE(merge.LinesTaken());
  EXPECT_FALSE(merge.DeleteMissingEvents());
}

}  // namespace talnik::test
