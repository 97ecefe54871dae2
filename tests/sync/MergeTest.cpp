#include "store/Like.h"
#include "sync/MergeWorld.h"

#include <QRandomGenerator>

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

std::string Told(const ScheduleRecord& row) {
  const auto text = [](const std::optional<Date>& date) { return date ? DateText(*date) : QString(); };
  return QStringList{QString::number(row.status.value_or(-1)),
                     row.guid,
                     row.appointment,
                     text(row.apptime),
                     text(row.appdur),
                     (row.alarm ? u"!"_qs : QString()) + text(row.alarmtime),
                     text(row.reftime),
                     row.recur}
      .join(u'|')
      .toStdString();
}

using Texts = std::vector<const char*>;

struct MergeCase {
  const char* name;
  Texts before;
  std::vector<QString> lines;
  Texts after;
  const char* results;
  const char* counts;  ///< added, changed, removed
  const char* detail;
  bool sweep = true;
};

void PrintTo(const MergeCase& test, std::ostream* stream) {
  *stream << test.name;
}

const char* const kLunch = "0|a|Oběd |2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||";
const char* const kRoot = "9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:X";
const char* const kFirst = "1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X";
const char* const kSecond = "1|s|Kolo|6.1.2024 8:30:00|6.1.2024 9:30:00||6.1.2024 8:30:00| RRULE:X";
const char* const kTombstone = "8|s_20240105T073000Z|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X";
const QString kDeleteFirst = u"Kolo;5.1.2024 8:30:00;;;RRULE:X;s_20240105T073000Z;8"_qs;
const QString kRootLine = u"Kolo;;;%1;DTSTART :20240105T083000 DTEND :20240105T093000 RRULE:FREQ=DAILY COUNT=2;%2;9"_qs;

