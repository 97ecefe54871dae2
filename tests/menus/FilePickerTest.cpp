#include "menus/FilePickers.h"
#include "menus/FolderView.h"
#include "menus/fFileOpen.h"
#include "shell/TextControls.h"
#include "support/FormWorld.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTimerEvent>

namespace talnik::test {
namespace {

/// The file dialogs over folders in memory, and a user at the keyboard.
struct PickerWorld : FormWorld {
  PickerWorld() {
    settles = true;
    for (const char* path :
         {"/home/eva/Dokumenty/dopis.txt", "/home/eva/Dokumenty/dům.csv", "/home/eva/Dokumenty/Pošta/data.csv",
          "/home/eva/Dokumenty/Pošta/Došlá/dům.txt", "/home/eva/Prázdná/", "/home/eva/zvon.wav", "/home/eva/čas.wav",
          "/home/eva/Tajné/", "/proc/1/dům.txt"}) {
      folders.Add(QString::fromUtf8(path));
    }
    folders.Refuses << u"/home/eva/Tajné"_qs;
    folders.Invented << u"/proc"_qs;
    dialogs.PickFile = MakeFilePicker(services, folders, world.registry);
  }

  /// Opens the dialog of a kind, lets the user act in it, and gives its result and the path that was handed over.
  std::string Open(int kind, const char* text, std::function<void(fFileOpen&)> user) {
    driver.Expect([user = std::move(user)](QWidget* window) {
      QTimer::singleShot(0, window, [user, window] {
        auto* form = dynamic_cast<fFileOpen*>(window);
        ASSERT_NE(form, nullptr);
        FormDriver::Settle();
        user(*form);
        if (form->isVisible()) form->close();
      });
    });
    const int result = dialogs.VoiceDialog(MakeCommand(7, kind), QString::fromUtf8(text));
    EXPECT_TRUE(driver.AllCame());
    return std::to_string(result) + ' ' + TakeSelectedFile(world.registry).toStdString();
  }

  /// The same for a user who only presses keys.
  std::string Open(int kind, const char* text, const char* script) {
    return Open(kind, text, [this, script](fFileOpen&) { Play(script); });
  }

  /// Lets a timer of the window run out.
  static void RunOut(QWidget& window, const char* name) {
    auto* timer = FormDriver::Find<QTimer>(&window, name);
    EXPECT_TRUE(timer->isActive()) << name;
    QTimerEvent tick(timer->timerId());
    QApplication::sendEvent(timer, &tick);
  }

  /// Answers the message that Enter brings about, and waits until the window is back.
  void Answer(const fFileOpen& form, const char* message, const char* button) {
    driver.ExpectMessage(QString::fromUtf8(message), button);
    driver.Press(Qt::Key_Return);
    ComesBack(form);
  }
  void ComesBack(const fFileOpen& form) {
    EXPECT_TRUE(FormDriver::Until([&] { return driver.AllCame() && (!form.isVisible() || form.isActiveWindow()); }));
    FormDriver::Settle();
  }

