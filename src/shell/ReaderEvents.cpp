#include "shell/ReaderEvents.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QVariant>
#include <QWidget>

namespace talnik {
namespace {

constexpr int NoChild = -1;
/// Of the application: what readers know to have the focus.
constexpr const char* Known = "focusKnownToReaders";

void PassOnTidied(QAccessibleEvent* event);

/// What the toolkit would have done with the event.
void PassOn(QAccessibleEvent* event) {
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(PassOnTidied);
}

void TellLine(QAbstractItemView& list) {
  if (!list.currentIndex().isValid()) return;
  QAccessibleEvent line(&list, QAccessible::Focus);
  line.setChild(list.currentIndex().row());
  PassOn(&line);
}

/// A field selects its text before its focus is told, when the reader says the selection with the field; and it drops
/// the selection when it is left.
bool IsSelectionElsewhere(const QAccessibleEvent& event) {
  if (event.type() != QAccessible::TextSelectionChanged) return false;
  const auto* field = qobject_cast<QWidget*>(event.object());
  return field && !(field->hasFocus() && qApp->property(Known).value<QObject*>() == field);
}

void PassOnTidied(QAccessibleEvent* event) {
  if (IsSelectionElsewhere(*event)) return;
  PassOn(event);
  if (event->type() != QAccessible::Focus || event->child() != NoChild) return;
  qApp->setProperty(Known, QVariant::fromValue(event->object()));
  if (auto* list = qobject_cast<QAbstractItemView*>(event->object())) TellLine(*list);
}

}  // namespace

void TidyEventsForReaders() {
  QAccessible::installUpdateHandler(PassOnTidied);
}

}  // namespace talnik
