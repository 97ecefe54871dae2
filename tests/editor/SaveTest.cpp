#include "editor/EditorWorld.h"

#include <QFile>

namespace talnik::test {
namespace {

class SaveForm : public EditorWorld {
 protected:
  static std::string Texts(const std::optional<Date>& moment) { return moment ? DateText(*moment).toStdString() : ""; }
  /// "start/end/alarm/text/status"
  static std::string Line(const ScheduleRecord& row) {
    return Texts(row.apptime) + '/' + Texts(row.appdur) + '/' + Texts(row.alarmtime) + '/' +
           row.appointment.toStdString() + '/' + std::to_string(row.status.value_or(-1));
  }
};

TEST_F(SaveForm, ANewRecordIsWrittenWithAnEndAndAnIdentity) {
  setting.AlarmOnNew = 2;
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    driver.Type(u"Zubař"_qs);
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  ASSERT_EQ(Rows().size(), 1U);
  const ScheduleRecord row = Rows()[0];
  EXPECT_EQ(Line(row), "17.1.2024 12:00:00/17.1.2024 12:00:00/17.1.2024 11:55:00/Zubař/0");
  EXPECT_TRUE(row.alarm);
  EXPECT_EQ(row.guid.size(), 32);
  EXPECT_EQ(alarmsRegistered, 1);
  EXPECT_EQ(state.RecordDate, QString());
  EXPECT_TRUE(shownDays.isEmpty()) << "the only record of the store";
}

TEST_F(SaveForm, ADayWithoutATimeGetsNoAlarmAndIsShownWhenItIsNotAlone) {
  Add("1.2.2024", "jiný");
  setting.AlarmOnNew = 6;
  RunNew("17.1.2024", [&](frmSchedule& form) {
    EXPECT_EQ(Lead(form), 0);
    Command(form, "mnuSaveAndExit");
  });
  EXPECT_EQ(shownDays, QStringList(u"17.1.2024"_qs));
  EXPECT_EQ(Line(Rows()[0]), "17.1.2024/17.1.2024///0");
  EXPECT_FALSE(Rows()[0].alarm);
}

TEST_F(SaveForm, ConflictsAreToldBeforeANewRecordOpens) {
  Add("17.1.2024 11:00", "porada", "17.1.2024 12:30");
  state.HasEndPreset = true;
  state.EndPreset = At("17.1.2024 13:00");
  ExpectMessage("Čas 17.1.2024 12:00 až 17.1.2024 13:00:00 zasahuje do úkolu porada");
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    EXPECT_EQ(Field(form, "Text4"), u"17.1.2024 13:00"_qs);
    Click(form, "cmdOK");
  });
  EXPECT_EQ(Line(Rows()[1]), "17.1.2024 12:00:00/17.1.2024 13:00:00///0");
}

TEST_F(SaveForm, AChangedRecordIsWrittenInPlace) {
  Add("17.1.2024 12:00", "starý", "17.1.2024 13:00", "17.1.2024 11:00");
  Add("18.1.2024 12:00", "jiný");
  Run([&](frmSchedule& form) {
    SetNote(form, u"  nový;; \"'%*  "_qs);
    SetField(form, "Text3", "19.1.2024 8:00");
    SetField(form, "Text4", " ");
    SetLead(form, 0);
    ExpectMessage("V textu události je nelze použít znak středník. Tento znak bude vymazán.");
    Click(form, "cmdOK");
  });
  EXPECT_EQ(Line(Rows()[1]), "19.1.2024 8:00:00///nový \"'%*/0");
  EXPECT_FALSE(Rows()[1].alarm);
  EXPECT_EQ(Rows()[1].guid, u"guid of starý"_qs);
  EXPECT_EQ(shownDays, QStringList(u"19.1.2024"_qs));
}

