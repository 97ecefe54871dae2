#include "calendar/MainMenu.h"
#include "calendar/MainWindow.h"
#include "calendar/TaskFilters.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace talnik::test {
namespace {

using MainMenu = MainWindow;

/// Names of the shown items, "-" for a separator, "!" behind one that cannot be chosen.
QString Shape(const QWidget& menu) {
  QStringList parts;
  for (const QAction* action : menu.actions()) {
    if (!action->isVisible()) continue;
    QString part = action->objectName().mid(3);
    if (action->isSeparator()) part = u'-' + part;
    if (!action->isEnabled() && !action->isSeparator()) part += u'!';
    if (action->menu()) part += u'(' + Shape(*action->menu()) + u')';
    parts << part;
  }
  return parts.join(u' ');
}

TEST_F(MainMenu, StandsWholeAndInOrder) {
  Start();
  EXPECT_EQ(Shape(*main_->menuBar()).toStdString(),
            "Talnik(ImportGroup(Import) ExportGroup(Export) GoogleSync SyncLog Settings SettingsAccount "
            "SetServer DelSchedule -Sep0 Hide Exit) "
            "Calendar(DayForward DayBack -CalSep1 NextWeek PrevWeek -CalSep2 FirstDayInMonth LastDayInMonth -CalSep5 "
            "NexMonth PrevMonth -CalSep3 NextYear PrevYear -CalSep4 Today WeekDays(WeekDay_Monday WeekDay_Monday_Prev "
            "WeekDay_Tuesday WeekDay_Tuesday_Prev WeekDay_Wednesday WeekDay_Wednesday_Prev WeekDay_Thursday "
            "WeekDay_Thursday_Prev WeekDay_Friday WeekDay_Friday_Prev WeekDay_Saturday WeekDay_Saturday_Prev "
            "WeekDay_Sunday WeekDay_Sunday_Prev) easter EasterPrev) "
            "TimeCaption(RaceTime TimeOut Alarms(AnnounceTimeOut!) Time SetTime DingHour) "
            "Date(SetDate HolFind HolFindNext! HolSave SetSysDate InsertToClip) "
            "Edit(NewRecord SearchRecord TaskToday! TaskTodayAfter TaskAll TaskAlarm SpareTime! DelTodayTasks!) "
            "Help(OpenHelp HelpCheckUpdate About)");
  const std::pair<const char*, const char*> captions[] = {{"mnuTalnik", "Talník "},
                                                          {"mnuTimeCaption", "    Č&as    "},
                                                          {"mnuPrevMonth", "Měsíc  předchozí"},
                                                          {"mnuPrevYear", "Rok  předchozí"},
                                                          {"mnuDingHour", "Oznamovat "},
                                                          {"mnuWeekDay_Friday_Prev", "Pátek předchozí "},
                                                          {"mnuWeekDay_Saturday_Prev", "Sobota předchozí "},
                                                          {"mnuWeekDay_Sunday_Prev", "Neděle předchozí"},
                                                          {"mnuSearchRecord", "Vyhledat   CTRL + SHIFT + F"},
                                                          {"mnuExit", "U&končit"}};
  for (const auto& [name, caption] : captions) {
    EXPECT_EQ(Menu(name)->text().section(u'\t', 0, 0).toStdString(), caption);
  }
}

TEST_F(MainMenu, ShowsTheKeyThatDoesTheSame) {
  Start();
  for (const auto& [name, key] : {std::pair("mnuNextWeek", "PageDown"),
                                  {"mnuPrevYear", "Ctrl+Šipka vlevo"},
                                  {"mnuWeekDay_Friday", "P A"},
                                  {"mnuWeekDay_Friday_Prev", "P Shift+A"},
                                  {"mnuDayForward", "Šipka dolů"},
                                  {"mnuOpenHelp", "F1"},
                                  {"mnuTaskAll", ""}}) {
    EXPECT_EQ(Menu(name)->text().section(u'\t', 1).trimmed().toStdString(), key) << name;
  }
}

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
