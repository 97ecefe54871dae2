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

  void Load(const char* rule, const std::function<void(frmRepeat&)>& user) {
    state.Repeat_Rule = QString::fromLatin1(rule);
    frmRepeat form(services, names, state);
    user(form);
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
    Load(rule, [&, loaded = loaded](const frmRepeat& form) { EXPECT_EQ(Loaded(form), loaded); });
  }
}

TEST_F(RepeatDialog, NumbersBeyondItsListsAreShortened) {
  state.Repeat_Rule = u"RRULE:FREQ=DAILY INTERVAL=31 COUNT=365"_qs;
  EXPECT_EQ(Rule([](frmRepeat&) {}), "RRULE:FREQ=DAILY INTERVAL=1 COUNT=1");
}

TEST_F(RepeatDialog, WritesWhatIsChosen) {
  struct Case {
    int unit;
    std::function<void(frmRepeat&)> choose;
    const char* rule;
  };
  const std::vector<Case> cases = {
      {0, [](frmRepeat&) {}, "RRULE:FREQ=DAILY INTERVAL=1 "},
      {0, [](frmRepeat& form) { form.cmbUnits->setCurrentIndex(29); }, "RRULE:FREQ=DAILY INTERVAL=30 "},
      {0,
       [](frmRepeat& form) {
         form.optEnd[1]->click();
         form.cmbNumber->setCurrentIndex(6);
       },
       "RRULE:FREQ=DAILY INTERVAL=1 COUNT=7"},
      {3, [](frmRepeat& form) { form.optEnd[2]->click(); }, "RRULE:FREQ=YEARLY INTERVAL=1 UNTIL=20240117T090500Z"},
      {3,
       [](frmRepeat& form) {
         form.optEnd[2]->click();
         form.txtDeadLine->setText(u"31.12.2024 23:00"_qs);
       },
       "RRULE:FREQ=YEARLY INTERVAL=1 UNTIL=20241231T090500Z"},
      {1, [](frmRepeat&) {}, "RRULE:FREQ=WEEKLY BYDAY=WE INTERVAL=1 "},
      {1,
       [](frmRepeat& form) {
         form.chkDay[6]->click();
         form.chkDay[0]->click();
       },
       "RRULE:FREQ=WEEKLY BYDAY=MO,WE,SU INTERVAL=1 "},
      {1, [](frmRepeat& form) { form.chkDay[2]->click(); }, "RRULE:FREQ=WEEKLY  INTERVAL=1 "},
      {2, [](frmRepeat&) {}, "RRULE:FREQ=MONTHLY BYMONTHDAY=17 INTERVAL=1 "},
      {2, [](frmRepeat& form) { form.optMonthDay[1]->click(); }, "RRULE:FREQ=MONTHLY BYDAY=3WE INTERVAL=1 "},
  };
  for (const Case& c : cases) {
    state.Repeat_Rule.clear();
    EXPECT_EQ(Rule([&](frmRepeat& form) {
                form.cmbTimeUnit->setCurrentIndex(c.unit);
                c.choose(form);
              }),
              c.rule);
    EXPECT_EQ(state.Repeat_StartTime, u"17.1.2024 9:05"_qs) << c.rule;
  }
}

TEST_F(RepeatDialog, MovesTheStartToTheFirstCheckedDay) {
  Rule([](frmRepeat& form) {
    form.cmbTimeUnit->setCurrentIndex(1);
    form.chkDay[2]->click();
    form.chkDay[4]->click();
    form.chkDay[0]->click();
  });
  EXPECT_EQ(state.Repeat_StartTime, u"19.1.2024 9:05:00"_qs);
}

