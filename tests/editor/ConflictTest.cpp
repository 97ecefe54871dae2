#include "editor/ConflictCheck.h"
#include "store/Statements.h"
#include "store/Template.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace talnik::test {
namespace {

ScheduleRecord Row(const char* start, const char* end, int status = StatusSingle) {
  ScheduleRecord row;
  row.apptime = CDate(QString::fromUtf8(start), Date());
  if (*end) row.appdur = CDate(QString::fromUtf8(end), Date());
  row.appointment = u" schůzka "_qs;
  row.status = status;
  return row;
}

std::vector<std::string> Told(const char* start, const char* end, const ScheduleRecord& row) {
  const auto proposed = ReadProposedTime(QString::fromUtf8(start), QString::fromUtf8(end), Date());
  std::vector<std::string> told;
  for (const QString& message : ConflictsWith(row, *proposed)) told.push_back(message.toStdString());
  return told;
}

TEST(Conflict, EachRowIsToldOnceTwiceOrNotAtAll) {
  const char* none = "0:00:00";
  const char* at = "15.1.2024 10:00";
  const char* to = "15.1.2024 11:00:00";
  const struct {
    const char* start;
    const char* end;
    ScheduleRecord row;
    std::size_t times;
  } cases[] = {
      // no end on the new record
      {at, none, Row(at, ""), 1},
      {at, none, Row("15.1.2024 10:01", ""), 0},
      {at, none, Row(at, at), 1},
      {at, none, Row("15.1.2024 9:00", at), 0},                // it ends as the other begins
      {"15.1.2024 9:59", none, Row("15.1.2024 9:00", at), 1},  // a minute before
      {at, none, Row("15.1.2024 9:00", "15.1.2024 11:00"), 1},
      {at, none, Row("15.1.2024 11:00", "15.1.2024 9:00"), 0},  // an end before the start spans nothing
      {"15.1.2024", none, Row("15.1.2024 8:00", "15.1.2024 9:00"), 0},
      {"15.1.2024", none, Row("14.1.2024 8:00", "16.1.2024 9:00"), 1},
      // an end on the new record
      {at, to, Row("15.1.2024 10:30", ""), 1},
      {at, to, Row("15.1.2024 11:00", ""), 1},
      {at, to, Row("15.1.2024 11:01", ""), 0},
      {at, to, Row("15.1.2024 9:00", at), 0},
      {at, to, Row("15.1.2024 9:00", "15.1.2024 10:01"), 1},
      {at, to, Row("15.1.2024 9:00", "15.1.2024 12:00"), 1},
      {at, to, Row(at, "15.1.2024 12:00"), 2},  // begins with it and spans it
      {at, to, Row(at, "15.1.2024 11:00"), 1},  // its last minute is 10:59
      {at, to, Row(at, "15.1.2024 11:01"), 2},
      // status
      {at, none, Row(at, at, StatusDeleted), 0},
      {at, none, Row(at, at, StatusRoot), 1},
  };
  int number = 0;
  for (const auto& row : cases) EXPECT_EQ(Told(row.start, row.end, row.row).size(), row.times) << "case " << number++;
}

TEST(Conflict, TheMessagesTellTheTimesAndTheTextAsTheyWereGiven) {
  const char* at = "15.1.2024 10:00";
  ScheduleRecord noEnd = Row(at, "");
  noEnd.appointment = u" %1 %2 %3 '\"* "_qs;
  EXPECT_EQ(Told(at, "0:00:00", noEnd).at(0), "Čas 15.1.2024 10:00 je již obsazen úkolem %1 %2 %3 '\"*");
  EXPECT_EQ(Told(at, "0:00:00", Row(at, "15.1.2024 11:00")).at(0), "Čas 15.1.2024 10:00 zasahuje do úkolu schůzka");
  EXPECT_EQ(Told("15.1.2024 9:00", " 15.1.2024 10:00:00 ", noEnd).at(0),
            "Čas 15.1.2024 9:00 až 15.1.2024 10:00:00 zasahuje do úkolu %1 %2 %3 '\"*");
}

/// The rows that are read are exactly those of a walk over the whole table.
TEST(Conflict, ReadingOnlyWhatIsNearFindsTheSameAsTheWholeTable) {
  QTemporaryDir folder;
  const QString path = folder.filePath(u"talnik.MDB"_qs);
  ASSERT_TRUE(CreateStore(path));
  Store store(path);
  std::mt19937 random(4);
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  const auto moment = [&](int spread) {
    return *DateAdd(DateUnit::Minute, below(spread) * 15, *Date::FromParts(2024, 1, 1));
  };
  const int durations[] = {0, 0, 1, 15, 60, 24 * 60, 24 * 60 + 1, 8 * 24 * 60, 70 * 24 * 60, 800 * 24 * 60, -60, -9000};
  store.InTransaction([&] {
    for (int i = 0; i < 800; ++i) {
      ScheduleRecord row;
      if (below(50) != 0) row.apptime = moment(400);
      if (below(6) != 0)
        row.appdur = DateAdd(DateUnit::Minute, durations[below(12)], row.apptime.value_or(moment(400)));
      if (below(10) != 0) row.status = below(10);
      row.appointment = QString::number(i);
      store.Insert(row);
    }
    return true;
  });
  int conflicts = 0;
  for (int i = 0; i < 150; ++i) {
    const Date start = moment(400);
    const QString end = below(3) == 0 ? NoEndText() : DateText(*DateAdd(DateUnit::Minute, below(300) - 60, start));
    const auto proposed = ReadProposedTime(DateText(start), end, Date());
    QStringList whole;
    store.ForEach(statements::AllByStart(), [&](const ScheduleRecord& row) {
      whole << ConflictsWith(row, *proposed);
      return true;
    });
    conflicts += static_cast<int>(whole.size());
    ASSERT_EQ(TimeConflicts(store, DateText(start), end, Date()), whole) << "for " << DateText(start).toStdString();
  }
  EXPECT_GT(conflicts, 500);
}

TEST(Conflict, AnUnreadableStoreOrATextThatIsNoDateTellsNothing) {
  QTemporaryDir folder;
  Store store(folder.filePath(u"missing"_qs));
  EXPECT_TRUE(TimeConflicts(store, u"15.1.2024"_qs, NoEndText(), Date()).isEmpty());
  EXPECT_FALSE(ReadProposedTime(u"zítra"_qs, NoEndText(), Date()));
  EXPECT_FALSE(ReadProposedTime(u"15.1.2024"_qs, u"večer"_qs, Date()));
}

}  // namespace
}  // namespace talnik::test
