#include "calendar/MainWindow.h"

namespace talnik::test {
namespace {

constexpr auto None = Qt::NoModifier;
constexpr auto Ctrl = Qt::ControlModifier;
constexpr auto Shift = Qt::ShiftModifier;
const char* const kRefused = "sound: refused.wav";
const char* const kSilence = "";

using MonthList = MainWindow;

TEST_F(MonthList, KeysMoveAndSpeak) {
  Start();
  const struct {
    const char* from;  // nothing goes on from the row before
    QList<int> keys;
    Qt::KeyboardModifiers shift;
    const char* shown;
    const char* heard = nullptr;  // nothing stands for the line alone
  } rows[] = {
      {"15.1.2024", {Qt::Key_Down}, None, "16. úterý leden 2024"},
      {"15.1.2024", {Qt::Key_Up}, None, "14. neděle leden 2024"},
      {"1.3.2024", {Qt::Key_Up}, None, "29. čtvrtek únor 2024"},
      {"1.3.2023", {Qt::Key_Up}, None, "28. úterý únor 2023"},
      {"31.12.2023", {Qt::Key_Down}, None, "1. pondělí leden 2024"},
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
      {"15.1.2024", {Qt::Key_Right}, Shift, "15. pondělí leden 2024", kSilence},
      {"15.1.2024", {Qt::Key_F3}, None, "15. pondělí leden 2024", "say: 15. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_Space}, None, "15. pondělí leden 2024", "say: 15. pondělí leden 2024"},
      {"3.5.2025", {Qt::Key_D}, None, "15. pondělí leden 2024", "say: 15. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_D}, None, "15. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_V}, None, "1. pondělí duben 2024", "say: 1. pondělí duben 2024"},
      {"1.4.2024", {Qt::Key_V}, None, "21. pondělí duben 2025", "say: 21. pondělí duben 2025"},
      {"1.4.2024", {Qt::Key_V}, Shift, "10. pondělí duben 2023", "say: 10. pondělí duben 2023"},
      {"15.1.2024", {Qt::Key_P, Qt::Key_O}, Shift, "8. pondělí leden 2024"},
      {"20.1.2024", {Qt::Key_O}, None, "22. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_S, Qt::Key_T}, None, "17. středa leden 2024"},
      // "s" stays behind "st", so a further O looks for Saturday.
      {"20.1.2024", {Qt::Key_O}, None, "27. sobota leden 2024"},
      {"30.1.2024", {Qt::Key_N}, None, "4. neděle únor 2024", "say: 4. neděle\nand: únor 2024"},
      {"15.1.2024", {Qt::Key_Home}, None, "1. pondělí leden 2024"},
      {"15.1.2024", {Qt::Key_End}, None, "31. středa leden 2024"},
      {"15.1.2024", {Qt::Key_Return}, None, "15. pondělí leden 2024", kRefused},
      {"15.1.2024", {Qt::Key_Return}, Ctrl, "15. pondělí leden 2024", kRefused},
      {"1.1.1", {Qt::Key_Up}, None, "1. pondělí leden 0001", kRefused},
      {"31.12.9999", {Qt::Key_PageDown}, None, "31. pátek prosinec 9999", kRefused},
      {"31.12.9999", {Qt::Key_V}, None, "31. pátek prosinec 9999", kRefused},
      {"10.2.2024", {Qt::Key_3}, None, "3. sobota únor 2024", "say: 3. sobota\nsay: 3. sobota"},
      {nullptr, {Qt::Key_1}, None, "3. sobota únor 2024"},
      {nullptr, {Qt::Key_5}, None, "15. čtvrtek únor 2024", "say: 15. čtvrtek\nsay: 15. čtvrtek"},
      {nullptr, {Qt::Key_2}, None, "15. čtvrtek únor 2024"},
      {nullptr, {Qt::Key_0}, None, "20. úterý únor 2024", "say: 20. úterý\nsay: 20. úterý"},
      {nullptr, {Qt::Key_0}, None, "1. čtvrtek únor 2024", "say: 1. čtvrtek\nsay: 1. čtvrtek"},
  };
  for (const auto& row : rows) {
    if (row.from) GoTo(QString::fromLatin1(row.from));
    for (const int key : row.keys) user_.Press(key, row.shift);
    const std::string what = "to " + std::string(row.shown) + " by key " + std::to_string(row.keys.front());
    EXPECT_EQ(DayAndMonth().toStdString(), row.shown) << what;
    EXPECT_EQ(Heard(), row.heard ? row.heard : "say: " + main_->List1->Text().toStdString()) << what;
    FormDriver::Settle();
  }
}

TEST_F(MonthList, AHeldKeyMovesTheListAgainAndTheMonthOnce) {
  Start();
  GoTo(u"30.1.2024"_qs);
  const auto hold = [this](int key, int times) {
    for (int i = 0; i < times; ++i) user_.PressOnly(key, None, i > 0);
    user_.Release(key);
  };
  hold(Qt::Key_Down, 3);
  EXPECT_EQ(DayAndMonth(), u"2. pátek únor 2024"_qs);
  hold(Qt::Key_Right, 2);
  EXPECT_EQ(DayAndMonth(), u"2. sobota březen 2024"_qs);
}

TEST_F(MonthList, TasksAreCountedCuedAndSpoken) {
  Start();
  Add(u"noc"_qs, u"16.1.2024 20:00"_qs, u"17.1.2024 8:00"_qs);
  Add(u"dovolená"_qs, u"15.1.2024 7:00"_qs, u"17.1.2024 7:00"_qs);
  world_.Heard();
  const std::pair<const char*, const char*> days[] = {{"stop\nsound: space.wav\nsay: 16. úterý 2 úkolů", "Úkoly (2)"},
                                                      {"stop\nsound: space.wav\nsay: 17. středa 2 úkolů", "Úkoly (2)"},
                                                      {"say: 18. čtvrtek", "Úkoly (0)"}};
  for (const auto& [heard, button] : days) {
    user_.Press(Qt::Key_Down);
    EXPECT_EQ(Heard(), heard);
    EXPECT_EQ(main_->Command1->text().toStdString(), button);
  }
  const auto expectEnabled = [this](bool enabled) {
    for (const char* command : {"mnuTaskToday", "mnuDelTodayTasks", "mnuSpareTime"})
      EXPECT_EQ(Menu(command)->isEnabled(), enabled) << command;
  };
  expectEnabled(false);
  GoTo(u"15.2.2024"_qs);
  world_.clock.Moment = QDateTime(QDate(2024, 1, 17), QTime(9, 0));
  user_.Press(Qt::Key_D);
  EXPECT_EQ(Heard(), "stop\nsound: space.wav\nsay: 17. středa leden 2024  2  úkolů");
  expectEnabled(true);
}

TEST_F(MonthList, FocusIsReadInItsOrder) {
  Add(u"x"_qs, u"15.1.2024 10:00"_qs);
  Start();
  EXPECT_TRUE(Heard().ends_with("stop\nsound: space.wav\nsay: Talník 15. pondělí leden 2024 1 úkolů"));
  const char* const again = "stop\nsound: space.wav\nsay: 15. pondělí leden 2024 1 úkolů";  // without the title
  const std::pair<QWidget*, const char*> order[] = {
      {main_->Command1, "say: Úkoly (1)"},   {main_->Command2, "say: předchozí měsíc"},
      {main_->Command4, "say: další měsíc"}, {main_->txtNames, "say: Svátky Alice"},
      {main_->lblTime, "say: 8:30:00"},      {main_->List1, again}};
  for (const auto& [control, heard] : order) {
    user_.Press(Qt::Key_Tab);
    EXPECT_TRUE(control->hasFocus()) << heard;
    EXPECT_EQ(Heard(), heard);
  }
  user_.Press(Qt::Key_Backtab, Shift);
  EXPECT_TRUE(main_->lblTime->hasFocus());
  for (int i = 0; i < 2; ++i) {
    world_.Heard();
    user_.Press(Qt::Key_F5);
    EXPECT_TRUE(main_->List1->hasFocus());
    EXPECT_EQ(Heard(), again) << "from elsewhere, and in the list itself";
  }
}

TEST_F(MonthList, ButtonsChangeTheMonthAndReturnToTheList) {
  Start();
  main_->Command4->setFocus();
  world_.Heard();
  user_.Press(Qt::Key_Return);
  EXPECT_EQ(DayAndMonth(), u"15. čtvrtek únor 2024"_qs);
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
  Add(u"x"_qs, u"16.1.2024"_qs);
  Choose("mnuDayForward");
  EXPECT_EQ(Heard(), "");
  EXPECT_EQ(main_->txtNames->toPlainText(), QString());
  Choose("mnuDayBack");
  EXPECT_EQ(main_->txtNames->toPlainText(), u"Alice"_qs);
}

TEST_F(MonthList, MenuCommandsMoveAsTheirKeysButStopAtTheEdgeOfTheMonth) {
  Start();
  GoTo(u"31.1.2024"_qs);
  Choose("mnuDayForward");
  EXPECT_EQ(Heard(), "");
  const std::pair<const char*, const char*> steps[] = {
      {"mnuFirstDayInMonth", "1. pondělí leden 2024"}, {"mnuDayBack", "1. pondělí leden 2024"},
      {"mnuLastDayInMonth", "31. středa leden 2024"},  {"mnuDayBack", "30. úterý leden 2024"},
      {"mnuNextWeek", "6. úterý únor 2024"},           {"mnuPrevWeek", "30. úterý leden 2024"},
      {"mnuNextYear", "30. čtvrtek leden 2025"},       {"mnuPrevYear", "30. úterý leden 2024"},
      {"mnuWeekDay_Tuesday", "6. úterý únor 2024"},    {"mnuWeekDay_Wednesday_Prev", "31. středa leden 2024"},
      {"mnuWeekDay_Friday", "2. pátek únor 2024"},     {"mnuWeekDay_Saturday_Prev", "27. sobota leden 2024"},
      {"mnueaster", "1. pondělí duben 2024"},          {"mnuEasterPrev", "10. pondělí duben 2023"},
      {"mnuToday", "15. pondělí leden 2024"}};
  for (const auto& [command, shown] : steps) {
    Choose(command);
    EXPECT_EQ(DayAndMonth().toStdString(), shown) << command;
  }
}

}  // namespace
}  // namespace talnik::test
