#include "shell/TextControls.h"
#include "timetools/MonthList.h"
#include "timetools/TimeWorld.h"

#include <QLabel>

#include <tuple>

namespace talnik::test {
namespace {

TEST(MonthList, WeekdaysAreFoundFromTheNextLineOnOverOneEdgeWithOneClick) {
  const std::tuple<int, QString, bool, const char*, const char*> searches[] = {
      {14, u"po"_qs, false, "22. pondělí", "leden 2024"},
      {14, u"po"_qs, true, "8. pondělí", "leden 2024"},
      {30, u"st"_qs, false, "7. středa", "únor 2024"},
      {30, u"čt"_qs, false, "1. čtvrtek", "únor 2024"},
      {0, u"ne"_qs, true, "31. neděle", "prosinec 2023"},
      {14, u"o"_qs, false, "20. sobota", "leden 2024"},
      {14, u"Po"_qs, false, "", "únor 2024"}};
  const CalendarNames names = CzechNames();
  for (const auto& [index, text, back, line, title] : searches) {
    ListBox list;
    QLabel label;
    Date current = At(2024, 1, 15);
    ShowMonth(&list, &label, current, names);
    list.SetListIndex(index);
    QStringList clicked;
    QObject::connect(&list, &ListBox::Click, &list, [&] { clicked << list.Text(); });
    EXPECT_EQ(FindWeekDay(&list, &label, text, back, current, names), *line != 0);
    EXPECT_EQ(clicked.join(u',').toStdString(), line);
    EXPECT_EQ(label.text().toStdString(), title);
  }
}

TEST(MonthList, LettersNameWeekdays) {
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

TEST(MonthList, TheLastTwoDigitsNameALine) {
  QString buffer;
  const std::pair<char16_t, std::optional<int>> typed[] = {{u'0', 0},  {u'3', 2},  {u'1', {}},
                                                           {u'5', 14}, {u'2', {}}, {u'9', 28}};
  for (const auto& [digit, line] : typed) EXPECT_EQ(LineOfDigits(buffer, digit, 29), line) << buffer.toStdString();
}

}  // namespace
}  // namespace talnik::test
