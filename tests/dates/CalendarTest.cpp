#include "dates/CzechNumbers.h"
#include "dates/Easter.h"
#include "dates/LeadingNumber.h"
#include "dates/MonthLines.h"
#include "dates/UtcStamp.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

TEST(EasterDate, IsTheMondayOfTheRule) {
  const std::pair<const char*, const char*> cases[] = {
      {"2009", "13.4.2009"}, {"2008", "24.3.2008"}, {"2024", "1.4.2024"},      {"1954", "19.4.1954"},
      {"1981", "20.4.1981"}, {"2038", "26.4.2038"}, {" 2025 ", "21.4.2025"},   {"2016", "28.3.2016"},
      {"", "0:00:00"},       {"letos", "0:00:00"},  {"2024x", "0:00:00"},      {"0", "0:00:00"},
      {"10000", "0:00:00"},  {"-5", "0:00:00"},     {"99999999999", "0:00:00"}};
  for (const auto& [year, expected] : cases) {
    EXPECT_EQ(DateText(EasterDate(QString::fromLatin1(year))).toStdString(), expected) << year;
  }
}

TEST(LeadingNumber, EndsAtTheFirstOtherCharacter) {
  const std::tuple<const char*, int, int> cases[] = {
      {"", 0, 0},        {"x", 0, 0},        {"5", 5, 5},      {"12x", 12, 12}, {"-3", 0, -3},
      {"+4", 0, 4},      {"2,9", 2, 2},      {"--1", 0, 0},    {"٣", 0, 0},     {"199", 199, 199},
      {"200", 199, 199}, {"2000", 199, 199}, {"-999", 0, -199}};
  for (const auto& [text, digits, number] : cases) {
    EXPECT_EQ(LeadingDigits(QString::fromUtf8(text), 199), digits) << text;
    EXPECT_EQ(LeadingNumber(QString::fromUtf8(text), 199), number) << text;
  }
}

TEST(MonthLines, AreTheDaysOfTheMonthInTheLocale) {
  const CalendarNames names = LocaleCalendarNames(QLocale(QLocale::Czech, QLocale::CzechRepublic));
  const Date february = *Date::FromParts(2024, 2, 17, 13, 0);
  EXPECT_EQ(MonthTitle(february, names), u"únor 2024"_qs);
  const QStringList lines = MonthLines(february, names);
  ASSERT_EQ(lines.size(), 29);
  EXPECT_EQ(lines.mid(2, 2).join(u'|'), u"3. sobota|4. neděle"_qs);
  EXPECT_EQ(lines.back(), u"29. čtvrtek"_qs);
  EXPECT_EQ(MonthLines(*Date::FromParts(9999, 12, 31), names).size(), 31);
  EXPECT_EQ(MonthTitle(*Date::FromParts(24, 1, 1), names), u"leden 0024"_qs);
}

TEST(CzechNumbers, DeclineByCountAndDirection) {
  const struct {
    QString (*word)(qint64, bool);
    const char* ahead;  // of 0, 1, 2, 4, 5 and 21
    const char* past;
  } cases[] = {
      {YearsWord, "0 roků 1 rok 2 roky 4 roky 5 roků 21 roků ", "0 roky 1 rokem 2 roky 4 roky 5 roky 21 roky "},
      {DaysWord, "0 dnů 1 den 2 dny 4 dny 5 dnů 21 dnů ", "0 dny 1 dnem 2 dny 4 dny 5 dny 21 dny "},
      {HoursWord, "0 hodin 1 hodinu 2 hodiny 4 hodiny 5 hodin 21 hodin ",
       "0 hodinami 1 hodinou 2 hodinami 4 hodinami 5 hodinami 21 hodinami "},
      {MinutesWord, "0 minut 1 minutu 2 minuty 4 minuty 5 minut 21 minut ",
       "0 minutami 1 minutou 2 minutami 4 minutami 5 minutami 21 minutami "}};
  for (const auto& c : cases) {
    QString ahead, past;
    for (const qint64 n : {0, 1, 2, 4, 5, 21}) {
      ahead += c.word(n, false);
      past += c.word(n, true);
    }
    EXPECT_EQ(ahead.toStdString(), c.ahead);
    EXPECT_EQ(past.toStdString(), c.past);
  }
}

TEST(UtcStamp, MovesTheHourAlone) {
  const ZoneBiases winter{-60, 0, -60, false};
  const ZoneBiases summer{-60, 0, -60, true};
  const ZoneBiases newYork{300, 0, -60, false};
  const ZoneBiases india{-330, 0, 0, false};
  const ZoneBiases newfoundland{210, 0, -60, true};
  const struct {
    const char* local;
    ZoneBiases biases;
    const char* stamp;
    const char* back;
  } cases[] = {
      {"5.1.2024", winter, "20240105", "05.01.2024"},
      {"5.1.2024 8:30:09", winter, "20240105T073009Z", "08:30:09 05.01.2024"},
      {"1.7.2024 0:30:00", summer, "20240701T-23000Z", "00:30:00 01.07.2024"},
      {"5.1.2024 23:00", newYork, "20240105T280000Z", "23:00:00 05.01.2024"},
      // Halves go to the even hour in both directions, so such a zone does not always come back.
      {"5.1.2024 8:00", india, "20240105T020000Z", "08:00:00 05.01.2024"},
      {"5.1.2024 9:00", india, "20240105T040000Z", "10:00:00 05.01.2024"},
      {"5.1.2024 9:00", newfoundland, "20240105T110000Z", "09:00:00 05.01.2024"},
  };
  for (const auto& c : cases) {
    const QString stamp = ToUtcStamp(QString::fromLatin1(c.local), c.biases, Date());
    EXPECT_EQ(stamp.toStdString(), c.stamp) << c.local;
    EXPECT_EQ(FromUtcStamp(stamp, c.biases).toStdString(), c.back) << c.local;
  }
  EXPECT_EQ(ToUtcStamp(u"zítra"_qs, winter, Date()), QString());
  EXPECT_EQ(FromUtcStamp(u"20240105Txx3009Z"_qs, winter), QString());
}

}  // namespace
}  // namespace talnik::test
