#include "menus/OwnMenus.h"
#include "shell/ControlEvents.h"
#include "support/Contrast.h"
#include "support/FormWorld.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>

namespace talnik::test {
namespace {

using Kind = MenuItem::Kind;

QList<MenuItem> Tree() {
  return {
      {u"mnuFile"_qs, u"Talník "_qs, u""_qs, Kind::Group},
      {u"mnuGroup"_qs, u"Import..."_qs, u"mnuFile"_qs, Kind::Group},
      {u"mnuImport"_qs, u"Soubor"_qs, u"mnuGroup"_qs},
      {u"mnuSep0"_qs, u""_qs, u"mnuFile"_qs, Kind::Separator},
      {u"mnuTick"_qs, u"Tikat"_qs, u"mnuFile"_qs},
      {u"mnuGone"_qs, u"Nastavení && účty\tCtrl+N"_qs, u"mnuFile"_qs},
      {u"mnuExit"_qs, u"U&končit"_qs, u"mnuFile"_qs},
      {u"mnuTime"_qs, u"    Č&as    "_qs, u""_qs, Kind::Group},
      {u"mnuClock"_qs, u"&Ohlásit čas"_qs, u"mnuTime"_qs},
  };
}

struct MenuWindow : QMainWindow, FormWorld {
  MenuWindow() : events(this), menus(speech, look) {
    settles = true;
    setCentralWidget(&field);
    actions = BuildMenus(*menuBar(), Tree());
    for (const QString& checked : {u"mnuTick"_qs, u"mnuGone"_qs}) {
      actions[checked]->setCheckable(true);
      actions[checked]->setChecked(true);
    }
    actions[u"mnuGone"_qs]->setEnabled(false);
    for (QAction* action : std::as_const(actions)) {
      QObject::connect(action, &QAction::triggered, this, [this, action] { chosen << action->objectName(); });
    }
    menus.Attach(*menuBar());
    events.GotFocus(&field, [this] { speech.Say(u"pole"_qs); });
    events.KeyUp(&field,
                 [](Key& key) { EXPECT_TRUE(key.Is(Qt::Key_Alt)) << "a key of the menus came up here: " << key.code; });
    resize(700, 400);
    show();
    field.setFocus();
    FormDriver::Until([this] { return isActiveWindow() && field.hasFocus(); });
  }

