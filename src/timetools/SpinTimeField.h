#pragma once

#include "shell/ControlEvents.h"

#include <QString>

#include <array>

namespace talnik {

/// The number at the head of a field's text; 0 when there is none.
int FieldValue(const QString& text);

/// By how much a key spins a field: Down and numeric plus 1, Up and numeric minus -1, ten times that with Ctrl; 0 for
/// every other key. Down counts up: the values are thought of as a scale read from the top.
int SpinStep(const Key& key);

enum class SpinFormat { Plain, TwoDigits };

/// The text of a field spun by `step`. It stops at the limits and does not wrap.
QString SpinTimeField(const QString& text, int step, int minimum, int maximum,
                      SpinFormat format = SpinFormat::TwoDigits);

/// Hours from 0 to 23, minutes from 0 to 59; an empty field is 0.
bool ValidTimeFields(const QString& hours, const QString& minutes);

/// The two fields of a time, as they stand and where the cursor is.
struct TimeFields {
  static constexpr int Hours = 0;
  static constexpr int Minutes = 1;

  std::array<QString, 2> text;
  int field = Hours;  ///< the field with the focus
  int selStart = 0;   ///< the caret, when nothing is selected
  int selLength = 0;

  friend bool operator==(const TimeFields&, const TimeFields&) = default;
};

/// Types a digit. A selection is replaced; a field of two digits is overwritten at the caret, and behind its end the
/// digit begins the minutes. Hours of 24 or more become "0" and their first digit, the second begins the minutes.
/// Unchanged when there is no place for the digit.
TimeFields TypeTimeDigit(const TimeFields& fields, QChar digit);

}  // namespace talnik
