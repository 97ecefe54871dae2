#include "menus/OwnMenus.h"
#include "shell/ControlEvents.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>

#include <gtest/gtest.h>

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

struct MenuWindow : QMainWindow {
  MenuWindow() : events(this), speech(&world.voice, world.braille, world.sound, u"/s/"_qs), menus(speech, look) {
    setCentralWidget(&field);
    actions = BuildMenus(*menuBar(), Tree());
    actions[u"mnuTick"_qs]->setCheckable(true);
    actions[u"mnuTick"_qs]->setChecked(true);
    actions[u"mnuGone"_qs]->setEnabled(false);
    for (QAction* action : std::as_const(actions)) {
      QObject::connect(action, &QAction::triggered, this, [this, action] { chosen << action->objectName(); });
    }
    menus.Attach(*menuBar());
    events.GotFocus(&field, [this] { speech.Say(u"pole"_qs); });
    events.KeyUp(&field, [this](Key& key) { keyUps << QString::number(key.code); });
    resize(700, 400);
    show();
    field.setFocus();
    FormDriver::Until([this] { return isActiveWindow() && field.hasFocus(); });
    world.Heard();
  }

  /// What is heard after the keys, the last of them alone.
  std::string Hear(std::initializer_list<int> keys, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const int key : keys) {
      world.Heard();
      driver.Press(key, modifiers);
      FormDriver::Settle();
    }
    return world.Heard().join(u"; "_qs).toStdString();
  }

  FakeWorld world;
  CommonSettings look;
  ControlEvents events;
  Speech speech;
  OwnMenus menus;
  FormDriver driver;
  QLineEdit field;
  QHash<QString, QAction*> actions;
  QStringList chosen;
  QStringList keyUps;
};

TEST(OwnMenus, AnItemIsSaidWithItsStateAndKey) {
  QAction action(u" &Vybraný && den \tEnter"_qs);
  EXPECT_EQ(SpokenItem(action).toStdString(), "Vybraný & den Enter");
  action.setCheckable(true);
  action.setChecked(true);
  action.setEnabled(false);
  EXPECT_EQ(SpokenItem(action).toStdString(), "Vybraný & den zaškrtnuto nedostupné Enter");
  QMenu menu(u"Dny"_qs);
  EXPECT_EQ(SpokenItem(*menu.menuAction()).toStdString(), "Dny podnabídka");
}

TEST(OwnMenus, EachMoveIsSaid) {
  MenuWindow window;
  EXPECT_EQ(window.Hear({Qt::Key_F10}), "say: Talník");
  EXPECT_EQ(window.Hear({Qt::Key_Right}), "say: Čas");
  EXPECT_EQ(window.Hear({Qt::Key_Home}), "say: Talník");
  EXPECT_EQ(window.Hear({Qt::Key_End}), "say: Čas");
  EXPECT_EQ(window.Hear({Qt::Key_Left}), "say: Talník");
  EXPECT_EQ(window.Hear({Qt::Key_Down}), "say: Talník Import... podnabídka");
  EXPECT_EQ(window.Hear({Qt::Key_Down}), "say: Tikat zaškrtnuto");
  EXPECT_EQ(window.Hear({Qt::Key_Down}), "say: Nastavení & účty nedostupné Ctrl+N");
  EXPECT_EQ(window.Hear({Qt::Key_End}), "say: Ukončit");
  EXPECT_EQ(window.Hear({Qt::Key_Home}), "say: Import... podnabídka");
  EXPECT_EQ(window.Hear({Qt::Key_Right}), "say: Import... Soubor");
  EXPECT_EQ(window.Hear({Qt::Key_Left}), "say: Import... podnabídka");
  EXPECT_EQ(window.Hear({Qt::Key_Right, Qt::Key_Escape}), "say: Import... podnabídka");
  EXPECT_EQ(window.Hear({Qt::Key_Down, Qt::Key_Right}), "say: Čas Ohlásit čas");
}

TEST(OwnMenus, EscapeGoesBackStepByStepAndTheControlIsAnnounced) {
  MenuWindow window;
  EXPECT_EQ(window.Hear({Qt::Key_F10, Qt::Key_Down, Qt::Key_Escape}), "say: Talník");
  EXPECT_EQ(window.Hear({Qt::Key_Escape}), "say: pole");
  EXPECT_TRUE(window.field.hasFocus());
  EXPECT_EQ(window.Hear({Qt::Key_F10}), "say: Talník");
  EXPECT_EQ(window.Hear({Qt::Key_F10}), "say: pole");
  EXPECT_TRUE(window.keyUps.isEmpty()) << window.keyUps.join(u' ').toStdString();
}

