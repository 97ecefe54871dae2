#include "shell/TextControls.h"
#include "timetools/PickDate.h"
#include "timetools/TimeWorld.h"
#include "timetools/frmSetSysDate.h"

#include <QLabel>
#include <QPushButton>

namespace talnik::test {
namespace {

struct PickWorld : TimeWorld {
  QLineEdit control;

  bool Pick(const QString& text, std::function<void(QWidget*)> user) {
    control.setText(text);
    Next(std::move(user));
    return PickDate(services, names, &control, nullptr);
  }
  std::string Result() const { return control.text().toStdString(); }
  static std::string Line(QWidget* picker) { return FormDriver::Find<ListBox>(picker, "List1")->Text().toStdString(); }
};

TEST(PickDate, StartsFromTheTextAndWritesTheChoiceBack) {
  struct Case {
    QString text;
    const char *line, *time, *result;
  };
  for (const Case& test : {Case{u"29.2.2024 7:05"_qs, "29. čtvrtek", "07:05", "29.2.2024 7:05"},
                           Case{u"1.3.2024"_qs, "1. pátek", "00:00", "1.3.2024"},
                           Case{u"7:05"_qs, "15. pondělí", "07:05", "15.1.2024 7:05"},
                           Case{u"zítra"_qs, "15. pondělí", "00:00", "15.1.2024"}}) {
    PickWorld w;
    EXPECT_TRUE(w.Pick(test.text, [&](QWidget* picker) {
      EXPECT_EQ(picker->windowTitle().toStdString(), "Vyber datum a čas");
      EXPECT_EQ(picker->property("windowTag").toInt(), 1730);
      EXPECT_EQ(PickWorld::Line(picker), test.line);
      EXPECT_EQ(PickWorld::Text(picker, 0)->text() + u':' + PickWorld::Text(picker, 1)->text(),
                QString::fromUtf8(test.time));
      w.driver.Press(Qt::Key_Return);
    }));
    EXPECT_EQ(w.Result(), test.result);
  }
}

TEST(PickDate, GivingUpLeavesTheControl) {
  PickWorld w;
  EXPECT_FALSE(w.Pick(u"nic"_qs, [&](QWidget*) { w.Keys({Qt::Key_Down, Qt::Key_Escape}); }));
  EXPECT_FALSE(w.Pick(u"nic"_qs, [](QWidget* picker) { FormDriver::Find<QPushButton>(picker, "cmdCancel")->click(); }));
  EXPECT_EQ(w.Result(), "nic");
}

TEST(PickDate, EmptyTimeFieldsAreMidnightAndWrongOnesRefused) {
  PickWorld w;
  EXPECT_TRUE(w.Pick(u"15.1.2024 8:30"_qs, [&](QWidget* picker) {
    PickWorld::Text(picker, 0)->setText(u"24"_qs);
    PickWorld::Text(picker, 1)->setText(u"75"_qs);
    EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav; say: hodin: 24");
    PickWorld::Text(picker, 0)->clear();
    EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav; say: minut: 75");
    PickWorld::Text(picker, 1)->clear();
    w.driver.Press(Qt::Key_Return);
  }));
  EXPECT_EQ(w.Result(), "15.1.2024");
}

TEST(PickDate, TheKeysOfTheListMoveAndSpeak) {
  struct Step {
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* heard;
  };
  const Step steps[] = {{Qt::Key_Down, {}, "say: 30. úterý"},
                        {Qt::Key_Down, {}, "say: 31. středa"},
                        {Qt::Key_Down, {}, "say: 1. čtvrtek"},
                        {Qt::Key_Up, {}, "say: 31. středa"},
                        {Qt::Key_Right, {}, "say: únor 2024 29. čtvrtek"},
                        {Qt::Key_Right, Qt::ControlModifier, "say: únor 2025 28. pátek"},
                        {Qt::Key_Left, Qt::ControlModifier, "say: únor 2024 28. středa"},
                        {Qt::Key_Left, {}, "say: leden 2024 28. neděle"},
                        {Qt::Key_Plus, Qt::KeypadModifier, "say: únor 2024 28. středa"},
                        {Qt::Key_Minus, Qt::KeypadModifier, "say: leden 2024 28. neděle"},
                        {Qt::Key_PageDown, {}, "say: 4. neděle; and: únor 2024"},
                        {Qt::Key_PageDown, {}, "say: 11. neděle"},
                        {Qt::Key_1, {}, "say: 1. čtvrtek"},
                        {Qt::Key_5, {}, "say: 15. čtvrtek"},
                        {Qt::Key_2, {}, "say: 15. čtvrtek"},
                        {Qt::Key_Home, {}, "say: 1. čtvrtek"},
                        {Qt::Key_PageUp, {}, "say: 25. čtvrtek; and: leden 2024"},
                        {Qt::Key_F3, {}, "say: 25. čtvrtek leden 2024"},
                        {Qt::Key_Space, {}, "say: 25. čtvrtek leden 2024"},
                        {Qt::Key_S, {}, ""},
                        {Qt::Key_T, {}, "say: 31. středa"},
                        {Qt::Key_N, {}, "say: 4. neděle; and: únor 2024"},
                        {Qt::Key_N, Qt::ShiftModifier, "say: 28. neděle; and: leden 2024"},
                        {Qt::Key_V, {}, "say: 1. pondělí duben 2024"},
                        {Qt::Key_V, Qt::ShiftModifier, "say: 10. pondělí duben 2023"},
                        {Qt::Key_D, {}, "say: 15. pondělí leden 2024"},
                        {Qt::Key_D, {}, "say: 15. pondělí"}};
  PickWorld w;
  w.Pick(u"29.1.2024 8:30"_qs, [&](QWidget*) {
    EXPECT_EQ(w.Heard(), "say: Vyber datum a čas; and: 29. pondělí leden 2024");
    int number = 0;
    for (const Step& step : steps) EXPECT_EQ(w.After(step.key, step.modifiers), step.heard) << "step " << ++number;
    w.driver.Press(Qt::Key_Escape);
  });
}

TEST(PickDate, EveryControlSpeaksOnFocusAndTheButtonsGoBackToTheList) {
  PickWorld w;
  w.Pick(u"31.1.2024 8:30"_qs, [&](QWidget* picker) {
    for (const char* heard :
         {"say: hodin: 08", "say: minut: 30", "say: OK", "say: Storno", "say: předchozí měsíc", "say: další měsíc"})
      EXPECT_EQ(w.After(Qt::Key_Tab), heard);
    EXPECT_EQ(w.After(Qt::Key_Space), "say: 29. čtvrtek únor 2024");
    EXPECT_EQ(picker->focusWidget()->objectName().toStdString(), "List1");
    w.Keys({Qt::Key_Tab});
    EXPECT_EQ(w.After(Qt::Key_Down), "say: 09");
    EXPECT_EQ(w.After(Qt::Key_F5), "say: 29. čtvrtek únor 2024");
    w.driver.Press(Qt::Key_Escape);
  });
}

TEST(PickDate, TheEndOfAllDatesIsHeard) {
  PickWorld w;
  w.Pick(u"31.12.9999"_qs, [&](QWidget* picker) {
    for (const int key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Right}) EXPECT_EQ(w.After(key), "sound: end.wav");
    EXPECT_EQ(PickWorld::Line(picker), "31. pátek");
    w.driver.Press(Qt::Key_Escape);
  });
}

TEST(SetSysDate, ChecksTheDayByItsOwnCalendar) {
  EXPECT_TRUE(IsLeapYear(2024));
  EXPECT_FALSE(IsLeapYear(2000));
  EXPECT_FALSE(IsLeapYear(2023));
  struct Case {
    int day, month, year;
    std::optional<int> wrong;
  };
  for (const Case& test : {Case{30, 4, 2009, {}}, Case{31, 4, 2009, 0}, Case{29, 2, 2000, 0}, Case{29, 2, 2024, {}},
                           Case{31, 12, 3000, {}}, Case{0, 1, 2024, 0}, Case{1, 13, 2024, 0}, Case{1, 1, 999, 2},
                           Case{1, 1, 3001, 2}, Case{1, 1, 1000, {}}}) {
    EXPECT_EQ(FirstWrongDateField(test.day, test.month, test.year), test.wrong)
        << test.day << "." << test.month << "." << test.year;
  }
}

struct SysDateWorld : TimeWorld {
  QList<Date> shown;

