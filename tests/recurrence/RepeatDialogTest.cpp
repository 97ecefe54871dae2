#include "recurrence/frmDeleteRecurrentEvent.h"
#include "recurrence/frmRepeat.h"
#include "timetools/TimeWorld.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>

#include <tuple>

namespace talnik::test {

namespace {

/// The dialog over a record that starts on Wednesday 17.1.2024 at 9:05.
struct RepeatDialog : testing::Test, TimeWorld {
  RepeatState state{.Repeat_StartTime = u"17.1.2024 9:05"_qs};

  /// Opens the dialog, lets the user act in it and gives the rule that it leaves.
  std::string Rule(const std::function<void(frmRepeat&)>& user) {
    frmRepeat form(services, names, state);
    Next([&](QWidget*) {
      user(form);
      if (form.isVisible()) form.cmdOK->click();
    });
    form.Run();
    return state.Repeat_Rule.toStdString();
  }

  /// Chooses in the dialog: "unit 1; day 6" and so on, lines and options by their number.
  static void Choose(frmRepeat& form, const char* script) {
    for (const QString& step : QString::fromUtf8(script).split(u"; "_qs, Qt::SkipEmptyParts)) {
      const QString what = step.section(u' ', 0, 0), value = step.section(u' ', 1);
      const auto number = static_cast<std::size_t>(value.toInt());
      if (what == u"unit"_qs) form.cmbTimeUnit->setCurrentIndex(value.toInt());
      if (what == u"every"_qs) form.cmbUnits->setCurrentText(value);
      if (what == u"day"_qs) form.chkDay.at(number)->click();
      if (what == u"month"_qs) form.optMonthDay.at(number)->click();
      if (what == u"end"_qs) form.optEnd.at(number)->click();
      if (what == u"number"_qs) form.cmbNumber->setCurrentText(value);
      if (what == u"until"_qs) form.txtDeadLine->setText(value);
    }
  }

  template <typename Options>
  static QString Chosen(const Options& options) {
    for (std::size_t i = 0; i < options.size(); ++i) {
      if (options.at(i)->isChecked()) return QString::number(i);
    }
    return u"-1"_qs;
  }