  FakeFolders& folders = world.folders;
};

TEST(FilePicker, WalksThroughFoldersAndChoosesAFile) {
  PickerWorld w;
  const auto user = [&](fFileOpen&) {
    EXPECT_EQ(w.Heard(), "stop; say: Import dat talníku; and: eva Dokumenty složka");
    w.Play("Up > sound: end.wav | End > say: Tajné složka | Down > sound: end.wav | Return > sound: refused.wav");
    w.Play("Up > say: Prázdná složka | Return > say: Prázdná prázdná složka | Down > sound: end.wav");
    w.Play("Return > sound: refused.wav | Backspace > say: eva Prázdná složka | Home > say: Dokumenty složka");
    w.Play("Return > say: Dokumenty Pošta složka | Down > say: dům.csv soubor");
    w.Play("Space > say: dům.csv soubor, 2 z 2, 1 složka, 1 soubor, /home/eva/Dokumenty/dům.csv");
    w.Play("Text1:dům.csv | Up > say: Pošta složka | Down > say: dům.csv soubor | Return > ");
  };
  EXPECT_EQ(w.Open(8, "*.csv|/home/eva|Import dat talníku", user), "1 /home/eva/Dokumenty/dům.csv");
  // Without a folder it begins where the last file was.
  const char* last = "Space > say: Pošta složka, 1 z 2, 1 složka, 1 soubor, /home/eva/Dokumenty/Pošta | Esc > ";
  EXPECT_EQ(w.Open(8, "*.csv||", last), "0 ");
  w.Open(8, "*.*|/home/eva|",
         "Backspace > say: home eva složka | Backspace > say: Kořen home složka | Backspace > sound: end.wav");
}

TEST(FilePicker, EveryControlIsReachedByTabAndSaysItself) {
  PickerWorld w;
  w.folders.Drives << Folders::Place{Folders::Place::Kind::Disk, u"/media/ZÁLOHA"_qs};
  w.Open(8, "*.csv|/home/eva|X", [&](fFileOpen& form) {
    w.Play(
        "Tab > say: Filtr: *.csv | Down > say: všechny soubory *.* | Down > sound: end.wav | Tab > say: Jméno souboru: "
        "| "
        "Tab > say: Hledat jméno: | Tab > say: Hledat | Tab > say: Otevřít | Tab > say: Storno | "
        "Tab > say: Místa: Domovská složka | Down > say: Kořen | Down > say: Disk ZÁLOHA | Down > sound: end.wav | "
        "Return > sound: refused.wav | Up > say: Kořen | Return > say: Kořen home složka | "
        "Shift+Tab > say: Místa: Kořen");
    // As a screen reader finds them.
    const std::pair<QWidget*, const char*> names[] = {{form.drvList, "Místa:"},       {form.dirList, "Složka: Kořen"},
                                                      {form.Text1, "Jméno souboru:"}, {form.txtFind, "Hledat jméno:"},
                                                      {form.cmdFind, "Hledat"},       {form.Command1, "Otevřít"},
                                                      {form.cmdCancel, "Storno"}};
    for (const auto& [control, name] : names)
      EXPECT_EQ(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).toStdString(), name);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(form.dirList)->child(0)->text(QAccessible::Name).toStdString(),
              "home složka");
  });
  w.Open(12, "*.csv|/home/eva|X", "Tab > say: Jméno souboru:");
}

TEST(FilePicker, LettersGoToNames) {
  PickerWorld w;
  w.Open(8, "*.*|/home/eva|X", [&](fFileOpen& form) {
    w.Play("'z' > say: zvon.wav soubor | 'x' > sound: refused.wav | 'v' > say: zvon.wav soubor");
    PickerWorld::RunOut(form, "TypingTimer");
    w.Play("'č' > say: čas.wav soubor");
    PickerWorld::RunOut(form, "TypingTimer");
    w.Play(
        "'p' > say: Prázdná složka | 'r' > say: Prázdná složka | Home > say: Dokumenty složka | Return > say: "
        "Dokumenty Pošta složka | 'd' > say: dopis.txt soubor | 'd' > say: dům.csv soubor | 'd' > say: dopis.txt "
        "soubor | 'u' > say: dům.csv soubor");
  });
}

TEST(FilePicker, BeginsAtTheNearestFolderThatCanBeRead) {
  PickerWorld w;
  const std::pair<const char*, const char*> starts[] = {{"/home/eva/Prázdná/", "/home/eva/Prázdná"},
                                                        {"/home/eva/není/ani/to", "/home/eva"},
                                                        {"/home/eva/Tajné", "/home/eva"},
                                                        {"/home/eva/zvon.wav", "/home/eva"},
                                                        {"/jinde", "/home/eva"},
                                                        {"", "/home/eva"}};
  for (const auto& [start, folder] : starts) {
    w.Open(8, (std::string("*.*|") + start + "|X").c_str(),
           [&](fFileOpen& form) { EXPECT_EQ(form.Folder().toStdString(), folder) << start; });
  }
}

