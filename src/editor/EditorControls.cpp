#include "editor/EditorControls.h"

#include "store/Text.h"

#include <QAbstractItemView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTextCursor>

#include <algorithm>

namespace talnik {
namespace {

/// A longer text from a foreign file would hold up the screen; no field of the store is that long.
constexpr qsizetype LongestShown = 100'000;

bool TypesText(const QKeyEvent& event) {
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
  const QString text = event.text();
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || (!text.isEmpty() && text[0].isPrint());
}

QPixmap Bell(const QColor& color) {
  constexpr int Size = 32;
  QPixmap bell(Size, Size);
  bell.fill(Qt::transparent);
  QPainter painter(&bell);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawChord(QRectF(7, 4, 18, 32), 0, 180 * 16);
  painter.drawRect(QRectF(7, 19, 18, 4));
  painter.drawRect(QRectF(4, 23, 24, 3));
  painter.drawEllipse(QPointF(16, 28), 3, 3);
  return bell;
}

}  // namespace

NoteBox::NoteBox(qsizetype size, QWidget* parent) : QPlainTextEdit(parent), size_(size) {
  setTabChangesFocus(true);
}

QString NoteBox::Text() const {
  return document()->toRawText().replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
}

void NoteBox::Show(const QString& text) {
  setPlainText(CutToSize(text, LongestShown));
}

/// The part of a text that can still be inserted over the selection.
QString NoteBox::WhatFits(const QString& text) {
  const qsizetype selected = textCursor().selectionEnd() - textCursor().selectionStart();
  const qsizetype room = size_ - (document()->characterCount() - 1 - selected);
  QString fits = CutToSize(text, std::max<qsizetype>(room, 0));
  if (fits.size() < text.size()) Q_EMIT Refused();
  return fits;
}

void NoteBox::keyPressEvent(QKeyEvent* event) {
  const bool newLine = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const QString typed = newLine ? u"\n"_qs : event->text();
  if (!TypesText(*event) || WhatFits(typed).size() == typed.size()) return QPlainTextEdit::keyPressEvent(event);
  event->accept();
}

void NoteBox::inputMethodEvent(QInputMethodEvent* event) {
  const QString fits = WhatFits(event->commitString());
  if (fits.size() == event->commitString().size()) return QPlainTextEdit::inputMethodEvent(event);
  QInputMethodEvent cut(event->preeditString(), event->attributes());
  cut.setCommitString(fits);
  QPlainTextEdit::inputMethodEvent(&cut);
}

void NoteBox::insertFromMimeData(const QMimeData* source) {
  if (!source->hasText() || isReadOnly()) return;
  QString text = source->text();
  text.remove(QChar::Null).replace(u"\r\n"_qs, u"\n"_qs);
  textCursor().insertText(WhatFits(text));
  ensureCursorVisible();
}

void ChoiceList::showPopup() {
  QComboBox::showPopup();
  Q_EMIT Opened();
}

void ChoiceList::hidePopup() {
  const bool wasOpen = view()->isVisible();
  QComboBox::hidePopup();
  if (wasOpen) Q_EMIT Closed();
}

BellPicture::BellPicture(const QColor& color, QWidget* parent) : QLabel(parent) {
  setPixmap(Bell(color));
}

void BellPicture::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) Q_EMIT Click();
}

}  // namespace talnik
