#include "calendar/ExitQuestion.h"
#include "calendar/MainWindow.h"
#include "calendar/Tray.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTimer>

namespace talnik::test {
namespace {

class Life : public MainWindow {
 protected:
  /// Another process says this word while the next window, of this name, is open.
  void ToldIn(const QString& window, const QString& word) {
    user_.Expect([=, this](QWidget* dialog) {
      EXPECT_EQ(dialog->objectName(), window);
      world_.Heard();
      world_.instance.Told(word);
    });
  }
};

TEST(ExitDecision, FollowsTheSettingAndTheChoice) {
  constexpr int notAsked = 99;
  const struct {
    int exitMode;
    int chosen;
    ExitDecision decision;
  } cases[] = {
      {1, notAsked, {.HideOnClose = false, .stopSpeech = true}},
      {2, notAsked, {.HideOnClose = true}},
      {0, -1, {.cancel = true}},
      {0, 1, {.HideOnClose = false, .exitWithoutHide = true}},
      {0, 2, {.HideOnClose = true}},
      {0, 3, {.HideOnClose = false, .stopSpeech = true, .ExitMode = 1}},
      {0, 4, {.HideOnClose = true, .ExitMode = 2}},
      {7, 5, {.cancel = true}},
  };
  for (const auto& c : cases) {
    int chosen = notAsked;
    EXPECT_EQ(DecideExit(c.exitMode, [&] { return chosen = c.chosen; }), c.decision) << c.exitMode << c.chosen;
    EXPECT_EQ(chosen, c.chosen) << "asked or not by mode " << c.exitMode;
  }
}

TEST_F(Life, AFirstRunMakesItsData) {
  Start();
  EXPECT_TRUE(QFile::exists(InData("Names.dat")));
  EXPECT_TRUE(QFile::exists(InData("Record")));
  EXPECT_EQ(RowCount(), 0);
  EXPECT_TRUE(FormDriver::Until([this] { return world_.trayIcon.There; }) && world_.braille.Active);
  EXPECT_EQ(world_.trayIcon.Tip, u"Talník"_qs);
  EXPECT_EQ(world_.keyboardHook.Watched, 0);
}

TEST_F(Life, ASecondStartHandsOverBeforeItTouchesAnything) {
  world_.instance.Taken = true;
  frmMain second(std::move(world_.platform), {});
  EXPECT_FALSE(second.Load());
  EXPECT_EQ(world_.instance.Said, QStringList{u"show"_qs});
  EXPECT_FALSE(QFile::exists(InData("talnik.MDB")));
  EXPECT_EQ(Heard(), "");
}

TEST_F(Life, OnlyTheWholeSwitchHides) {
  for (const QStringList& arguments : {QStringList{u"/H"_qs}, QStringList{u"/h"_qs, u"x"_qs}, QStringList{}}) {
    FakeWorld world;
    world.shell.LocalData = folder_.path();
    world.shell.Installed = folder_.path() + u"/installed/"_qs;
    frmMain form(std::move(world.platform), arguments);
    ASSERT_TRUE(form.Load());
    EXPECT_TRUE(form.isVisible());
  }
  Load({u"/h"_qs});
  EXPECT_FALSE(main_->isVisible());
}

TEST_F(Life, ClosingHidesAndTheTrayBringsBack) {
  Start();
  main_->close();
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(ended_, 0);
  EXPECT_TRUE(world_.profile.Written.isEmpty()) << "settings are not saved on a hide";
  main_->Command1->setFocus();  // as a late event of the desktop may do
  GoElsewhere();
  world_.trayIcon.LeftClick();
  EXPECT_TRUE(ComesToFront());
  EXPECT_EQ(Heard(), "say: Talník 15. pondělí leden 2024");
  world_.trayIcon.LeftClick();
  EXPECT_EQ(Heard(), "say: Talník 15. pondělí leden 2024");
  Choose("mnuHide");
  EXPECT_FALSE(main_->isVisible());
}

TEST_F(Life, ExitModeJudgesAltF4Alone) {
  world_.profile.Values[InData("talnik.ini") + u"|Application|ExitMode"_qs] = u"1"_qs;
  Start();
  main_->close();
  EXPECT_EQ(ended_, 0);
  EXPECT_FALSE(main_->isVisible());
  GoElsewhere();
  world_.trayIcon.LeftClick();
  ASSERT_TRUE(ComesToFront());
  user_.Press(Qt::Key_F4, Qt::AltModifier);
  EXPECT_EQ(ended_, 1);
  EXPECT_FALSE(world_.trayIcon.There);
  EXPECT_TRUE(world_.profile.Written.contains(u"Application.ExitMode=1"_qs));
}

TEST_F(Life, AltF4AsksAndAsksAgain) {
  Start();
  user_.ExpectAndPress(u"frmAction"_qs, Qt::Key_Escape);
  user_.Press(Qt::Key_F4, Qt::AltModifier);
  EXPECT_TRUE(main_->isVisible());
  ASSERT_TRUE(ComesToFront());
  user_.Expect([this](QWidget* question) {
    EXPECT_EQ(question->windowTitle(), u"Co dělat? Ukončit Talník"_qs);
    for (int i = 0; i < 3; ++i) user_.Press(Qt::Key_Down, Qt::NoModifier, question);
    user_.Press(Qt::Key_Return, Qt::NoModifier, question);
  });
  user_.Press(Qt::Key_F4, Qt::AltModifier);
  EXPECT_TRUE(user_.AllCame());
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(ended_, 0);
  Choose("mnuExit");
  EXPECT_EQ(ended_, 1);
  EXPECT_TRUE(world_.profile.Written.contains(u"Application.ExitMode=2"_qs)) << "always hide is remembered";
}

TEST_F(Life, ARunningCountdownIsAskedAbout) {
  Start();
  Choose("mnuHide");
  EXPECT_FALSE(Menu("mnuAnnounceTimeOut")->isEnabled());
  ExpectClick("cmdSet", "Text1(1)", u"5"_qs);
  Choose("mnuTimeOut");
  EXPECT_EQ(main_->windowTitle(), u"Talník - 00:05:00"_qs);
  EXPECT_EQ(world_.trayIcon.Tip, u"Talník - 00:05:00"_qs);
  world_.Heard();
  Choose("mnuAnnounceTimeOut");
  EXPECT_EQ(Heard(), "say: 5 minut ");

  user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Escape);
  Choose("mnuExit");
  EXPECT_EQ(ended_, 0);
  EXPECT_TRUE(main_->isVisible());
  main_->close();
  EXPECT_FALSE(main_->isVisible()) << "the X hides again after a refused exit";
  EXPECT_EQ(ended_, 0);

