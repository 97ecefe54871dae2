#include "editor/EditorWorld.h"
#include "store/Text.h"

namespace talnik::test {
namespace {

class SaveForm : public EditorWorld {
 protected:
  static QString Shown(const std::optional<Date>& moment) {
    return moment ? TrimSeconds(DateText(*moment)) : QString();
  }
  /// A line "start/end/alarm/text/status" for each row.
  std::string Table() {
    QStringList lines;
    for (const ScheduleRecord& row : Rows()) {
      EXPECT_EQ(row.alarm, row.alarmtime.has_value());
      lines << u"%1/%2/%3/%4/%5"_qs.arg(Shown(row.apptime), Shown(row.appdur), Shown(row.alarmtime), row.appointment)
                   .arg(row.status.value_or(-1));
    }
    return lines.join(u'\n').toStdString();
  }
};

TEST_F(SaveForm, ANewRecordIsWrittenWithAnEndAndAnIdentity) {
  setting.AlarmOnNew = 2;
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    Play(form, "'Zubař' | cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(Table(), "17.1.2024 12:00/17.1.2024 12:00/17.1.2024 11:55/Zubař/0");
  EXPECT_EQ(Rows()[0].guid.size(), 32);
  EXPECT_EQ(alarmsRegistered, 1);
  EXPECT_TRUE(shownDays.isEmpty()) << "the only record of the store";
  RunNew("16.1.2024", [&](frmSchedule& form) { Command(form, "mnuSaveAndExit"); });
  EXPECT_EQ(shownDays, QStringList(u"16.1.2024"_qs));
  EXPECT_EQ(Table().substr(0, 25), "16.1.2024/16.1.2024///0\n1") << "a day without a time gets no alarm";
}

TEST_F(SaveForm, ConflictsAreToldBeforeANewRecordOpens) {
  Add("17.1.2024 11:00", "porada", "17.1.2024 12:30");
  state.HasEndPreset = true;
  state.EndPreset = At("17.1.2024 13:00");
  ExpectMessage("Čas 17.1.2024 12:00 až 17.1.2024 13:00:00 zasahuje do úkolu porada");
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) { Click(form, "cmdOK"); });
  EXPECT_EQ(Table(), "17.1.2024 11:00/17.1.2024 12:30//porada/0\n17.1.2024 12:00/17.1.2024 13:00///0");
}

TEST_F(SaveForm, AChangedRecordIsWrittenInPlaceAndTheUserToldWhatIsLeftOut) {
  Add("17.1.2024 12:00", "starý", "17.1.2024 13:00", "17.1.2024 11:00");
  Run([&](frmSchedule& form) {
    SetNote(form, u"  nový;; \"'%*  "_qs);
    SetField(form, "Text4", " ");
    SetLead(form, LeadExact);
    Play(form,
         "Text3=15.1.2024 8:00 | ?Čas alarmu nebude uložen, protože již minul. | "
         "?V textu události je nelze použít znak středník. Tento znak bude vymazán. | cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(Table(), "15.1.2024 8:00///nový \"'%*/0");
  EXPECT_EQ(Rows()[0].guid, u"guid of starý"_qs);
}

TEST_F(SaveForm, ARefusedSaveKeepsTheFormAndWhatWasTyped) {
  const char* const scripts[] = {
      "Text4=17.1.2024 11:00 | ?Čas ukončení je před časem počátku. Upravte tento údaj. | cmdOK | "
      "Text4:17.1.2024 11:00 | @:Text4",
      "Text4=večer | ?Špatný časový údaj. | cmdOK | Text4:večer | @:Text4",
      "Text3=zítra | Text4= | ?Špatný časový údaj. | cmdOK | Text4: | @:Text3",
  };
  for (const char* script : scripts) {
    RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
      Play(form, "'text' | mnuEditDuration | Text3=17.1.2024 12:00");
      Play(form, script);
      EXPECT_TRUE(form.isVisible());
      EXPECT_EQ(Note(form), u"text"_qs) << script;
    });
  }
  EXPECT_TRUE(Rows().empty());
}

TEST_F(SaveForm, AStartThatIsNoDateEndsTheEntryOfANewRecordInALongerList) {
  Add("1.2.2024", "první");
  Add("2.2.2024", "druhý");
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    Play(form, "Text3=zítra | ?Špatný časový údaj. | ?Špatný časový údaj. | cmdOK");
    EXPECT_TRUE(form.isVisible());
    Play(form, "Text3=3.2.2024 | cmdOK");
  });
  ASSERT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Rows()[1].guid, u"guid of první"_qs) << "the save changes the row that the list stands on";
}

