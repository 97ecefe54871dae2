#include "editor/EditorControls.h"
#include "editor/EditorWorld.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>

namespace talnik::test {
namespace {

class Browse : public EditorWorld {
 protected:
  void AddThree() {
    Add("15.1.2024 9:00", "první");
    Add("15.1.2024 10:00", "druhý", "15.1.2024 11:00");
    Add("16.1.2024", "třetí");
  }
};

TEST_F(Browse, OpeningAndPageKeysSayTheRecordOnceAPressAndTheEndsAreAudible) {
  AddThree();
  Run([&](frmSchedule& form) {
    EXPECT_EQ(Heard(), "say: Plán - 15.1.2024 9:00; and: Poznámka: první");
    EXPECT_EQ(Field(form, "txtPos"), u"1/3"_qs);
    Play(form, {{"PgDown > say: 10:00 druhý", "2/3"},
                {"PgDown > say: 16. 1. 2024  třetí", "3/3"},
                {"PgDown > sound: refused.wav; say: 16. 1. 2024  třetí", "3/3"},
                {"Ctrl+PgUp > say: 15. 1. 2024 9:00  první", "1/3"},
                {"PgUp > sound: refused.wav; say: 9:00 první", "1/3"},
                {"Ctrl+PgDown > say: 16. 1. 2024  třetí", "3/3"},
                {"PgUp > say: 15. 1. 2024 10:00  druhý", "2/3"}});
    // The start field says its own; a menu command is silent.
    Play(form, "@Text3 | PgDown > say: 16. 1. 2024  třetí; say:  datum 16.1.2024 | mnuFirst > | Text1:první");
  });
}

TEST_F(Browse, ANewRecordCannotBeLeftByPaging) {
  AddThree();
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    EXPECT_EQ(Field(form, "Text3"), u"17.1.2024 12:00"_qs) << "put back by the focus of the text";
    EXPECT_FALSE(FormDriver::Find<QLineEdit>(&form, "txtPos")->isVisible());
    Play(form, "PgUp > sound: refused.wav | Ctrl+PgDown > sound: refused.wav");
    Play(form, "mnuRecPos > sound: refused.wav | mnuDelete > sound: refused.wav");
    // A start entered since stays.
    Play(form, "Text3=18.1.2024 7:00 | @Text3 | @Text1 | Text3:18.1.2024 7:00");
  });
  EXPECT_EQ(Rows().size(), 3U);
}