TEST(OwnMenus, AltOpensTheBarAndItsLettersOpenMenus) {
  MenuWindow window;
  EXPECT_EQ(window.Hear({Qt::Key_A}, Qt::AltModifier), "say: Čas Ohlásit čas");
  EXPECT_EQ(window.Hear({Qt::Key_Escape, Qt::Key_T}), "say: Talník Import... podnabídka");
}

TEST(OwnMenus, LettersGoByMnemonicAndByFirstLetter) {
  MenuWindow window;
  window.Hear({Qt::Key_F10, Qt::Key_Down});
  EXPECT_EQ(window.Hear({Qt::Key_T}), "say: Tikat zaškrtnuto");
  EXPECT_EQ(window.Hear({Qt::Key_I}), "say: Import... podnabídka");
  EXPECT_EQ(window.Hear({Qt::Key_N}), "say: Nastavení & účty nedostupné Ctrl+N");
  EXPECT_EQ(window.Hear({Qt::Key_U}), "say: Ukončit");
  EXPECT_EQ(window.Hear({Qt::Key_X}), "sound: refused.wav");
  EXPECT_TRUE(window.chosen.isEmpty());
  window.Hear({Qt::Key_K});
  EXPECT_EQ(window.chosen.join(u' ').toStdString(), "mnuExit");
}

TEST(OwnMenus, AnUnavailableItemRefusesAndTheMenuStays) {
  MenuWindow window;
  window.Hear({Qt::Key_F10, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
  for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
    EXPECT_EQ(window.Hear({key}), "sound: refused.wav");
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
  }
  window.menus.SetState(window.actions[u"mnuGone"_qs], true);
  EXPECT_EQ(window.Hear({Qt::Key_Up, Qt::Key_Down}), "say: Nastavení & účty Ctrl+N");
  window.Hear({Qt::Key_Return});
  EXPECT_EQ(window.chosen.join(u' ').toStdString(), "mnuGone");
  EXPECT_TRUE(window.keyUps.isEmpty());
}

TEST(OwnMenus, APopupOfItsOwnBeginsAtItsFirstItem) {
  MenuWindow window;
  QMenu tray(u"Talník"_qs);
  auto actions = BuildMenus(tray, {{u"open"_qs, u"Otevřít talník"_qs, u""_qs}, {u"end"_qs, u"Konec"_qs, u""_qs}});
  window.menus.Attach(tray);
  QAction* late = tray.addAction(u"Později"_qs);
  tray.popup(QPoint(10, 10));
  FormDriver::Settle();
  EXPECT_EQ(window.Hear({Qt::Key_Home}), "say: Otevřít talník");
  EXPECT_EQ(window.Hear({Qt::Key_Down}), "say: Konec");
  EXPECT_EQ(window.Hear({Qt::Key_Down}), "say: Později");
  EXPECT_EQ(window.Hear({Qt::Key_Escape}), "say: pole");
  EXPECT_EQ(tray.activeAction(), nullptr);
  EXPECT_NE(late, nullptr);
}

TEST(OwnMenus, TypeAndColoursFollowTheSettingsAndTheBarFits) {
  MenuWindow window;
  auto* menu = window.actions[u"mnuFile"_qs]->menu();
  const auto look = [&] {
    menu->popup(QPoint(0, 0));
    FormDriver::Settle();
    const QImage picture = menu->grab().toImage();
    menu->close();
    return picture.pixelColor(picture.width() - 5, 5);
  };
  EXPECT_EQ(look(), window.look.BackMenuColor);
  const int before = menu->sizeHint().height();
  window.look.BackMenuColor = Qt::blue;
  window.look.MenuSize = 30;
  window.menus.RefreshOwnMenus();
  EXPECT_EQ(look(), QColor(Qt::blue));
  EXPECT_GT(menu->sizeHint().height(), before * 5 / 4);
  window.look.MenuSize = 100;
  window.menus.RefreshOwnMenus();
  look();
  EXPECT_LE(menu->sizeHint().width(), menu->screen()->availableSize().width());
  FormDriver::Settle();
  const QMenuBar& bar = *window.menuBar();
  for (const QAction* action : bar.actions()) {
    EXPECT_TRUE(bar.rect().contains(bar.actionGeometry(const_cast<QAction*>(action)))) << action->text().toStdString();
  }
}

}  // namespace
}  // namespace talnik::test
