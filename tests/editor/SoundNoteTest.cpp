#include "editor/EditorWorld.h"

#include <QFile>

namespace talnik::test {
namespace {

using Ending = Recorder::Ending;

class SoundNote : public EditorWorld {
 protected:
  SoundNote() {
    setting.CopyFromFile = u"/sound/start.wav"_qs;
    Fresh = paths.RecordFolder + u"/new.wav"_qs;
  }

  QString Place(const char* name) const { return paths.RecordFolder + u'/' + Q(name); }
  /// A record with this text in its column "wav".
  void AddWithNote(const char* start, const char* text, const QString& wav) {
    ScheduleRecord row = Add(start, text);
    EXPECT_TRUE(store->Execute({u"UPDATE schedule SET wav=? WHERE guid=?"_qs, {wav, row.guid}}));
  }
  static void Write(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::WriteOnly));
  }
  static bool MayBeChosen(frmSchedule& form, const char* item) {
    return form.findChild<QAction*>(Q(item))->isEnabled();
  }
  static std::string Caption(frmSchedule& form) {
    return FormDriver::Find<QPushButton>(&form, "cmdSound")->text().toStdString();
  }
  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }
  bool Records() {
    return FormDriver::Until([this] { return world.recorder.IsRecording(); });
  }
  /// Starts a recording and lets it run.
  void Record(frmSchedule& form) {
    Command(form, "mnuRec");
    ASSERT_TRUE(Records());
    Heard();
  }

  QString Fresh;
};

TEST_F(SoundNote, RecordingBeginsWhenSpeechAndCueHaveEnded) {
  world.sound.Hold = true;
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    EXPECT_EQ(Caption(form), "Nahrávání");
    EXPECT_FALSE(MayBeChosen(form, "mnuPlay"));
    Heard();
    world.voice.Speaking = true;
    Command(form, "mnuRec");
    EXPECT_EQ(Caption(form), "Nahrávám");
    EXPECT_TRUE(FormDriver::Find<QPushButton>(&form, "cmdSound")->hasFocus());
    EXPECT_TRUE(MayBeChosen(form, "mnuPlay") && MayBeChosen(form, "mnuSndDel"));
    FormDriver::Settle();
    EXPECT_EQ(Heard(), "say: Nahrávám");
    world.voice.Speaking = false;
    EXPECT_TRUE(FormDriver::Until([&] { return world.sound.IsPlaying(); }));
    EXPECT_EQ(Heard(), "sound: empty.wav");
    world.sound.Finish();
    EXPECT_EQ(Heard(), "record");
    EXPECT_EQ(world.recorder.Path, Fresh);
    EXPECT_EQ(world.recorder.Seed, setting.CopyFromFile);

    driver.Press(Qt::Key_Return);
    EXPECT_EQ(Caption(form), "Nahrávka");
    EXPECT_FALSE(FormDriver::Find<QPushButton>(&form, "cmdSound")->isEnabled());
    EXPECT_EQ(Heard(), "end of record; say: Uložit; stop; sound: new.wav") << "heard at once";
    EXPECT_TRUE(FormDriver::Find<QPushButton>(&form, "cmdOK")->hasFocus());
  });
  EXPECT_FALSE(world.sound.IsPlaying()) << "closing the form ends what plays";
  EXPECT_TRUE(QFile::exists(Fresh));
}

TEST_F(SoundNote, AnyKeyEndsTheRecordingAndDoesNothingElse) {
  Add("17.1.2024 12:00", "první");
  Add("18.1.2024 12:00", "druhý");
  const struct {
    int key;
    const char* heard;
    const char* position;
  } cases[] = {
      {Qt::Key_A, "end of record; say: Uložit; sound: empty.wav", "1/2"},
      {Qt::Key_Escape, "end of record; say: Uložit; sound: empty.wav", "1/2"},
      {Qt::Key_Tab, "end of record; say: Uložit; sound: empty.wav", "1/2"},
      {Qt::Key_Space, "end of record; say: Uložit; stop; sound: new.wav", "1/2"},
      {Qt::Key_PageDown, "end of record; say: Uložit; sound: empty.wav; say: 18. 1. 2024 12:00  druhý", "2/2"},
  };
  Run([&](frmSchedule& form) {
    for (const auto& row : cases) {
      Record(form);
      driver.Press(row.key);
      EXPECT_EQ(Heard(), row.heard);
      EXPECT_EQ(Caption(form), "Nahrávka");
      EXPECT_EQ(Field(form, "txtPos").toStdString(), row.position);
      EXPECT_TRUE(form.isVisible());
      FormDriver::Settle();
    }
  });
}

