#include "store/StoreFile.h"

#include <QFile>

namespace talnik::test {
namespace {

class RecordsetTest : public StoreFile {
 protected:
  RecordsetTest() {
    int day = 0;
    for (const char* text : {"a", "b", "c", "d"})
      store.Insert(Row(QString::fromLatin1(text), u"%1.1.2024 8:00"_qs.arg(++day)));
    rows = Browse();
  }
  void Elsewhere(const QString& sql) { EXPECT_TRUE(store.Execute({sql, {}})); }
  bool Change(const QString& text) {
    ScheduleRecord changed = rows->Row();
    changed.appointment = text;
    return rows->Update(changed);
  }
  /// Position, count and text: "1/4b", and where it stands outside of the rows.
  std::string Place() const {
    return std::to_string(rows->AbsolutePosition()) + '/' + std::to_string(rows->RecordCount()) +
           rows->Row().appointment.toStdString() + (rows->Bof() ? " bof" : "") + (rows->Eof() ? " eof" : "");
  }
  /// The places after each of the moves "<" previous, ">" next, "[" first and "]" last.
  std::string Walk(const char* moves) {
    std::string places;
    for (; *moves; ++moves) {
      if (*moves == '<') rows->MovePrevious();
      if (*moves == '>') rows->MoveNext();
      if (*moves == '[') rows->MoveFirst();
      if (*moves == ']') rows->MoveLast();
      places += (places.empty() ? "" : ", ") + Place();
    }
    return places;
  }
  std::unique_ptr<Recordset> rows;
};

TEST_F(RecordsetTest, MovesFromEndToEnd) {
  EXPECT_EQ(Place(), "0/4a");
  EXPECT_EQ(Walk("<<>"), "-1/4 bof, -1/4 bof, 0/4a");
  EXPECT_EQ(Walk("]>><["), "3/4d, -1/4 eof, -1/4 eof, 3/4d, 0/4a");
}

TEST_F(RecordsetTest, ADeletedRowStaysUntilTheNextMove) {
  rows->MoveNext();
  ASSERT_TRUE(rows->Delete());
  EXPECT_EQ(Place(), "1/3b");
  EXPECT_FALSE(rows->Update(rows->Row()) || rows->Delete());
  EXPECT_EQ(Walk("><"), "1/3c, 0/3a");
  for (; !rows->Eof(); rows->MoveNext()) EXPECT_TRUE(rows->Delete());
  EXPECT_EQ(Place(), "-1/0 bof eof");
  EXPECT_EQ(Count(), 0);
}

TEST_F(RecordsetTest, SeesOtherWritesAtTheNextMoveAndKeepsItsRowsAndTheirOrder) {
  Elsewhere(u"DELETE FROM schedule WHERE appointment='b'"_qs);
  Elsewhere(u"UPDATE schedule SET appointment=upper(appointment)"_qs);
  store.Insert(Row(u"new"_qs, u"1.1.2024 7:00"_qs));
  EXPECT_EQ(Place(), "0/4a");
  EXPECT_EQ(Walk(">["), "1/3C, 0/3A");
  ScheduleRecord moved = rows->Row();
  moved.apptime = At(u"9.1.2024"_qs);
  ASSERT_TRUE(rows->Update(moved));
  EXPECT_EQ(Walk("><"), "1/3C, 0/3A");
  ASSERT_TRUE(rows->AddNew(Row(u"mine"_qs, u"1.1.2024 7:00"_qs)));
  EXPECT_EQ(Place(), "0/4A");
  EXPECT_EQ(Walk("]"), "3/4mine");
}

TEST_F(RecordsetTest, NeverTakesANewRowForADeletedOne) {
  Elsewhere(u"DELETE FROM schedule WHERE appointment='d'"_qs);
  store.Insert(Row(u"new"_qs, u"4.1.2024 8:00"_qs));
  store.Close();
  store.Insert(Row(u"newer"_qs, u"4.1.2024 8:00"_qs));
  EXPECT_EQ(Walk("]"), "2/3c");
}

TEST_F(RecordsetTest, AnUpdateLeavesAloneWhatItDidNotChange) {
  Elsewhere(u"UPDATE schedule SET alarmfired=1,guid='g'"_qs);
  ASSERT_TRUE(Change(QString(300, u'x')));
  EXPECT_EQ(rows->Row().appointment.size(), 255);
  EXPECT_TRUE(rows->Row().alarmfired);
  EXPECT_EQ(rows->Row().guid, u"g"_qs);
}

TEST_F(RecordsetTest, AnUpdateOfARowThatIsGoneIsTold) {
  Elsewhere(u"DELETE FROM schedule WHERE appointment='a'"_qs);
  EXPECT_FALSE(rows->Update(rows->Row())) << "unchanged";
  EXPECT_FALSE(Change(u"x"_qs));
  EXPECT_EQ(told, QStringList(u"Data se nepodařilo uložit, záznam mezitím zanikl."_qs));
}

TEST_F(RecordsetTest, FindsTheFirstThatFits) {
  const auto find = [this](const QString& text) {
    return rows->FindFirst([&text](const ScheduleRecord& row) { return row.appointment == text; });
  };
  rows->MoveLast();
  EXPECT_FALSE(find(u"x"_qs));
  EXPECT_EQ(Place(), "3/4d");
  EXPECT_TRUE(find(u"b"_qs));
  EXPECT_EQ(Place(), "1/4b");
}

TEST_F(RecordsetTest, AMissingOrForeignFileEndsEveryWalkAndKeepsTheRow) {
  rows->MoveNext();
  QFile::rename(path, folder.filePath(u"away"_qs));
  for (const bool another : {false, true}) {
    if (another) CreateStore(path);
    if (another) store.Insert(Row(u"other"_qs, u"1.1.2024"_qs));
    EXPECT_EQ(Walk(">"), "1/4b bof eof");
    EXPECT_FALSE(Change(u"x"_qs) || rows->Delete());
  }
  EXPECT_EQ(Found(statements::All()), "other");
}

}  // namespace
}  // namespace talnik::test
