#pragma once

#include <QList>

namespace talnik {

/// One line of the icon's menu.
struct TrayItem {
  int id;                 ///< becomes ExitCommand
  const char* caption;    ///< Czech, to be translated; empty where `captionOf` names it
  const char* captionOf;  ///< the menu command whose caption it bears and which it runs
};

/// In their order; an item without any text is a separator.
const QList<TrayItem>& TrayItems();

}  // namespace talnik
