#include "platform/linux/LocaleCodePage.h"
#include "sync/ExchangeFile.h"
#include "sync/GoogleLine.h"
#include "sync/MergeWorld.h"

#include <QFile>

namespace talnik::test {

namespace {

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

std::string Joined(const QStringList& texts) {
  return texts.join(u'|').toStdString();
}

}  // namespace

TEST(GoogleRule, IsMadeOfTheTokensThatCount) {
  struct Case {
    const char* field;
    const char* read;  ///< rule|start|end
  };
  const Case cases[] = {
      {"", "||"},
      {"RRULE:FREQ=DAILY INTERVAL=2 ", "RRULE:FREQ=DAILY INTERVAL=2 ||"},
      {"WKST=MO nothing of ours", "WKST=MO nothing of ours||"},
      {"DTSTART :20240105T083000 DTEND :20240105T093000 RRULE:FREQ=WEEKLY BYDAY=FR INTERVAL=2",
       " 5.1.2024 08:30:00 5.1.2024 09:30:00 RRULE:FREQ=WEEKLY BYDAY=FR INTERVAL=2|5.1.2024 08:30:00|5.1.2024 "
       "09:30:00"},
      {"DTSTART TZID=Europe/Prague:20241005T083000Z RRULE:FREQ=MONTHLY WKST=SU BYMONTHDAY=5 COUNT=3",
       " 5.10.2024 08:30:00 RRULE:FREQ=MONTHLY BYMONTHDAY=5 COUNT=3|5.10.2024 08:30:00|"},
      {"DTSTART VALUE=DATE:20240105 RRULE:FREQ=DAILY UNTIL=20240110T000000Z",
       "  RRULE:FREQ=DAILY UNTIL=20240110T000000Z||"},
      {"BEGIN:VTIMEZONE DTSTART :19700101T000000 RRULE:FREQ=YEARLY END:VTIMEZONE DTSTART :20240105T083000 RRULE:X",
       " 5.1.2024 08:30:00 RRULE:X|5.1.2024 08:30:00|"},
      {"DTSTART RRULE:FREQ=DAILY", "  RRULE:FREQ=DAILY||"},
      {"DTSTART COUNT=2UNTIL=3 DTEND", " COUNT=2UNTIL=3 COUNT=2UNTIL=3||"},
      {"xDTSTART  INTERVAL=2", " INTERVAL=2||"},
  };
  for (const Case& test : cases) {
    QString start, end;
    const QString rule = ParseGoogleRule(Text(test.field), start, end);
    EXPECT_EQ(Joined({rule, start, end}), test.read) << test.field;
  }
}

TEST(GoogleLine, IsReadFieldByField) {
  const ZoneBiases winter{-60, 0, -60, false}, summer{-60, 0, -60, true}, utc{}, india{-330, 0, 0, false},
      newYork{300, 0, -60, false};
  struct Case {
    const char* line;
    const ZoneBiases& zone;
    const char* read;  ///< status|title|start|end|alarm|id|series|exception time; the alarm behind "!" if it is one
  };
  const Case cases[] = {
      {"Oběd;5.1.2024 12:00:00;5.1.2024 13:00:00;;;a;0", winter, "0|Oběd|5.1.2024 12:00:00|5.1.2024 13:00:00||a|a|"},
      {"Den;5.1.2024;;4.1.2024 8:00:00;;a_b;9;x;;;", winter, "0|Den|5.1.2024|5.1.2024|!4.1.2024 8:00:00|a_b|a_b|"},
      {"Jen text", winter, "0|Jen text||||||"},
      {";;;;;;8", winter, "8|||||||"},
      {"C;;;15;DTSTART :20240105T083000 RRULE:X;s;9", winter, "9|C|||!5.1.2024 8:15:00|s|s|"},
      {"C;;;;DTSTART :20240105T083000 RRULE:X;s;", winter, "9|C|||5.1.2024 8:30:00|s|s|"},
      {"C;;;-90 x;DTSTART :20240105T223000 RRULE:X;s;", winter, "9|C|||!6.1.2024|s|s|"},
      {"C;;;99999999999999999999;DTSTART :20240105T083000 RRULE:X;s;", winter, "9|C|||!99999999999999999999|s|s|"},
      {"C;;;15;RRULE:X;s;", winter, "9|C|||!15|s|s|"},
      {"C;1.1.2024;;;   ;s;", winter, "0|C|1.1.2024|1.1.2024||s|s|"},
      {"C;1.1.2024;;;R;s_20240105;", winter, "2|C|1.1.2024|1.1.2024||s_20240105|s|05.01.2024"},
      {"C;;;;R;s_20240105T073000Z;8", winter, "8|C||||s_20240105T073000Z|s|08:30:00 05.01.2024"},
      {"C;;;;R;s_20240701T-23000Z;2", summer, "2|C||||s_20240701T-23000Z|s|00:30:00 01.07.2024"},
      {"C;;;;R;s_20240701T230000Z;2", winter, "2|C||||s_20240701T230000Z|s|24:00:00 01.07.2024"},
      {"C;;;;R;s_20240105T073000Z;2", utc, "2|C||||s_20240105T073000Z|s|07:30:00 05.01.2024"},
      {"C;;;;R;s_20240105T063000Z;2", india, "2|C||||s_20240105T063000Z|s|12:30:00 05.01.2024"},
      {"C;;;;R;s_20240105T280000Z;2", newYork, "2|C||||s_20240105T280000Z|s|23:00:00 05.01.2024"},
      {"C;;;;R;_;2", winter, "2|C||||_||.."},
  };
  for (const Case& test : cases) {
    const GoogleLine line = ReadGoogleLine(Text(test.line), test.zone, Moment("1.1.2024"));
    EXPECT_EQ(Joined({QString::number(line.status), line.title, line.start, line.end,
                      (line.hasAlarm ? u"!"_qs : QString()) + line.alarm, line.id, line.seriesId, line.exceptionTime}),
              test.read)
        << test.line;
  }
}

TEST(ExchangeExport, WritesALineForEveryRowButTheSpawned) {
  SeriesStore series;
  const auto add = [&series](const char* columns) {
    EXPECT_TRUE(series.store.Execute(
        {u"INSERT INTO schedule(appointment,apptime,appdur,alarm,alarmtime,recur,guid,status) VALUES("_qs +
             Text(columns) + u')',
         {}}));
  };
  qint64 count = -1;
  EXPECT_EQ(ExportDataForGoogle(series.store, count), QString());
  EXPECT_EQ(count, 0);
  // 45296 is 5.1.2024.
  add("'  Oběd\r\ns\rPetrem\n; dnes ',45296,45296.5,1,45296,NULL,'a',0");
  add("'Kolo',45296.354166667,NULL,0,45296.25,'  RRULE:X INTERVAL=1 ','s' || char(0) || 'x',9");
  add("'výskyt',45296.5,45296.5,0,NULL,' RRULE:X','s',1");
  add("'druhé a',45297,45297,0,NULL,NULL,'a',NULL");
  add("'náhrobek',45296.5,45296.5,1,NULL,' RRULE:X','s_20240105T110000Z',8");
  add("'bez čísla',NULL,NULL,0,NULL,NULL,NULL,NULL");
  add("'bez čísla',0,0,0,NULL,NULL,'',0");
  EXPECT_EQ(ExportDataForGoogle(series.store, count).value().toStdString(),
            "Oběd s Petrem  dnes;5.1.2024;5.1.2024 12:00:00;5.1.2024 0:00:00;;a;0\r\n"
            "Kolo;5.1.2024 08:30:00;5.1.2024 08:30:00;5.1.2024 06:00:00;RRULE:X INTERVAL=1;s;9\r\n"
            "náhrobek;5.1.2024 12:00:00;5.1.2024 12:00:00;;RRULE:X;s_20240105T110000Z;8\r\n"
            "bez čísla;;;;;;0\r\n"
            "bez čísla;30.12.1899 00:00:00;30.12.1899 00:00:00;;;;0\r\n");
  EXPECT_EQ(count, 5);
  Store missing(series.folder.filePath(u"none.MDB"_qs));
  EXPECT_FALSE(ExportDataForGoogle(missing, count));
}

TEST(ExchangeFiles, AreReadInTheirEncodingAndLinesAreNeverOneForAll) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"GgData.txt"_qs);
  const LocaleCodePage codePage("UTF-8");
  QString reason;
  EXPECT_FALSE(ReadExchangeFile(path, codePage, reason));
  struct Case {
    QByteArray bytes;
    std::string lines;
  };
  const Case cases[] = {
      {"", ""},
      {"\xc4\x8d;1\r\n\r\n2\r\n", "č;1||2|"},
      {"\xe8;1\r\n2", "č;1|2"},
      {"a\nb\rc\r\n", "a\nb\rc|"},
      {"a\nb\n", "a|b|"},
      {QByteArray("a\0b\r\nc", 6), std::string("a\0b|c", 5)},
  };
  for (const Case& test : cases) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(test.bytes) == test.bytes.size());
    file.close();
    const QString text = ReadExchangeFile(path, codePage, reason).value();
    QStringList lines;
    ExchangeLines walk(text);
    const qsizetype count = walk.Count();
    while (!walk.AtEnd()) lines << walk.Next().toString();
    EXPECT_EQ(lines.size(), count);
    EXPECT_EQ(Joined(lines), test.lines);
    EXPECT_TRUE(WriteExchangeFile(path, text, codePage, reason));
    EXPECT_EQ(ReadExchangeFile(path, codePage, reason), text);
  }
  EXPECT_FALSE(WriteExchangeFile(folder.path(), u"x"_qs, codePage, reason));
  EXPECT_FALSE(reason.isEmpty());
}

}  // namespace talnik::test
