#include "shell/TextControls.h"
#include "timetools/MonthList.h"
#include "timetools/TimeWorld.h"

#include <QLabel>

namespace talnik::test {
namespace {

class MonthListTest : public testing::Test {
 protected:
  /// The month of `date` on show, the line of this index selected, and nothing heard of it yet.
  void Show(const Date& date, int index) {
    current = date;
    ShowMonth(&list, &label, date, names);
    list.SetListIndex(index);
    clicked.clear();
  }
  bool Next(bool byYear, bool keep) { return NextMonth(&list, &label, byYear, keep, current, names); }
  bool Prev(bool byYear, bool keep) { return PrevMonth(&list, &label, byYear, keep, current, names); }
  std::string Title() const { return label.text().toStdString(); }

  const CalendarNames names = CzechNames();
  ListBox list;
  QLabel label;
  Date current;
  QStringList clicked;

  void SetUp() override {
    QObject::connect(&list, &ListBox::Click, &list, [this] { clicked << list.Text(); });
  }
};

TEST_F(MonthListTest, FillingSelectsTheLineOfTheDate) {
  FillMonthList(&list, &label, At(2024, 2, 29, 8, 30), names);
  EXPECT_EQ(Title(), "únor 2024");
  EXPECT_EQ(list.ListCount(), 29);
  EXPECT_EQ(list.Text().toStdString(), "29. čtvrtek");
  EXPECT_EQ(clicked, QStringList{u"29. čtvrtek"_qs});
}

TEST_F(MonthListTest, MovesKeepTheIndexOrTheLastLineOrSelectNone) {
  struct Case {
    Date from;
    int index;
    bool forward, byYear, keep;
    const char* title;
    int expectedIndex;
    Date expectedDate;
  };
  for (const Case& test : {Case{At(2024, 1, 31), 30, true, false, true, "únor 2024", 28, At(2024, 2, 29)},
                           Case{At(2024, 2, 29), 28, true, true, true, "únor 2025", 27, At(2025, 2, 28)},
                           Case{At(2024, 1, 5), 19, false, false, true, "prosinec 2023", 19, At(2023, 12, 5)},
                           Case{At(2024, 3, 1), 0, false, false, false, "únor 2024", -1, At(2024, 2, 1)},
                           Case{At(2024, 12, 31), 30, true, false, false, "leden 2025", -1, At(2025, 1, 31)},
                           Case{At(2024, 3, 31), 30, false, true, true, "březen 2023", 30, At(2023, 3, 31)}}) {
    Show(test.from, test.index);
    EXPECT_TRUE(test.forward ? Next(test.byYear, test.keep) : Prev(test.byYear, test.keep));
    EXPECT_EQ(Title(), test.title);
    EXPECT_EQ(list.ListIndex(), test.expectedIndex);
    EXPECT_EQ(current, test.expectedDate);
    EXPECT_EQ(clicked.size(), test.keep ? 1 : 0);
  }
}

TEST_F(MonthListTest, TheEndOfAllDatesChangesNothing) {
  Show(At(9999, 12, 10), 9);
  EXPECT_FALSE(Next(false, true));
  EXPECT_FALSE(Next(true, false));
  EXPECT_FALSE(WeekJump(At(9999, 12, 31), true));
  EXPECT_EQ(list.Text().toStdString(), "10. pátek");
  Show(At(1, 1, 3), 2);
  EXPECT_FALSE(Prev(false, false));
  EXPECT_EQ(list.ListIndex(), 2);
  EXPECT_EQ(current, At(1, 1, 3));
}

TEST_F(MonthListTest, WeekdaysAreFoundFromTheNextLineOnOverOneEdgeWithOneClick) {
  struct Case {
    int index;
    QString text;
    bool back;
    const char* line;
    const char* title;
  };
  for (const Case& test :
       {Case{14, u"po"_qs, false, "22. pondělí", "leden 2024"}, Case{14, u"po"_qs, true, "8. pondělí", "leden 2024"},
        Case{30, u"st"_qs, false, "7. středa", "únor 2024"}, Case{30, u"čt"_qs, false, "1. čtvrtek", "únor 2024"},
        Case{0, u"ne"_qs, true, "31. neděle", "prosinec 2023"}, Case{14, u"o"_qs, false, "20. sobota", "leden 2024"}}) {
    Show(At(2024, 1, 15), test.index);
    EXPECT_TRUE(FindWeekDay(&list, &label, test.text, test.back, current, names));
    EXPECT_EQ(clicked.join(u','), QString::fromUtf8(test.line));
    EXPECT_EQ(Title(), test.title);
  }
  Show(At(2024, 1, 15), 14);
  EXPECT_FALSE(FindWeekDay(&list, &label, u"Po"_qs, false, current, names));
}

TEST_F(MonthListTest, LettersNameWeekdays) {
  const struct {
    QList<int> keys;
    const char* text;
    const char* prefixLeft;
  } cases[] = {{{Qt::Key_P, Qt::Key_O}, "po", ""},
               {{Qt::Key_P, Qt::Key_A}, "pá", ""},
               {{Qt::Key_S, Qt::Key_O}, "so", ""},
               {{Qt::Key_S, Qt::Key_T}, "st", "s"},
               {{Qt::Key_T}, "t", ""},
               {{Qt::Key_O}, "o", ""},
               {{Qt::Key_P, Qt::Key_U}, "út", "p"},
               {{Qt::Key_C}, "čt", ""},
               {{Qt::Key_N}, "ne", ""},
               {{Qt::Key_P}, "", "p"},
               {{Qt::Key_X}, "", ""}};
  for (const auto& test : cases) {
    QString prefix;
    std::optional<QString> text;
    for (const int key : test.keys) text = WeekDayOfLetter(prefix, key);
    EXPECT_EQ(text.value_or(QString()).toStdString(), test.text);
    EXPECT_EQ(prefix.toStdString(), test.prefixLeft);
  }
}

TEST_F(MonthListTest, TheLastTwoDigitsNameALine) {
  QString buffer;
  const struct {
    char16_t digit;
    std::optional<int> line;
  } typed[] = {{u'0', 0}, {u'3', 2}, {u'1', {}}, {u'5', 14}, {u'2', {}}, {u'9', 28}};
  for (const auto& [digit, line] : typed) EXPECT_EQ(LineOfDigits(buffer, digit, 29), line) << buffer.toStdString();
}

}  // namespace
}  // namespace talnik::test
