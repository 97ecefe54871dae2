#include "menus/FilePickers.h"
#include "menus/FolderView.h"
#include "menus/fFileOpen.h"
#include "shell/TextControls.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QTimerEvent>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

/// The file dialogs over folders in memory, and a user at the keyboard.
struct PickerWorld {
  PickerWorld() {
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

  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }

  /// Presses one key after the other and expects what each is answered with: "Down > say: a soubor | Tab > say:
  /// Storno". A key in quotes is typed.
  void Play(const char* script) {
    for (const QString& step : QString::fromUtf8(script).split(u" | "_qs)) {
      const QString key = step.section(u" >"_qs, 0, 0);
      Heard();
      if (key.startsWith(u'\'')) {
        driver.Type(key.mid(1, key.size() - 2));
      } else {
        const QKeyCombination combination = QKeySequence::fromString(key)[0];
        driver.Press(combination.key(), combination.keyboardModifiers());
      }
      FormDriver::Settle();
      EXPECT_EQ(Heard(), step.mid(key.size() + 3).toStdString()) << key.toStdString();
    }
  }

  /// Lets a timer of the window run out.
  static void RunOut(QWidget& window, const char* name) {
    auto* timer = FormDriver::Find<QTimer>(&window, name);
    EXPECT_TRUE(timer->isActive()) << name;
    QTimerEvent tick(timer->timerId());
    QApplication::sendEvent(timer, &tick);
  }

  /// Expects the next message and answers it with a button, or with Enter.
  void Answer(const char* message, const char* button) {
    driver.Expect([this, message, button](QWidget* window) {
      EXPECT_EQ(FormDriver::Find<QPlainTextEdit>(window, "txtMessage")->toPlainText().toStdString(), message);
      if (button) return FormDriver::Find<QPushButton>(window, button)->click();
      driver.Press(Qt::Key_Return, Qt::NoModifier, window);
    });
  }
  /// Answers the message that an act brings about, and waits until the window is back.
  void Answer(const fFileOpen& form, const char* message, const char* button, const std::function<void()>& act) {
    Answer(message, button);
    act();
    EXPECT_TRUE(FormDriver::Until([&] { return driver.AllCame() && (!form.isVisible() || form.isActiveWindow()); }));
    FormDriver::Settle();
  }

  FakeWorld world;
  FakeFolders& folders = world.folders;
  Speech speech{&world.voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  FormDriver driver;
};

TEST(FilePicker, WalksThroughFoldersAndChoosesAFile) {
  PickerWorld w;
  EXPECT_EQ(
      w.Open(8, "*.csv|/home/eva|Import dat talníku",
             [&](fFileOpen& form) {
               EXPECT_EQ(w.Heard(), "stop; say: Import dat talníku; and: eva Dokumenty složka");
               EXPECT_EQ(form.Tag(), 1701);
               EXPECT_EQ(form.Command1->text().toStdString(), "Otevřít");
               w.Play(
                   "Up > sound: end.wav | End > say: Tajné složka | Down > sound: end.wav | "
                   "Return > sound: refused.wav | Up > say: Prázdná složka | Return > say: Prázdná prázdná složka | "
                   "Down > sound: end.wav | Return > sound: refused.wav | Backspace > say: eva Prázdná složka | "
                   "Home > say: Dokumenty složka | Return > say: Dokumenty Pošta složka | "
                   "Down > say: dům.csv soubor | "
                   "Space > say: dům.csv soubor, 2 z 2, 1 složka, 1 soubor, /home/eva/Dokumenty/dům.csv");
               EXPECT_EQ(form.Text1->text().toStdString(), "dům.csv");
               w.Play("Up > say: Pošta složka | Down > say: dům.csv soubor | Return > ");
             }),
      "1 /home/eva/Dokumenty/dům.csv");
  EXPECT_EQ(w.Open(8, "*.csv||",
                   [&](fFileOpen&) {
                     w.Play(
                         "Space > say: Pošta složka, 1 z 2, 1 složka, 1 soubor, "
                         "/home/eva/Dokumenty/Pošta | Esc > ");
                   }),
            "0 ")
      << "without a folder it begins where the last file was";
}

TEST(FilePicker, BackspaceEndsAtTheRoot) {
  PickerWorld w;
  w.Open(8, "*.*|/home/eva|", [&](fFileOpen& form) {
    w.Play("Backspace > say: home eva složka | Backspace > say: Kořen home složka | Backspace > sound: end.wav");
    EXPECT_EQ(form.Folder(), u"/"_qs);
  });
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
  w.Open(12, "*.csv|/home/eva|X", [&](fFileOpen& form) {
    EXPECT_EQ(form.Command1->text().remove(u'&').toStdString(), "OK");
    w.Play("Tab > say: Jméno souboru:");
  });
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
      w.Answer(form, message, nullptr, [&] { w.driver.Press(Qt::Key_Return); });
    }
    form.Text1->clear();
    w.Play("Return > sound: empty.wav");
    form.Text1->setText(u" ../Prázdná "_qs);
    w.Play("Return > say: Prázdná prázdná složka");
  });
  EXPECT_EQ(w.Open(8, "*.csv|/home/eva/Dokumenty|X",
                   [&](fFileOpen& form) {
                     form.Text1->setText(u"~/Dokumenty/Pošta/data"_qs);
                     form.Command1->click();
                     FormDriver::Settle();
                   }),
            "1 /home/eva/Dokumenty/Pošta/data.csv");
}