  ControlEvents events;
  OwnMenus menus;
  QLineEdit field;
  QHash<QString, QAction*> actions;
  QStringList chosen;
};

TEST(OwnMenus, EachMoveIsSaidAndTheControlWhenAllIsLeft) {
  MenuWindow window;
  window.Play("F10 > say: Talník | Right > say: Čas | Home > say: Talník | End > say: Čas | Left > say: Talník");
  window.Play("Down > say: Talník Import... podnabídka | Down > say: Tikat zaškrtnuto");
  window.Play(
      "Down > say: Nastavení & účty zaškrtnuto nedostupné Ctrl+N | End > say: Ukončit | Home > say: Import... "
      "podnabídka");
  window.Play("Right > say: Import... Soubor | Left > say: Import... podnabídka | Right > say: Import... Soubor");
  window.Play("Escape > say: Import... podnabídka | Down > say: Tikat zaškrtnuto | Right > say: Čas Ohlásit čas");
  window.Play("Escape > say: Čas | Escape > say: pole | F10 > say: Talník | F10 > say: pole");
  EXPECT_TRUE(window.field.hasFocus());
}

TEST(OwnMenus, LettersGoByMnemonicAndByFirstLetter) {
  MenuWindow window;
  window.Play("Alt+A > say: Čas Ohlásit čas | Escape > say: Čas | T > say: Talník Import... podnabídka");
  window.Play(
      "T > say: Tikat zaškrtnuto | I > say: Import... podnabídka | N > say: Nastavení & účty zaškrtnuto nedostupné "
      "Ctrl+N");
  window.Play("U > say: Ukončit | X > sound: refused.wav");
  EXPECT_TRUE(window.chosen.isEmpty());
  window.Press("K");
  EXPECT_EQ(window.chosen.join(u' ').toStdString(), "mnuExit");
}

TEST(OwnMenus, AnUnavailableItemRefusesAndTheMenuStays) {
  MenuWindow window;
  for (const char* key : {"F10", "Down", "Down", "Down"}) window.Press(key);
  window.Play("Return > sound: refused.wav | Enter > sound: refused.wav | Space > sound: refused.wav");
  EXPECT_NE(QApplication::activePopupWidget(), nullptr);
  window.menus.SetState(window.actions[u"mnuGone"_qs], true);
  window.Play("Up > say: Tikat zaškrtnuto | Down > say: Nastavení & účty zaškrtnuto Ctrl+N");
  window.Press("Return");
  EXPECT_EQ(window.chosen.join(u' ').toStdString(), "mnuGone");
}

TEST(OwnMenus, APopupOfItsOwnBeginsAtItsFirstItem) {
  MenuWindow window;
  QMenu tray(u"Talník"_qs);
  BuildMenus(tray, {{u"open"_qs, u"Otevřít talník"_qs, u""_qs}, {u"end"_qs, u"Konec"_qs, u""_qs}});
  window.menus.Attach(tray);
  tray.addAction(u"Později"_qs);
  window.Heard();
  tray.popup(QPoint(10, 10));
  FormDriver::Settle();
  EXPECT_EQ(window.Heard(), "say: Talník Otevřít talník");
  window.Play("Down > say: Konec | Down > say: Později | Escape > say: pole");
}

TEST(OwnMenus, TheMenuOfATextFieldIsTakenAsItOpens) {
  MenuWindow window;
  window.menus.AttachOthers();
  window.Heard();
  QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(1, 1), window.mapToGlobal(QPoint(1, 1)));
  QApplication::sendEvent(&window.field, &byKey);
  FormDriver::Settle();
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  const QString first = SpokenItem(*menu->actions().first());
  EXPECT_EQ(window.Heard(), "say: " + first.toStdString());
  EXPECT_EQ(menu->font().family(), u"Arial"_qs);
  window.Play("Escape > say: pole");
}

TEST(OwnMenus, ABarOfAnotherWindowThatIsTooNarrowIsSaidOnce) {
  MenuWindow window;
  window.menus.AttachOthers();
  QMainWindow other;
  QLineEdit field(&other);
  BuildMenus(*other.menuBar(), Tree());
  // The toolkit hides the titles behind a menu of its own.
  other.menuBar()->resize(60, 20);
  (void)other.menuBar()->sizeHint();
  OwnMenus menus(window.speech, window.look);
  menus.Attach(*other.menuBar());
  other.resize(60, 400);
  other.show();
  other.activateWindow();
  field.setFocus();
  ASSERT_TRUE(FormDriver::Until([&] { return other.isActiveWindow() && field.hasFocus(); }));
  window.Heard();
  window.Play("F10 > say: Talník | Down > say: Talník Import... podnabídka | Escape > say: Talník");
}

TEST(OwnMenus, EveryStateOfAnItemStandsOut) {
  MenuWindow window;
  auto* menu = window.actions[u"mnuFile"_qs]->menu();
  menu->popup(QPoint(0, 0));
  for (QAction* lit : {window.actions[u"mnuExit"_qs], window.actions[u"mnuGone"_qs]}) {
    menu->setActiveAction(lit);
    FormDriver::Settle();
    const QImage picture = menu->grab().toImage();
    for (QAction* item : {window.actions[u"mnuExit"_qs], window.actions[u"mnuGone"_qs]}) {
      EXPECT_GE(Contrast(picture.copy(menu->actionGeometry(item))), Readable)
          << item->objectName().toStdString() << (item == lit ? " highlighted" : "");
    }
  }
  menu->close();
  window.menuBar()->setActiveAction(window.actions[u"mnuTime"_qs]);
  EXPECT_GE(Contrast(window.menuBar()->grab().toImage()), Readable);
}

TEST(OwnMenus, TypeAndColoursFollowTheSettingsAndTheBarFits) {
  MenuWindow window;
  auto* menu = window.actions[u"mnuFile"_qs]->menu();
  const auto background = [&](int size, const QColor& color) {
    window.look.MenuSize = size;
    window.look.BackMenuColor = color;
    window.menus.RefreshOwnMenus();
    menu->popup(QPoint(0, 0));
    FormDriver::Settle();
    const QImage picture = menu->grab().toImage();
    menu->close();
    return picture.pixelColor(picture.width() - 5, 5);
  };
  EXPECT_EQ(background(20, Qt::yellow), QColor(Qt::yellow));
  const int before = menu->sizeHint().height();
  EXPECT_EQ(background(30, Qt::blue), QColor(Qt::blue));
  EXPECT_GT(menu->sizeHint().height(), before * 5 / 4);
  background(32'760, Qt::blue);
  EXPECT_LE(menu->sizeHint().width(), menu->screen()->availableSize().width());
  QMenuBar& bar = *window.menuBar();
  for (QAction* action : bar.actions()) EXPECT_TRUE(bar.rect().contains(bar.actionGeometry(action)));
}

}  // namespace
}  // namespace talnik::test
