#include "shell/TextControls.h"
#include "timetools/PickDate.h"
#include "timetools/TimeWorld.h"
#include "timetools/frmSetSysDate.h"

#include <QLabel>

#include <tuple>

namespace talnik::test {
namespace {

struct PickWorld : TimeWorld {
  QLineEdit control;

  /// The text that picking leaves in a control, when the user has chosen; "(none)" when he gave up.
  std::string Pick(const char* text, std::function<void(QWidget*)> user) {
    control.setText(QString::fromUtf8(text));
    Next(std::move(user));
    return PickDate(services, names, &control, nullptr) ? control.text().toStdString() : "(none)";
  }
};

TEST(PickDate, StartsFromTheTextAndWritesTheChoiceBack) {
  const std::tuple<const char*, const char*, const char*, const char*> texts[] = {
      {"29.2.2024 7:05", "29. čtvrtek", "07:05", "29.2.2024 7:05"},
      {"1.3.2024", "1. pátek", "00:00", "1.3.2024"},
      {"7:05", "15. pondělí", "07:05", "15.1.2024 7:05"},
      {"zítra", "15. pondělí", "00:00", "15.1.2024"}};
  for (const auto& [text, line, time, result] : texts) {
    PickWorld w;
    const auto user = [&, line = line, time = time](QWidget* picker) {
      EXPECT_EQ(picker->property("windowTag").toInt(), 1730);
      EXPECT_EQ(FormDriver::Find<ListBox>(picker, "List1")->Text().toStdString(), line);
      EXPECT_EQ(PickWorld::Time(picker), time);
      w.Press("Return");
    };
    EXPECT_EQ(w.Pick(text, user), result);
  }
}

TEST(PickDate, EscapeLeavesTheControlAndAnEmptyTimeIsMidnightAndAWrongOneRefused) {
  PickWorld w;
  const auto user = [&](QWidget* picker) {
    PickWorld::SetTime(picker, "24", "75");
    w.Play("Return > sound: refused.wav; say: hodin: 24");
    PickWorld::SetTime(picker, "", "75");
    w.Play("Return > sound: refused.wav; say: minut: 75");
    PickWorld::SetTime(picker, "", "");
    w.Press("Return");
  };
  EXPECT_EQ(w.Pick("nic", [&](QWidget*) { w.Press("Esc"); }), "(none)");
  EXPECT_EQ(w.control.text().toStdString(), "nic");
  EXPECT_EQ(w.Pick("15.1.2024 8:30", user), "15.1.2024");
}

TEST(PickDate, TheKeysOfTheListMoveAndSpeak) {
  PickWorld w;
  w.Pick("29.1.2024 8:30", [&](QWidget*) {
    EXPECT_EQ(w.Heard(), "say: Vyber datum a čas; and: 29. pondělí leden 2024");
    w.Play(
        "Down > say: 30. úterý | Down > say: 31. středa | Down > say: 1. čtvrtek | Up > say: 31. středa | "
        "Right > say: únor 2024 29. čtvrtek | Ctrl+Right > say: únor 2025 28. pátek | "
        "Ctrl+Left > say: únor 2024 28. středa | Left > say: leden 2024 28. neděle | "
        "Num++ > say: únor 2024 28. středa | Num+- > say: leden 2024 28. neděle | "
        "PgDown > say: 4. neděle; and: únor 2024 | PgDown > say: 11. neděle | 1 > say: 1. čtvrtek | "
        "5 > say: 15. čtvrtek | 2 > say: 15. čtvrtek | Home > say: 1. čtvrtek | "
        "PgUp > say: 25. čtvrtek; and: leden 2024 | F3 > say: 25. čtvrtek leden 2024 | "
        "Space > say: 25. čtvrtek leden 2024 | S > | T > say: 31. středa | "
        "N > say: 4. neděle; and: únor 2024 | Shift+N > say: 28. neděle; and: leden 2024 | "
        "V > say: 1. pondělí duben 2024 | Shift+V > say: 10. pondělí duben 2023 | "
        "D > say: 15. pondělí leden 2024 | D > say: 15. pondělí");
    w.Press("Esc");
  });
  w.Pick("31.12.9999", [&](QWidget*) {
    w.Play(
        "Down > sound: end.wav | PgDown > sound: end.wav | Right > sound: end.wav | "
        "Ctrl+Right > sound: end.wav | F3 > say: 31. pátek prosinec 9999");
    w.Press("Esc");
  });
  w.Pick("1.1.1", [&](QWidget*) {
    w.Play("Up > sound: end.wav | PgUp > sound: end.wav | Left > sound: end.wav | F3 > say: 1. pondělí leden 0001");
    w.Press("Esc");
  });
}

TEST(PickDate, EveryControlSpeaksOnFocusAndTheButtonsGoBackToTheList) {
  PickWorld w;
  w.Pick("31.1.2024 8:30", [&](QWidget*) {
    w.Play(
        "Tab > say: hodin: 08 | Tab > say: minut: 30 | Tab > say: OK | Tab > say: Storno | "
        "Tab > say: předchozí měsíc | Tab > say: další měsíc | Space > say: 29. čtvrtek únor 2024 | "
        "Tab > say: hodin: 08 | Down > say: 09 | F5 > say: 29. čtvrtek únor 2024");
    w.Press("Esc");
  });
}

TEST(SetSysDate, ChecksTheDayByItsOwnCalendar) {
  EXPECT_TRUE(IsLeapYear(2024));
  EXPECT_FALSE(IsLeapYear(2000) || IsLeapYear(2023));
  const std::tuple<int, int, int, std::optional<int>> days[] = {
      {30, 4, 2009, {}}, {31, 4, 2009, 0}, {29, 2, 2000, 0}, {29, 2, 2024, {}}, {31, 12, 3000, {}},
      {1, 1, 1000, {}},  {0, 1, 2024, 0},  {1, 13, 2024, 0}, {1, 1, 999, 2},    {1, 1, 3001, 2}};
  for (const auto& [day, month, year, wrong] : days)
    EXPECT_EQ(FirstWrongDateField(day, month, year), wrong) << day << "." << month << "." << year;
}

struct SysDateWorld : TimeWorld {
  QStringList shown;