TEST(FilePicker, ANameIsTypedToOpen) {
  PickerWorld w;
  w.Open(8, "*.csv|/home/eva/Dokumenty|X", [&](fFileOpen& form) {
    form.Text1->setFocus();
    const std::pair<const char*, const char*> refused[] = {
        {"nic", "Soubor nebyl nalezen: /home/eva/Dokumenty/nic.csv"},
        {"nic/a.csv", "Složka neexistuje: /home/eva/Dokumenty/nic"},
        {"/home/eva/Tajné", "Zde nelze soubor otevřít ani uložit: /home/eva/Tajné"},
        {"a\uFFFD.csv", "Jméno obsahuje znaky, které nelze přečíst: /home/eva/Dokumenty/a\uFFFD.csv"}};
    for (const auto& [name, message] : refused) {
      form.Text1->setText(QString::fromUtf8(name));
      w.Answer(form, message, "cmdYES");
    }
    w.Play("Text1= | Return > sound: empty.wav | Text1= ../Prázdná  | Return > say: Prázdná prázdná složka");
  });
  EXPECT_EQ(w.Open(8, "*.csv|/home/eva/Dokumenty|X", "Text1=~/Dokumenty/Pošta/data | Command1"),
            "1 /home/eva/Dokumenty/Pošta/data.csv");
}

TEST(FilePicker, OverwritingIsAskedFor) {
  PickerWorld w;
  const char* question = "Soubor dům.csv již existuje. Přepsat?";
  const auto user = [&](fFileOpen& form) {
    EXPECT_EQ(w.Heard(), "stop; say: Export dat talníku; and: Jméno souboru: dům");
    w.driver.ExpectMessage(QString::fromUtf8(question));
    w.driver.Press(Qt::Key_Return);
    w.ComesBack(form);
    EXPECT_TRUE(form.isVisible()) << "Enter says no";
    w.Play("Shift+Tab > say: Filtr: *.csv | Shift+Tab > say: Dokumenty Pošta složka | Down > say: dům.csv soubor");
    EXPECT_EQ(form.Text1->text().toStdString(), "dům") << "what was typed stays";
    w.Answer(form, question, "cmdYES");
  };
  EXPECT_EQ(w.Open(10, "*.csv|dům|/home/eva/Dokumenty|Export dat talníku", user), "1 /home/eva/Dokumenty/dům.csv");
  EXPECT_EQ(w.Open(10, "*.*||/home/eva|X", "Command1 > sound: empty.wav | Text1=nový | Command1"), "1 /home/eva/nový");
}

TEST(FilePicker, APathThatCannotBeHandedOverIsTold) {
  PickerWorld w;
  w.world.registry.Refuse = true;
  const char* script = "End | ?Cestu k souboru nelze předat: /home/eva/zvon.wav | Return";
  EXPECT_EQ(w.Open(8, "*.wav|/home/eva|X", script), "0 ");
}

TEST(FilePicker, WhatDoesNotAnswerHoldsNobody) {
  PickerWorld w;
  w.Open(8, "*.*|/home/eva|X", [&](fFileOpen& form) {
    w.folders.Hold = true;
    w.Play("Return > ");
    PickerWorld::RunOut(form, "SlowTimer");
    EXPECT_EQ(w.Heard(), "say: Čtu složku.");
    w.Play("Down > say: Prázdná složka");
    w.folders.Reply(Folders::Outcome::NoAnswer);
    EXPECT_EQ(w.Heard(), "sound: refused.wav; say: Složka neodpovídá.");
    EXPECT_EQ(form.Folder(), u"/home/eva"_qs);
    w.Play("Return >  | Esc > ");
    EXPECT_FALSE(form.isVisible());
    w.folders.Reply(Folders::Outcome::Folder);
    EXPECT_EQ(w.Heard(), "") << "an answer that comes too late";
  });
}

TEST(FilePicker, AFolderThatIsRemovedMeanwhileIsLeftByBackspace) {
  PickerWorld w;
  w.Open(8, "*.*|/home/eva/Dokumenty/Pošta/Došlá|X", [&](fFileOpen&) {
    w.folders.Remove(u"/home/eva/Dokumenty/Pošta/Došlá"_qs);
    w.folders.Remove(u"/home/eva/Dokumenty/Pošta"_qs);
    w.Play("Backspace > say: Dokumenty dopis.txt soubor");
  });
}

