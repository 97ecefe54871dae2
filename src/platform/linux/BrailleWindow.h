#pragma once

#include <QList>
#include <QString>

namespace talnik {

/// The part of a text that a Braille line of some cells shows. A cell holds one character, whatever it takes in UTF-16;
/// characters that no cell can show are blanks.
class BrailleWindow {
 public:
  /// A new text; the line moves to where `cursor` (in UTF-16 units, negative for none) is.
  void SetText(const QString& text, int cursor);
  /// The width of the line, at least one cell.
  void SetCells(int cells);

  /// Move the line by its width; they stay at the ends of the text.
  void MoveLeft();
  void MoveRight();

  /// What the line shows, at most as many characters as it has cells.
  QString Visible() const;
  /// The cell of the cursor, counted from 1; 0 when it is not on the line.
  int CursorCell() const;

 private:
  void ShowCursor();

  QList<uint> characters_;
  qsizetype cursor_ = -1;
  qsizetype first_ = 0;
  qsizetype cells_ = 1;
};

}  // namespace talnik
