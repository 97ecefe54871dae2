#include "editor/EditorWorld.h"

namespace talnik::test {
namespace {

using Ending = Recorder::Ending;

class SoundNote : public EditorWorld {
 protected:
  SoundNote() {
    setting.CopyFromFile = u"/sound/start.wav"_qs;
    Fresh = InRecords("new.wav");
  }

  static std::string Caption(frmSchedule& form) {
    return FormDriver::Find<QPushButton>(&form, "cmdSound")->text().toStdString();
  }
  /// Starts a recording and lets it run.
  void Record(frmSchedule& form) {
    Command(form, "mnuRec");
    ASSERT_TRUE(FormDriver::Until([this] { return world.recorder.IsRecording(); }));
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
    if (fresh) WriteFile(Fresh);
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
  const std::pair<Ending, const char*> cases[] = {
      {Ending::Broken, "Nahrávání skončilo, mikrofon přestal odpovídat. Nahraná část je zachována."},
      {Ending::NoRoom, "Nahrávání skončilo, na disk už nelze zapisovat. Nahraná část je zachována."},
      {Ending::TooLong, "Nahrávání skončilo, nahrávka je příliš dlouhá. Nahraná část je zachována."},
  };
  for (const auto& [ending, message] : cases) {
    RunNew("17.1.2024 12:00:00", [&, ending = ending, message = message](frmSchedule& form) {
      Record(form);
      ExpectMessage(message);
      world.recorder.End(ending);
      EXPECT_EQ(Caption(form), "Nahrávka");
      EXPECT_TRUE(MayBeChosen(form, "mnuPlay"));
    });
  }
}

TEST_F(SoundNote, ARecordWithANoteAsksBeforeItIsRecordedOver) {
  AddWithNote("17.1.2024 12:00", "první", u"K15083.241"_qs);
  WriteFile(InRecords("A15083.000"));
  Run([&](frmSchedule& form) {
    EXPECT_TRUE(MayBeChosen(form, "mnuPlay"));
    Play(form, "!Přemazat nahrávku? | mnuRec");
    EXPECT_EQ(Caption(form), "Nahrávání");
    Play(form, "Text3= | ?Přemazat nahrávku? | ?Nejprve vytvořte datum. | mnuRec");
    Play(form, "Text3=17.1.2024 12:00 | ?Přemazat nahrávku?");
    Record(form);
    Click(form, "cmdOK");
    EXPECT_FALSE(world.recorder.IsRecording());
  });
  EXPECT_EQ(Rows()[0].wav, u"A15083.001"_qs) << "an older note of this moment is not written over";
  EXPECT_FALSE(QFile::exists(Fresh));
}

TEST_F(SoundNote, PlaysTheFreshRecordingBeforeTheSavedNote) {
  WriteFile(InRecords("K15083.241"));
  AddWithNote("17.1.2024 12:00", "první", u"C:\\Data\\Record\\K15083.241"_qs);
  Run([&](frmSchedule& form) {
    Play(form, "mnuPlay > stop; sound: K15083.241");
    world.sound.Hold = true;
    Play(form, "mnuPlay > stop; sound: K15083.241");
    EXPECT_TRUE(world.sound.IsPlaying());
    world.sound.Hold = false;
    Play(form, "mnuPlay > stop; sound: K15083.241");
    WriteFile(Fresh);
    Play(form, "mnuPlay > stop; sound: new.wav");
    world.sound.Fails = [](const QString& path) { return path.endsWith(u"new.wav"_qs); };
    ExpectMessage("chyba při práci se zvukem");
    Command(form, "mnuPlay");
    EXPECT_TRUE(FormDriver::Until([&] { return driver.AllCame(); }));
    FormDriver::Settle();
    QFile::remove(Fresh);
    Play(form, "Text2= | ?Není zvukový záznam. | mnuPlay");
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
    AddWithNote("16.1.2024 12:00", "náhrobek", {}, StatusDeleted);
    WriteFile(InRecords("K15083.241"));
    WriteFile(Fresh);
    Run([&](frmSchedule& form) {
      Play(form, "txtPos:1/2 | Text1=rozepsaný | !Smazat nahrávku? | mnuSndDel");
      EXPECT_EQ(Rows()[1].wav, u"K15083.241"_qs);
      // The whole table from now on, tombstones included.
      Play(form, "?Smazat nahrávku? | mnuSndDel | Text2: | txtPos:1/3 | Text1:rozepsaný");
      EXPECT_FALSE(MayBeChosen(form, "mnuPlay") || MayBeChosen(form, "mnuSndDel"));
      Click(form, "cmdOK");
    });
    EXPECT_EQ(Rows()[1].appointment, u"rozepsaný"_qs) << "the save meets the record on screen";
    EXPECT_EQ(Rows()[1].wav, QString());
    EXPECT_EQ(Rows()[2].wav, Q(row.other));
    EXPECT_EQ(QFile::exists(InRecords("K15083.241")), row.stays) << row.other;
    EXPECT_FALSE(QFile::exists(Fresh));
  }
}

TEST_F(SoundNote, ANoteThatTheRecordCannotLoseStays) {
  AddWithNote("17.1.2024 12:00", "první", u"K15083.241"_qs);
  WriteFile(InRecords("K15083.241"));
  Run([&](frmSchedule& form) {
    WithoutStore([&] {
      ExpectMessage("Smazat nahrávku?");
      ExpectMessage("Chyba dat: …");
      Command(form, "mnuSndDel");
    });
    EXPECT_EQ(Field(form, "Text2"), InRecords("K15083.241"));
    EXPECT_TRUE(MayBeChosen(form, "mnuSndDel"));
  });
  EXPECT_TRUE(QFile::exists(InRecords("K15083.241")));
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
