#include "dates/Date.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace talnik::test {
namespace {

const Date kToday = *Date::FromParts(2024, 6, 15, 9, 30);

/// The default text of what is read from a text; "none" when that is no date.
std::string Read(const QString& text) {
  const auto date = CDate(text, kToday);
  return date ? DateText(*date).toStdString() : "none";
}

TEST(Date, PartsAndSerialAgreeOnBothSidesOfDayZero) {
  const struct {
    const char* text;
    double serial;
    std::array<int, 3> place;  // weekday, day of the year, week
  } cases[] = {
      {"30.12.1899", 0.0, {7, 364, 52}},    {"29.12.1899 18:00", -0.25, {6, 363, 52}},
      {"1.1.1900 12:00", 2.5, {2, 1, 1}},   {"29.2.2024 6:00", 45351.25, {5, 60, 9}},
      {"1.1.2023", 44927.0, {1, 1, 1}},     {"31.12.2022", 44926.0, {7, 365, 53}},
      {"1.1.1 0:00", -693593.0, {2, 1, 1}}, {"31.12.2000 23:59:59", 36891.999988425927, {1, 366, 54}},
  };
  for (const auto& c : cases) {
    const Date date = CDate(QString::fromLatin1(c.text), kToday).value();
    EXPECT_NEAR(date.Serial(), c.serial, 1e-9) << c.text;
    EXPECT_EQ(Date::FromSerial(c.serial), date) << c.text;
    EXPECT_EQ((std::array{date.WeekdayNumber(), date.DayOfYear(), date.WeekOfYear()}), c.place) << c.text;
    EXPECT_EQ(Date::FromParts(date.Year(), date.Month(), date.Day(), date.Hour(), date.Minute(), date.Second()), date);
    EXPECT_EQ(date.DateValue().Serial(), std::floor(c.serial)) << c.text;
    EXPECT_EQ(Date::FromQDateTime(date.ToQDateTime()), date) << c.text;
  }
}

TEST(Date, NothingLiesOutsideTheRange) {
  EXPECT_FALSE(Date::FromParts(0, 12, 31));
  EXPECT_FALSE(Date::FromParts(10000, 1, 1));
  EXPECT_FALSE(Date::FromParts(2024, 1, 1, -1));
  for (const double serial : {std::nan(""), std::numeric_limits<double>::infinity(), -693594.0, 1e300})
    EXPECT_FALSE(Date::FromSerial(serial)) << serial;
  EXPECT_EQ(Date::FromQDateTime(QDateTime()), Date());
}

TEST(Date, AddMovesAndFallsBackToTheEndOfTheMonth) {
  const struct {
    DateUnit unit;
    std::int64_t amount;
    const char* from;
    const char* to;
  } cases[] = {
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
      {DateUnit::Year, 1, "1.1.9999", "none"},
      {DateUnit::Month, -1, "31.1.1", "none"},
      {DateUnit::Day, 1, "31.12.9999", "none"},
      {DateUnit::Week, std::numeric_limits<std::int64_t>::max(), "1.1.2024", "none"},
      {DateUnit::Year, std::numeric_limits<std::int64_t>::min(), "1.1.2024", "none"},
  };
  for (const auto& c : cases) {
    const auto moved = DateAdd(c.unit, c.amount, CDate(QString::fromLatin1(c.from), kToday).value());
    EXPECT_EQ(moved ? DateText(*moved).toStdString() : "none", c.to) << c.from;
  }
}

TEST(CDate, ReadsEveryFormOfTheSystemAndDateTextWritesOne) {
  const std::pair<const char*, const char*> cases[] = {
      {"05.01.2024", "5.1.2024"},
      {" 5. 1. 2024 ", "5.1.2024"},
      {"5 . 1 .2024\t8 : 05", "5.1.2024 8:05:00"},
      {"5.1.2024   08:30:07", "5.1.2024 8:30:07"},
      {"09:30:00 05.01.2024", "5.1.2024 9:30:00"},
      {"5.1.2024 0:00:00", "5.1.2024"},
      {"1.1.1 1:0:0", "1.1.1 1:00:00"},
      {"5.1.24", "5.1.24"},
      {"31.12.9999 23:59:59", "31.12.9999 23:59:59"},
      {"0:05", "0:05:00"},
      {"30.12.1899", "0:00:00"},
      {"23:59:59", "23:59:59"},
      {"29.2", "29.2.2024"},
      {"5.01", "5.1.2024"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Read(QString::fromLatin1(text)), expected) << text;
  EXPECT_EQ(DayText(*Date::FromParts(1899, 12, 30, 0, 5)), u"30.12.1899"_qs);
  EXPECT_EQ(TimeText(*Date::FromParts(2009, 1, 5)), u"0:00:00"_qs);

  Date date = *Date::FromParts(1, 1, 1);
  while (const auto next = DateAdd(DateUnit::Second, 86'399 * 977LL, date)) {
    date = *next;
    ASSERT_EQ(CDate(DateText(date), kToday), date) << DateText(date).toStdString();
  }
}

TEST(CDate, RefusesEverythingElse) {
  const QString texts =
      u"| |5|5.|.5|5.1.|5.1.2024.|5.1.20245|005.1.2024|5.1. 8:30|5.1 8:30|8:30 5.1|5.1.2024 8|5.1.2024 8:|"
      u"5.1.2024 8:60|5.1.2024 24:00|5.1.2024 8:30:60|5.1.2024 8:30:00:00|5.1.2024 5.1.2024|8:30 8:30|5.1.20248:30|"
      u"8:30:005.1.2024|29.2.2023|31.4.2024|0.1.2024|1.13.2024|1.1.0|-5.1.2024|5/1/2024|2024-01-05|pátek|5.1.2024x|"
      u"5.1.2024 8:30 x|5,1,2024|99999999999999999999.1.1|8:30:00 pm|\u0665.\u0661.2024"_qs;
  for (const QString& text : texts.split(u'|')) EXPECT_EQ(Read(text), "none") << text.toStdString();
  EXPECT_FALSE(IsDate(QString::fromLatin1("5.1.2024\0", 9), kToday));
  EXPECT_FALSE(CDate(u"29.2"_qs, *Date::FromParts(2023, 1, 1)));
}

TEST(CDate, JudgesLongTextsByTheirBeginning) {
  constexpr qsizetype size = 10'000'000;
  for (const QChar filler : {QChar(u'7'), QChar(u'.'), QChar(u':'), QChar(u' '), QChar(u'\0'), QChar(u'ž')}) {
    EXPECT_FALSE(IsDate(QString(size, filler), kToday));
    EXPECT_EQ(IsDate(u"5.1.2024"_qs + QString(size, filler), kToday), filler == u' ');
  }
}

}  // namespace
}  // namespace talnik::test
