#include "editor/EditorWorld.h"
#include "store/Text.h"

#include <QFile>

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
    driver.Type(u"Zubař"_qs);
    Click(form, "cmdOK");
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
    SetField(form, "Text3", "15.1.2024 8:00");
    SetField(form, "Text4", " ");
    SetLead(form, LeadExact);
    ExpectMessage("Čas alarmu nebude uložen, protože již minul.");
    ExpectMessage("V textu události je nelze použít znak středník. Tento znak bude vymazán.");
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(Table(), "15.1.2024 8:00///nový \"'%*/0");
  EXPECT_EQ(Rows()[0].guid, u"guid of starý"_qs);
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
  EXPECT_EQ(Rows()[0].alarmtime, At("17.1.2024 11:00"));
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
    SetField(form, "Text3", "17.1.2024 14:00");
    SetField(form, "Text4", "");
    Answer("Upravit opakovanou událost", "cmdDelSingle");
    Click(form, "cmdOK");
  });
  EXPECT_EQ(changed(), u"17.1.2024 14:00/17.1.2024 14:00_20240117T110000Z"_qs) << "its first start, in UTC";
  Run([&](frmSchedule& form) {
    EXPECT_FALSE(FormDriver::Find<QPushButton>(&form, "cmdRepeat")->isEnabled());
    SetField(form, "Text3", "17.1.2024 13:00");
    Click(form, "cmdOK");
  });
  EXPECT_EQ(changed(), u"17.1.2024 13:00/17.1.2024 14:00_20240117T110000Z"_qs);
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
    driver.Press(Qt::Key_PageDown);
    ExpectMessage("Smazat záznam?");
    Command(form, "mnuDelete");
    EXPECT_EQ(Note(form) + Field(form, "txtPos"), u"první1/1"_qs) << "the last one is gone, the new last one shows";
    EXPECT_EQ(alarmsRegistered, before);
    ExpectMessage("Smazat záznam?", Qt::Key_Escape);
    Command(form, "mnuDelete");
    ExpectMessage("Smazat záznam?");
    Command(form, "mnuDelete");
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
