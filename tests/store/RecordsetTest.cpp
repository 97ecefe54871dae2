#include "store/StoreFile.h"

#include <QFile>

namespace talnik::test {
namespace {

class RecordsetTest : public StoreFile {
 protected:
  RecordsetTest() {
    for (const auto* text : {"a", "b", "c", "d"}) {
      store.Insert(Row(QString::fromLatin1(text), u"%1.1.2024 8:00"_qs.arg(++day_)));
    }
  }
  void DeleteElsewhere(const char* text) {
    store.Execute({u"DELETE FROM schedule WHERE appointment=?"_qs, {QString::fromLatin1(text)}});
  }
  void ChangeElsewhere(const char* text, const char* to) {
    store.Execute({u"UPDATE schedule SET appointment=? WHERE appointment=?"_qs,
                   {QString::fromLatin1(to), QString::fromLatin1(text)}});
  }
  /// Position, count and text: "1/4 b".
  static std::string Place(const Recordset& rows) {
    return std::to_string(rows.AbsolutePosition()) + '/' + std::to_string(rows.RecordCount()) + ' ' +
           rows.Row().appointment.toStdString();
  }
  int day_ = 0;
};

TEST_F(RecordsetTest, MovesFromEndToEnd) {
  auto rows = Browse();
  EXPECT_EQ(Place(*rows), "0/4 a");
  rows->MovePrevious();
  EXPECT_TRUE(rows->Bof());
  EXPECT_EQ(Place(*rows), "-1/4 ");
  rows->MovePrevious();
  rows->MoveNext();
  EXPECT_EQ(Place(*rows), "0/4 a");
  rows->MoveLast();
  EXPECT_FALSE(rows->Eof());
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_FALSE(rows->Bof());
  rows->MoveNext();
  rows->MovePrevious();
  EXPECT_EQ(Place(*rows), "3/4 d");
}

TEST_F(RecordsetTest, ADeletedRowStaysUntilTheNextMove) {
  auto rows = Browse();
  rows->MoveNext();
  ASSERT_TRUE(rows->Delete());
  EXPECT_EQ(Place(*rows), "1/3 b");
  EXPECT_FALSE(rows->Eof());
  EXPECT_FALSE(rows->Update(rows->Row()));
  EXPECT_FALSE(rows->Delete());
  rows->MoveNext();
  EXPECT_EQ(Place(*rows), "1/3 c");
  rows->MovePrevious();
  EXPECT_EQ(Place(*rows), "0/3 a");
  for (; !rows->Eof(); rows->MoveNext()) EXPECT_TRUE(rows->Delete());
  EXPECT_TRUE(rows->Bof());
  EXPECT_EQ(rows->RecordCount() + Count(), 0);
}

TEST_F(RecordsetTest, SeesOtherWritesAtTheNextMove) {
  auto rows = Browse();
  DeleteElsewhere("b");
  ChangeElsewhere("c", "C");
  ChangeElsewhere("a", "A");
  EXPECT_EQ(Place(*rows), "0/4 a");
  rows->MoveNext();
  EXPECT_EQ(Place(*rows), "1/3 C");
  rows->MoveFirst();
  EXPECT_EQ(Place(*rows), "0/3 A");
  DeleteElsewhere("d");
  rows->MoveLast();
  EXPECT_EQ(Place(*rows), "1/2 C");
}

TEST_F(RecordsetTest, KeepsItsRowsAndTheirOrder) {
  auto rows = Browse();
  store.Insert(Row(u"new"_qs, u"1.1.2024 7:00"_qs));
  ScheduleRecord moved = rows->Row();
  moved.apptime = At(u"9.1.2024"_qs);
  ASSERT_TRUE(rows->Update(moved));
  rows->MoveNext();
  rows->MovePrevious();
  EXPECT_EQ(Place(*rows), "0/4 a");
  ASSERT_TRUE(rows->AddNew(Row(u"mine"_qs, u"1.1.2024 7:00"_qs)));
  EXPECT_EQ(Place(*rows), "0/5 a");
  rows->MoveLast();
  EXPECT_EQ(Place(*rows), "4/5 mine");
}

TEST_F(RecordsetTest, NeverTakesANewRowForADeletedOne) {
  auto rows = Browse();
  DeleteElsewhere("d");
  store.Insert(Row(u"new"_qs, u"4.1.2024 8:00"_qs));
  store.Close();
  store.Insert(Row(u"newer"_qs, u"4.1.2024 8:00"_qs));
  rows->MoveLast();
  EXPECT_EQ(Place(*rows), "2/3 c");
}

TEST_F(RecordsetTest, AnUpdateLeavesAloneWhatItDidNotChange) {
  auto rows = Browse();
  store.Execute({u"UPDATE schedule SET alarmfired=1,guid='g' WHERE appointment='a'"_qs, {}});
  ScheduleRecord changed = rows->Row();
  changed.appointment = QString(300, u'x');
  ASSERT_TRUE(rows->Update(changed));
  EXPECT_EQ(rows->Row().appointment.size(), 255);
  EXPECT_TRUE(rows->Row().alarmfired);
  EXPECT_EQ(rows->Row().guid, u"g"_qs);
}

TEST_F(RecordsetTest, AnUpdateOfARowThatIsGoneIsTold) {
  QStringList told;
  store.WriteFailed = [&told](const QString& what) { told << what; };
  auto rows = Browse();
  DeleteElsewhere("a");
  EXPECT_FALSE(rows->Update(rows->Row())) << "unchanged";
  ScheduleRecord changed = rows->Row();
  changed.appointment = u"x"_qs;
  EXPECT_FALSE(rows->Update(changed));
  EXPECT_EQ(told, QStringList(u"Data se nepodařilo uložit, záznam mezitím zanikl."_qs));
}

TEST_F(RecordsetTest, FindsTheFirstThatFits) {
  auto rows = Browse();
  rows->MoveLast();
  const auto is = [](const char* text) {
    return [text](const ScheduleRecord& row) { return row.appointment == QLatin1String(text); };
  };
  EXPECT_FALSE(rows->FindFirst(is("x")));
  EXPECT_EQ(Place(*rows), "3/4 d");
  EXPECT_TRUE(rows->FindFirst(is("b")));
  EXPECT_EQ(Place(*rows), "1/4 b");
}

TEST_F(RecordsetTest, AMissingOrForeignFileEndsEveryWalkAndKeepsTheRow) {
  auto rows = Browse();
  rows->MoveNext();
  QFile::rename(path, folder.filePath(u"away"_qs));
  for (const bool another : {false, true}) {
    if (another) {
      CreateStore(path);
      store.Insert(Row(u"other"_qs, u"1.1.2024"_qs));
    }
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof() && rows->Bof());
    EXPECT_EQ(Place(*rows), "1/4 b");
    ScheduleRecord changed = rows->Row();
    changed.appointment = u"x"_qs;
    EXPECT_FALSE(rows->Update(changed));
    EXPECT_FALSE(rows->Delete());
  }
  EXPECT_EQ(Found(statements::All()), "other");
}

}  // namespace
}  // namespace talnik::test
