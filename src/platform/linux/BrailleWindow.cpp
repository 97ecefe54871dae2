#include "platform/linux/BrailleWindow.h"

#include <algorithm>

namespace talnik {

void BrailleWindow::SetText(const QString& text, int cursor) {
  characters_ = text.toUcs4();
  for (uint& character : characters_) {
    if (QChar::isSurrogate(character)) character = QChar::ReplacementCharacter;
    if (QChar::category(character) == QChar::Other_Control) character = u' ';
  }
  cursor_ = cursor < 0 ? -1 : QStringView(text).left(cursor).toUcs4().size();
  ShowCursor();
}

void BrailleWindow::SetCells(int cells) {
  if (cells == cells_) return;
  cells_ = std::max(1, cells);
  ShowCursor();
}

void BrailleWindow::ShowCursor() {
  first_ = cursor_ < 0 ? 0 : cursor_ / cells_ * cells_;
}

void BrailleWindow::MoveLeft() {
  first_ = std::max<qsizetype>(0, first_ - cells_);
}

void BrailleWindow::MoveRight() {
  if (first_ + cells_ < characters_.size()) first_ += cells_;
}

QString BrailleWindow::Visible() const {
  const QList<uint> visible = characters_.mid(first_, cells_);
  return QString::fromUcs4(reinterpret_cast<const char32_t*>(visible.constData()), visible.size());
}

int BrailleWindow::CursorCell() const {
  const bool onLine = cursor_ >= first_ && cursor_ < first_ + cells_;
  return onLine ? static_cast<int>(cursor_ - first_) + 1 : 0;
}

}  // namespace talnik