TEST_F(SaveForm, PagingAsksAboutChanges) {
  Add("17.1.2024 12:00", "první", "", "17.1.2024 11:00");
  Add("18.1.2024 12:00", "druhý");
  Add("19.1.2024 12:00", "třetí");
  Run([&](frmSchedule& form) {
    // After yes the list begins anew, and the move goes on from its first row.
    Play(form, "PgDown | Text1=změněný | ?Uložit změny? | PgDown | Text1:změněný | txtPos:2/3");
    Play(form, "Text1=zahozený | !Uložit změny? | PgUp | Text1:první");
    SetLead(form, 0);
    Play(form, "PgDown | Text1:změněný");  // an alarm switched off is no change
    SetLead(form, 1);
    Play(form, "!Uložit změny? | PgDown");
    // What could not be saved is not left.
    Play(form, "Text3=nesmysl | ?Uložit změny? | ?Špatný časový údaj. | PgUp | Text3:nesmysl");
  });
  EXPECT_EQ(Rows()[1].appointment, u"změněný"_qs);
  EXPECT_EQ(Rows()[0].alarmtime, At("17.1.2024 11:00"));
}

TEST_F(SaveForm, AFailingWriteIsToldEachTimeAndLosesNothing) {
  Add("1.2.2024", "první");
  int toldElsewhere = 0;
  store->WriteFailed = [&](const QString&) { ++toldElsewhere; };
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    driver.Type(u"důležité"_qs);
    WithoutStore([&] {
      for (int i = 0; i < 2; ++i) {
        driver.ExpectMessage(u"Chyba dat: "_qs + paths.Store + u'…');
        Click(form, "cmdOK");
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(Note(form), u"důležité"_qs);
      }
      EXPECT_EQ(alarmsRegistered, 0);
    });
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  ASSERT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Rows()[0].appointment, u"důležité"_qs);
  EXPECT_EQ(toldElsewhere, 0);
  EXPECT_TRUE(store->WriteFailed) << "others are told again";
}

TEST_F(SaveForm, AFreshRecordingIsAdoptedBySaveDroppedByStornoAndLeftByEscape) {
  const QString fresh = InRecords("new.wav");
  Add("17.1.2024 12:00", "první");
  WriteFile(fresh);
  Run([&](frmSchedule&) { driver.Press(Qt::Key_Escape); });
  EXPECT_TRUE(QFile::exists(fresh));
  Run([&](frmSchedule& form) { Click(form, "cmdStorno"); });
  EXPECT_FALSE(QFile::exists(fresh));
  WriteFile(fresh);
  Run([&](frmSchedule& form) { Click(form, "cmdOK"); });
  EXPECT_EQ(Rows()[0].wav, u"A15083.000"_qs);
  Run([&](frmSchedule& form) {
    EXPECT_EQ(Field(form, "Text2"), InRecords("A15083.000"));
    Click(form, "cmdOK");
  });
  EXPECT_EQ(Rows()[0].wav, InRecords("A15083.000"));
}

