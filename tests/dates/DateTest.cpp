#include "dates/Date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace talnik::test {
namespace {

const Date kToday = *Date::FromParts(2024, 6, 15, 9, 30);

std::string Text(const Date& date) {
  return DateText(date).toStdString();
}

TEST(Date, PartsAndSerialAgreeOnBothSidesOfDayZero) {
  struct Case {
    int year, month, day, hour, minute, second;
    double serial;
    int weekday, dayOfYear, week;
  };
  const Case cases[] = {
      {1899, 12, 30, 0, 0, 0, 0.0, 7, 364, 52},
      {1899, 12, 29, 18, 0, 0, -0.25, 6, 363, 52},
      {1900, 1, 1, 12, 0, 0, 2.5, 2, 1, 1},
      {2024, 2, 29, 6, 0, 0, 45351.25, 5, 60, 9},
      {2023, 1, 1, 0, 0, 0, 44927.0, 1, 1, 1},
      {2022, 12, 31, 0, 0, 0, 44926.0, 7, 365, 53},
      {2000, 12, 31, 23, 59, 59, 36891.999988425927, 1, 366, 54},
      {1, 1, 1, 0, 0, 0, -693593.0, 2, 1, 1},
  };
  for (const Case& c : cases) {
    const auto date = Date::FromParts(c.year, c.month, c.day, c.hour, c.minute, c.second);
    ASSERT_TRUE(date) << c.year;
    EXPECT_NEAR(date->Serial(), c.serial, 1e-9) << c.year;
    EXPECT_EQ(Date::FromSerial(c.serial), date) << c.year;
    EXPECT_EQ(date->WeekdayNumber(), c.weekday) << c.year;
    EXPECT_EQ(date->DayOfYear(), c.dayOfYear) << c.year;
    EXPECT_EQ(date->WeekOfYear(), c.week) << c.year;
    EXPECT_EQ(Date::FromParts(date->Year(), date->Month(), date->Day(), date->Hour(), date->Minute(), date->Second()),
              date);
    EXPECT_EQ(date->HasTime(), c.hour + c.minute + c.second > 0);
    EXPECT_EQ(date->DateValue(), Date::FromParts(c.year, c.month, c.day));
    EXPECT_EQ(Date::FromQDateTime(date->ToQDateTime()), date);
  }
}

TEST(Date, NothingLiesOutsideTheRange) {
  EXPECT_FALSE(Date::FromParts(0, 12, 31));
  EXPECT_FALSE(Date::FromParts(10000, 1, 1));
  EXPECT_FALSE(Date::FromParts(2023, 2, 29));
  EXPECT_FALSE(Date::FromParts(2024, 13, 1));
  EXPECT_FALSE(Date::FromParts(2024, 1, 1, 24));
  EXPECT_FALSE(Date::FromSerial(std::nan("")));
  EXPECT_FALSE(Date::FromSerial(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(Date::FromSerial(-693594.0));
  EXPECT_FALSE(Date::FromSerial(1e300));
  EXPECT_EQ(Date::FromQDateTime(QDateTime()), Date());
}

TEST(Date, AddMovesAndFallsBackToTheEndOfTheMonth) {
  struct Case {
    DateUnit unit;
    std::int64_t amount;
    const char* from;
    const char* to;
  };
  const Case cases[] = {
      {DateUnit::Month, 1, "31.1.2024", "29.2.2024"},
      {DateUnit::Month, -1, "31.3.2023 8:15:00", "28.2.2023 8:15:00"},
      {DateUnit::Month, -25, "15.1.2024", "15.12.2021"},
      {DateUnit::Year, 1, "29.2.2024", "28.2.2025"},
      {DateUnit::Year, -4, "29.2.2024", "29.2.2020"},
      {DateUnit::Week, 1, "28.12.2023", "4.1.2024"},
      {DateUnit::Day, -1, "1.3.2024", "29.2.2024"},
      {DateUnit::Hour, 25, "31.12.2023 23:00:00", "2.1.2024"},
      {DateUnit::Minute, -5, "1.1.2024", "31.12.2023 23:55:00"},
      {DateUnit::Second, 1, "29.12.1899 23:59:59", "0:00:00"},
      {DateUnit::Year, 1, "1.1.9999", nullptr},
      {DateUnit::Month, -1, "31.1.1", nullptr},
      {DateUnit::Day, 1, "31.12.9999", nullptr},
      {DateUnit::Week, std::numeric_limits<std::int64_t>::max(), "1.1.2024", nullptr},
      {DateUnit::Year, std::numeric_limits<std::int64_t>::min(), "1.1.2024", nullptr},
  };
  for (const Case& c : cases) {
    const auto moved = DateAdd(c.unit, c.amount, *CDate(QString::fromLatin1(c.from), kToday));
    EXPECT_EQ(moved ? Text(*moved) : "none", c.to ? c.to : "none") << c.from;
  }
}

TEST(DateText, WritesWithoutLeadingZerosAndWithoutMidnight) {
  EXPECT_EQ(Text(*Date::FromParts(2009, 1, 5)), "5.1.2009");
  EXPECT_EQ(Text(*Date::FromParts(2009, 1, 5, 8, 5)), "5.1.2009 8:05:00");
  EXPECT_EQ(Text(*Date::FromParts(24, 12, 31, 23, 59, 59)), "31.12.24 23:59:59");
  EXPECT_EQ(Text(*Date::FromParts(1899, 12, 30, 0, 5)), "0:05:00");
  EXPECT_EQ(Text(Date()), "0:00:00");
  EXPECT_EQ(DayText(*Date::FromParts(1899, 12, 30, 0, 5)), u"30.12.1899"_qs);
  EXPECT_EQ(TimeText(*Date::FromParts(2009, 1, 5)), u"0:00:00"_qs);
}

TEST(CDate, ReadsEveryFormOfTheSystem) {
  const std::pair<const char*, const char*> cases[] = {
      {"5.1.2024", "5.1.2024"},
      {"05.01.2024", "5.1.2024"},
      {" 5. 1. 2024 ", "5.1.2024"},
      {"5 . 1 .2024\t8 : 05", "5.1.2024 8:05:00"},
      {"5.1.2024 8:30", "5.1.2024 8:30:00"},
      {"5.1.2024   08:30:07", "5.1.2024 8:30:07"},
      {"09:30:00 05.01.2024", "5.1.2024 9:30:00"},
      {"9:30 5.1.2024", "5.1.2024 9:30:00"},
      {"5.1.2024 0:00:00", "5.1.2024"},
      {"1.1.1 1:0:0", "1.1.1 1:00:00"},
      {"5.1.24", "5.1.24"},
      {"31.12.9999 23:59:59", "31.12.9999 23:59:59"},
      {"0:05", "0:05:00"},
      {"23:59:59", "23:59:59"},
      {"29.2", "29.2.2024"},
      {"5.01", "5.1.2024"},
  };
  for (const auto& [text, expected] : cases) {
    const auto date = CDate(QString::fromLatin1(text), kToday);
    EXPECT_EQ(date ? Text(*date) : "none", expected) << text;
  }
}

TEST(CDate, RefusesEverythingElse) {
  for (const char* text : {"",
                           " ",
                           "5",
                           "5.",
                           ".5",
                           "5.1.",
                           "5.1.2024.",
                           "5.1.20245",
                           "005.1.2024",
                           "5.1. 8:30",
                           "5.1 8:30",
                           "8:30 5.1",
                           "5.1.2024 8",
                           "5.1.2024 8:",
                           "5.1.2024 8:60",
                           "5.1.2024 24:00",
                           "5.1.2024 8:30:60",
                           "5.1.2024 8:30:00:00",
                           "5.1.2024 5.1.2024",
                           "8:30 8:30",
                           "5.1.20248:30",
                           "8:30:005.1.2024",
                           "29.2.2023",
                           "31.4.2024",
                           "0.1.2024",
                           "1.13.2024",
                           "1.1.0",
                           "-5.1.2024",
                           "5/1/2024",
                           "2024-01-05",
                           "pátek",
                           "5.1.2024x",
                           "5.1.2024 8:30 x",
                           "5,1,2024",
                           "99999999999999999999.1.1",
                           "8:30:00 pm"}) {
    EXPECT_FALSE(IsDate(QString::fromUtf8(text), kToday)) << text;
  }
  EXPECT_FALSE(IsDate(QString::fromLatin1("5.1.2024\0", 9), kToday));
  EXPECT_FALSE(IsDate(QString::fromUtf8("\u0665.\u0661.2024"), kToday)) << "digits of another script";
  EXPECT_FALSE(CDate(u"29.2"_qs, *Date::FromParts(2023, 1, 1)));
}

TEST(CDate, JudgesLongTextsByTheirBeginning) {
  constexpr qsizetype size = 10'000'000;
  for (const QChar filler : {QChar(u'7'), QChar(u'.'), QChar(u':'), QChar(u' '), QChar(u'\0'), QChar(u'ž')}) {
    EXPECT_FALSE(IsDate(QString(size, filler), kToday));
    EXPECT_EQ(IsDate(u"5.1.2024"_qs + QString(size, filler), kToday), filler == u' ');
  }
}

TEST(CDate, ReadsBackWhatDateTextWrites) {
  Date date = *Date::FromParts(1, 1, 1);
  while (const auto next = DateAdd(DateUnit::Second, 86'399 * 977LL, date)) {
    date = *next;
    ASSERT_EQ(CDate(DateText(date), kToday), date) << Text(date);
  }
}

}  // namespace
}  // namespace talnik::test
