#pragma once

#include "shell/CommonSettings.h"
#include "shell/Speech.h"

#include <QAction>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QProxyStyle>

class QKeyEvent;
class QMenu;
class QMenuBar;

namespace talnik {

/// One line of a table that describes a menu tree, parents before their items.
struct MenuItem {
  enum class Kind { Command, Group, Separator };

  QString name;     ///< becomes the object name
  QString caption;  ///< with "&" before the mnemonic
  QString parent;   ///< name of the group it stands in; empty for the root
  Kind kind = Kind::Command;
};

/// Adds the items to a bar or a popup menu and returns the actions by name.
QHash<QString, QAction*> BuildMenus(QMenuBar& bar, const QList<MenuItem>& items);
QHash<QString, QAction*> BuildMenus(QMenu& popup, const QList<MenuItem>& items);

/// What is said of an item: its caption, its state, its key.
QString SpokenItem(const QAction& action);

/// The style of the desktop, but that the highlight stops at unavailable items too, and that the mark of a submenu is
/// large enough to be seen.
class MenuStyle : public QProxyStyle {
  Q_OBJECT

 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

/// The menus of the program: in the user's type and colours, and spoken. Each item is said as the highlight reaches it,
/// a menu that opens says its title and its first item, an unavailable item can be reached and refuses to be chosen.
/// Home, End and first letters move in a menu; F10 opens the bar.
class OwnMenus : public QObject {
  Q_OBJECT

 public:
  /// `look` is read anew at each RefreshOwnMenus and must outlive this object.
  OwnMenus(Speech& speech, const CommonSettings& look, QObject* parent = nullptr);
  ~OwnMenus() override;

  /// Takes the whole tree, and what is added to it later.
  void Attach(QMenuBar& bar);
  void Attach(QMenu& popup);
  /// Takes every menu of the program that nobody has taken, as it opens: those that text fields bring along.
  void AttachOthers();

  /// Makes an item available or not, at once, also in a menu that is open.
  void SetState(QAction* action, bool enabled);

  /// Shows the menus as the settings say now.
  void RefreshOwnMenus();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void TakeOther(QMenu* menu);
  void Watch(QAction* action);
  void WatchMenu(QMenu* menu);
  void OpenBar(QMenuBar* bar);
  void FitBar(QMenuBar* bar);
  void FitMenu(QMenu* menu);
  void Highlighted(QAction* action);
  void SayTitle(QAction* title);
  void MenuOpens(QMenu* menu);
  bool MenuKey(QMenu* menu, QKeyEvent* key);
  bool BarKey(QMenuBar* bar, QKeyEvent* key);
  bool LetterKey(QMenu* menu, QKeyEvent* key);
  void MoveTo(QMenu* menu, QAction* target);
  void SayItemBelow(QMenu* closed);

  Speech& speech_;
  const CommonSettings& look_;
  QList<QPointer<QMenuBar>> bars_;
  QList<QPointer<QMenu>> popups_;
  QList<QPointer<QMenu>> menus_;  ///< all that are watched, submenus too
  MenuStyle style_;
  QPointer<QAction> title_;  ///< of the bar, yet to be said
  QPointer<QMenu> opening_;  ///< its title has yet to be said
  bool quiet_ = false;       ///< the highlight only passes
};

}  // namespace talnik