TEST_F(SaveForm, APassedAlarmIsLeftOutAndTheRecordIsSaved) {
  Add("15.1.2024 8:00", "ráno");
  Run([&](frmSchedule& form) {
    SetLead(form, 1);
    ExpectMessage("Čas alarmu nebude uložen, protože již minul.");
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(Line(Rows()[0]), "15.1.2024 8:00:00///ráno/0");
}

TEST_F(SaveForm, ARefusedSaveKeepsTheFormAndWhatWasTyped) {
  const struct {
    const char* start;
    const char* end;
    const char* message;
    const char* focus;
  } cases[] = {
      {"17.1.2024 12:00", "17.1.2024 11:00", "Čas ukončení je před časem počátku. Upravte tento údaj.", "Text4"},
      {"17.1.2024 12:00", "večer", "Špatný časový údaj.", "Text4"},
      {"zítra", "", "Špatný časový údaj.", "Text3"},
  };
  for (const auto& row : cases) {
    RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
      driver.Type(u"text"_qs);
      Command(form, "mnuEditDuration");
      SetField(form, "Text3", row.start);
      SetField(form, "Text4", row.end);
      ExpectMessage(row.message);
      Click(form, "cmdOK");
      EXPECT_TRUE(form.isVisible());
      EXPECT_EQ(Note(form), u"text"_qs);
      EXPECT_EQ(Field(form, "Text4").toStdString(), row.end);
      EXPECT_EQ(form.focusWidget()->objectName().toStdString(), row.focus) << row.message;
    });
  }
  EXPECT_TRUE(Rows().empty());
}

TEST_F(SaveForm, AStartThatIsNoDateEndsTheEntryOfANewRecordInALongerList) {
  Add("1.2.2024", "první");
  Add("2.2.2024", "druhý");
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    SetField(form, "Text3", "zítra");
    ExpectMessage("Špatný časový údaj.");
    ExpectMessage("Špatný časový údaj.");
    Click(form, "cmdOK");
    EXPECT_TRUE(form.isVisible());
    SetField(form, "Text3", "3.2.2024");
    Click(form, "cmdOK");
  });
  ASSERT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Rows()[1].guid, u"guid of první"_qs) << "the save changes the row that the list stands on";
}

TEST_F(SaveForm, PagingAsksAboutChanges) {
  Add("17.1.2024 12:00", "první", "", "17.1.2024 11:00");
  Add("18.1.2024 12:00", "druhý");
  Add("19.1.2024 12:00", "třetí");
  Run([&](frmSchedule& form) {
    driver.Press(Qt::Key_PageDown);
    SetNote(form, u"změněný"_qs);
    ExpectMessage("Uložit změny?");
    driver.Press(Qt::Key_PageDown);
    EXPECT_EQ(Note(form), u"změněný"_qs) << "after yes the list begins anew, and the move goes on from its first row";
    EXPECT_EQ(Field(form, "txtPos"), u"2/3"_qs);

    SetNote(form, u"zahozený"_qs);
    ExpectMessage("Uložit změny?", Qt::Key_Escape);
    driver.Press(Qt::Key_PageUp);
    EXPECT_EQ(Note(form), u"první"_qs);

    SetLead(form, 0);
    driver.Press(Qt::Key_PageDown);
    EXPECT_EQ(Note(form), u"změněný"_qs) << "an alarm switched off is no change";
    SetLead(form, 1);
    ExpectMessage("Uložit změny?", Qt::Key_Escape);
    driver.Press(Qt::Key_PageDown);

    SetField(form, "Text3", "nesmysl");
    ExpectMessage("Uložit změny?");
    ExpectMessage("Špatný časový údaj.");
    driver.Press(Qt::Key_PageUp);
    EXPECT_EQ(Field(form, "Text3"), u"nesmysl"_qs) << "what could not be saved is not left";
  });
  EXPECT_EQ(Rows()[1].appointment, u"změněný"_qs);
  EXPECT_EQ(Texts(Rows()[0].alarmtime), "17.1.2024 11:00:00");
}

TEST_F(SaveForm, AFailingWriteIsToldEachTimeAndLosesNothing) {
  Add("1.2.2024", "první");
  int toldElsewhere = 0;
  store->WriteFailed = [&](const QString&) { ++toldElsewhere; };
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    driver.Type(u"důležité"_qs);
    store->Close();
    const QString aside = paths.Store + u".aside"_qs;
    ASSERT_TRUE(QFile::rename(paths.Store, aside));
    for (int i = 0; i < 2; ++i) {
      driver.Expect([&](QWidget* dialog) {
        const QString text = FormDriver::Find<QPlainTextEdit>(dialog, "txtMessage")->toPlainText();
        EXPECT_TRUE(text.startsWith(u"Chyba dat: "_qs + paths.Store)) << text.toStdString();
        driver.Press(Qt::Key_Return, Qt::NoModifier, dialog);
      });
      Click(form, "cmdOK");
      EXPECT_TRUE(form.isVisible());
      EXPECT_EQ(Note(form), u"důležité"_qs);
    }
    EXPECT_EQ(alarmsRegistered, 0);
    QFile::remove(paths.Store);
    ASSERT_TRUE(QFile::rename(aside, paths.Store));
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  ASSERT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Rows()[0].appointment, u"důležité"_qs);
  EXPECT_EQ(toldElsewhere, 0);
  EXPECT_TRUE(store->WriteFailed) << "others are told again";
}

