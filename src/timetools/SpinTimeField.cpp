#include "timetools/SpinTimeField.h"

#include <algorithm>

namespace talnik {
namespace {

constexpr qsizetype DigitsOfField = 2;
constexpr int LargestFieldValue = 1'000'000'000;

}  // namespace

int FieldValue(const QString& text) {
  const QString trimmed = text.trimmed();
  qint64 value = 0;
  for (const QChar character : trimmed) {
    if (character < u'0' || character > u'9') break;
    value = std::min<qint64>(value * 10 + (character.unicode() - u'0'), LargestFieldValue);
  }
  return static_cast<int>(value);
}

int SpinStep(const Key& key) {
  const int step = key.shift.testFlag(Qt::ControlModifier) ? 10 : 1;
  if (key.Is(Qt::Key_Down) || key.NumericPlus()) return step;
  if (key.Is(Qt::Key_Up) || key.NumericMinus()) return -step;
  return 0;
}

QString SpinTimeField(const QString& text, int step, int minimum, int maximum, SpinFormat format) {
  const int value = std::clamp(FieldValue(text) + step, minimum, maximum);
  return QString::number(value).rightJustified(format == SpinFormat::TwoDigits ? DigitsOfField : 1, u'0');
}

bool ValidTimeFields(const QString& hours, const QString& minutes) {
  return FieldValue(hours) < 24 && FieldValue(minutes) < 60;
}

TimeFields TypeTimeDigit(const TimeFields& fields, QChar digit) {
  TimeFields typed = fields;
  QString& text = typed.text.at(static_cast<std::size_t>(fields.field));
  text.remove(fields.selStart, fields.selLength);
  typed.selLength = 0;

  const auto beginMinutes = [&typed](QChar first) {
    typed.text[TimeFields::Minutes] = first;
    typed.field = TimeFields::Minutes;
    typed.selStart = 1;
  };

  const bool full = text.size() >= DigitsOfField;
  if (full && typed.selStart >= text.size()) {
    if (fields.field == TimeFields::Hours) beginMinutes(digit);
    return typed;
  }
  text.replace(typed.selStart, full ? 1 : 0, digit);
  ++typed.selStart;
  if (fields.field == TimeFields::Hours && text.size() == DigitsOfField && FieldValue(text) >= 24) {
    const QChar second = text[1];
    text = u'0' + text.left(1);
    beginMinutes(second);
  }
  return typed;
}

}  // namespace talnik