  ExpectClick("cmdYES");
  world_.instance.Told(u"close"_qs);
  EXPECT_EQ(ended_, 1);
}

TEST_F(Life, AnotherStartComesBackToTheCalendar) {
  Start();
  const qint64 rows = RowCount();
  ExpectClick("cmdSet");
  ToldIn(u"frmSchedule"_qs, u"show"_qs);
  Choose("mnuNewRecord");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_FALSE(QApplication::activeModalWidget());
  EXPECT_TRUE(main_->isVisible());
  EXPECT_EQ(RowCount(), rows);

  ToldIn(u"frmSetSysTime"_qs, u"show"_qs);
  Choose("mnuNewRecord");
  FormDriver::Settle();
  EXPECT_FALSE(QApplication::activeModalWidget()) << "the command that was swept away does not go on";

  for (int i = 0; i < 2; ++i) Add(u"střet"_qs, u"15.1.2024"_qs);
  ExpectClick("cmdSet");
  ToldIn(u"frmMsg12"_qs, u"show"_qs);
  Choose("mnuNewRecord");
  FormDriver::Settle();
  EXPECT_TRUE(user_.AllCame()) << "neither the second conflict nor the editor behind it comes";
}

TEST_F(Life, AnOutsideCloseEndsTheProgramFromAnyWindow) {
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs);
  Start();
  ToldIn(u"frmSchedule"_qs, u"close"_qs);
  Choose("mnuTaskAll");
  EXPECT_EQ(ended_, 1);
  EXPECT_FALSE(QApplication::activeModalWidget());
  EXPECT_FALSE(main_->isVisible());
  EXPECT_EQ(Heard(), "stop") << "nothing is said any more";
}