TEST_F(RepeatDialog, ATextThatIsNoDateIsRefused) {
  for (const char* text : {"brzy", "", "30.2.2024", "8:30"}) {
    Rule([&](frmRepeat& form) {
      form.optEnd[2]->click();
      form.txtDeadLine->setText(QString::fromLatin1(text));
      Heard();
      form.cmdOK->click();
      EXPECT_TRUE(form.isVisible()) << text;
      EXPECT_TRUE(form.txtDeadLine->hasFocus()) << text;
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
    form.optEnd[2]->click();
    Next([&](QWidget* picker) { Click(picker, "cmdOK"); });
    form.cmdPickDate->click();
    EXPECT_EQ(form.focusWidget(), form.txtDeadLine);
    EXPECT_TRUE(driver.AllCame());
  });
  EXPECT_EQ(state.Repeat_Rule.toStdString(), "RRULE:FREQ=DAILY INTERVAL=1 UNTIL=20240117T090500Z");
}

namespace {

/// The record's form as OpenRepeatEditor sees it.
struct Record {
  RepeatState state;
  QString text3 = u"17.1.2024 9:05"_qs;
  QString text4 = u"17.1.2024 10:00"_qs;
  QString newRule, newStart;  ///< what the dialog leaves; nothing leaves all as it was
  bool seriesReplaced = true;
  QStringList events;

  void Open() {
    const RepeatHost host{
        state,
        [this] { return text3; },
        [this](const QString& text) { text3 = text; },
        [this] { return text4; },
        [this](const QString& text) { text4 = text; },
        [this](const QString& caption) { events << caption; },
        [this] {
          EXPECT_EQ(state.Repeat_StartTime, u"17.1.2024 9:05"_qs);
          if (!newRule.isEmpty()) state.Repeat_Rule = newRule;
          if (!newStart.isEmpty()) state.Repeat_StartTime = newStart;
        },
        [this](const QString& rule) {
          events << u"edit "_qs + rule;
          return seriesReplaced;
        },
        [this] { events << u"unload"_qs; },
    };
    OpenRepeatEditor(host, Date());
  }
};

}  // namespace

TEST(OpenRepeatEditor, CarriesWhatTheDialogLeavesIntoTheForm) {
  const char* daily = "RRULE:FREQ=DAILY INTERVAL=1";
  struct Case {
    const char *remembered, *newRule, *newStart, *text4;
    bool replaced;
    const char *events, *rule, *newText3, *newText4;
  };
  const Case cases[] = {
      {"", "", "", "17.1.2024 10:00", true, "Nastavit opakování", "", "17.1.2024 9:05", "17.1.2024 10:00"},
      {"", daily, "19.1.2024 9:05:00", "17.1.2024 10:00", true, "Upravit opakování", daily, "19.1.2024 9:05",
       "19.1.2024 10:00"},
      {"", daily, "19.1.2024 9:05:00", "", true, "Upravit opakování", daily, "19.1.2024 9:05", ""},
      {daily, "FREQ=YEARLY", "", "", true, "Upravit opakování; edit FREQ=YEARLY; unload", "FREQ=YEARLY",
       "17.1.2024 9:05", ""},
      {daily, "FREQ=YEARLY", "", "", false, "Upravit opakování; edit FREQ=YEARLY", daily, "17.1.2024 9:05", ""},
      {daily, "RRULE:FREQ=DAILY INTERVAL=1 ", "", "", true, "Upravit opakování", "RRULE:FREQ=DAILY INTERVAL=1 ",
       "17.1.2024 9:05", ""},
  };
  for (const Case& c : cases) {
    Record record;
    record.state.Repeat_Rule = QString::fromLatin1(c.remembered);
    record.newRule = QString::fromLatin1(c.newRule);
    record.newStart = QString::fromLatin1(c.newStart);
    record.text4 = QString::fromLatin1(c.text4);
    record.seriesReplaced = c.replaced;
    record.Open();
    EXPECT_EQ(record.events.join(u"; "_qs).toStdString(), c.events);
    EXPECT_EQ(record.state.Repeat_Rule.toStdString(), c.rule);
    EXPECT_EQ(record.text3.toStdString(), c.newText3);
    EXPECT_EQ(record.text4.toStdString(), c.newText4);
  }
}

TEST(RepeatChoice, TheFifthFridayOfItsMonth) {
  RepeatChoice choice;
  choice.unit = 2;
  choice.byMonthDay = false;
  EXPECT_EQ(ComposeRule(choice, Date::FromParts(2024, 3, 29).value()).Write(),
            u"RRULE:FREQ=MONTHLY BYDAY=5FR INTERVAL=1 "_qs);
}

struct WhichEvents : testing::Test, TimeWorld {
  int choice = 7;

  void Ask(const std::function<void(frmDeleteRecurrentEvent&)>& user, bool forEdit = false) {
    frmDeleteRecurrentEvent form(services, choice);
    if (forEdit) form.SetCaptionForEdit();
    Next([&](QWidget*) { user(form); });
    form.Run();
  }
};

TEST_F(WhichEvents, AnswersByKey) {
  Ask([&](frmDeleteRecurrentEvent& form) {
    EXPECT_EQ(form.Tag(), 1732);
    EXPECT_EQ(Heard(), "say: Smazat opakovanou událost; and: Pouze tuto");
    Play("Tab > say: Všechny | Tab > say: Storno | Tab > say: Pouze tuto");
    Press("Return");
  });
  EXPECT_EQ(choice, RecurrOnlyThis);
  Ask(
      [&](frmDeleteRecurrentEvent&) {
        EXPECT_EQ(Heard().substr(0, 32), "say: Upravit opakovanou událost");
        Press("Tab");
        Press("Space");
      },
      true);
  EXPECT_EQ(choice, RecurrAll);
  Ask([&](frmDeleteRecurrentEvent&) { Press("Esc"); });
  EXPECT_EQ(choice, RecurrNone);
}

TEST_F(WhichEvents, ClosingTheWindowLeavesTheAnswerAsItWas) {
  Ask([](frmDeleteRecurrentEvent& form) { form.close(); });
  EXPECT_EQ(choice, 7);
}

}  // namespace talnik::test
