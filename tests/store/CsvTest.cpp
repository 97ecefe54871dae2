#include "platform/WholeFile.h"
#include "platform/linux/LocaleCodePage.h"
#include "store/CsvExchange.h"
#include "store/CsvText.h"
#include "store/FaultyDisk.h"
#include "store/StoreFile.h"

#include <QFile>

#include <unistd.h>

namespace talnik::test {
namespace {

const QString kHeader =
    u"\"Počáteční datum\",\"Začátek\",\"Předmět\",\"Koncové datum\",\"Konec\",\"Připomenutí zapnuto či "
    u"vypnuto\",\"Datum připomenutí\",\"Čas připomenutí\"\r\n"_qs;

bool GoOn(qint64, qint64) {
  return true;
}

std::string MomentName(const std::optional<Date>& moment) {
  return moment ? DateText(*moment).toStdString() : "-";
}

/// "start|end|text|alarm at", the alarm behind "!" when it is on.
std::string Described(const ScheduleRecord& row) {
  return MomentName(row.apptime) + '|' + MomentName(row.appdur) + '|' + row.appointment.toStdString() + '|' +
         (row.alarm ? "!" : "") + MomentName(row.alarmtime);
}

std::string LineOf(const ScheduleRecord& row) {
  QString text;
  EXPECT_EQ(AddCsvLine(text, row), row.apptime.has_value());
  return text.toStdString();
}

struct LineCase {
  const char* line;
  const char* row;  ///< as Described
};

TEST(CsvText, ALineIsReadByItsCommasAlone) {
  const LineCase cases[] = {
      {R"("1.2.2024","09:05:00","Oběd","1.2.2024","10:00:00",TRUE,"1.2.2024","09:00:00")",
       "1.2.2024 9:05:00|1.2.2024 10:00:00|Oběd|!1.2.2024 9:00:00"},
      {R"("1.2.2024",,"Celý den","1.2.2024",,FALSE,,)", "1.2.2024|1.2.2024|Celý den|-"},
      {R"("1.2.2024","9:00","a;b;",,,"True",,)", "1.2.2024 9:00:00|1.2.2024 9:00:00|ab|!-"},
      {R"("1.2.2024","9:00","chléb, mléko","2.2.2024","10:00",TRUE,"1.2.2024","8:00")",
       "1.2.2024 9:00:00|1.2.2024 9:00:00|chléb|-"},
      {R"("1.2.2024","9:00","řekl ""ano""","2.2.2024",,FALSE,"nesmysl","25:00")",
       "1.2.2024 9:00:00|2.2.2024|řekl ano|-"},
      {R"("1.2.2024","9:00","bez konce",,TRUE,"1.2.2024","8:00")",
       "1.2.2024 9:00:00|1.2.2024 9:00:00|bez konce|8:00:00"},
      {R"("1.2.2024")", "1.2.2024|1.2.2024||-"},
      {R"("30.2.2024","9:00","den, který není")", "rejected"},
      {R"("","","bez data")", "rejected"},
      {R"("2024-02-01","09:00","jiný zápis")", "rejected"},
      {"\"", "rejected"},
      {"\"\x01\x02,,,,,,,,,,", "rejected"},
  };
  for (const LineCase& test : cases) {
    const auto row = CsvRecord(QString::fromUtf8(test.line), At(u"15.1.2024"_qs));
    EXPECT_EQ(row ? Described(*row) : "rejected", test.row) << test.line;
  }
}

TEST(CsvText, ARowIsWrittenInItsColumns) {
  ScheduleRecord row = Row(u" dva\r\nřádky \"a\", b\n"_qs, u"1.2.2024 9:05:07"_qs, u"12.2.2024"_qs);
  EXPECT_EQ(LineOf(row), "\"1.2.2024\",\"09:05:07\",\"dva řádky \"a\", b\",\"12.2.2024\",,FALSE,,");
  row.alarm = true;
  row.alarmtime = At(u"1.2.2024 8:00"_qs);
  row.appointment = u"  "_qs;
  EXPECT_EQ(LineOf(row), "\"1.2.2024\",\"09:05:07\",,\"12.2.2024\",,TRUE,\"1.2.2024\",\"08:00:00\"");
  row.appdur.reset();
  row.alarm = false;
  EXPECT_EQ(LineOf(row), "\"1.2.2024\",\"09:05:07\",,,FALSE,,") << "one column less without an end";
  row.apptime.reset();
  EXPECT_EQ(LineOf(row), "");
}

class CsvExchange : public StoreFile {
 protected:
  CsvImport Take(const QString& text) { return ImportCsv(store, text, At(u"15.1.2024"_qs), GoOn); }
  /// "imported/rejected".
  std::string Counts(const QString& text) {
    const CsvImport result = Take(text);
    if (result.end != CsvEnd::Done) return "failed";
    return std::to_string(result.imported) + '/' + std::to_string(result.rejected);
  }
  std::string Rows() {
    std::string rows;
    store.ForEach(statements::All(), [&rows](const ScheduleRecord& row) {
      rows += Described(row) + '\n';
      return true;
    });
    return rows;
  }
};

TEST_F(CsvExchange, WhatIsExportedComesBackOnceAndWithoutItsSeries) {
  ScheduleRecord root = Row(u"Řada"_qs, u"1.2.2024 9:00"_qs, u"1.2.2024 10:00"_qs, StatusRoot);
  root.guid = u"g"_qs;
  root.recur = u"RRULE:FREQ=DAILY"_qs;
  root.alarm = true;
  root.alarmtime = At(u"1.2.2024 8:00"_qs);
  for (const ScheduleRecord& row : {root, Row(u"smazaný"_qs, u"2.2.2024"_qs, u"2.2.2024"_qs, StatusDeleted),
                                    Row(u"bez konce"_qs, u"3.2.2024 7:00"_qs), ScheduleRecord()}) {
    ASSERT_TRUE(store.Insert(row));
  }
  const CsvExport file = ExportCsv(store, GoOn);
  EXPECT_EQ(file.end, CsvEnd::Done);
  EXPECT_EQ(file.rows, 3);
  EXPECT_TRUE(file.text.startsWith(kHeader));
  EXPECT_TRUE(file.text.endsWith(u",,FALSE,,\r\n"_qs));
  EXPECT_EQ(Counts(file.text), "0/3") << "all of it is there";

  store.Execute(statements::DeleteAll());
  const CsvImport back = Take(file.text);
  EXPECT_EQ(back.imported, 3);
  EXPECT_TRUE(back.hasAlarms);
  EXPECT_EQ(Rows(),
            "1.2.2024 9:00:00|1.2.2024 10:00:00|Řada|!1.2.2024 8:00:00\n2.2.2024|2.2.2024|smazaný|-\n"
            "3.2.2024 7:00:00|3.2.2024 7:00:00|bez konce|-\n");
  EXPECT_EQ(
      store.Number({u"SELECT count(*) FROM schedule WHERE status IS NULL AND guid IS NULL AND recur IS NULL"_qs, {}}),
      3);
  EXPECT_EQ(Counts(file.text), "0/3");
}

TEST_F(CsvExchange, LinesCountAsTheFileSays) {
  const QString row = u"\"1.2.2024\",\"9:00\",\"x\""_qs;
  const std::pair<QString, const char*> cases[] = {
      {QString(), "0/0"},
      {kHeader, "0/0"},
      {row, "0/0"},  // the first line is dropped, whatever it is
      {kHeader + row, "1/0"},
      {kHeader + row + u"\r\n\r\n1.2.2024,10:00,bez uvozovek\r\n"_qs, "1/0"},
      {u"h\n"_qs + row + u'\n' + row, "1/1"},
      {u"h\r"_qs + row + u"\r\"x\"\r"_qs, "1/1"},
      {u"h\n"_qs + row + u";\n" + row + u"    \n", "1/1"},  // the same once semicolons and outer blanks are gone
      {u"h\n"_qs + row + u'X', "1/0"},                      // upper case is another text
      {u"h\n\"1.2.2024\",\"9:01\",\"x\""_qs, "1/0"},
      {u"h\n"_qs + QString(10'000'000, u'"'), "0/1"},
      {u"h\n\"1.2.2024\",,\""_qs + QString(10'000'000, u'ř') + u"\"\n\"1.2.2024\",,\"" + QString(400, u'ř'), "1/1"},
  };
  for (const auto& [text, counts] : cases) {
    store.Execute(statements::DeleteAll());
    EXPECT_EQ(Counts(text), counts) << text.left(300).toStdString();
  }
  EXPECT_EQ(Texts(statements::All()).constFirst().size(), AppointmentSize);
}

TEST_F(CsvExchange, OldAndForeignBytesKeepTheirLetters) {
  const LocaleCodePage codePage("UTF-8");
  const QByteArray old = "h\r\n\"1.2.2024\",,\"P\xf8\xedli\x9a \x9elu\x9dou\xe8k\xfd k\xf9\xf2\"\r\n";
  EXPECT_EQ(Counts(codePage.Decode(old)), "1/0");
  EXPECT_EQ(Found(statements::All()), "Příliš žluťoučký kůň");
  EXPECT_EQ(Counts(codePage.Decode("\xef\xbb\xbf" + ExportCsv(store, GoOn).text.toUtf8())), "0/1");
  EXPECT_EQ(Counts(codePage.Decode(QByteArray("\0\xff\"\n\"\0\0\n\xfe,,\n", 12).repeated(1000))), "0/1000");
}

TEST_F(CsvExchange, ACancelledImportLeavesNothing) {
  QString text = kHeader;
  for (int i = 0; i < 3000; ++i) text += u"\"1.2.2024\",,\"%1\"\r\n"_qs.arg(i);
  QList<qint64> done;
  const auto giveUp = [&done, &text](qint64 at, qint64 total) {
    EXPECT_EQ(total, text.size());
    EXPECT_TRUE(done.isEmpty() || at >= done.constLast());
    done << at;
    return at < total / 2;
  };
  EXPECT_EQ(ImportCsv(store, text, At(u"15.1.2024"_qs), giveUp).end, CsvEnd::Cancelled);
  EXPECT_GE(done.size(), 3) << "events were let through on the way";
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(Counts(text), "3000/0");
  EXPECT_EQ(ExportCsv(store, [](qint64, qint64) { return false; }).end, CsvEnd::Cancelled);
}

struct CsvOnFaultyDisk : FaultyDisk, CsvExchange {};

TEST_F(CsvOnFaultyDisk, AFullDiskKeepsTheStoreAsItWas) {
  QString text = kHeader;
  for (int i = 0; i < 5000; ++i) text += u"\"1.2.2024\",,\"%1\"\r\n"_qs.arg(i);
  fault = Fault::Full;
  writesLeft = 50;
  const CsvImport result = Take(text);
  EXPECT_TRUE(result.end == CsvEnd::Failed && result.imported == 0);
  EXPECT_EQ(told.size(), 1);
  fault = Fault::None;
  EXPECT_EQ(Count(), 0);
  store.Close();
  QFile::remove(path);
  EXPECT_EQ(ExportCsv(store, GoOn).end, CsvEnd::Failed);
}

TEST(CsvFile, IsReplacedAsAWholeAndNeverWaitedFor) {
  QTemporaryDir folder;
  const QString path = folder.filePath(u"a.csv"_qs);
  QString reason;
  ASSERT_TRUE(WriteWholeFile(path, "old", Readers::AsUsual, reason));
  ASSERT_TRUE(WriteWholeFile(path, "new", Readers::AsUsual, reason));
  EXPECT_EQ(ReadWholeFile(path, reason), "new");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(u"a.csv"_qs)) << "no temporary file is left";

  const std::pair<QString, const char*> unreadable[] = {{folder.path(), "To není soubor."},
                                                        {u"/dev/zero"_qs, "To není soubor."},
                                                        {folder.filePath(u"b.csv"_qs), "Soubor neexistuje."}};
  for (const auto& [other, why] : unreadable) {
    EXPECT_FALSE(ReadWholeFile(other, reason)) << other.toStdString();
    EXPECT_EQ(reason.toStdString(), why);
  }
  EXPECT_FALSE(WriteWholeFile(folder.path(), "x", Readers::AsUsual, reason));
  EXPECT_FALSE(WriteWholeFile(folder.filePath(u"no/a.csv"_qs), "x", Readers::AsUsual, reason));

  if (geteuid() == 0) return;  // who may do everything
  QFile::setPermissions(path, QFile::Permissions());
  EXPECT_FALSE(ReadWholeFile(path, reason));
  EXPECT_EQ(reason, u"Přístup byl odepřen."_qs);
  reason.clear();
  EXPECT_FALSE(WriteWholeFile(path, "x", Readers::AsUsual, reason));
  EXPECT_EQ(reason, u"Přístup byl odepřen."_qs);
}

}  // namespace
}  // namespace talnik::test