const MergeCase kMergeCases[] = {
    {"ANewRecord",
     {},
     {u"Oběd;2.1.2024 12:00:00;2.1.2024 13:00:00;2.1.2024 11:50:00;;a;0"_qs, u""_qs, u"Den;3.1.2024;;;;b"_qs},
     {"0|a|Oběd|2.1.2024 12:00:00|2.1.2024 13:00:00|!2.1.2024 11:50:00||", "0|b|Den|3.1.2024|3.1.2024|||"},
     "302",
     "2 0 0",
     "Přidáno: Oběd 2.1.2024 12:00:00 a\r\nPřidáno: Den 3.1.2024 b\r\n"},
    {"NothingChanged",
     {kLunch},
     {u"Oběd;2.1.2024 12:00;2.1.2024 13:00;2.1.2024 11:50;;a;0"_qs},
     {kLunch},
     "0",
     "0 0 0",
     ""},
    {"EveryColumnChanged",
     {kLunch},
     {u"Večeře;3.1.2024 18:00:00;3.1.2024 19:00:00;;;a;0"_qs},
     {"0|a|Večeře|3.1.2024 18:00:00|3.1.2024 19:00:00|!||"},
     "0",
     "0 1 0",
     "Upraveno: Večeře jméno: Večeře,  čas počátku: 3.1.2024 18:00:00,  čas ukončení: 3.1.2024 19:00:00,  alarm: ,  "
     "a\r\n"},
    {"WhatCannotBeReadChangesNothing",
     {kLunch},
     {u"Oběd;2.1.2024 12:00;31.2.2024;zítra;;a;0"_qs},
     {kLunch},
     "0",
     "0 0 0",
     ""},
    {"ARejectedLineNamesNothing",
     {kLunch},
     {u"Oběd;;2.1.2024 13:00:00;;;a;0"_qs},
     {},
     "1",
     "0 0 1",
     "Smazáno: Oběd  2.1.2024 12:00:00 a\r\n"},
    {"TwoRowsOfOneIdentity",
     {"0|a|x|2.1.2024|2.1.2024|||", "0|a|y|3.1.2024|3.1.2024|||", "0|A|z|4.1.2024|4.1.2024|||"},
     {u"x;2.1.2024;;;;a;0"_qs, u"z;4.1.2024;;;;A;0"_qs},
     {"0|a|x|2.1.2024|2.1.2024|||", "0|a|x|2.1.2024|2.1.2024|||", "0|A|z|4.1.2024|4.1.2024|||"},
     "00",
     "0 1 0",
     "Upraveno: x jméno: x,  čas počátku: 2.1.2024,  čas ukončení: 2.1.2024,  a\r\n"},
    {"ANewSeriesIsSpawned",
     {},
     {kRootLine.arg(u"15"_qs, u"s"_qs)},
     {"1|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|!5.1.2024 8:15:00|5.1.2024 8:30:00| 5.1.2024 08:30:00 5.1.2024 "
      "09:30:00 RRULE:FREQ=DAILY COUNT=2",
      "9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|!5.1.2024 8:15:00|5.1.2024 8:30:00| 5.1.2024 08:30:00 5.1.2024 "
      "09:30:00 RRULE:FREQ=DAILY COUNT=2",
      "1|s|Kolo|6.1.2024 8:30:00|6.1.2024 9:30:00|!6.1.2024 8:15:00|6.1.2024 8:30:00| 5.1.2024 08:30:00 5.1.2024 "
      "09:30:00 RRULE:FREQ=DAILY COUNT=2"},
     "3",
     "1 0 0",
     "Přidáno: Kolo 5.1.2024 08:30:00 s\r\n"},
    {"ASeriesRingsAtItsStartIfAtNoOtherTime",
     {kRoot},
     {kRootLine.arg(QString(), u"s"_qs)},
     {"9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|5.1.2024 8:30:00||RRULE:X"},
     "0",
     "0 1 0",
     "Upraveno: Kolo alarm: 5.1.2024 8:30:00,  s\r\n"},
    {"ASingleRecordBecomesASeries",
     {"0|s|Kolo|5.1.2024 10:00:00|5.1.2024 11:00:00|||"},
     {kRootLine.arg(QString(), u"s"_qs)},
     {"9|s|Kolo|5.1.2024 10:00:00|5.1.2024 11:00:00||| 5.1.2024 08:30:00 5.1.2024 09:30:00 RRULE:FREQ=DAILY COUNT=2"},
     "0",
     "0 0 0",
     "",
     false},
    {"ASeriesDoesNotBecomeASingleRecord",
     {kRoot, kFirst},
     {u"Kolo;5.1.2024 8:30;;;;s;0"_qs},
     {"0|s|Kolo|5.1.2024 8:30:00|5.1.2024 8:30:00|||", kFirst, kRoot},
     "2",
     "1 0 0",
     "Přidáno: Kolo 5.1.2024 8:30 s\r\n"},
    {"AnExceptionIsAddedWithItsNominalStart",
     {kRoot, kSecond},
     {kRootLine.arg(QString(), u"s"_qs), u"Jinak;5.1.2024 10:00;;;RRULE:X;s_20240105T073000Z;2"_qs},
     {"9|s|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00|5.1.2024 8:30:00||RRULE:X",
      "2|s_20240105T073000Z|Jinak|5.1.2024 10:00:00|5.1.2024 10:00:00||5.1.2024 8:30:00|RRULE:X", kSecond},
     "02",
     "0 2 0",
     "Upraveno: Kolo alarm: 5.1.2024 8:30:00,  s\r\nUpraveno: Jinak 5.1.2024 10:00 s_20240105T073000Z\r\n"},
    {"ADeletedOccurrenceBecomesATombstone",
     {kRoot, kFirst, kSecond},
     {kDeleteFirst, kDeleteFirst},
     {kTombstone, kRoot, kSecond},
     "00",
     "0 0 1",
     "Del:Kolo s_20240105T073000Z 5.1.2024 8:30:00\r\n",
     false},
    {"ARowWithoutNominalStartIsJudgedByThatBefore",
     {kFirst, "2|s_x|Kolo|5.1.2024 9:00:00||||R", "1|s|Kolo|5.1.2024 9:30:00||||R", kSecond,
      "1|s|Kolo|6.1.2024 9:30:00||||R"},
     {kDeleteFirst},
     {kTombstone, "8|s_20240105T073000Z|Kolo|5.1.2024 9:00:00||||R", "8|s_20240105T073000Z|Kolo|5.1.2024 9:30:00||||R",
      kSecond, "1|s|Kolo|6.1.2024 9:30:00||||R"},
     "0",
     "0 0 3",
     nullptr,
     false},
    {"WithTheLastOccurrenceTheSeriesGoes",
     {kRoot, kFirst, kLunch},
     {kDeleteFirst},
     {kLunch},
     "0",
     "0 0 1",
     nullptr,
     false},
    {"AStampThatIsNoDateDeletesNothingButNames",
     {kRoot, kFirst, "2|s_20240105T230000Z|Kolo|6.1.2024|6.1.2024||5.1.2024|R"},
     {u"Kolo;;;;R;s_20240105T230000Z;8"_qs, u";;;;;;8"_qs},
     {"2|s_20240105T230000Z|Kolo|6.1.2024|6.1.2024||5.1.2024|R"},
     "00",
     "0 0 1",
     "Smazáno: Kolo 5.1.2024 8:30:00 s\r\n"},
    {"ASingleRecordIsDeletedByNotBeingNamedAlone",
     {kLunch, "0|b|x|3.1.2024|3.1.2024|||"},
     {u"Oběd;2.1.2024 12:00;;;;a;8"_qs},
     {kLunch},
     "0",
     "0 0 1",
     "Smazáno: x 3.1.2024 b\r\n"},
    {"ALineWithoutIdentityIsAddedAndNotNamed",
     {"0||beze jména|2.1.2024|2.1.2024|||"},
     {u"x;3.1.2024;;;;;0"_qs},
     {"0||beze jména|2.1.2024|2.1.2024|||"},
     "2",
     "1 0 1",
     nullptr},
    {"AnEmptyCalendarEmptiesTheStore",
     {kLunch, kRoot, kFirst, kTombstone},
     {u""_qs},
     {},
     "0",
     "0 0 2",
     "Smazáno: Oběd  2.1.2024 12:00:00 a\r\nSmazáno: Kolo 5.1.2024 8:30:00 s\r\n"},
    {"AnExceptionStaysByTheIdentityThatARebuildNames",
     {"9|t|Jiné|5.1.2024 8:30:00|5.1.2024 9:30:00|||RRULE:FREQ=DAILY COUNT=3",
      "2|t_20240106T073000Z|Jinak|6.1.2024 9:00:00|6.1.2024 9:00:00||6.1.2024 8:30:00|R"},
     {u"z;;;;DTSTART :20200101T080000 RRULE:FREQ=DAILY COUNT=1;z;"_qs},
     {"9|z|z|1.1.2020 8:00:00||1.1.2020 8:00:00|1.1.2020 8:00:00| 1.1.2020 08:00:00 RRULE:FREQ=DAILY COUNT=1",
      "2|t_20240106T073000Z|Jinak|6.1.2024 9:00:00|6.1.2024 9:00:00||6.1.2024 8:30:00|R"},
     "2",
     "1 0 1",
     nullptr},
    {"ASeriesIsFoundByItsPattern",
     {kRoot, kFirst, kSecond},
     {u"Kolo;;;;R;?_20240105T073000Z;8"_qs, u"Kolo;;;;R;S_20240106T073000Z;8"_qs},
     {"8|?_20240105T073000Z|Kolo|5.1.2024 8:30:00|5.1.2024 9:30:00||5.1.2024 8:30:00| RRULE:X"},
     "00",
     "0 0 2",
     nullptr,
     false},
};

