#include "menus/OwnMenus.h"

#include "shell/Form.h"

#include <QAction>
#include <QActionEvent>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QStyleOption>

#include <algorithm>
#include <functional>
#include <utility>

namespace talnik {

namespace {

/// No screen holds a caption in more points, whatever the settings say.
constexpr int LargestType = 400;

/// Pixels; the toolkit's own mark of a submenu is hardly to be seen in large type.
constexpr int SubmenuArrow = 20;

QString MenuSheet(const CommonSettings& look) {
  const QString sheet =
      uR"(
    QMenuBar, QMenu { background-color: %back; color: %fore; font-family: "Arial"; }
    QMenu { border: 2px solid %fore; font-size: %sizept; menu-scrollable: 1; }
    QMenu::item { padding: 3px 30px; background-color: %back; color: %fore; }
    QMenu::item:disabled { color: %dim; }
    QMenu::item:selected { background-color: %fore; color: %back; }
    QMenu::item:disabled:selected { background-color: %dim; color: %back; }
    QMenu::right-arrow { width: %arrowpx; height: %arrowpx; margin-right: 6px; }
    QMenu::separator { height: 2px; background-color: %fore; margin: 4px 8px; }
    QMenuBar::item { padding: 3px 8px; background-color: %back; color: %fore; }
    QMenuBar::item:selected, QMenuBar::item:pressed { background-color: %fore; color: %back; }
  )"_qs;
  return QString(sheet)
      .replace(u"%back"_qs, look.BackMenuColor.name())
      .replace(u"%fore"_qs, look.ForeMenuColor.name())
      .replace(u"%dim"_qs, SubduedColor(look.ForeMenuColor, look.BackMenuColor).name())
      .replace(u"%arrow"_qs, QString::number(SubmenuArrow))
      .replace(u"%size"_qs, QString::number(std::clamp(look.MenuSize, 1, LargestType)));
}

/// The caption as it is read: no mnemonic mark, no outer blanks.
QString Caption(const QString& text) {
  QString caption = text.section(u'\t', 0, 0);
  const QString mark = u"\x01"_qs;
  caption.replace(u"&&"_qs, mark).remove(u'&').replace(mark, u"&"_qs);
  return caption.trimmed();
}

QString KeyOf(const QAction& action) {
  const QString shown = action.text().section(u'\t', 1).trimmed();
  return shown.isEmpty() ? action.shortcut().toString(QKeySequence::NativeText) : shown;
}

/// Sets the column of the keys apart from that of the captions.
QString WithGap(const QString& caption) {
  return QString(caption).replace(u"\t"_qs, u"\t   "_qs);
}

/// A bar or a popup of the table's tree; what the two have in common.
template <class Root>
QHash<QString, QAction*> Build(Root& root, const QList<MenuItem>& items) {
  QHash<QString, QAction*> actions;
  for (const MenuItem& item : items) {
    QMenu* group = actions.contains(item.parent) ? actions.value(item.parent)->menu() : nullptr;
    QAction* action = nullptr;
    switch (item.kind) {
      case MenuItem::Kind::Group: {
        QMenu* menu = group ? group->addMenu(item.caption) : root.addMenu(item.caption);
        menu->setObjectName(item.name);
        action = menu->menuAction();
        break;
      }
      case MenuItem::Kind::Separator:
        action = group ? group->addSeparator() : root.addSeparator();
        break;
      case MenuItem::Kind::Command:
        action = group ? group->addAction(WithGap(item.caption)) : root.addAction(WithGap(item.caption));
        break;
    }
    action->setObjectName(item.name);
    actions.insert(item.name, action);
  }
  return actions;
}

bool CanBeReached(const QAction* action) {
  return action->isVisible() && !action->isSeparator();
}

QList<QAction*> Reachable(const QWidget& menu) {
  QList<QAction*> reachable = menu.actions();
  reachable.removeIf([](const QAction* action) { return !CanBeReached(action); });
  return reachable;
}

bool IsLetter(const QKeyEvent& key) {
  constexpr auto noText = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  return key.text().size() == 1 && key.text()[0].isLetterOrNumber() && !(key.modifiers() & noText);
}

bool HasMnemonic(const QAction& action, QChar letter) {
  const QKeySequence mnemonic = QKeySequence::mnemonic(action.text());
  return !mnemonic.isEmpty() && mnemonic[0].key() == letter.toUpper().unicode();
}

/// The next action behind `current`, round the end, whose caption begins with the letter.
QAction* NextWithLetter(const QWidget& menu, const QAction* current, const QString& letter) {
  const QList<QAction*> actions = Reachable(menu);
  const auto at = actions.indexOf(const_cast<QAction*>(current));
  for (qsizetype step = 1; step <= actions.size(); ++step) {
    QAction* action = actions[(at + step + actions.size()) % actions.size()];
    if (Caption(action->text()).startsWith(letter, Qt::CaseInsensitive)) return action;
  }
  return nullptr;
}

/// The largest type up to `points` in which what needs so much room fits into it; 8 when none does.
int LargestFit(int points, int room, const std::function<int(const QFontMetrics&)>& needed) {
  QFont font(u"Arial"_qs);
  int fitting = 8;
  int tooLarge = std::min(points, LargestType) + 1;
  // Every size that is tried costs the loading of its type: the wanted one, which mostly fits, then what the last one
  // lets expect.
  for (int tried = tooLarge - 1; fitting + 1 < tooLarge;) {
    font.setPointSize(tried);
    const int width = std::max(needed(QFontMetrics(font)), 1);
    (width <= room ? fitting : tooLarge) = tried;
    tried = std::clamp(tried * room / width, fitting + 1, std::max(tooLarge - 1, fitting + 1));
  }
  return fitting;
}

/// Each new sheet costs a repaint of the whole tree.
void SetSheet(QWidget* widget, const QString& sheet) {
  if (widget->styleSheet() != sheet) widget->setStyleSheet(sheet);
}

void SendKey(QWidget* target, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(target, &press);
}

/// Marks the menus that are spoken, by whichever window.
constexpr const char* Taken = "ownMenu";

/// Tells of each menu before it is shown for the first time.
class MenuWatch : public QObject {
 public:
  MenuWatch(std::function<void(QMenu*)> opens, QObject* parent) : QObject(parent), opens_(std::move(opens)) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Polish) return false;
    if (auto* menu = qobject_cast<QMenu*>(watched)) opens_(menu);
    return false;
  }

 private:
  std::function<void(QMenu*)> opens_;
};

}  // namespace