  static std::string Loaded(const frmRepeat& form) {
    QStringList days;
    for (const QCheckBox* box : form.chkDay) {
      if (box->isChecked()) days << box->text();
    }
    QString text = form.cmbTimeUnit->currentText() + u' ' + form.cmbUnits->currentText() + u" (" + days.join(u',') +
                   u") end " + Chosen(form.optEnd) + u" month " + Chosen(form.optMonthDay) + u" number " +
                   form.cmbNumber->currentText() + u" until " + form.txtDeadLine->text() + u" - ";
    if (form.chkDay[6]->isEnabled()) text += u"days ";
    if (form.optMonthDay[1]->isEnabled()) text += u"month ";
    if (form.cmbNumber->isEnabled()) text += u"number ";
    if (form.txtDeadLine->isEnabled() && form.cmdPickDate->isEnabled()) text += u"until ";
    return text.toStdString();
  }
};

}  // namespace

TEST_F(RepeatDialog, LoadsARule) {
  // The rule; unit, interval, the days, which of the end and month options, number and end date; what is enabled.
  const std::tuple<const char*, const char*> rules[] = {
      {"", "Denně 1 () end 0 month -1 number 1 until  - "},
      {"RRULE:FREQ=WEEKLY BYDAY=MO,WE INTERVAL=2 COUNT=10",
       "Týdně 2 (Pondělí,Středa) end 1 month 0 number 10 until  - days number "},
      {"RRULE:FREQ=MONTHLY BYDAY=3WE INTERVAL=1 UNTIL=20240905T090500Z",
       "Měsíčně 1 (Středa) end 2 month 1 number 1 until 05.09.2024 - month until "},
      {"RRULE:FREQ=MONTHLY BYMONTHDAY=17 INTERVAL=1 ", "Měsíčně 1 () end 0 month 0 number 1 until  - month "},
      {"FREQ=YEARLY UNTIL=20240905", "Ročně 1 () end 2 month 0 number 1 until 17.01.2024 - until "}};
  for (const auto& [rule, loaded] : rules) {
    state.Repeat_Rule = QString::fromLatin1(rule);
    EXPECT_EQ(Loaded(frmRepeat(services, names, state)), loaded) << rule;
  }
}

TEST_F(RepeatDialog, WritesWhatIsChosenAndMovesTheStartToACheckedDay) {
  const char* const start = "17.1.2024 9:05";
  const struct {
    const char *before, *choice, *rule, *start;
  } cases[] = {
      {"", "", "RRULE:FREQ=DAILY INTERVAL=1 ", start},
      {"", "every 30", "RRULE:FREQ=DAILY INTERVAL=30 ", start},
      {"", "end 1; number 7", "RRULE:FREQ=DAILY INTERVAL=1 COUNT=7", start},
      {"", "unit 3; end 2", "RRULE:FREQ=YEARLY INTERVAL=1 UNTIL=20240117T090500Z", start},
      {"", "unit 3; end 2; until 31.12.2024 23:00", "RRULE:FREQ=YEARLY INTERVAL=1 UNTIL=20241231T090500Z", start},
      {"", "unit 1", "RRULE:FREQ=WEEKLY BYDAY=WE INTERVAL=1 ", start},
      {"", "unit 1; day 6; day 0", "RRULE:FREQ=WEEKLY BYDAY=MO,WE,SU INTERVAL=1 ", start},
      {"", "unit 1; day 2", "RRULE:FREQ=WEEKLY  INTERVAL=1 ", start},
      {"", "unit 1; day 2; day 4; day 0", "RRULE:FREQ=WEEKLY BYDAY=MO,FR INTERVAL=1 ", "19.1.2024 9:05:00"},
      {"", "unit 2", "RRULE:FREQ=MONTHLY BYMONTHDAY=17 INTERVAL=1 ", start},
      {"", "unit 2; month 1", "RRULE:FREQ=MONTHLY BYDAY=3WE INTERVAL=1 ", start},
      // Numbers beyond its lists are shortened.
      {"RRULE:FREQ=DAILY INTERVAL=31 COUNT=365", "", "RRULE:FREQ=DAILY INTERVAL=1 COUNT=1", start},
  };
  for (const auto& c : cases) {
    state = {.Repeat_Rule = QString::fromLatin1(c.before), .Repeat_StartTime = QString::fromLatin1(start)};
    EXPECT_EQ(Rule([&](frmRepeat& form) { Choose(form, c.choice); }), c.rule) << c.choice;
    EXPECT_EQ(state.Repeat_StartTime.toStdString(), c.start) << c.choice;
  }
}

TEST_F(RepeatDialog, ATextThatIsNoDateIsRefused) {
  for (const char* text : {"brzy", "", "30.2.2024", "8:30"}) {
    Rule([&](frmRepeat& form) {
      Choose(form, "end 2");
      form.txtDeadLine->setText(QString::fromLatin1(text));
      Heard();
      form.cmdOK->click();
      EXPECT_TRUE(form.isVisible() && form.txtDeadLine->hasFocus()) << text;
      EXPECT_NE(Heard().find("refused.wav"), std::string::npos) << text;
      EXPECT_EQ(form.txtDeadLine->text(), QString::fromLatin1(text));
      form.cmdCancel->click();
    });
    EXPECT_EQ(state.Repeat_Rule, QString());
  }
}

TEST_F(RepeatDialog, StornoLeavesEverythingAsItWas) {
  state.Repeat_Rule = u"RRULE:FREQ=DAILY INTERVAL=99 "_qs;
  Rule([&](frmRepeat& form) {
    form.cmbTimeUnit->setCurrentIndex(1);
    Press("Esc");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(state.Repeat_Rule, u"RRULE:FREQ=DAILY INTERVAL=99 "_qs);
  EXPECT_EQ(state.Repeat_StartTime, u"17.1.2024 9:05"_qs);
}

TEST_F(RepeatDialog, IsWalkedThroughByKeyAndEar) {
  Rule([&](frmRepeat& form) {
    EXPECT_EQ(Heard(), "say: Zopakovat; and: Opakuje se: Denně");
    Play(
        "Up > sound: end.wav | Down > say: Týdně | Tab > say: Zopakovat po: 1 | Down > char: 2 | Tab > say: Pondělí "
        "nezaškrtnuto | Space > say: zaškrtnuto | Tab > say: Úterý nezaškrtnuto | Tab > say: Středa zaškrtnuto");
    form.optEnd[0]->setFocus();
    Play(
        "Down > say: Počet událostí | Tab > say: Počet událostí: 1 | Down > char: 2 | Tab > say: OK | Tab > say: "
        "Storno");
    form.optEnd[1]->setFocus();
    Play(
        "Down > say: Koncové datum | Down > sound: end.wav | Space > say: Koncové datum | Tab > say: Koncové datum: "
        "17.01.2024 | Tab > say: "
        "Vybrat koncové datum | Tab > say: OK");
    EXPECT_EQ(form.cmbNumber->currentIndex(), -1);
    Press("Return");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(state.Repeat_Rule.toStdString(), "RRULE:FREQ=WEEKLY BYDAY=MO,WE INTERVAL=2 UNTIL=20240117T090500Z");
}

TEST_F(RepeatDialog, TakesTheEndDateFromTheDatePicker) {
  Rule([&](frmRepeat& form) {
    Choose(form, "end 2");
    Next([&](QWidget* picker) { Click(picker, "cmdOK"); });
    form.cmdPickDate->click();
    EXPECT_EQ(form.focusWidget(), form.txtDeadLine);
    EXPECT_TRUE(driver.AllCame());
  });
  EXPECT_EQ(state.Repeat_Rule.toStdString(), "RRULE:FREQ=DAILY INTERVAL=1 UNTIL=20240117T090500Z");
}

TEST(OpenRepeatEditor, CarriesWhatTheDialogLeavesIntoTheForm) {
  const QString daily = u"RRULE:FREQ=DAILY INTERVAL=1"_qs, blank = daily + u' ', start = u"17.1.2024 9:05"_qs,
                end = u"17.1.2024 10:00"_qs, moved = u"19.1.2024 9:05:00"_qs, none;
  const struct {
    const char* what;
    QString before, newRule, newStart, text4;  ///< a new rule or start that is none leaves that as it was
    bool replaced;
    const char* events;
    QString rule, newText3, newText4;
  } cases[] = {
      {"given up", none, none, none, end, true, "Nastavit opakování", none, start, end},
      {"a later start", none, daily, moved, end, true, "Upravit opakování", daily, u"19.1.2024 9:05"_qs,
       u"19.1.2024 10:00"_qs},
      {"no end", none, daily, moved, none, true, "Upravit opakování", daily, u"19.1.2024 9:05"_qs, none},
      {"replaced", daily, u"FREQ=YEARLY"_qs, none, none, true, "Upravit opakování; edit FREQ=YEARLY; unload",
       u"FREQ=YEARLY"_qs, start, none},
      {"refused", daily, u"FREQ=YEARLY"_qs, none, none, false, "Upravit opakování; edit FREQ=YEARLY", daily, start,
       none},
      {"the same rule", daily, blank, none, none, true, "Upravit opakování", blank, start, none},
  };
  for (const auto& c : cases) {
    RepeatState state{.Repeat_Rule = c.before};
    QString text3 = start, text4 = c.text4;
    QStringList events;
    const auto leave = [&] {
      EXPECT_EQ(state.Repeat_StartTime, start);
      if (!c.newRule.isEmpty()) state.Repeat_Rule = c.newRule;
      if (!c.newStart.isEmpty()) state.Repeat_StartTime = c.newStart;
    };
    const auto edit = [&](const QString& rule) { return (events << u"edit "_qs + rule, c.replaced); };
    OpenRepeatEditor({state, [&] { return text3; }, [&](const QString& text) { text3 = text; }, [&] { return text4; },
                      [&](const QString& text) { text4 = text; }, [&](const QString& caption) { events << caption; },
                      leave, edit, [&] { events << u"unload"_qs; }},
                     Date());
    EXPECT_EQ(events.join(u"; "_qs).toStdString(), c.events) << c.what;
    EXPECT_EQ(state.Repeat_Rule, c.rule) << c.what;
    EXPECT_EQ(text3, c.newText3) << c.what;
    EXPECT_EQ(text4, c.newText4) << c.what;
  }
}

TEST(RepeatChoice, TheFifthFridayOfItsMonth) {
  RepeatChoice choice;
  choice.unit = 2;
  choice.byMonthDay = false;
  EXPECT_EQ(ComposeRule(choice, Date::FromParts(2024, 3, 29).value()).Write(),
            u"RRULE:FREQ=MONTHLY BYDAY=5FR INTERVAL=1 "_qs);
}

struct WhichEvents : testing::Test, TimeWorld {};

TEST_F(WhichEvents, AreAnsweredByKeyAndLeftUnansweredByClosing) {
  const struct {
    const char* caption;
    bool forEdit;
    const char *script, *key;
    int choice;
  } cases[] = {
      {"Smazat opakovanou událost", false, "Tab > say: Všechny | Tab > say: Storno | Tab > say: Pouze tuto", "Return",
       RecurrOnlyThis},
      {"Upravit opakovanou událost", true, "Tab > say: Všechny", "Space", RecurrAll},
      {"Smazat opakovanou událost", false, "Tab > say: Všechny", "Esc", RecurrNone},
      {"Smazat opakovanou událost", false, "Tab > say: Všechny", nullptr, 7},
  };
  for (const auto& c : cases) {
    int choice = 7;
    frmDeleteRecurrentEvent form(services, choice);
    if (c.forEdit) form.SetCaptionForEdit();
    Next([&](QWidget*) {
      EXPECT_EQ(form.Tag(), 1732);
      EXPECT_EQ(Heard(), std::string("say: ") + c.caption + "; and: Pouze tuto");
      Play(c.script);
      c.key ? Press(c.key) : void(form.close());
    });
    Heard();
    form.Run();
    EXPECT_EQ(choice, c.choice) << (c.key ? c.key : "closed");
  }
}

}  // namespace talnik::test
