#include "dates/CzechNumbers.h"
#include "dates/Easter.h"
#include "dates/MonthLines.h"
#include "dates/UtcStamp.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

const Date kToday = *Date::FromParts(2024, 6, 15);

TEST(EasterDate, IsTheMondayOfTheRule) {
  const std::pair<const char*, const char*> cases[] = {
      {"2009", "13.4.2009"}, {"2008", "24.3.2008"}, {"2024", "1.4.2024"},    {"1954", "19.4.1954"},
      {"1981", "20.4.1981"}, {"2038", "26.4.2038"}, {" 2025 ", "21.4.2025"}, {"2016", "28.3.2016"}};
  for (const auto& [year, expected] : cases) {
    EXPECT_EQ(DateText(EasterDate(QString::fromLatin1(year))).toStdString(), expected) << year;
  }
  for (const char* year : {"", "letos", "2024x", "0", "-5", "10000", "99999999999"}) {
    EXPECT_EQ(EasterDate(QString::fromLatin1(year)), Date()) << year;
  }
}

TEST(MonthLines, AreTheDaysOfTheMonthInTheLocale) {
  const CalendarNames names = LocaleCalendarNames(QLocale(QLocale::Czech, QLocale::CzechRepublic));
  EXPECT_EQ(names.day[1], u"neděle"_qs);
  EXPECT_EQ(names.day[7], u"sobota"_qs);
  const Date february = *Date::FromParts(2024, 2, 17, 13, 0);
  EXPECT_EQ(MonthTitle(february, names), u"únor 2024"_qs);
  const QStringList lines = MonthLines(february, names);
  ASSERT_EQ(lines.size(), 29);
  EXPECT_EQ(lines.front(), u"1. čtvrtek"_qs);
  EXPECT_EQ(lines.back(), u"29. čtvrtek"_qs);
  EXPECT_EQ(MonthLines(*Date::FromParts(9999, 12, 31), names).size(), 31);
  EXPECT_EQ(MonthTitle(*Date::FromParts(24, 1, 1), names), u"leden 0024"_qs);
}

TEST(CzechNumbers, DeclineByCountAndDirection) {
  struct Case {
    QString (*word)(qint64, bool);
    qint64 n;
    const char* ahead;
    const char* past;
  };
  const Case cases[] = {{YearsWord, 1, "1 rok ", "1 rokem "},
                        {YearsWord, 4, "4 roky ", "4 roky "},
                        {YearsWord, 5, "5 roků ", "5 roky "},
                        {DaysWord, 1, "1 den ", "1 dnem "},
                        {DaysWord, 2, "2 dny ", "2 dny "},
                        {DaysWord, 0, "0 dnů ", "0 dny "},
                        {HoursWord, 1, "1 hodinu ", "1 hodinou "},
                        {HoursWord, 3, "3 hodiny ", "3 hodinami "},
                        {HoursWord, 21, "21 hodin ", "21 hodinami "},
                        {MinutesWord, 1, "1 minutu ", "1 minutou "},
                        {MinutesWord, 4, "4 minuty ", "4 minutami "},
                        {MinutesWord, 59, "59 minut ", "59 minutami "}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.word(c.n, false).toStdString(), c.ahead);
    EXPECT_EQ(c.word(c.n, true).toStdString(), c.past);
  }
}

TEST(UtcStamp, MovesTheHourAlone) {
  const ZoneBiases winter{-60, 0, -60, false};
  const ZoneBiases summer{-60, 0, -60, true};
  const ZoneBiases newYork{300, 0, -60, false};
  const ZoneBiases india{-330, 0, 0, false};
  const ZoneBiases newfoundland{210, 0, -60, true};
  struct Case {
    const char* local;
    ZoneBiases biases;
    const char* stamp;
    const char* back;
  };
  const Case cases[] = {
      {"5.1.2024", winter, "20240105", "05.01.2024"},
      {"5.1.2024 8:30:09", winter, "20240105T073009Z", "08:30:09 05.01.2024"},
      {"1.7.2024 0:30:00", summer, "20240701T-23000Z", "00:30:00 01.07.2024"},
      {"5.1.2024 23:00", newYork, "20240105T280000Z", "23:00:00 05.01.2024"},
      // Halves go to the even hour in both directions, so such a zone does not always come back.
      {"5.1.2024 8:00", india, "20240105T020000Z", "08:00:00 05.01.2024"},
      {"5.1.2024 9:00", india, "20240105T040000Z", "10:00:00 05.01.2024"},
      {"5.1.2024 9:00", newfoundland, "20240105T110000Z", "09:00:00 05.01.2024"},
  };
  for (const Case& c : cases) {
    const QString stamp = ToUtcStamp(QString::fromLatin1(c.local), c.biases, kToday);
    EXPECT_EQ(stamp.toStdString(), c.stamp) << c.local;
    EXPECT_EQ(FromUtcStamp(stamp, c.biases).toStdString(), c.back) << c.local;
  }
  EXPECT_EQ(ToUtcStamp(u"zítra"_qs, winter, kToday), QString());
  EXPECT_EQ(FromUtcStamp(u"20240105Txx3009Z"_qs, winter), QString());
}

}  // namespace
}  // namespace talnik::test
