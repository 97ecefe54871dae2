#pragma once

#include <QRect>

class QWidget;

namespace talnik {

/// What the screen has for a window, without the frame that the desktop draws around it.
QRect RoomOnScreen(const QWidget& window);

/// Rearranges a window whose controls need more than its screen has: rows that are too wide stand on end and long
/// labels wrap; what is too large still is scrolled, all but the menus, and the view follows the focus. Is called again
/// when the controls have come to need more.
void FitIntoRoom(QWidget& window);

/// The size, as far as the screen has room, and as much more as the texts that wrap need.
QSize WithRoomForText(const QWidget& window, const QSize& size);

}  // namespace talnik
