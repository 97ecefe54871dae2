#include "shell/FitWindow.h"

#include <QBoxLayout>
#include <QEvent>
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

/// The view that a window too large for its screen is scrolled in.
constexpr QLatin1String ViewName("RoomView");

/// What holds the controls: the window, or what its view scrolls.
QWidget& HolderOf(QWidget& window) {
  const auto* view = window.findChild<QScrollArea*>(ViewName, Qt::FindDirectChildrenOnly);
  return view ? *view->widget() : window;
}

/// The least height at this width: a text that wraps needs the more, the narrower it is.
int HeightAt(const QWidget& holder, int width) {
  const QLayout& layout = *holder.layout();
  return layout.hasHeightForWidth() ? layout.totalMinimumHeightForWidth(width) : holder.minimumSizeHint().height();
}

/// The width that the controls may take; those that are scrolled leave some to the bar.
int WidthFor(const QWidget& holder, const QSize& room) {
  const bool scrolled = !holder.isWindow() || HeightAt(holder, room.width()) > room.height();
  return room.width() - (scrolled ? holder.style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0);
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
void NarrowRows(QWidget& holder, const QSize& room) {
  for (QLayout* layout : InnerFirst(holder.layout())) {
    QWidget* owner = layout->parentWidget();
    const bool nested = layout != owner->layout();
    const QMargins side = nested ? owner->layout()->contentsMargins() : QMargins();
    const int around = MarginsAround(owner) + side.left() + side.right();
    if (layout->totalMinimumSize().width() > WidthFor(holder, room) - around) {
      StandOnEnd(layout);
      TellAround(owner);
    }
  }
}

void WrapLabels(QWidget& holder, const QSize& room) {
  for (auto* label : holder.findChildren<QLabel*>()) {
    if (label->wordWrap() || label->minimumSizeHint().width() <= WidthFor(holder, room) - MarginsAround(label))
      continue;
    label->setWordWrap(true);
    TellAround(label->parentWidget());
  }
}

/// What is scrolled tells the window when it needs another size.
class Scrolled : public QWidget {
 protected:
  bool event(QEvent* event) override {
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest)
      QCoreApplication::postEvent(window(), new QEvent(QEvent::LayoutRequest));
    return done;
  }
};

/// Moves all of a window but its menus into a view that follows the focus.
void PutIntoScrollArea(QWidget* window) {
  const QPointer<QWidget> focus = window->focusWidget();
  QWidget* menuBar = window->layout()->menuBar();
  window->layout()->setMenuBar(nullptr);
  auto* inside = new Scrolled;
  auto* area = new QScrollArea(window);
  area->setObjectName(ViewName);
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

QSize WithRoomForText(const QWidget& window, const QSize& size) {
  const QSize room = RoomOnScreen(window).size();
  const QSize fitting = size.boundedTo(room);
  const int width = HeightAt(window, fitting.width()) <= room.height() ? fitting.width() : room.width();
  return QSize(width, std::max(fitting.height(), HeightAt(window, width))).boundedTo(room);
}

void FitIntoRoom(QWidget& window) {
  QWidget& holder = HolderOf(window);
  holder.layout()->activate();
  const QSize room = RoomOnScreen(window).size();
  if (holder.minimumSizeHint().width() > WidthFor(holder, room)) {
    NarrowRows(holder, room);
    WrapLabels(holder, room);
    holder.layout()->activate();
  }
  if (!holder.isWindow()) {
    if (holder.minimumSizeHint().width() > holder.parentWidget()->width()) window.resize(room);
    return;
  }
  const bool fits = window.minimumSizeHint().width() <= room.width() && HeightAt(window, room.width()) <= room.height();
  if (fits) return;
  PutIntoScrollArea(&window);
  // The bar takes from the width, so there is all of it.
  if (!window.isMaximized()) window.resize(room);
}

}  // namespace talnik