class Merging : public testing::TestWithParam<MergeCase> {};

TEST_P(Merging, DoesAsStated) {
  const MergeCase& test = GetParam();
  MergeWorld world;
  for (const char* row : test.before) ASSERT_TRUE(world.store.Insert(RowOf(QString::fromUtf8(row))));
  ASSERT_TRUE(world.Merge({test.lines.begin(), test.lines.end()}, test.sweep));
  EXPECT_EQ(world.results.toStdString(), test.results);
  const SyncTally& tally = world.tally;
  const QString counts = u"%1 %2 %3"_qs.arg(tally.AddedCount).arg(tally.ChangedCount).arg(tally.RemovedCount);
  EXPECT_EQ(counts.toStdString(), test.counts);
  EXPECT_EQ(tally.SyncDetail.toStdString(), test.detail ? test.detail : tally.SyncDetail.toStdString());
  std::vector<std::string> after;
  for (const ScheduleRecord& row : world.Rows(statements::AllByStart())) after.push_back(Told(row));
  EXPECT_EQ(after, std::vector<std::string>(test.after.begin(), test.after.end()));
}

INSTANTIATE_TEST_SUITE_P(Lines, Merging, testing::ValuesIn(kMergeCases),
                         [](const auto& test) { return std::string(test.param.name); });

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
  EXPECT_TRUE(merge.Failed());
  EXPECT_FALSE(merge.DeleteMissingEvents());
}

TEST(Merge, TellsOfAlarms) {
  MergeWorld world;
  ASSERT_TRUE(world.store.Insert(RowOf(QString::fromUtf8(kLunch))));
  const auto touches = [&world](const char* line) {
    EXPECT_TRUE(world.Merge({QString::fromUtf8(line)}));
    return world.alarmsTouched;
  };
  EXPECT_FALSE(touches("Oběd;2.1.2024 12:00;2.1.2024 13:00;2.1.2024 11:50;;a;"));
  EXPECT_TRUE(touches("Oběd;2.1.2024 12:00;2.1.2024 13:00;2.1.2024 11:55;;a;"));
  EXPECT_TRUE(touches(""));
}

TEST(GuidSearch, FindsWhatThePatternFinds) {
  QRandomGenerator random(5);
  const auto text = [&random](int length, const char* letters, int count) {
    QString result;
    for (int i = 0; i < length; ++i) result += QChar::fromLatin1(letters[random.bounded(count)]);
    return result;
  };
  GuidSearch search;
  QSet<QString> guids;
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const QString guid = text(16 + random.bounded(30), "aAbB", 2 + 2 * (round % 2));
    if (!guids.contains(guid)) search.Add(guid);
    guids.insert(guid);
    QString part =
        text(1, "ab*?", 3 + round % 2) + guid.mid(random.bounded(5), std::array{2, 15, 17, 20}[round % 4]).toUpper();
    if (round % 3 > 0) part = part.mid(1);
    const LikePattern pattern(QByteArray('*' + part.toUtf8() + '*'));
    QSet<QString> expected;
    for (const QString& other : guids) {
      if (pattern.Matches(other.toUtf8())) expected.insert(other);
    }
    const QStringList list = search.Containing(part);
    EXPECT_EQ(QSet<QString>(list.begin(), list.end()), expected) << part.toStdString();
    EXPECT_EQ(list.size(), expected.size());
    found += static_cast<int>(list.size());
  }
  EXPECT_GT(found, 300);
}

}  // namespace talnik::test
