#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <functional>

class QAction;
class QMenuBar;

namespace talnik {

/// One entry of the main menu.
struct MenuEntry {
  enum class State {
    Group,   ///< opens a submenu
    Ready,   ///< a command
    Hidden,  ///< not shown
    Separator
  };

  const char* name;
  const char* caption;  ///< Czech, to be translated
  const char* parent;   ///< empty for the menu bar
  State state;
};

/// The whole menu tree of the main window, in its order.
const QList<MenuEntry>& MainMenuEntries();

/// Builds the tree and returns its actions by name. `run` gets the name of the command that was chosen.
QHash<QString, QAction*> BuildMainMenu(QMenuBar& bar, const std::function<void(const QString& name)>& run);

/// A menu command that stands for keys of the month list.
struct KeyCommand {
  struct Stroke {
    int key;
    bool atKeyDown;  ///< run by the press; by the release otherwise
  };
  const char* name;
  QList<Stroke> strokes;
  Qt::KeyboardModifiers shift;
};

/// Nothing (nullptr) for other commands.
const KeyCommand* FindKeyCommand(const QString& name);

/// The key that the menu shows beside a command; empty for one without a key, or with its key in the caption.
QString ShownKey(const QString& name);

}  // namespace talnik
