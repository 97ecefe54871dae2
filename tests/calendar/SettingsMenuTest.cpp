#include "calendar/MainWindow.h"

#include <QApplication>
#include <QMenu>
#include <QTabBar>

namespace talnik::test {
namespace {

using SettingsMenu = MainWindow;

}  // namespace

TEST_F(SettingsMenu, TheAccountOpensOnItsTabAndOkTakesEffectAtOnce) {
  Start();
  for (const auto& [command, tab] : {std::pair("mnuSettingsAccount", 1), std::pair("mnuSettings", 0)}) {
    user_.Expect([&, tab = tab](QWidget* dialog) {
      EXPECT_EQ(dialog->objectName(), u"frmSettings"_qs);
      EXPECT_EQ(FormDriver::Find<QTabBar>(dialog, "TabStrip1")->currentIndex(), tab);
      FormDriver::Find<QLineEdit>(dialog, "txtAutSync")->setText(tab == 1 ? u"7"_qs : u"0"_qs);
      FormDriver::Find<QLineEdit>(dialog, "txtHotKey")->setFocus();
      if (tab == 0) user_.Press(Qt::Key_K, Qt::ControlModifier, dialog);
      FormDriver::Find<QPushButton>(dialog, "cmdOK")->click();
    });
    Choose(command);
    EXPECT_EQ(main_->AutSync_Timer.isActive(), tab == 1);
  }
  EXPECT_EQ(world_.keyboardHook.Watched, 2 << 16 | 'K');
  ExpectMessage(u"Horkou klávesu CTRL + K nelze použít. Drží ji jiný program, nebo ji prostředí nedovolí."_qs,
                "cmdYES");
  world_.keyboardHook.Refused();
  world_.keyboardHook.Refused();
  FormDriver::Settle();
  EXPECT_TRUE(FormDriver::Until([this] { return user_.AllCame(); }));
}

TEST_F(SettingsMenu, AHotKeyOfTheFileThatIsRefusedIsNotToldOf) {
  Start();
  world_.keyboardHook.Refused();
  FormDriver::Settle();
}

TEST_F(SettingsMenu, TheHotKeyIsHeardOverADialogAndOverAMenu) {
  Start();
  user_.Expect([this](QWidget* dialog) {
    FormDriver::Settle();
    Heard();
    world_.keyboardHook.Released();
    EXPECT_EQ(Heard(), "say: Spustit po startu nezaškrtnuto");
    user_.Press(Qt::Key_Escape, Qt::NoModifier, dialog);
  });
  Choose("mnuSettings");
  EXPECT_TRUE(ComesToFront());
  auto* menu = qobject_cast<QMenu*>(Menu("mnuHide")->parent());
  ASSERT_TRUE(menu);
  menu->popup({});
  user_.Press(Qt::Key_Control, Qt::ControlModifier);
  FormDriver::Settle();
  Heard();
  world_.keyboardHook.Released();
  EXPECT_FALSE(QApplication::activePopupWidget());
  EXPECT_EQ(Heard(), "say: 15. pondělí");
}

}  // namespace talnik::test