  void Open(bool setSystem, std::function<void(QWidget*)> user) {
    Next(std::move(user));
    frmSetSysDate form(services, [this](const Date& date) { shown << date; });
    form.SetSystem = setSystem;
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }
};

TEST(SetSysDate, GoesToTheDayAndRefusesWhatIsNone) {
  SysDateWorld w;
  w.Open(false, [&](QWidget* window) {
    EXPECT_EQ(window->windowTitle().toStdString(), "Přejít na den");
    EXPECT_EQ(FormDriver::Find<QLabel>(window, "lblYear")->buddy(), SysDateWorld::Text(window, 2));
    EXPECT_EQ(w.Heard(), "say: Přejít na den; and: Den: 15");
    EXPECT_EQ(w.After(Qt::Key_Down, Qt::ControlModifier), "say: 25");
    EXPECT_EQ(w.After(Qt::Key_Down, Qt::ControlModifier), "say: 31");
    EXPECT_EQ(w.After(Qt::Key_Tab), "say: Měsíc: 1");
    EXPECT_EQ(w.After(Qt::Key_Down), "char: 2");
    EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav; say: Den: 31");
    w.driver.Type(u"5"_qs);
    EXPECT_EQ(w.After(Qt::Key_Backtab, Qt::ShiftModifier), "say: Storno");
    EXPECT_EQ(w.After(Qt::Key_Backtab, Qt::ShiftModifier), "say: Nastav datum");
    EXPECT_EQ(w.After(Qt::Key_Backtab, Qt::ShiftModifier), "say: Rok: 2024");
    EXPECT_EQ(w.After(Qt::Key_Up), "say: 2023");
    w.driver.Press(Qt::Key_Return);
  });
  EXPECT_EQ(w.shown, QList<Date>{At(2023, 2, 5)});
  EXPECT_FALSE(w.world.clock.SetTo.isValid());
  w.Open(false, [&](QWidget*) { w.driver.Press(Qt::Key_Escape); });
  EXPECT_EQ(w.shown.size(), 1);
}

TEST(SetSysDate, SetsTheDateOfTheMachineAndKeepsItsTime) {
  SysDateWorld w;
  w.world.clock.Answer = Clock::Outcome::NotPermitted;
  w.Open(true, [&](QWidget* window) {
    EXPECT_EQ(window->windowTitle().toStdString(), "Nastavit datum");
    w.driver.Type(u"7"_qs);
    w.Next([&](QWidget*) {
      EXPECT_NE(w.Heard().find("K nastavení nemáte oprávnění."), std::string::npos);
      w.driver.Press(Qt::Key_Return);
    });
    w.driver.Press(Qt::Key_Return);
  });
  EXPECT_EQ(w.world.clock.SetTo, QDateTime(QDate(2024, 1, 7), QTime(8, 30)));
  EXPECT_TRUE(w.shown.isEmpty());
}

}  // namespace
}  // namespace talnik::test