QHash<QString, QAction*> BuildMenus(QMenuBar& bar, const QList<MenuItem>& items) {
  return Build(bar, items);
}

QHash<QString, QAction*> BuildMenus(QMenu& popup, const QList<MenuItem>& items) {
  return Build(popup, items);
}

QString SpokenItem(const QAction& action) {
  QStringList words = {Caption(action.text())};
  if (action.isCheckable() && action.isChecked()) words << OwnMenus::tr("zaškrtnuto");
  if (!action.isEnabled()) words << OwnMenus::tr("nedostupné");
  if (action.menu()) words << OwnMenus::tr("podnabídka");
  words << KeyOf(action);
  words.removeAll(QString());
  return words.join(u' ');
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* answer) const {
  if (hint == SH_Menu_AllowActiveAndDisabled) return 1;
  return QProxyStyle::styleHint(hint, option, widget, answer);
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element != PE_IndicatorArrowRight) return QProxyStyle::drawPrimitive(element, option, painter, widget);
  const QRect& area = option->rect;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(option->palette.highlightedText());
  painter->drawPolygon(QPolygon({area.topLeft(), QPoint(area.right(), area.center().y()), area.bottomLeft()}));
  painter->restore();
}

OwnMenus::OwnMenus(Speech& speech, const CommonSettings& look, QObject* parent)
    : QObject(parent), speech_(speech), look_(look) {}

OwnMenus::~OwnMenus() {
  for (const auto& menu : menus_) {
    if (menu) menu->setStyle(nullptr);
  }
}

void OwnMenus::Attach(QMenuBar& bar) {
  // A bar that the desktop shows elsewhere would have neither type, nor colours, nor speech.
  bar.setNativeMenuBar(false);
  bars_ << &bar;
  bar.installEventFilter(this);
  for (QAction* action : bar.actions()) Watch(action);
  auto* shortcut = new QShortcut(Qt::Key_F10, &bar);
  connect(shortcut, &QShortcut::activated, this, [this, at = &bar] { OpenBar(at); });
  RefreshOwnMenus();
}

void OwnMenus::Attach(QMenu& popup) {
  popups_ << &popup;
  WatchMenu(&popup);
  RefreshOwnMenus();
}

void OwnMenus::AttachOthers() {
  qApp->installEventFilter(new MenuWatch([this](QMenu* menu) { TakeOther(menu); }, this));
}

void OwnMenus::TakeOther(QMenu* menu) {
  // What the toolkit keeps behind a bar that is too narrow holds the titles of that bar.
  const bool isOverflow = qobject_cast<QMenuBar*>(menu->parentWidget()) != nullptr;
  if (menu->property(Taken).toBool() || isOverflow) return;
  menus_.removeAll(nullptr);
  popups_.removeAll(nullptr);
  popups_ << menu;
  WatchMenu(menu);
}