  void Open(bool setSystem, std::function<void(QWidget*)> user) {
    Next(std::move(user));
    frmSetSysDate form(services, [this](const Date& date) { shown << DateText(date); });
    form.SetSystem = setSystem;
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }
};

TEST(SetSysDate, GoesToTheDayAndRefusesWhatIsNone) {
  SysDateWorld w;
  w.Open(false, [&](QWidget* window) {
    EXPECT_EQ(FormDriver::Find<QLabel>(window, "lblYear")->buddy(), SysDateWorld::Text(window, 2));
    EXPECT_EQ(w.Heard(), "say: Přejít na den; and: Den: 15");
    w.Play(
        "Ctrl+Down > say: 25 | Ctrl+Down > say: 31 | Tab > say: Měsíc: 1 | Down > char: 2 | "
        "Return > sound: refused.wav; say: Den: 31");
    w.Press("5");
    w.Play(
        "Shift+Tab > say: Storno | Shift+Tab > say: Nastav datum | Shift+Tab > say: Rok: 2024 | "
        "Up > say: 2023");
    w.Press("Return");
  });
  w.Open(false, [&](QWidget*) { w.Press("Esc"); });
  EXPECT_EQ(w.shown, QStringList{u"5.2.2023"_qs});
  EXPECT_FALSE(w.world.clock.SetTo.isValid());
}

TEST(SetSysDate, SetsTheDateOfTheMachineAndKeepsItsTime) {
  SysDateWorld w;
  w.world.clock.Answer = Clock::Outcome::NotPermitted;
  w.Open(true, [&](QWidget*) {
    EXPECT_EQ(w.Heard(), "say: Nastavit datum; and: Den: 15");
    w.Press("7");
    w.Next([&](QWidget*) {
      EXPECT_NE(w.Heard().find("K nastavení nemáte oprávnění."), std::string::npos);
      w.Press("Return");
    });
    w.Press("Return");
  });
  EXPECT_EQ(w.world.clock.SetTo, QDateTime(QDate(2024, 1, 7), QTime(8, 30)));
  EXPECT_TRUE(w.shown.isEmpty());
}

}  // namespace
}  // namespace talnik::test