class SeriesForm : public SaveForm {
 protected:
  /// 17.1. to 19.1. at noon; gives the table of its rows.
  std::string AddSeries() {
    RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
      state.Repeat.Repeat_Rule = u"RRULE:FREQ=DAILY INTERVAL=1 COUNT=3"_qs;
      driver.Type(u"řada"_qs);
      Click(form, "cmdOK");
    });
    return Table();
  }
  static std::string Series(const char* statusOfFirst, const char* time = "12:00", const char* text = "řada") {
    std::string table;
    for (const auto& [day, status] : {std::pair{"17", statusOfFirst}, {"17", "9"}, {"18", "1"}, {"19", "1"}}) {
      const std::string moment = std::string(day) + ".1.2024 " + time;
      table += (table.empty() ? "" : "\n") + moment + '/' + moment + "//" + text + '/' + status;
    }
    return table;
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
  EXPECT_EQ(AddSeries(), Series("1"));
  EXPECT_TRUE(state.Repeat.Repeat_Rule.isEmpty());
  EXPECT_EQ(alarmsRegistered, 1);
  Add("1.1.2024 9:00", "jednotlivý");
  state.FilterMode = ModeSearch;
  state.SearchText = u"jednotlivý"_qs;
  Run([&](frmSchedule& form) {
    state.Repeat.Repeat_Rule = u"RRULE:FREQ=YEARLY INTERVAL=1 COUNT=2"_qs;
    Click(form, "cmdOK");
  });
  EXPECT_TRUE(Table().starts_with("1.1.2024 9:00/1.1.2024 9:00//jednotlivý/9\n"));
  EXPECT_EQ(Rows()[0].guid, u"guid of jednotlivý"_qs);
  EXPECT_EQ(Rows().back().apptime, At("1.1.2025 9:00"));
}

TEST_F(SeriesForm, OnlyThisOneBecomesAnExceptionAndStaysOne) {
  AddSeries();
  const auto changed = [this]() -> QString {
    for (const ScheduleRecord& row : Rows()) {
      if (row.status == StatusChanged)
        return Shown(row.apptime) + u'/' + Shown(row.appdur) + row.guid.mid(row.guid.indexOf(u'_'));
    }
    return QString();
  };
  Run([&](frmSchedule& form) {
    Answer("Upravit opakovanou událost", "cmdDelSingle");
    Play(form, "Text3=17.1.2024 14:00 | Text4= | cmdOK");
  });
  EXPECT_EQ(changed(), u"17.1.2024 14:00/17.1.2024 14:00_20240117T110000Z"_qs) << "its first start, in UTC";
  Run([&](frmSchedule& form) {
    EXPECT_FALSE(FormDriver::Find<QPushButton>(&form, "cmdRepeat")->isEnabled());
    Play(form, "Text3=17.1.2024 13:00 | cmdOK");
  });
  EXPECT_EQ(changed(), u"17.1.2024 13:00/17.1.2024 14:00_20240117T110000Z"_qs);
}

TEST_F(SeriesForm, AllOfThemMovesTheRootAndCancellingKeepsTheForm) {
  AddSeries();
  Run([&](frmSchedule& form) {
    Play(form, "PgDown | Text3=18.1.2024 12:30 | Text4=18.1.2024 12:30 | Text1=posunutá");
    Answer("Upravit opakovanou událost", "cmdCancel");
    Click(form, "cmdOK");
    EXPECT_TRUE(form.isVisible() && !state.Repeat.Repeat_Rule.isEmpty());
    Answer("Upravit opakovanou událost", "cmdAll");
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  Run([](frmSchedule&) {});
  EXPECT_EQ(Table(), Series("1", "12:30", "posunutá"));
}

TEST_F(SeriesForm, DeletingAsksByTheKindOfTheRow) {
  AddSeries();
  const auto deleteBy = [this](const char* button) {
    Run([&](frmSchedule& form) {
      Answer("Smazat opakovanou událost", button);
      Command(form, "mnuDelete");
      EXPECT_EQ(form.isVisible(), QByteArray(button) == "cmdCancel");
    });
    return Table();
  };
  EXPECT_EQ(deleteBy("cmdCancel"), Series("1"));
  EXPECT_EQ(deleteBy("cmdDelSingle"), Series("8"));
  EXPECT_EQ(deleteBy("cmdAll"), "");
  Add("17.1.2024 12:00", "první", "", "17.1.2024 11:00");
  Add("18.1.2024 12:00", "druhý");
  const int before = alarmsRegistered;
  Run([&](frmSchedule& form) {
    // The last one is gone, the new last one shows.
    Play(form, "PgDown | ?Smazat záznam? | mnuDelete | Text1:první | txtPos:1/1");
    EXPECT_EQ(alarmsRegistered, before);
    Play(form, "!Smazat záznam? | mnuDelete | txtPos:1/1 | ?Smazat záznam? | mnuDelete");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(alarmsRegistered, before + 1);
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