void OwnMenus::SetState(QAction* action, bool enabled) {
  if (action) action->setEnabled(enabled);
}

void OwnMenus::RefreshOwnMenus() {
  for (const auto& popup : popups_) {
    if (popup) FitMenu(popup);
  }
  for (const auto& bar : bars_) {
    if (bar) FitBar(bar);
  }
}

void OwnMenus::Watch(QAction* action) {
  connect(action, &QAction::hovered, this, [this, action] { Highlighted(action); });
  if (action->menu()) WatchMenu(action->menu());
}

void OwnMenus::WatchMenu(QMenu* menu) {
  menu->installEventFilter(this);
  menu->setProperty(Taken, true);
  menu->setStyle(&style_);
  menus_ << menu;
  connect(menu, &QMenu::aboutToShow, this, [this, menu] { MenuOpens(menu); });
  for (QAction* action : menu->actions()) Watch(action);
}

/// The toolkit opens its bar at a press and release of Alt and offers no other way.
void OwnMenus::OpenBar(QMenuBar* bar) {
  QWidget* window = bar->window();
  QKeyEvent press(QEvent::ShortcutOverride, Qt::Key_Alt, Qt::NoModifier);
  QApplication::sendEvent(window, &press);
  QKeyEvent release(QEvent::KeyRelease, Qt::Key_Alt, Qt::NoModifier);
  QApplication::sendEvent(window, &release);
}

/// The largest type, up to that of the menus, in which all of the bar fits into its window.
void OwnMenus::FitBar(QMenuBar* bar) {
  constexpr int padding = 24;
  const int room = bar->window()->isVisible() ? bar->width() : bar->screen()->availableSize().width();
  const int points = LargestFit(look_.MenuSize, room, [&](const QFontMetrics& metrics) {
    int needed = 0;
    for (const QAction* action : Reachable(*bar)) needed += metrics.horizontalAdvance(action->text()) + padding;
    return needed;
  });
  SetSheet(bar, MenuSheet(look_) + u" QMenuBar { font-size: %1pt; }"_qs.arg(points));
}

/// The same for a menu and the screen. Too many lines are scrolled, too long ones could not be.
void OwnMenus::FitMenu(QMenu* menu) {
  constexpr int padding = 120;
  const int room = menu->screen()->availableSize().width();
  const int points = LargestFit(look_.MenuSize, room, [&](const QFontMetrics& metrics) {
    // The keys stand in a column of their own behind the longest caption.
    int captions = 0;
    int keys = 0;
    for (const QAction* item : Reachable(*menu)) {
      captions = std::max(captions, metrics.horizontalAdvance(item->text().section(u'\t', 0, 0)));
      keys = std::max(keys, metrics.horizontalAdvance(item->text().section(u'\t', 1)));
    }
    return captions + keys + padding;
  });
  const QString sheet = popups_.contains(menu) ? MenuSheet(look_) : QString();
  SetSheet(menu, sheet + (points < look_.MenuSize ? u" QMenu { font-size: %1pt; }"_qs.arg(points) : QString()));
}

void OwnMenus::Highlighted(QAction* action) {
  if (quiet_ || !action || action->isSeparator()) return;
  const auto inBar = [action](const QPointer<QMenuBar>& bar) { return bar && bar->actions().contains(action); };
  if (std::any_of(bars_.begin(), bars_.end(), inBar)) return SayTitle(action);
  title_ = nullptr;
  QString text = SpokenItem(*action);
  if (opening_ && opening_->actions().contains(action)) {
    const QString title = Caption(std::exchange(opening_, nullptr)->title());
    if (!title.isEmpty()) text.prepend(title + u' ');
  }
  speech_.Say(text);
}

/// A title in the bar; where its menu opens with it, the menu says the title.
void OwnMenus::SayTitle(QAction* title) {
  title_ = title;
  QMetaObject::invokeMethod(
      this,
      [this, title] {
        if (title_ == title) speech_.Say(Caption(std::exchange(title_, nullptr)->text()));
      },
      Qt::QueuedConnection);
}

void OwnMenus::MenuOpens(QMenu* menu) {
  FitMenu(menu);
  opening_ = menu;
  title_ = nullptr;
  // A menu opened by the mouse, or by the tray, has no highlight yet.
  QMetaObject::invokeMethod(
      this,
      [this, shown = QPointer<QMenu>(menu)] {
        if (!shown || opening_ != shown || !shown->isVisible()) return;
        if (popups_.contains(shown) && !shown->activeAction()) return SendKey(shown, Qt::Key_Down);
        opening_ = nullptr;
        speech_.Say(Caption(shown->title()));
      },
      Qt::QueuedConnection);
}

