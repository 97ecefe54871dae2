#include "shell/TextControls.h"

#include "shell/LineDelegate.h"

#include <QMouseEvent>

#include <algorithm>

namespace talnik {

ListBox::ListBox(QWidget* parent) : QListWidget(parent) {
  setSelectionMode(SingleSelection);
  setWordWrap(true);
  setResizeMode(Adjust);
  setItemDelegate(new LineDelegate(this));
  connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) Q_EMIT Click();
  });
}

QSize ListBox::sizeHint() const {
  constexpr int letters = 34;
  return {letters * fontMetrics().averageCharWidth(), QListWidget::sizeHint().height()};
}

QSize ListBox::minimumSizeHint() const {
  constexpr int lines = 4;
  constexpr int frame = 12;
  const QSize least = QListWidget::minimumSizeHint();
  return {least.width(), std::max(least.height(), lines * fontMetrics().lineSpacing() + frame)};
}

QString ListBox::Line(int index) const {
  const QListWidgetItem* line = item(index);
  return line ? line->text() : QString();
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  const int before = currentRow();
  QListWidget::mousePressEvent(event);
  const bool onLine = itemAt(event->position().toPoint()) != nullptr;
  if (event->button() == Qt::LeftButton && onLine && currentRow() == before) Q_EMIT Click();
}

void ListBox::focusInEvent(QFocusEvent* event) {
  // The list of the toolkit would select its first line by itself.
  const bool hadSelection = currentRow() >= 0;
  const QSignalBlocker quiet(hadSelection ? nullptr : this);
  QListWidget::focusInEvent(event);
  if (!hadSelection) setCurrentRow(-1);
}

void WidenFor(QWidget* field, const QString& sample) {
  constexpr int frame = 20;
  field->ensurePolished();
  field->setMinimumWidth(field->fontMetrics().horizontalAdvance(sample) + frame);
}

void WidenForPath(QWidget* field) {
  WidenFor(field, u"/home/jana/zvuky/alarm.wav"_qs);
}

}  // namespace talnik