TEST_F(SaveForm, AFreshRecordingIsAdoptedBySaveDroppedByStornoAndLeftByEscape) {
  const QString fresh = paths.RecordFolder + u"/new.wav"_qs;
  const auto record = [&] {
    QFile file(fresh);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
  };
  Add("17.1.2024 12:00", "první");
  record();
  Run([&](frmSchedule&) { driver.Press(Qt::Key_Escape); });
  EXPECT_TRUE(QFile::exists(fresh));
  Run([&](frmSchedule& form) { Click(form, "cmdStorno"); });
  EXPECT_FALSE(QFile::exists(fresh));
  record();
  Run([&](frmSchedule& form) { Click(form, "cmdOK"); });
  EXPECT_EQ(Rows()[0].wav, u"A15083.000"_qs);
  Run([&](frmSchedule& form) {
    EXPECT_EQ(Field(form, "Text2"), paths.RecordFolder + u"/A15083.000"_qs);
    Click(form, "cmdOK");
  });
  EXPECT_EQ(Rows()[0].wav, paths.RecordFolder + u"/A15083.000"_qs);
}

class SeriesForm : public SaveForm {
 protected:
  static QString Daily() { return u"RRULE:FREQ=DAILY INTERVAL=1 COUNT=3"_qs; }

  void AddSeries() {
    RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
      state.Repeat.Repeat_Rule = Daily();
      driver.Type(u"řada"_qs);
      Click(form, "cmdOK");
    });
    EXPECT_EQ(Lines(),
              "1/17.1.2024 12:00:00/řada 9/17.1.2024 12:00:00/řada 1/18.1.2024 12:00:00/řada "
              "1/19.1.2024 12:00:00/řada ");
  }
  std::string Lines() {
    std::string lines;
    for (const ScheduleRecord& row : Rows()) {
      lines += std::to_string(row.status.value_or(-1)) + '/' + Texts(row.apptime) + '/' +
               row.appointment.toStdString() + ' ';
    }
    return lines;
  }
  /// The next window asks which ones are meant.
  void Answer(const char* caption, const char* button) {
    driver.Expect([caption = Q(caption), button](QWidget* dialog) {
      EXPECT_EQ(dialog->windowTitle(), caption);
      FormDriver::Find<QPushButton>(dialog, button)->click();
    });
  }
};

TEST_F(SeriesForm, ARuleMakesASeriesOfANewAndOfASavedRecord) {
  AddSeries();
  EXPECT_TRUE(state.Repeat.Repeat_Rule.isEmpty());
  EXPECT_EQ(alarmsRegistered, 1);
  Add("1.1.2024 9:00", "jednotlivý");
  state.FilterMode = ModeSearch;
  state.SearchText = u"jednotlivý"_qs;
  Run([&](frmSchedule& form) {
    state.Repeat.Repeat_Rule = u"RRULE:FREQ=YEARLY INTERVAL=1 COUNT=2"_qs;
    Click(form, "cmdOK");
  });
  const ScheduleRecord root = Rows()[0];
  EXPECT_EQ(Line(root), "1.1.2024 9:00:00/1.1.2024 9:00:00//jednotlivý/9");
  EXPECT_EQ(root.guid, u"guid of jednotlivý"_qs);
  EXPECT_EQ(Rows().back().apptime, At("1.1.2025 9:00"));
}

TEST_F(SeriesForm, OnlyThisOneBecomesAnExceptionAndStaysOne) {
  AddSeries();
  Run([&](frmSchedule& form) {
    SetField(form, "Text3", "17.1.2024 14:00");
    SetField(form, "Text4", "");
    Answer("Upravit opakovanou událost", "cmdDelSingle");
    Click(form, "cmdOK");
  });
  const auto changed = [this] {
    for (const ScheduleRecord& row : Rows()) {
      if (row.status == StatusChanged) return row;
    }
    return ScheduleRecord();
  };
  EXPECT_EQ(Line(changed()), "17.1.2024 14:00:00/17.1.2024 14:00:00//řada/2");
  EXPECT_EQ(changed().guid.section(u'_', 1), u"20240117T110000Z"_qs) << "the start before the change, in UTC";
  Run([&](frmSchedule& form) {
    EXPECT_FALSE(FormDriver::Find<QPushButton>(&form, "cmdRepeat")->isEnabled());
    SetField(form, "Text3", "17.1.2024 13:00");
    Click(form, "cmdOK");
  });
  EXPECT_EQ(Line(changed()), "17.1.2024 13:00:00/17.1.2024 14:00:00//řada/2");
  EXPECT_EQ(changed().guid.section(u'_', 1), u"20240117T110000Z"_qs);
}