TEST_F(SoundNote, WithoutAMicrophoneTheRefusalSoundsAndAllIsAsBefore) {
  const auto fail = [&](bool fresh) {
    if (fresh) Write(Fresh);
    RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
      Heard();
      Command(form, "mnuRec");
      EXPECT_TRUE(FormDriver::Until([&] { return Caption(form) == "Nahrávání"; }));
      EXPECT_EQ(Heard(), "say: Nahrávám; sound: empty.wav; record; say: Poznámka:; sound: refused.wav");
      EXPECT_EQ(form.focusWidget()->objectName(), u"Text1"_qs);
      EXPECT_EQ(MayBeChosen(form, "mnuPlay"), fresh);
      EXPECT_FALSE(FormDriver::Find<QPushButton>(&form, "cmdSound")->isEnabled());
    });
    EXPECT_EQ(QFile::exists(Fresh), fresh);
  };
  world.recorder.Ends = Ending::Failed;
  fail(false);
  fail(true);
}

TEST_F(SoundNote, AKeyBeforeTheCueTakesTheRecordingBack) {
  world.voice.Speaking = true;
  RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
    Command(form, "mnuRec");
    driver.Press(Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(Caption(form), "Nahrávání");
    world.voice.Speaking = false;
    FormDriver::Settle();
    EXPECT_FALSE(world.recorder.IsRecording());
    EXPECT_FALSE(MayBeChosen(form, "mnuPlay"));
  });
}

TEST_F(SoundNote, ARecordingThatEndsByItselfIsToldAndKept) {
  const struct {
    Ending ending;
    const char* message;
  } cases[] = {
      {Ending::Broken, "Nahrávání skončilo, mikrofon přestal odpovídat. Nahraná část je zachována."},
      {Ending::NoRoom, "Nahrávání skončilo, na disk už nelze zapisovat. Nahraná část je zachována."},
      {Ending::TooLong, "Nahrávání skončilo, nahrávka je příliš dlouhá. Nahraná část je zachována."},
  };
  for (const auto& row : cases) {
    RunNew("17.1.2024 12:00:00", [&](frmSchedule& form) {
      Record(form);
      ExpectMessage(row.message);
      world.recorder.End(row.ending);
      EXPECT_EQ(Caption(form), "Nahrávka");
      EXPECT_TRUE(MayBeChosen(form, "mnuPlay"));
    });
  }
}

TEST_F(SoundNote, ARecordWithANoteAsksBeforeItIsRecordedOver) {
  AddWithNote("17.1.2024 12:00", "první", u"K15083.241"_qs);
  Write(Place("A15083.000"));
  Run([&](frmSchedule& form) {
    EXPECT_TRUE(MayBeChosen(form, "mnuPlay"));
    ExpectMessage("Přemazat nahrávku?", Qt::Key_Escape);
    Command(form, "mnuRec");
    EXPECT_EQ(Caption(form), "Nahrávání");
    SetField(form, "Text3", "");
    ExpectMessage("Přemazat nahrávku?");
    ExpectMessage("Nejprve vytvořte datum.");
    Command(form, "mnuRec");
    SetField(form, "Text3", "17.1.2024 12:00");
    ExpectMessage("Přemazat nahrávku?");
    Record(form);
    Click(form, "cmdOK");
    EXPECT_FALSE(world.recorder.IsRecording());
  });
  EXPECT_EQ(Rows()[0].wav, u"A15083.001"_qs) << "an older note of this moment is not written over";
  EXPECT_FALSE(QFile::exists(Fresh));
}

TEST_F(SoundNote, PlaysTheFreshRecordingBeforeTheSavedNote) {
  Write(Place("K15083.241"));
  AddWithNote("17.1.2024 12:00", "první", u"C:\\Data\\Record\\K15083.241"_qs);
  Run([&](frmSchedule& form) {
    const auto play = [&](const char* heard) {
      Heard();
      Command(form, "mnuPlay");
      FormDriver::Settle();
      EXPECT_EQ(Heard(), heard);
    };
    play("stop; sound: K15083.241");
    world.sound.Hold = true;
    play("stop; sound: K15083.241");
    EXPECT_TRUE(world.sound.IsPlaying());
    world.sound.Hold = false;
    play("stop; sound: K15083.241");
    Write(Fresh);
    play("stop; sound: new.wav");
    world.sound.Fails = [](const QString& path) { return path.endsWith(u"new.wav"_qs); };
    ExpectMessage("chyba při práci se zvukem");
    Command(form, "mnuPlay");
    EXPECT_TRUE(FormDriver::Until([&] { return driver.AllCame(); }));
    FormDriver::Settle();
    QFile::remove(Fresh);
    SetField(form, "Text2", "");
    ExpectMessage("Není zvukový záznam.");
    Command(form, "mnuPlay");
  });
}

