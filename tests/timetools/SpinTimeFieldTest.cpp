#include "timetools/SpinTimeField.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

TEST(SpinTimeField, DownAndPlusCountUpUpAndMinusCountDownAndCtrlTakesTen) {
  struct Case {
    int code;
    Qt::KeyboardModifiers shift;
    bool keypad;
    int step;
  };
  for (const Case& test :
       {Case{Qt::Key_Down, {}, false, 1}, Case{Qt::Key_Up, {}, false, -1}, Case{Qt::Key_Plus, {}, true, 1},
        Case{Qt::Key_Minus, {}, true, -1}, Case{Qt::Key_Down, Qt::ControlModifier, true, 10},
        Case{Qt::Key_Minus, Qt::ControlModifier, true, -10}, Case{Qt::Key_Plus, {}, false, 0},
        Case{Qt::Key_PageDown, {}, false, 0}}) {
    Key key;
    key.code = test.code;
    key.shift = test.shift;
    key.keypad = test.keypad;
    EXPECT_EQ(SpinStep(key), test.step) << test.code;
  }
}

TEST(SpinTimeField, StopsAtTheLimitsAndIsWrittenInItsFormat) {
  struct Case {
    QString text;
    int step, minimum, maximum;
    SpinFormat format;
    const char* expected;
  };
  constexpr auto two = SpinFormat::TwoDigits;
  constexpr auto plain = SpinFormat::Plain;
  for (const Case& test :
       {Case{u"08"_qs, 1, 0, 23, two, "09"}, Case{u"23"_qs, 1, 0, 23, two, "23"}, Case{u"15"_qs, 10, 0, 23, two, "23"},
        Case{u"5"_qs, -10, 0, 59, two, "00"}, Case{QString(), 1, 0, 59, two, "01"}, Case{u"x"_qs, 1, 0, 59, two, "01"},
        Case{u"590"_qs, 10, 0, 600, plain, "600"}, Case{u"9"_qs, -1, 0, 600, plain, "8"},
        Case{u"99999999999999999999"_qs, 10, 0, 600, plain, "600"}, Case{u"2024"_qs, -1, 1000, 3000, plain, "2023"}}) {
    EXPECT_EQ(SpinTimeField(test.text, test.step, test.minimum, test.maximum, test.format).toStdString(),
              test.expected);
  }
}

TEST(SpinTimeField, TimesAreValidBelow24HoursAnd60Minutes) {
  EXPECT_TRUE(ValidTimeFields(u"23"_qs, u"59"_qs));
  EXPECT_TRUE(ValidTimeFields(QString(), QString()));
  EXPECT_FALSE(ValidTimeFields(u"24"_qs, u"0"_qs));
  EXPECT_FALSE(ValidTimeFields(u"0"_qs, u"60"_qs));
}

TEST(TypeTimeDigit, FillsOverwritesAndMovesOn) {
  struct Case {
    const char* what;
    TimeFields before;
    char16_t digit;
    TimeFields after;
  };
  constexpr int hours = TimeFields::Hours;
  constexpr int minutes = TimeFields::Minutes;
  for (const Case& test :
       {Case{"a first digit", {{u""_qs, u""_qs}, hours, 0, 0}, u'7', {{u"7"_qs, u""_qs}, hours, 1, 0}},
        Case{"7 and 5", {{u"7"_qs, u""_qs}, hours, 1, 0}, u'5', {{u"07"_qs, u"5"_qs}, minutes, 1, 0}},
        Case{"2 and 4", {{u"2"_qs, u"30"_qs}, hours, 1, 0}, u'4', {{u"02"_qs, u"4"_qs}, minutes, 1, 0}},
        Case{"2 and 3", {{u"2"_qs, u"30"_qs}, hours, 1, 0}, u'3', {{u"23"_qs, u"30"_qs}, hours, 2, 0}},
        Case{"a selection", {{u"12"_qs, u"30"_qs}, hours, 0, 2}, u'9', {{u"9"_qs, u"30"_qs}, hours, 1, 0}},
        Case{"at the caret", {{u"12"_qs, u"30"_qs}, hours, 0, 0}, u'0', {{u"02"_qs, u"30"_qs}, hours, 1, 0}},
        Case{"at the caret, too much", {{u"15"_qs, u""_qs}, hours, 0, 0}, u'7', {{u"07"_qs, u"5"_qs}, minutes, 1, 0}},
        Case{"behind full hours", {{u"12"_qs, u"00"_qs}, hours, 2, 0}, u'4', {{u"12"_qs, u"4"_qs}, minutes, 1, 0}},
        Case{"minutes are not limited",
             {{u"12"_qs, u"7"_qs}, minutes, 1, 0},
             u'5',
             {{u"12"_qs, u"75"_qs}, minutes, 2, 0}},
        Case{"behind full minutes",
             {{u"12"_qs, u"45"_qs}, minutes, 2, 0},
             u'1',
             {{u"12"_qs, u"45"_qs}, minutes, 2, 0}}}) {
    EXPECT_EQ(TypeTimeDigit(test.before, test.digit), test.after) << test.what;
  }
}

}  // namespace
}  // namespace talnik::test