TEST_F(Life, TheTrayMenuRunsItsCommands) {
  Start();
  main_->close();
  const auto choose = [this](int downs, int key = Qt::Key_Return) {
    QTimer::singleShot(0, &user_, [this, downs, key] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_TRUE(menu);
      QStringList texts;
      for (const QAction* action : menu->actions()) texts << action->text();
      EXPECT_EQ(texts.join(u'|'),
                u"Otevřít talník||&Vybraný den Enter|Vybraný den a novější|Všechny|S alarmy||Konec"_qs);
      world_.trayIcon.RightClick();  // does not open a second one
      menu->setActiveAction(menu->actions().constFirst());
      for (int i = 0; i < downs; ++i) user_.Press(Qt::Key_Down);
      user_.Press(key);
    });
    world_.trayIcon.RightClick();
  };
  choose(0, Qt::Key_Escape);
  EXPECT_FALSE(main_->isVisible());
  GoElsewhere();
  choose(0);
  EXPECT_TRUE(ComesToFront());
  world_.Heard();
  choose(3);
  EXPECT_TRUE(Heard().ends_with("sound: refused.wav")) << "no records at all";
  choose(5);
  EXPECT_EQ(ended_, 1);
}

TEST_F(Life, TheHotKeyReadsTheDayShortly) {
  Start();
  world_.Heard();
  world_.keyboardHook.Released();
  EXPECT_EQ(Heard(), "say: 15. pondělí");
  main_->close();
  GoElsewhere();
  world_.keyboardHook.Released();
  EXPECT_TRUE(ComesToFront());
  EXPECT_EQ(Heard(), "say: 15. pondělí");
}

TEST_F(Life, AnAlarmComesWhileTheWindowIsHidden) {
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs, {}, u"15.1.2024 8:31"_qs);
  Load({u"/h"_qs});
  user_.Expect([this](QWidget* box) {
    EXPECT_EQ(box->objectName(), u"frmAlarmBox"_qs);
    EXPECT_TRUE(main_->isMinimized());
    world_.Heard();
    world_.trayIcon.LeftClick();
    EXPECT_EQ(Heard(), "sound: refused.wav") << "the box is to be answered first";
    user_.Press(Qt::Key_Escape, Qt::NoModifier, box);
  });
  world_.clock.Moment = QDateTime(QDate(2024, 1, 15), QTime(8, 31));
  EXPECT_TRUE(FormDriver::Until([this] { return user_.AllCame() && !main_->isVisible(); }));
}

TEST_F(Life, AStoreThatIsNoneIsToldAndTheProgramGoesOn) {
  ASSERT_TRUE(QDir().mkpath(InData("talnik.MDB")));
  ExpectMessage(u"Chyba dat: "_qs + InData("talnik.MDB"));
  Start();
  EXPECT_NE(Heard().find("Chyba dat"), std::string::npos);
  EXPECT_TRUE(user_.AllCame());
  user_.Press(Qt::Key_Down);
  EXPECT_EQ(DayAndMonth(), u"16. úterý leden 2024"_qs);
}

TEST_F(Life, WithoutSpeechTheUserIsToldOnce) {
  world_.voice.Found = Voice::Support::Unknown;
  Start();
  EXPECT_TRUE(user_.AllCame());
  world_.voice.Found = Voice::Support::Missing;
  user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);
  EXPECT_TRUE(FormDriver::Until([this] { return user_.AllCame(); })) << "when the search for it has ended";
  ASSERT_TRUE(FormDriver::Until([this] { return main_->isActiveWindow(); }));
  user_.Press(Qt::Key_Down);
  EXPECT_EQ(DayAndMonth(), u"16. úterý leden 2024"_qs);
}

TEST_F(Life, TheEndOfTheSessionKeepsTheSettingsAndAsksNothing) {
  Start();
  main_->txtNames->setFocus();
  user_.Type(u"x"_qs);
  main_->EndSession();
  EXPECT_EQ(ended_, 1);
  EXPECT_TRUE(world_.profile.Written.contains(u"Application.ExitMode=0"_qs));
}

}  // namespace
}  // namespace talnik::test