TEST(FilePicker, SearchesBelowAndShowsWhatItFound) {
  PickerWorld w;
  w.folders.AddLink(u"/home/eva/Dokumenty/zpět"_qs);
  w.Open(8, "*.*|/home/eva|X", [&](fFileOpen& form) {
    w.Play("@txtFind | Return > sound: empty.wav | txtFind=DUM");
    w.folders.Hold = true;
    w.Play("Return > say: Hledám");
    w.world.voice.Speaking = true;
    PickerWorld::RunOut(form, "ProgressTimer");
    EXPECT_EQ(w.Heard(), "");
    w.world.voice.Speaking = false;
    PickerWorld::RunOut(form, "ProgressTimer");
    EXPECT_EQ(w.Heard(), "say: Nalezeno 0, hledám ve složce eva");
    w.folders.Hold = false;
    w.folders.Reply(Folders::Outcome::Folder);
    EXPECT_TRUE(FormDriver::Until([&] { return form.dirList->hasFocus(); }));
    EXPECT_EQ(w.Heard(), "say: Nalezeno 2, nepřístupných složek: 1 dům.csv soubor ve složce Dokumenty");
    EXPECT_FALSE(w.folders.WasRead.contains(u"/home/eva/Dokumenty/zpět"_qs)) << "a link may lead round for ever";
    w.Play("Down > say: dům.txt soubor ve složce Dokumenty/Pošta/Došlá | Backspace > say: eva Dokumenty složka");
    w.Play("txtFind=*.nic | @cmdFind");
    w.Heard();
    w.driver.Press(Qt::Key_Return);
    EXPECT_TRUE(FormDriver::Until([&] { return !FormDriver::Find<QTimer>(&form, "ProgressTimer")->isActive(); }));
    EXPECT_EQ(w.Heard(), "say: Hledám; say: Nic nenalezeno, nepřístupných složek: 1");
  });
  EXPECT_FALSE(w.folders.WasRead.contains(u"/proc/1"_qs));
}

TEST(FilePicker, EscapeStopsASearchFirst) {
  PickerWorld w;
  w.Open(8, "*.*|/|X", [&](fFileOpen& form) {
    w.Play("txtFind=? | @txtFind");
    w.folders.Hold = true;
    w.driver.Press(Qt::Key_Return);
    EXPECT_EQ(form.cmdFind->text().toStdString(), "Zastavit");
    w.Play("Esc > say: Nic nenalezeno");
    EXPECT_EQ(form.cmdFind->text().toStdString(), "Hledat");
    w.Play("Esc > ");
    EXPECT_FALSE(form.isVisible());
  });
  w.folders.Hold = false;
  EXPECT_EQ(w.Open(8, "*.*|/|X",
                   [&](fFileOpen& form) {
                     form.txtFind->setText(u"dům.txt"_qs);
                     form.cmdFind->click();
                     form.dirList->setFocus();
                     EXPECT_TRUE(FormDriver::Until([&] { return form.dirList->Lines().size() == 1; }));
                     w.driver.Press(Qt::Key_Return);
                     FormDriver::Settle();
                   }),
            "1 /home/eva/Dokumenty/Pošta/Došlá/dům.txt")
      << "and not what the system makes up";
}

TEST(SoundPicker, PlaysBehindTheNameUntilTheNextKey) {
  PickerWorld w;
  w.world.sound.Hold = true;
  EXPECT_EQ(w.Open(14, "*.wav||/home/eva|Otevřít",
                   [&](fFileOpen& form) {
                     EXPECT_EQ(form.objectName().toStdString() + ' ' + form.Command1->text().toStdString(),
                               "fFileOpenSnd Uložit");
                     w.world.voice.Speaking = true;
                     w.Play("End > say: zvon.wav soubor");
                     PickerWorld::RunOut(form, "SaidTimer");
                     EXPECT_EQ(w.Heard(), "") << "the name comes first";
                     w.world.voice.Speaking = false;
                     PickerWorld::RunOut(form, "SaidTimer");
                     EXPECT_EQ(w.Heard(), "sound: zvon.wav");
                     EXPECT_TRUE(w.world.sound.IsPlaying());
                     w.driver.PressOnly(Qt::Key_Control);
                     EXPECT_FALSE(w.world.sound.IsPlaying());
                     w.Play("Up > say: čas.wav soubor");
                     PickerWorld::RunOut(form, "SaidTimer");
                     EXPECT_TRUE(w.world.sound.IsPlaying());
                     w.driver.Press(Qt::Key_Return);
                     FormDriver::Settle();
                   }),
            "1 /home/eva/čas.wav")
      << "an existing sound is chosen, not overwritten";
  EXPECT_FALSE(w.world.sound.IsPlaying());
}

}  // namespace
}  // namespace talnik::test