TEST_F(SoundNote, DeletingTakesTheNoteFromTheRecordAndTheFileUnlessAnotherNamesIt) {
  const struct {
    const char* other;
    bool stays;
  } cases[] = {{"", false}, {"K15083.241", true}, {"/else/K15083.241", false}};
  for (const auto& row : cases) {
    store->Execute(statements::DeleteAll());
    AddWithNote("17.1.2024 12:00", "první", u"K15083.241"_qs);
    AddWithNote("18.1.2024 12:00", "druhý", Q(row.other));
    ScheduleRecord gone = Add("16.1.2024 12:00", "náhrobek");
    store->Execute({u"UPDATE schedule SET status=8 WHERE guid=?"_qs, {gone.guid}});
    Write(Place("K15083.241"));
    Write(Fresh);
    Run([&](frmSchedule& form) {
      EXPECT_EQ(Field(form, "txtPos"), u"1/2"_qs);
      SetNote(form, u"rozepsaný"_qs);
      ExpectMessage("Smazat nahrávku?", Qt::Key_Escape);
      Command(form, "mnuSndDel");
      EXPECT_EQ(Rows()[1].wav, u"K15083.241"_qs);
      ExpectMessage("Smazat nahrávku?");
      Command(form, "mnuSndDel");
      EXPECT_EQ(Field(form, "Text2"), QString());
      EXPECT_FALSE(MayBeChosen(form, "mnuPlay") || MayBeChosen(form, "mnuSndDel"));
      EXPECT_EQ(Field(form, "txtPos"), u"1/3"_qs) << "the whole table from now on, tombstones included";
      EXPECT_EQ(Note(form), u"rozepsaný"_qs);
      Click(form, "cmdOK");
    });
    EXPECT_EQ(Rows()[1].appointment, u"rozepsaný"_qs) << "the save meets the record on screen";
    EXPECT_EQ(Rows()[1].wav, QString());
    EXPECT_EQ(Rows()[2].wav, Q(row.other));
    EXPECT_EQ(QFile::exists(Place("K15083.241")), row.stays) << row.other;
    EXPECT_FALSE(QFile::exists(Fresh));
  }
}

TEST_F(SoundNote, ANoteThatTheRecordCannotLoseStays) {
  AddWithNote("17.1.2024 12:00", "první", u"K15083.241"_qs);
  Write(Place("K15083.241"));
  Run([&](frmSchedule& form) {
    store->Close();
    const QString aside = paths.Store + u".aside"_qs;
    ASSERT_TRUE(QFile::rename(paths.Store, aside));
    ExpectMessage("Smazat nahrávku?");
    driver.Expect([&](QWidget* dialog) {
      EXPECT_TRUE(FormDriver::Find<QPlainTextEdit>(dialog, "txtMessage")->toPlainText().startsWith(u"Chyba dat: "_qs));
      driver.Press(Qt::Key_Return, Qt::NoModifier, dialog);
    });
    Command(form, "mnuSndDel");
    EXPECT_EQ(Field(form, "Text2"), Place("K15083.241"));
    EXPECT_TRUE(MayBeChosen(form, "mnuSndDel"));
    QFile::remove(paths.Store);
    ASSERT_TRUE(QFile::rename(aside, paths.Store));
  });
  EXPECT_TRUE(QFile::exists(Place("K15083.241")));
}

TEST_F(SoundNote, TheNoteOfANewRecordIsDeletedWithoutTouchingOthers) {
  AddWithNote("17.1.2024 12:00", "první", u"K15083.241"_qs);
  RunNew("18.1.2024 12:00:00", [&](frmSchedule& form) {
    Record(form);
    driver.Press(Qt::Key_A);
    ExpectMessage("Smazat nahrávku?");
    Command(form, "mnuSndDel");
    EXPECT_FALSE(QFile::exists(Fresh));
    EXPECT_FALSE(MayBeChosen(form, "mnuPlay"));
  });
  EXPECT_EQ(Rows()[0].wav, u"K15083.241"_qs);
}

}  // namespace
}  // namespace talnik::test