TEST_F(SeriesForm, AllOfThemMovesTheRootAndCancellingKeepsTheForm) {
  AddSeries();
  Run([&](frmSchedule& form) {
    driver.Press(Qt::Key_PageDown);
    SetField(form, "Text3", "18.1.2024 12:30");
    SetField(form, "Text4", "18.1.2024 12:30");
    SetNote(form, u"posunutá"_qs);
    Answer("Upravit opakovanou událost", "cmdCancel");
    Click(form, "cmdOK");
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(state.Repeat.Repeat_Rule, Daily());
    Answer("Upravit opakovanou událost", "cmdAll");
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  Run([](frmSchedule&) {});
  EXPECT_EQ(Lines(),
            "1/17.1.2024 12:30:00/posunutá 9/17.1.2024 12:30:00/posunutá 1/18.1.2024 12:30:00/posunutá "
            "1/19.1.2024 12:30:00/posunutá ");
}

TEST_F(SeriesForm, DeletingAsksByTheKindOfTheRow) {
  AddSeries();
  Run([&](frmSchedule& form) {
    Answer("Smazat opakovanou událost", "cmdCancel");
    Command(form, "mnuDelete");
    EXPECT_TRUE(form.isVisible());
    Answer("Smazat opakovanou událost", "cmdDelSingle");
    Command(form, "mnuDelete");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(Lines(),
            "8/17.1.2024 12:00:00/řada 9/17.1.2024 12:00:00/řada 1/18.1.2024 12:00:00/řada "
            "1/19.1.2024 12:00:00/řada ");
  Run([&](frmSchedule& form) {
    Answer("Smazat opakovanou událost", "cmdAll");
    Command(form, "mnuDelete");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(Lines(), "");
  Add("17.1.2024 12:00", "první", "", "17.1.2024 11:00");
  Add("18.1.2024 12:00", "druhý");
  const int before = alarmsRegistered;
  Run([&](frmSchedule& form) {
    driver.Press(Qt::Key_PageDown);
    ExpectMessage("Smazat záznam?");
    Command(form, "mnuDelete");
    EXPECT_EQ(Note(form), u"první"_qs) << "the last one is gone, the new last one shows";
    EXPECT_EQ(Field(form, "txtPos"), u"1/1"_qs);
    EXPECT_EQ(alarmsRegistered, before);
    ExpectMessage("Smazat záznam?", Qt::Key_Escape);
    Command(form, "mnuDelete");
    ExpectMessage("Smazat záznam?");
    Command(form, "mnuDelete");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(alarmsRegistered, before + 1);
  });
  EXPECT_TRUE(Rows().empty());
}

TEST_F(SeriesForm, ARuleChosenTwiceForAnUnsavedSeriesIsNoChangeOfAnother) {
  AddSeries();
  RunNew("1.2.2024 9:00:00", [&](frmSchedule& form) {
    for (int i = 0; i < 2; ++i) {
      driver.Expect([i](QWidget* dialog) {
        EXPECT_EQ(dialog->objectName(), u"frmRepeat"_qs);
        FormDriver::Find<QComboBox>(dialog, "cmbTimeUnit")->setCurrentIndex(i);
        FormDriver::Find<QPushButton>(dialog, "cmdOK")->click();
      });
      Click(form, "cmdRepeat");
    }
    EXPECT_TRUE(state.Repeat.Repeat_Rule.startsWith(u"RRULE:FREQ=WEEKLY BYDAY=TH"_qs))
        << state.Repeat.Repeat_Rule.toStdString();
    EXPECT_EQ(FormDriver::Find<QPushButton>(&form, "cmdRepeat")->text(), u"Upravit opakování"_qs);
  });
  EXPECT_EQ(Rows().size(), 4U);
}

}  // namespace
}  // namespace talnik::test
