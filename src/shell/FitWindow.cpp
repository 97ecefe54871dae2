#include "shell/FitWindow.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

#include <algorithm>
#include <map>
#include <utility>

namespace talnik {

namespace {

/// The layouts within a layout, and itself behind them.
QList<QLayout*> InnerFirst(QLayout* layout) {
  QList<QLayout*> all;
  for (int i = 0; i < layout->count(); ++i) {
    QLayoutItem* item = layout->itemAt(i);
    QLayout* inner = item->layout();
    if (!inner && item->widget()) inner = item->widget()->layout();
    if (inner) all << InnerFirst(inner);
  }
  return all << layout;
}

/// The margins of all that lies around a layout or a control.
int MarginsAround(const QWidget* widget) {
  int margins = 0;
  for (; widget && !widget->isWindow(); widget = widget->parentWidget()) {
    const QLayout* around = widget->parentWidget()->layout();
    if (!around) continue;
    const QMargins side = around->contentsMargins();
    margins += side.left() + side.right();
  }
  return margins;
}

/// The width that the controls may take; those that are scrolled leave some to the bar.
int WidthFor(const QWidget& window, const QSize& room) {
  const bool scrolled = window.minimumSizeHint().height() > room.height();
  return room.width() - (scrolled ? window.style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0);
}

/// Puts what stands in the columns of a grid into one column, in the order of reading.
void StandOnEnd(QGridLayout& grid) {
  struct Cell {
    QLayoutItem* item;
    int stretch;
  };
  std::map<std::pair<int, int>, Cell> cells;
  while (grid.count() > 0) {
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(0, &row, &column, &rows, &columns);
    cells[{row, column}] = {grid.takeAt(0), grid.rowStretch(row)};
  }
  // An empty row at the end keeps the others together.
  const int bottom = grid.rowStretch(grid.rowCount() - 1);
  const bool endsEmpty = !cells.empty() && cells.rbegin()->first.first < grid.rowCount() - 1;
  for (int row = 0; row < grid.rowCount(); ++row) grid.setRowStretch(row, 0);
  for (int column = 0; column < grid.columnCount(); ++column) grid.setColumnStretch(column, column == 0 ? 1 : 0);
  int row = 0;
  for (const auto& [place, cell] : cells) {
    if (QLayout* inner = cell.item->layout()) {
      grid.addLayout(inner, row, 0, cell.item->alignment());
    } else {
      grid.addItem(cell.item, row, 0, 1, 1, cell.item->alignment());
    }
    grid.setRowStretch(row++, cell.stretch);
  }
  if (endsEmpty) grid.setRowStretch(row, bottom);
}

void StandOnEnd(QLayout* layout) {
  if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
    if (grid->columnCount() > 1) StandOnEnd(*grid);
  } else if (auto* row = qobject_cast<QBoxLayout*>(layout)) {
    row->setDirection(QBoxLayout::TopToBottom);
  }
}

/// Makes known to all around a control what its layout needs now.
void TellAround(QWidget* widget) {
  for (; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
    if (widget->layout()) widget->layout()->activate();
  }
}

/// Only rows that are too wide themselves: their neighbours are read more easily as they are.
void NarrowRows(QWidget& window, const QSize& room) {
  for (QLayout* layout : InnerFirst(window.layout())) {
    QWidget* owner = layout->parentWidget();
    const bool nested = layout != owner->layout();
    const QMargins side = nested ? owner->layout()->contentsMargins() : QMargins();
    const int around = MarginsAround(owner) + side.left() + side.right();
    if (layout->totalMinimumSize().width() > WidthFor(window, room) - around) {
      StandOnEnd(layout);
      TellAround(owner);
    }
  }
}

void WrapLabels(QWidget& window, const QSize& room) {
  for (auto* label : window.findChildren<QLabel*>()) {
    if (label->minimumSizeHint().width() > WidthFor(window, room) - MarginsAround(label)) label->setWordWrap(true);
    TellAround(label->parentWidget());
  }
}

/// Moves all of a window but its menus into a view that follows the focus.
void PutIntoScrollArea(QWidget* window) {
  const QPointer<QWidget> focus = window->focusWidget();
  QWidget* menuBar = window->layout()->menuBar();
  window->layout()->setMenuBar(nullptr);
  auto* inside = new QWidget;
  auto* area = new QScrollArea(window);
  area->setFocusPolicy(Qt::NoFocus);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  inside->setLayout(window->layout());
  area->setWidget(inside);
  auto* around = new QVBoxLayout(window);
  around->setContentsMargins(0, 0, 0, 0);
  around->addWidget(area);
  around->setMenuBar(menuBar);
  // The layout that has left had fixed the window's smallest size.
  window->setMinimumSize(0, 0);
  around->activate();
  if (focus) focus->setFocus();
  QObject::connect(qApp, &QGuiApplication::focusObjectChanged, area, [area](QObject* now) {
    auto* control = qobject_cast<QWidget*>(now);
    if (control && area->isAncestorOf(control)) area->ensureWidgetVisible(control);
  });
}

}  // namespace

QRect RoomOnScreen(const QWidget& window) {
  constexpr int side = 10;
  constexpr int title = 40;
  return window.screen()->availableGeometry().adjusted(side, 0, -side, -title);
}

bool FitIntoRoom(QWidget& window) {
  window.layout()->activate();
  const QSize room = RoomOnScreen(window).size();
  if (window.minimumSizeHint().width() > WidthFor(window, room)) {
    NarrowRows(window, room);
    WrapLabels(window, room);
    window.layout()->activate();
  }
  const QSize needed = window.minimumSizeHint();
  if (needed.width() <= room.width() && needed.height() <= room.height()) return false;
  PutIntoScrollArea(&window);
  return true;
}

}  // namespace talnik
