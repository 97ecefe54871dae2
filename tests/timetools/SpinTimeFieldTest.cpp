#include "timetools/SpinTimeField.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace talnik::test {
namespace {

TEST(SpinTimeField, DownAndPlusCountUpUpAndMinusCountDownAndCtrlTakesTen) {
  const std::tuple<int, Qt::KeyboardModifiers, bool, int> keys[] = {
      {Qt::Key_Down, Qt::NoModifier, false, 1},      {Qt::Key_Up, Qt::NoModifier, false, -1},
      {Qt::Key_Plus, Qt::NoModifier, true, 1},       {Qt::Key_Minus, Qt::NoModifier, true, -1},
      {Qt::Key_Down, Qt::ControlModifier, true, 10}, {Qt::Key_Minus, Qt::ControlModifier, true, -10},
      {Qt::Key_Plus, Qt::NoModifier, false, 0},      {Qt::Key_PageDown, Qt::NoModifier, false, 0}};
  for (const auto& [code, shift, keypad, step] : keys) {
    Key key;
    key.code = code;
    key.shift = shift;
    key.keypad = keypad;
    EXPECT_EQ(SpinStep(key), step) << code;
  }
}

TEST(SpinTimeField, StopsAtTheLimitsAndIsWrittenInItsFormat) {
  constexpr auto two = SpinFormat::TwoDigits;
  constexpr auto plain = SpinFormat::Plain;
  const std::tuple<const char*, int, int, int, SpinFormat, const char*> spins[] = {
      {"08", 1, 0, 23, two, "09"},
      {"23", 1, 0, 23, two, "23"},
      {"15", 10, 0, 23, two, "23"},
      {"5", -10, 0, 59, two, "00"},
      {"", 1, 0, 59, two, "01"},
      {"x", 1, 0, 59, two, "01"},
      {"9", -1, 0, 600, plain, "8"},
      {"590", 10, 0, 600, plain, "600"},
      {"99999999999999999999", 10, 0, 600, plain, "600"},
      {"1", -1, 1, 12, plain, "1"},
      {"2024", -1, 1000, 3000, plain, "2023"}};
  for (const auto& [text, step, minimum, maximum, format, expected] : spins)
    EXPECT_EQ(SpinTimeField(QString::fromLatin1(text), step, minimum, maximum, format).toStdString(), expected);
}

/// "12,3|0" is 12 hours and 30 minutes with the caret in the minutes; "[12],30" has the hours selected.
TimeFields Parsed(QString text) {
  TimeFields fields;
  fields.field =
      text.section(u',', 0, 0).contains(QRegularExpression(u"[|[]"_qs)) ? TimeFields::Hours : TimeFields::Minutes;
  const QString focused = text.section(u',', fields.field, fields.field);
  fields.selLength = focused.contains(u'[') ? static_cast<int>(focused.size()) - 2 : 0;
  fields.selStart = static_cast<int>(std::max<qsizetype>(focused.indexOf(u'|'), 0));
  text.remove(QRegularExpression(u"[][|]"_qs));
  fields.text = {text.section(u',', 0, 0), text.section(u',', 1, 1)};
  return fields;
}

TEST(TypeTimeDigit, FillsOverwritesAndMovesOn) {
  const std::tuple<const char*, char16_t, const char*> digits[] = {
      {"|,", u'7', "7|,"},        {"7|,", u'5', "07,5|"},     {"2|,30", u'4', "02,4|"},   {"2|,30", u'3', "23|,30"},
      {"[12],30", u'9', "9|,30"}, {"|12,30", u'0', "0|2,30"}, {"1|2,30", u'9', "19|,30"}, {"|15,", u'7', "07,5|"},
      {"12|,00", u'4', "12,4|"},  {"12,7|", u'5', "12,75|"},  {"12,45|", u'1', "12,45|"}, {"|5,00", u'1', "1|5,00"}};
  for (const auto& [before, digit, after] : digits)
    EXPECT_EQ(TypeTimeDigit(Parsed(QString::fromLatin1(before)), digit), Parsed(QString::fromLatin1(after))) << before;
}

}  // namespace
}  // namespace talnik::test