TEST(FilePicker, OverwritingIsAskedFor) {
  PickerWorld w;
  const char* question = "Soubor dům.csv již existuje. Přepsat?";
  const auto user = [&](fFileOpen& form) {
    EXPECT_EQ(w.Heard(), "stop; say: Export dat talníku; and: Jméno souboru: dům");
    w.Answer(form, question, nullptr, [&] { w.driver.Press(Qt::Key_Return); });
    EXPECT_TRUE(form.isVisible()) << "Enter says no";
    w.Play("Shift+Tab > say: Filtr: *.csv | Shift+Tab > say: Dokumenty Pošta složka | Down > say: dům.csv soubor");
    EXPECT_EQ(form.Text1->text().toStdString(), "dům") << "what was typed stays";
    w.Answer(form, question, "cmdYES", [&] { w.driver.Press(Qt::Key_Return); });
  };
  EXPECT_EQ(w.Open(10, "*.csv|dům|/home/eva/Dokumenty|Export dat talníku", user), "1 /home/eva/Dokumenty/dům.csv");
  EXPECT_EQ(w.Open(10, "*.*||/home/eva|X",
                   [&](fFileOpen& form) {
                     w.Heard();
                     form.Command1->click();
                     EXPECT_EQ(w.Heard(), "sound: empty.wav");
                     form.Text1->setText(u"nový"_qs);
                     form.Command1->click();
                     FormDriver::Settle();
                   }),
            "1 /home/eva/nový");
}

TEST(FilePicker, APathThatCannotBeHandedOverIsTold) {
  PickerWorld w;
  w.world.registry.Refuse = true;
  const auto choose = [&](fFileOpen&) {
    w.driver.Press(Qt::Key_End);
    w.Answer("Cestu k souboru nelze předat: /home/eva/zvon.wav", nullptr);
    w.driver.Press(Qt::Key_Return);
    FormDriver::Settle();
  };
  EXPECT_EQ(w.Open(8, "*.wav|/home/eva|X", choose), "0 ");
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
    w.Play("Return > ");
    w.Play("Esc > ");
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
    form.txtFind->setFocus();
    FormDriver::Settle();
    w.Play("Return > sound: empty.wav");
    form.txtFind->setText(u"DUM"_qs);
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
    form.txtFind->setText(u"*.nic"_qs);
    form.cmdFind->setFocus();
    FormDriver::Settle();
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
    form.txtFind->setText(u"?"_qs);
    form.txtFind->setFocus();
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
