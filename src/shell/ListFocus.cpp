#include "shell/ListFocus.h"

#include <QAbstractItemView>
#include <QAccessible>

namespace talnik {
namespace {

constexpr int NoChild = -1;

void PassOnWithLine(QAccessibleEvent* event);

/// What the toolkit would have done with the event.
void PassOn(QAccessibleEvent* event) {
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(PassOnWithLine);
}

void PassOnWithLine(QAccessibleEvent* event) {
  PassOn(event);
  if (event->type() != QAccessible::Focus || event->child() != NoChild) return;
  auto* list = qobject_cast<QAbstractItemView*>(event->object());
  if (!list || !list->currentIndex().isValid()) return;
  QAccessibleEvent line(list, QAccessible::Focus);
  line.setChild(list->currentIndex().row());
  PassOn(&line);
}

}  // namespace

void TellLineOfFocusedList() {
  QAccessible::installUpdateHandler(PassOnWithLine);
}

}  // namespace talnik
