#include "shell/TextControls.h"
#include "timetools/MonthList.h"
#include "timetools/TimeWorld.h"

#include <QLabel>

#include <tuple>

namespace talnik::test {
namespace {

class MonthListTest : public testing::Test {
 protected:
  void SetUp() override {
    QObject::connect(&list, &ListBox::Click, &list, [this] { clicked << list.Text(); });
  }
  /// The month of `date` on show, the line of this index selected, and nothing heard of it yet.
  void Show(const Date& date, int index) {
    current = date;
    ShowMonth(&list, &label, date, names);
    list.SetListIndex(index);
    clicked.clear();
  }
  bool Move(bool forward, bool byYear, bool keep) {
    return (forward ? NextMonth : PrevMonth)(&list, &label, byYear, keep, current, names);
  }
  std::string Title() const { return label.text().toStdString(); }

  const CalendarNames names = CzechNames();
  ListBox list;
  QLabel label;
  Date current;
  QStringList clicked;
};

TEST_F(MonthListTest, FillingSelectsTheLineOfTheDate) {
  FillMonthList(&list, &label, At(2024, 2, 29, 8, 30), names);
  EXPECT_EQ(Title(), "únor 2024");
  EXPECT_EQ(list.ListCount(), 29);
  EXPECT_EQ(clicked, QStringList{u"29. čtvrtek"_qs});
}

TEST_F(MonthListTest, MovesKeepTheIndexOrTheLastLineOrSelectNone) {
  const std::tuple<Date, int, bool, bool, bool, const char*, int, Date> moves[] = {
      {At(2024, 1, 31), 30, true, false, true, "únor 2024", 28, At(2024, 2, 29)},
      {At(2024, 2, 29), 28, true, true, true, "únor 2025", 27, At(2025, 2, 28)},
      {At(2024, 1, 5), 19, false, false, true, "prosinec 2023", 19, At(2023, 12, 5)},
      {At(2024, 3, 1), 0, false, false, false, "únor 2024", -1, At(2024, 2, 1)},
      {At(2024, 12, 31), 30, true, false, false, "leden 2025", -1, At(2025, 1, 31)},
      {At(2024, 3, 31), 30, false, true, true, "březen 2023", 30, At(2023, 3, 31)}};
  for (const auto& [from, index, forward, byYear, keep, title, newIndex, newDate] : moves) {
    Show(from, index);
    EXPECT_TRUE(Move(forward, byYear, keep));
    EXPECT_EQ(Title(), title);
    EXPECT_EQ(list.ListIndex(), newIndex);
    EXPECT_EQ(current, newDate);
    EXPECT_EQ(clicked.size(), keep ? 1 : 0);
  }
}

TEST_F(MonthListTest, TheEndOfAllDatesChangesNothing) {
  Show(At(9999, 12, 10), 9);
  EXPECT_FALSE(Move(true, false, true) || Move(true, true, false) || WeekJump(At(9999, 12, 31), true));
  EXPECT_EQ(list.Text().toStdString(), "10. pátek");
  Show(At(1, 1, 3), 2);
  EXPECT_FALSE(Move(false, false, false));
  EXPECT_EQ(list.ListIndex(), 2);
  EXPECT_EQ(current, At(1, 1, 3));
}

TEST_F(MonthListTest, WeekdaysAreFoundFromTheNextLineOnOverOneEdgeWithOneClick) {
  const std::tuple<int, QString, bool, const char*, const char*> searches[] = {
      {14, u"po"_qs, false, "22. pondělí", "leden 2024"}, {14, u"po"_qs, true, "8. pondělí", "leden 2024"},
      {30, u"st"_qs, false, "7. středa", "únor 2024"},    {30, u"čt"_qs, false, "1. čtvrtek", "únor 2024"},
      {0, u"ne"_qs, true, "31. neděle", "prosinec 2023"}, {14, u"o"_qs, false, "20. sobota", "leden 2024"}};
  for (const auto& [index, text, back, line, title] : searches) {
    Show(At(2024, 1, 15), index);
    EXPECT_TRUE(FindWeekDay(&list, &label, text, back, current, names));
    EXPECT_EQ(clicked.join(u',').toStdString(), line);
    EXPECT_EQ(Title(), title);
  }
  Show(At(2024, 1, 15), 14);
  EXPECT_FALSE(FindWeekDay(&list, &label, u"Po"_qs, false, current, names));
}

TEST_F(MonthListTest, LettersNameWeekdays) {
  const std::tuple<const char*, const char*, const char*> typed[] = {
      {"PO", "po", ""},  {"PA", "pá", ""}, {"SO", "so", ""}, {"ST", "st", "s"}, {"T", "t", ""}, {"O", "o", ""},
      {"PU", "út", "p"}, {"C", "čt", ""},  {"N", "ne", ""},  {"P", "", "p"},    {"X", "", ""}};
  for (const auto& [keys, text, prefixLeft] : typed) {
    QString prefix;
    std::optional<QString> found;
    for (const char* key = keys; *key; ++key) found = WeekDayOfLetter(prefix, *key);
    EXPECT_EQ(found.value_or(QString()).toStdString(), text);
    EXPECT_EQ(prefix.toStdString(), prefixLeft);
  }
}

TEST_F(MonthListTest, TheLastTwoDigitsNameALine) {
  QString buffer;
  const std::pair<char16_t, std::optional<int>> typed[] = {{u'0', 0},  {u'3', 2},  {u'1', {}},
                                                           {u'5', 14}, {u'2', {}}, {u'9', 28}};
  for (const auto& [digit, line] : typed) EXPECT_EQ(LineOfDigits(buffer, digit, 29), line) << buffer.toStdString();
}

}  // namespace
}  // namespace talnik::test
