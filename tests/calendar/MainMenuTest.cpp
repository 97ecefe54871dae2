#include "calendar/MainMenu.h"
#include "calendar/MainWindow.h"

#include <QAction>
#include <QMenu>

namespace talnik::test {
namespace {

using MainMenu = MainWindow;

TEST_F(MainMenu, FollowsTheSettingsOfTheFamilyWhenTheWindowIsShown) {
  Start();
  auto* menu = Menu("mnuHelp")->menu();
  const auto colourOf = [menu] {
    menu->popup(QPoint(0, 0));
    FormDriver::Settle();
    const QImage picture = menu->grab().toImage();
    menu->close();
    return picture.pixelColor(picture.width() - 5, 5);
  };
  const QColor before = colourOf();
  world_.registry.Values[CommonKey() + u"|BackMenuColor"_qs] = quint32{0xFF0000};
  Choose("mnuHide");
  world_.trayIcon.LeftClick();
  EXPECT_EQ(before, QColor(Qt::yellow));
  EXPECT_EQ(colourOf(), QColor(Qt::blue));
}

TEST_F(MainMenu, EveryCommandThatCanBeChosenDoesSomething) {
  Start();
  for (const MenuEntry& entry : MainMenuEntries()) {
    if (entry.state != MenuEntry::State::Ready) continue;
    EXPECT_TRUE(main_->KnowsCommand(QString::fromLatin1(entry.name))) << entry.name;
  }
  EXPECT_FALSE(main_->KnowsCommand(u"mnuGen100"_qs));
}

TEST_F(MainMenu, SpeaksAndComesBackToTheList) {
  Start();
  world_.Heard();
  user_.Press(Qt::Key_F10);
  FormDriver::Settle();
  EXPECT_TRUE(Heard().find("Talník") != std::string::npos);
  user_.Press(Qt::Key_Escape);
  FormDriver::Settle();
  EXPECT_TRUE(main_->List1->hasFocus());
}

TEST_F(MainMenu, DateDialogsReturnToTheList) {
  Start();
  main_->Command1->setFocus();
  user_.Expect([this](QWidget* dialog) {
    EXPECT_EQ(dialog->objectName(), u"frmSetSysDate"_qs);
    EXPECT_EQ(dialog->windowTitle(), u"Přejít na den"_qs);
    dialog->findChild<QLineEdit*>(u"Text1(1)"_qs)->setText(u"5"_qs);
    dialog->findChild<QPushButton*>(u"cmdSet"_qs)->click();
  });
  Choose("mnuSetDate");
  FormDriver::Settle();
  EXPECT_EQ(DayAndMonth(), u"15. středa květen 2024"_qs);
  EXPECT_TRUE(main_->List1->hasFocus());
}

}  // namespace
}  // namespace talnik::test