bool OwnMenus::eventFilter(QObject* watched, QEvent* event) {
  auto* menu = qobject_cast<QMenu*>(watched);
  auto* bar = qobject_cast<QMenuBar*>(watched);
  switch (event->type()) {
    case QEvent::KeyPress:
      if (menu && !quiet_) return MenuKey(menu, static_cast<QKeyEvent*>(event));
      return bar && BarKey(bar, static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonRelease:
      if (menu && menu->activeAction() && !menu->activeAction()->isEnabled()) speech_.Signal(Speech::Refused);
      return false;
    case QEvent::ActionAdded:
      Watch(static_cast<QActionEvent*>(event)->action());
      return false;
    case QEvent::Resize:
      if (bar) FitBar(bar);
      return false;
    default:
      return false;
  }
}

bool OwnMenus::MenuKey(QMenu* menu, QKeyEvent* key) {
  const QAction* active = menu->activeAction();
  switch (key->key()) {
    case Qt::Key_Home:
    case Qt::Key_End:
      if (const auto items = Reachable(*menu); !items.isEmpty()) {
        MoveTo(menu, key->key() == Qt::Key_Home ? items.first() : items.last());
      }
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (!active || active->isEnabled()) return false;
      speech_.Signal(Speech::Refused);
      return true;
    case Qt::Key_Escape:
    case Qt::Key_Left:
      SayItemBelow(menu);
      return false;
    default:
      return IsLetter(*key) && LetterKey(menu, key);
  }
}

bool OwnMenus::LetterKey(QMenu* menu, QKeyEvent* key) {
  const QList<QAction*> actions = Reachable(*menu);
  QList<QAction*> marked = actions;
  marked.removeIf([key](const QAction* action) { return !HasMnemonic(*action, key->text()[0]); });
  const bool enabledOne = std::any_of(marked.begin(), marked.end(), [](const QAction* a) { return a->isEnabled(); });
  if (enabledOne) return false;
  QAction* target = marked.isEmpty() ? NextWithLetter(*menu, menu->activeAction(), key->text()) : marked.first();
  if (!target) {
    speech_.Signal(Speech::Refused);
    return true;
  }
  MoveTo(menu, target);
  if (!marked.isEmpty()) speech_.Signal(Speech::Refused);
  return true;
}

/// Highlights an item and scrolls to it, without opening it as the toolkit would with a submenu.
void OwnMenus::MoveTo(QMenu* menu, QAction* target) {
  quiet_ = true;
  if (!target->menu()) menu->setActiveAction(target);
  for (auto steps = menu->actions().size(); menu->activeAction() != target && steps > 0; --steps) {
    SendKey(menu, Qt::Key_Down);
  }
  quiet_ = false;
  Highlighted(target);
}

/// When a submenu has closed, the item that had opened it is said again.
void OwnMenus::SayItemBelow(QMenu* closed) {
  QMetaObject::invokeMethod(
      this,
      [this, closed = QPointer<QMenu>(closed)] {
        const auto* below = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QAction* item = below ? below->activeAction() : nullptr;
        if (closed && item && item->menu() == closed) Highlighted(item);
      },
      Qt::QueuedConnection);
}

bool OwnMenus::BarKey(QMenuBar* bar, QKeyEvent* key) {
  if (key->key() == Qt::Key_Home || key->key() == Qt::Key_End) {
    const QList<QAction*> actions = Reachable(*bar);
    if (actions.isEmpty()) return false;
    const QAction* target = key->key() == Qt::Key_Home ? actions.first() : actions.last();
    quiet_ = true;
    for (auto steps = actions.size(); bar->activeAction() != target && steps > 0; --steps) SendKey(bar, Qt::Key_Right);
    quiet_ = false;
    Highlighted(bar->activeAction());
    return true;
  }
  if (!IsLetter(*key)) return false;
  for (const QAction* action : bar->actions()) {
    if (HasMnemonic(*action, key->text()[0])) return false;
  }
  QAction* target = NextWithLetter(*bar, bar->activeAction(), key->text());
  if (!target) {
    speech_.Signal(Speech::Refused);
    return true;
  }
  bar->setActiveAction(target);
  if (target->menu() && !target->menu()->activeAction()) SendKey(target->menu(), Qt::Key_Down);
  return true;
}

}  // namespace talnik
