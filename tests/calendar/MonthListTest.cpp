#include "calendar/MainWindow.h"

#include <QFrame>

namespace talnik::test {
namespace {

constexpr auto None = Qt::NoModifier;
constexpr auto Ctrl = Qt::ControlModifier;
constexpr auto Shift = Qt::ShiftModifier;

using MonthList = MainWindow;

struct Stroke {
  const char* from;
  QList<int> keys;
  Qt::KeyboardModifiers shift;
  const char* shown;
  const char* heard;
};

TEST_F(MonthList, KeysMoveAndSpeak) {
  Start();
  const Stroke strokes[] = {
      {"15.1.2024", {Qt::Key_Down}, None, "16. úterý leden 2024", "say: 16. úterý"},
      {"15.1.2024", {Qt::Key_Up}, None, "14. neděle leden 2024", "say: 14. neděle"},
      {"1.3.2024", {Qt::Key_Up}, None, "29. čtvrtek únor 2024", "say: 29. čtvrtek"},
      {"1.3.2023", {Qt::Key_Up}, None, "28. úterý únor 2023", "say: 28. úterý"},
      {"31.12.2023", {Qt::Key_Down}, None, "1. pondělí leden 2024", "say: 1. pondělí"},
      {"15.1.2024", {Qt::Key_PageDown}, None, "22. pondělí leden 2024", "say: 22. pondělí\nsay: 22. pondělí"},
      {"3.1.2024",
       {Qt::Key_PageUp},
       None,
       "27. středa prosinec 2023",
       "say: 27. středa prosinec 2023\nsay: 27. středa\nand: prosinec 2023"},
      {"31.1.2024", {Qt::Key_Right}, None, "29. čtvrtek únor 2024", "say: 29. čtvrtek\nsay: únor 2024 29. čtvrtek"},
      {"15.1.2024", {Qt::Key_Left}, None, "15. pátek prosinec 2023", "say: 15. pátek\nsay: prosinec 2023 15. pátek"},
      {"29.2.2024", {Qt::Key_Right}, Ctrl, "28. pátek únor 2025", "say: 28. pátek\nsay: únor 2025 28. pátek"},
      {"29.2.2024", {Qt::Key_Left}, Ctrl, "28. úterý únor 2023", "say: 28. úterý\nsay: únor 2023 28. úterý"},
      {"15.1.2024", {Qt::Key_Right}, Shift, "15. pondělí leden 2024", ""},
      {"15.1.2024", {Qt::Key_F3}, None, "15. pondělí leden 2024", "say: 15. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_Space}, None, "15. pondělí leden 2024", "say: 15. pondělí leden 2024"},
      {"3.5.2025", {Qt::Key_D}, None, "15. pondělí leden 2024", "say: 15. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_D}, None, "15. pondělí leden 2024", "say: 15. pondělí"},
      {"15.1.2024", {Qt::Key_V}, None, "1. pondělí duben 2024", "say: 1. pondělí duben 2024"},
      {"1.4.2024", {Qt::Key_V}, None, "21. pondělí duben 2025", "say: 21. pondělí duben 2025"},
      {"1.4.2024", {Qt::Key_V}, Shift, "10. pondělí duben 2023", "say: 10. pondělí duben 2023"},
      {"15.1.2024", {Qt::Key_P, Qt::Key_O}, Shift, "8. pondělí leden 2024", "say: 8. pondělí"},
      {"20.1.2024", {Qt::Key_O}, None, "22. pondělí leden 2024", "say: 22. pondělí"},
      {"15.1.2024", {Qt::Key_S, Qt::Key_T}, None, "17. středa leden 2024", "say: 17. středa"},
      // "s" stays behind "st", so a further O looks for Saturday.
      {"20.1.2024", {Qt::Key_O}, None, "27. sobota leden 2024", "say: 27. sobota"},
      {"30.1.2024", {Qt::Key_N}, None, "4. neděle únor 2024", "say: 4. neděle\nand: únor 2024"},
      {"15.1.2024", {Qt::Key_Home}, None, "1. pondělí leden 2024", "say: 1. pondělí"},
      {"15.1.2024", {Qt::Key_End}, None, "31. středa leden 2024", "say: 31. středa"},
      {"15.1.2024", {Qt::Key_Return}, None, "15. pondělí leden 2024", "sound: refused.wav"},
      {"15.1.2024", {Qt::Key_Return}, Ctrl, "15. pondělí leden 2024", "sound: refused.wav"},
      {"1.1.1", {Qt::Key_Up}, None, "1. pondělí leden 0001", "sound: refused.wav"},
      {"31.12.9999", {Qt::Key_PageDown}, None, "31. pátek prosinec 9999", "sound: refused.wav"},
      {"31.12.9999", {Qt::Key_V}, None, "31. pátek prosinec 9999", "sound: refused.wav"},
  };
  for (const Stroke& stroke : strokes) {
    GoTo(QString::fromLatin1(stroke.from));
    for (const int key : stroke.keys) user_.Press(key, stroke.shift);
    const std::string what = std::string(stroke.from) + " key " + std::to_string(stroke.keys.front());
    EXPECT_EQ(DayAndMonth().toStdString(), stroke.shown) << what;
    EXPECT_EQ(Heard(), stroke.heard) << what;
    FormDriver::Settle();
  }
}

TEST_F(MonthList, DigitsSelectTheLineOfTheirNumber) {
  Start();
  GoTo(u"10.2.2024"_qs);
  user_.Press(Qt::Key_3);
  EXPECT_EQ(Heard(), "say: 3. sobota\nsay: 3. sobota");
  user_.Press(Qt::Key_1);
  EXPECT_EQ(DayAndMonth(), u"3. sobota únor 2024"_qs);
  EXPECT_EQ(Heard(), "say: 3. sobota");
  user_.Press(Qt::Key_5);
  EXPECT_EQ(DayAndMonth(), u"15. čtvrtek únor 2024"_qs);
  user_.Press(Qt::Key_2);
  EXPECT_EQ(DayAndMonth(), u"15. čtvrtek únor 2024"_qs) << "52 is no day";
  user_.Press(Qt::Key_0);
  EXPECT_EQ(DayAndMonth(), u"20. úterý únor 2024"_qs);
}

TEST_F(MonthList, AHeldKeyMovesTheListAgainAndTheMonthOnce) {
  Start();
  GoTo(u"30.1.2024"_qs);
  user_.PressOnly(Qt::Key_Down);
  user_.PressOnly(Qt::Key_Down, None, true);
  user_.PressOnly(Qt::Key_Down, None, true);
  user_.Release(Qt::Key_Down);
  EXPECT_EQ(DayAndMonth(), u"2. pátek únor 2024"_qs);
  user_.PressOnly(Qt::Key_Right);
  user_.PressOnly(Qt::Key_Right, None, true);
  user_.Release(Qt::Key_Right);
  EXPECT_EQ(DayAndMonth(), u"2. sobota březen 2024"_qs);
}

TEST_F(MonthList, TasksAreCountedCuedAndSpoken) {
  Start();
  Add(u"noc"_qs, u"16.1.2024 20:00"_qs, u"17.1.2024 8:00"_qs);
  Add(u"dovolená"_qs, u"15.1.2024 7:00"_qs, u"17.1.2024 7:00"_qs);
  world_.Heard();
  user_.Press(Qt::Key_Down);
  EXPECT_EQ(Heard(), "stop\nsound: space.wav\nsay: 16. úterý 2 úkolů");
  EXPECT_EQ(main_->Command1->text(), u"Úkoly (2)"_qs);
  user_.Press(Qt::Key_F3);
  EXPECT_EQ(Heard(), "say: 16. úterý leden 2024");
  user_.Press(Qt::Key_Down);
  EXPECT_EQ(Heard(), "stop\nsound: space.wav\nsay: 17. středa 2 úkolů");
  user_.Press(Qt::Key_Down);
  EXPECT_EQ(Heard(), "say: 18. čtvrtek");
  EXPECT_EQ(main_->Command1->text(), u"Úkoly (0)"_qs);
  EXPECT_FALSE(Menu("mnuTaskToday")->isEnabled());

  GoTo(u"15.2.2024"_qs);
  world_.clock.Moment = QDateTime(QDate(2024, 1, 17), QTime(9, 0));
  user_.Press(Qt::Key_D);
  EXPECT_EQ(Heard(), "stop\nsound: space.wav\nsay: 17. středa leden 2024  2  úkolů");
  EXPECT_TRUE(Menu("mnuTaskToday")->isEnabled());
  EXPECT_TRUE(Menu("mnuDelTodayTasks")->isEnabled());
  EXPECT_TRUE(Menu("mnuSpareTime")->isEnabled());
}

TEST_F(MonthList, FocusIsReadInItsOrder) {
  Add(u"x"_qs, u"15.1.2024 10:00"_qs);
  Start();
  EXPECT_TRUE(Heard().ends_with("stop\nsound: space.wav\nsay: Talník 15. pondělí leden 2024 1 úkolů"));
  EXPECT_EQ(main_->txtNames->toPlainText(), u"Alice"_qs);

  const std::pair<QWidget*, const char*> order[] = {
      {main_->Command1, "say: Úkoly (1)"},   {main_->Command2, "say: předchozí měsíc"},
      {main_->Command4, "say: další měsíc"}, {main_->txtNames, "say: Svátky Alice"},
      {main_->lblTime, "say: 8:30:00"},      {main_->List1, nullptr}};
  for (const auto& [control, heard] : order) {
    user_.Press(Qt::Key_Tab);
    EXPECT_TRUE(control->hasFocus()) << control->objectName().toStdString();
    if (heard) {
      EXPECT_EQ(Heard(), heard);
    }
  }
  EXPECT_EQ(Heard(), "stop\nsound: space.wav\nsay: 15. pondělí leden 2024 1 úkolů") << "no title within the window";
  user_.Press(Qt::Key_Backtab, Shift);
  EXPECT_TRUE(main_->lblTime->hasFocus());
  user_.Press(Qt::Key_F5);
  EXPECT_TRUE(main_->List1->hasFocus());
  world_.Heard();
  user_.Press(Qt::Key_F5);
  EXPECT_EQ(Heard(), "stop\nsound: space.wav\nsay: 15. pondělí leden 2024 1 úkolů");
}

TEST_F(MonthList, ButtonsChangeTheMonthAndReturnToTheList) {
  Start();
  world_.Heard();
  main_->Command4->setFocus();
  world_.Heard();
  user_.Press(Qt::Key_Return);
  EXPECT_EQ(DayAndMonth(), u"15. čtvrtek únor 2024"_qs);
  EXPECT_TRUE(main_->List1->hasFocus());
  EXPECT_EQ(Heard(), "say: 15. čtvrtek");
  user_.Press(Qt::Key_Minus, Qt::KeypadModifier);
  EXPECT_EQ(DayAndMonth(), u"15. pondělí leden 2024"_qs);
  main_->lblTime->setFocus();
  user_.Press(Qt::Key_Plus, Qt::KeypadModifier);
  EXPECT_EQ(DayAndMonth(), u"15. čtvrtek únor 2024"_qs);
  EXPECT_TRUE(main_->List1->hasFocus());
}

TEST_F(MonthList, NothingIsSpokenWhileTheWindowIsHidden) {
  Load({u"/h"_qs});
  EXPECT_FALSE(main_->isVisible());
  Add(u"x"_qs, u"16.1.2024"_qs);
  Choose("mnuDayForward");
  EXPECT_EQ(Heard(), "");
  Choose("mnuFirstDayInMonth");
  EXPECT_EQ(main_->txtNames->toPlainText(), QString());
}

TEST_F(MonthList, MenuCommandsStopAtTheEdgeOfTheMonth) {
  Start();
  GoTo(u"31.1.2024"_qs);
  Choose("mnuDayForward");
  EXPECT_EQ(Heard(), "");
  Choose("mnuFirstDayInMonth");
  Choose("mnuDayBack");
  EXPECT_EQ(DayAndMonth(), u"1. pondělí leden 2024"_qs);
  Choose("mnuLastDayInMonth");
  Choose("mnuDayBack");
  EXPECT_EQ(DayAndMonth(), u"30. úterý leden 2024"_qs);
  const std::pair<const char*, const char*> steps[] = {
      {"mnuNextWeek", "6. úterý únor 2024"},        {"mnuPrevWeek", "30. úterý leden 2024"},
      {"mnuNextYear", "30. čtvrtek leden 2025"},    {"mnuPrevYear", "30. úterý leden 2024"},
      {"mnuWeekDay_Tuesday", "6. úterý únor 2024"}, {"mnuWeekDay_Wednesday_Prev", "31. středa leden 2024"},
      {"mnuWeekDay_Friday", "2. pátek únor 2024"},  {"mnuWeekDay_Saturday_Prev", "27. sobota leden 2024"},
      {"mnueaster", "1. pondělí duben 2024"},       {"mnuEasterPrev", "10. pondělí duben 2023"},
      {"mnuToday", "15. pondělí leden 2024"}};
  for (const auto& [command, shown] : steps) {
    Choose(command);
    EXPECT_EQ(DayAndMonth().toStdString(), shown) << command;
  }
}

TEST_F(MonthList, EverythingFitsOnASmallScreen) {
  Start();
  EXPECT_LE(main_->minimumSizeHint().width(), 640);
  EXPECT_LE(main_->minimumSizeHint().height(), 480);
  main_->showNormal();
  main_->resize(640, 480);
  FormDriver::Settle();
  EXPECT_LE(main_->height(), 480);
  for (const QWidget* control : std::initializer_list<QWidget*>{main_->List1, main_->Label1, main_->Command1,
                                                                main_->txtNames, main_->lblTime, main_->Shape2}) {
    const QRect place(control->mapTo(main_.get(), QPoint()), control->size());
    EXPECT_TRUE(main_->rect().contains(place)) << control->objectName().toStdString();
    EXPECT_GE(control->height(), control->minimumSizeHint().height()) << control->objectName().toStdString();
  }
}

}  // namespace
}  // namespace talnik::test
