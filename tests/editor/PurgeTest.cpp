#include "editor/EditorWorld.h"
#include "editor/frmSearchRecord.h"

namespace talnik::test {
namespace {

class Purge : public EditorWorld {
 protected:
  void AddThree() {
    Add("13.1.2024 9:00", "dávno", "", "13.1.2024 8:00");
    Add("15.1.2024", "ráno");
    Add("15.1.2024 10:00", "dnes");
  }
  std::string Left() {
    QStringList texts;
    for (const ScheduleRecord& row : Rows()) texts << row.appointment;
    return texts.join(u' ').toStdString();
  }
  QString MakeNote(const char* name) {
    WriteFile(InRecords(name));
    return InRecords(name);
  }
};

TEST_F(Purge, RemovesWhatIsBeforeTheDayOfTheRecordOnScreen) {
  AddThree();
  Run([&](frmSchedule& form) {
    Play(form, "Ctrl+PgDown | !Vymazat záznamy starší jak  15.1.2024  ? | mnuDeleteOld");
    EXPECT_EQ(Left(), "dávno ráno dnes");
    // The list is filled anew.
    Play(form, "?Vymazat záznamy starší jak  15.1.2024  ? | mnuDeleteOld | txtPos:1/2 | Text1:ráno");
    EXPECT_EQ(Left(), "ráno dnes");
    EXPECT_EQ(alarmsRegistered, 1) << "a row with an alarm is gone";
    Play(form, "?Vymazat záznamy starší jak  15.1.2024 ? | mnuDeleteOld");
    EXPECT_EQ(Left(), "ráno dnes") << "nothing is older";
    Play(form, "Text3=16.1.2024 nic | ?Vymazat záznamy starší jak  16.1.2024  ? | mnuDeleteOld");
    EXPECT_FALSE(form.isVisible()) << "no record is left";
  });
  EXPECT_EQ(Left(), "");
}

TEST_F(Purge, WhatIsNoDateAndWhatIsNewPurgesNothing) {
  AddThree();
  Run([&](frmSchedule& form) {
    Play(form, "Text3= | mnuDeleteOld > sound: refused.wav | Text3=zítra 9:00");
    driver.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);
    Command(form, "mnuDeleteOld");
  });
  RunNew("17.1.2024 12:00", [&](frmSchedule& form) { Command(form, "mnuDeleteOld"); });
  EXPECT_EQ(Left(), "dávno ráno dnes");
}

TEST_F(Purge, RowsOfEveryRoleGoWithTheirNotes) {
  const QString shared = MakeNote("shared.002");
  const QString young = MakeNote("young.003");
  AddWithNote("1.1.2024", "kořen", folder.filePath(u"není"_qs), StatusRoot);
  AddWithNote("2.1.2024", "náhrobek", shared + QChar(u'\0') + u"zbytek", StatusDeleted);
  AddWithNote("20.1.2024", "sdílí", shared);
  AddWithNote("21.1.2024", "mladý", young);
  Run([&](frmSchedule& form) {
    driver.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);
    Command(form, "mnuDeleteOld");
  });
  EXPECT_EQ(Left(), "sdílí mladý");
  EXPECT_EQ(alarmsRegistered, 0);
  EXPECT_FALSE(QFile::exists(shared)) << "although a younger row shares it";
  EXPECT_TRUE(QFile::exists(young));
}

TEST_F(Purge, AFailureIsToldAndKeepsRowsAndNotes) {
  const QString note = MakeNote("a.001");
  AddWithNote("2.1.2024", "starý", note);
  AddThree();
  Run([&](frmSchedule& form) {
    driver.Press(Qt::Key_PageDown, Qt::ControlModifier);
    driver.Expect([&](QWidget* question) {
      // The file goes while the question stands.
      QFile::rename(paths.Store, paths.Store + u'x');
      driver.Press(Qt::Key_Return, Qt::NoModifier, question);
    });
    driver.Expect([&](QWidget* message) {
      EXPECT_TRUE(message->findChild<QPlainTextEdit*>()->toPlainText().startsWith(u"Chyba dat: "_qs));
      QFile::rename(paths.Store + u'x', paths.Store);
      driver.Press(Qt::Key_Return, Qt::NoModifier, message);
    });
    Command(form, "mnuDeleteOld");
    EXPECT_EQ(Note(form), u"dnes"_qs);
  });
  EXPECT_EQ(Left(), "starý dávno ráno dnes");
  EXPECT_TRUE(QFile::exists(note));
}

class SearchDialog : public EditorWorld {
 protected:
  void Search(const std::function<void(frmSearchRecord&)>& act) {
    state.SearchText.clear();
    frmSearchRecord form(services, state, At("20.1.2024"));
    driver.Expect([&](QWidget*) { act(form); });
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }
};

TEST_F(SearchDialog, HandsOnTheTextAndTheDayToBeginWith) {
  Search([this](frmSearchRecord&) {
    EXPECT_EQ(Heard(), "say: Hledat záznam; and:  ");
    driver.Type(u"kůň*"_qs);
    driver.Press(Qt::Key_Return);
  });
  EXPECT_EQ(state.SearchText, u"kůň*"_qs);
  EXPECT_EQ(DateText(state.SearchFrom), u"1.1.1 1:00:00"_qs);

  Search([this](frmSearchRecord& form) {
    driver.Press(Qt::Key_Tab);
    driver.Press(Qt::Key_Down);
    FormDriver::Settle();
    EXPECT_NE(Heard().find("od aktuálního dne"), std::string::npos);
    form.Command1->click();
  });
  EXPECT_EQ(DateText(state.SearchFrom), u"20.1.2024"_qs);
}

}  // namespace
}  // namespace talnik::test
