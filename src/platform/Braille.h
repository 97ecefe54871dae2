#pragma once

#include <QString>

namespace talnik {

/// The Braille line. Without one IsPresent is false and every call does nothing.
class Braille {
 public:
  static constexpr int NoCursor = -1;

  virtual ~Braille() = default;
  virtual bool IsPresent() const = 0;

  /// Shows `text`, scrolled so that `cursor` (a position in the text, counted from 0, or NoCursor) is on the line.
  virtual void Show(const QString& text, int cursor) = 0;

  /// Takes the line for this program's window, or gives it back to the others.
  virtual void SetActive(bool active) = 0;
};

}  // namespace talnik
