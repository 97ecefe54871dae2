#pragma once

#include <QDBusConnection>
#include <QString>

namespace talnik {

/// The toolkit's own connection to the accessibility bus; not connected while it has none.
QDBusConnection AccessibilityBus();

/// Lets the screen reader say a text that nothing on the screen bears. While one of our windows has the keyboard the
/// reader says it as news of the focused control; else as a notification.
void TellReader(const QString& text);

}  // namespace talnik