TEST_F(Browse, ClosingReturnsToTheDayOfTheRecordUnlessItWasCancelledOrIsAlone) {
  Add("15.1.2024 9:00", "první");
  Run([&](frmSchedule& form) { Command(form, "mnuExit"); });
  EXPECT_TRUE(shownDays.isEmpty());
  Add("16.1.2024", "druhý");
  Run([&](frmSchedule&) { driver.Press(Qt::Key_Escape); });
  Run([&](frmSchedule& form) { Click(form, "cmdStorno"); });
  EXPECT_TRUE(shownDays.isEmpty());
  Run([&](frmSchedule& form) {
    Play(form, "PgDown | Text1=nikdy neuloženo | mnuExit");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(shownDays, QStringList(u"16.1.2024"_qs));
  EXPECT_EQ(skips, 4);
  EXPECT_EQ(Rows().at(1).appointment, u"druhý"_qs);
}

TEST_F(Browse, AStartThatIsNoDateRefusesTheClosingButNotTheCancelling) {
  AddThree();
  Run([&](frmSchedule& form) {
    SetField(form, "Text3", "31.2.2024");
    ExpectMessage("Špatný časový údaj.");
    form.close();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(Field(form, "Text3"), u"31.2.2024"_qs);
    driver.Press(Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_TRUE(shownDays.isEmpty());
}

TEST_F(Browse, EachModeHasItsList) {
  Add("10.1.2024", "starý", "", "10.1.2024 7:00");
  Add("15.1.2024 7:00", "dnes ráno", "", "15.1.2024 6:00");
  Add("20.1.2024", "smazaný", "", "20.1.2024", {}, StatusDeleted);
  Add("21.1.2024", "bez alarmu");
  const struct {
    int mode;
    const char* filter;
    const char* first;
    const char* position;
    int skip = 3;
  } cases[] = {
      {ModeAll, "", "starý", "1/3"},
      {ModeFromDay, "", "dnes ráno", "1/2"},
      {ModeFromDay, "16.1.2024", "bez alarmu", "1/1"},
      {ModeReserved, "16.1.2024", "smazaný", "3/4"},
      {ModeCustom, "", "bez alarmu", "4/4"},
      {ModeCustom, "", "bez alarmu", "4/4", 99},
      {ModeWithAlarm, "", "dnes ráno", "1/2"},
      {ModeSearch, "", "bez alarmu", "1/1"},
  };
  state.SearchText = u"BEZ AL"_qs;
  state.SearchFrom = At("1.1.1 1:00");
  state.CustomQuery = statements::AllByStart();
  for (const auto& row : cases) {
    state.FilterMode = row.mode;
    state.FilterDate = Q(row.filter);
    state.CustomSkip = row.skip;
    Run([&](frmSchedule& form) {
      EXPECT_EQ(Note(form).toStdString(), row.first) << "mode " << row.mode;
      EXPECT_EQ(Field(form, "txtPos").toStdString(), row.position) << "mode " << row.mode;
    });
    EXPECT_EQ(state.CustomSkip, row.mode == ModeCustom ? 0 : row.skip) << "mode " << row.mode;
  }
}

TEST_F(Browse, ASearchThatFindsNothingSaysSoOnceAndCloses) {
  AddThree();
  state.SearchText = u"nikde"_qs;
  state.FilterMode = ModeSearch;
  RunNew("17.1.2024", [](frmSchedule& opened) { EXPECT_TRUE(opened.isVisible()) << "a new record is no search"; });
  state.FilterMode = ModeSearch;
  frmSchedule form(services, Context());
  ExpectMessage("Nenalezeno: nikde");
  driver.Expect([](QWidget*) {});
  form.Run();
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(state.FilterMode, ModeAll);
}

TEST_F(Browse, WhatIsTypedIntoAnEmptyListIsRefusedAudibly) {
  state.FilterMode = ModeFromDay;
  Run([&](frmSchedule& form) {
    Play(form, "Text3=15.1.2024 | cmdOK > sound: refused.wav");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_TRUE(Rows().empty());
}

TEST_F(Browse, AStoreThatCannotBeReadIsTold) {
  store->Close();
  ASSERT_TRUE(QFile::remove(paths.Store));
  ASSERT_TRUE(QDir().mkdir(paths.Store));
  frmSchedule form(services, Context());
  ExpectMessage("Chyba databáze.");
  driver.Expect([&](QWidget* opened) {
    EXPECT_EQ(opened, &form);
    driver.Press(Qt::Key_PageDown);
    driver.Press(Qt::Key_Escape);
  });
  form.Run();
}

TEST_F(Browse, EveryFieldSaysItselfOnFocus) {
  Add("15.1.2024 9:00", "první", "15.1.2024 10:00", "15.1.2024 8:30");
  Run([&](frmSchedule& form) {
    for (const char* step :
         {"@Text3 > say: Čas: 15.1.2024 9:00", "@cmdPickDate1 > say: Vybrat datum a čas",
          "@Text4 > say: Ukončení: 15.1.2024 10:00", "@cmdPickDate2 > say: Vybrat datum a čas ukončení",
          "@cmbUserUnit > say: Alarm: 30 minut předem", "@chkAlarm > say: Alarm nezaškrtnuto",
          "@txtPos > say: Položka: 1/1", "@Text2 > say: bez nahrávky", "@cmdRepeat > say: Nastavit opakování",
          "@cmdOK > say: Uložit", "@Text1 > say: Poznámka: první"}) {
      Play(form, step);
    }
    Focus(form, "cmdPickDate2");
    Heard();
    driver.PressOnly(Qt::Key_Tab);
    driver.Release(Qt::Key_Tab);
    EXPECT_EQ(Heard(), "say: Alarm: 30 minut předem") << "the key that led there says nothing more";
    // A typed digit moves too. The open list goes away with the old choice or with the new one.
    Play("Down > say: 1 hodina předem | 3 > say: 3 hodin předem");
    Play("F4 > say: 3 hodin předem | Down > say: 1 den předem | Escape > say: 3 hodin předem");
    Play("F4 > say: 3 hodin předem | Down > say: 1 den předem | Return > say: 1 den předem");
  });
}

TEST_F(Browse, TheReadingCommandsSpeakOrTellWhatIsMissing) {
  Add("15.1.2024 9:00", "první", "15.1.2024 10:00");
  Add("16.1.2024", "");
  Run([&](frmSchedule& form) {
    Play(form, "mnuText > say: první | mnuDate > say: 15.1.2024 9:00 | mnuDur > say: 15.1.2024 10:00");
    Play(form, "?Záznam 1 z 2. | mnuRecPos | PgDown | Text3= | mnuDate > say: není záznam o čase");
    Play(form, "mnuDur > say: Není čas ukončení. | ?Není textový záznam. | mnuText");
    Play(form, "Text3=16.1.2024 | mnuEditDuration | Text4:16.1.2024 | @:Text4");
  });
}

TEST_F(Browse, TheLeadFieldsFollowTheChoiceAndTheRecord) {
  Add("15.1.2024 9:00", "dva týdny", "", "1.1.2024 9:00");
  Add("16.1.2024 9:00", "volný", "", "16.1.2024 7:10");
  Add("17.1.2024 9:00", "žádný");
  Run([&](frmSchedule& form) {
    auto* unit = FormDriver::Find<QComboBox>(&form, "cmbAlarmUnit");
    auto* value = FormDriver::Find<QLineEdit>(&form, "Text5");
    const auto shown = [&] {
      return u"%1 %2 %3 %4"_qs.arg(Lead(form)).arg(value->text(), unit->currentText()).arg(unit->isVisible());
    };
    EXPECT_EQ(shown(), u"13 2 týdnů 1"_qs);
    driver.Press(Qt::Key_PageDown);
    EXPECT_EQ(shown(), u"13 16.1.2024 7:10 měsíců 0"_qs);
    SetLead(form, 4);
    driver.Expect([&](QWidget* dialog) { driver.Press(Qt::Key_Escape, Qt::NoModifier, dialog); });
    driver.Press(Qt::Key_PageDown);
    EXPECT_EQ(Lead(form), 0);
    EXPECT_FALSE(value->isEnabled());
    SetLead(form, LeadCustom);
    EXPECT_EQ(shown(), u"13 0 minut 1"_qs);
    Focus(form, "Text5");
    Play("Down > char: 1 | Ctrl+Down > say: 11 | Up > say: 10");
    value->setCursorPosition(0);
    for (const int key : {Qt::Key_2, Qt::Key_X, Qt::Key_5, Qt::Key_6}) driver.Press(key);
    EXPECT_EQ(value->text(), u"256"_qs);
    driver.Press(Qt::Key_Tab);
    EXPECT_EQ(form.focusWidget(), unit) << "Tab leaves the field";
  });
}

TEST_F(Browse, TheCheckBoxRefusesAStartThatHasPassed) {
  Add("15.1.2024 8:00", "ráno");
  Run([&](frmSchedule& form) {
    auto* box = FormDriver::Find<QCheckBox>(&form, "chkAlarm");
    ExpectMessage("Čas pro alarm již vypršel.");
    box->click();
    EXPECT_FALSE(box->isChecked());
    SetField(form, "Text3", "15.1.2024 8:30");
    Q_EMIT FormDriver::Find<BellPicture>(&form, "Image2")->Click();
    EXPECT_TRUE(box->isChecked());
  });
}

TEST_F(Browse, TheTextTakesNoMoreThanItsFieldHolds) {
  RunNew("17.1.2024", [&](frmSchedule& form) {
    auto* text = FormDriver::Find<NoteBox>(&form, "Text1");
    SetNote(form, QString(254, u'a'));
    text->moveCursor(QTextCursor::End);
    Play("'ěš' > sound: refused.wav | Return > sound: refused.wav");
    EXPECT_EQ(text->Text().size(), 255);

    const auto paste = [&](const QString& pasted) {
      QApplication::clipboard()->setText(pasted);
      text->paste();
      EXPECT_EQ(Heard(), "sound: refused.wav");
      return text->Text();
    };
    text->selectAll();
    EXPECT_EQ(paste(u"xxx"_qs + QChar::Null + QString(10'000'000, u'x')), QString(255, u'x'));
    SetNote(form, QString(253, u'x'));
    text->moveCursor(QTextCursor::End);
    EXPECT_EQ(paste(u"a😀"_qs).size(), 254) << "no half of a character";
  });
}

}  // namespace
}  // namespace talnik::test
