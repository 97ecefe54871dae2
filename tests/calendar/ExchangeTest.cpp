#include "calendar/MainWindow.h"
#include "editor/EditorState.h"
#include "shell/VoiceDialog.h"

#include <QFile>
#include <QRadioButton>

namespace talnik::test {
namespace {

class Exchange : public MainWindow {
 protected:
  /// The next file dialogs leave this path; an empty one is Storno.
  void Picks(const QString& path) {
    main_->dialogs().PickFile = [this, path](int kind, const QString& fields) {
      asked_ << QString::number(kind) + u' ' + fields;
      registry_.SetText(CommonKey(), u"SelectedFile"_qs, path);
      return path.isEmpty() ? 0 : 1;
    };
  }
  QString File(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
  }
  void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QByteArray ManyRows(int rows) {
    QByteArray bytes = "header\r\n";
    for (int i = 0; i < rows; ++i) bytes += "\"20.1.2024\",\"9:00\",\"" + QByteArray::number(i) + "\"\r\n";
    return bytes;
  }
  /// The next window is a message that begins so.
  void ExpectMessage(const char* beginning) {
    user_.Expect([this, beginning](QWidget* dialog) {
      const std::string text = dialog->findChild<QPlainTextEdit*>()->toPlainText().toStdString();
      EXPECT_TRUE(text.starts_with(beginning)) << text;
      user_.Press(Qt::Key_Return, Qt::NoModifier, dialog);
    });
  }

  FakeRegistry& registry_ = world_.registry;
  QStringList asked_;
};

TEST_F(Exchange, AFileGoesOutAndComesBack) {
  Add(u"Kůň, pes"_qs, u"15.1.2024 9:00"_qs);
  Add(u"s alarmem"_qs, u"16.1.2024"_qs, {}, u"15.1.2024 20:00"_qs);
  Start();
  Picks(File("kalendář"));
  world_.Heard();
  Choose("mnuExport");
  EXPECT_EQ(Heard(), "say: Počet exportovaných záznamů: 2");
  const QByteArray written = Contents(File("kalendář.csv"));
  EXPECT_TRUE(written.contains("\"15.1.2024\",\"09:00:00\",\"Kůň, pes\",\"15.1.2024\",\"09:00:00\",FALSE,,\r\n"));

  Picks(File("kalendář.csv"));
  ExpectMessage("Počet importovaných záznamů: 1, počet odmítnutých záznamů: 1");
  Choose("mnuImport");
  EXPECT_EQ(RowCount(), 3) << "a comma moves the rest of its row to the right";
  EXPECT_TRUE(Heard().ends_with("say: 15. pondělí 2 úkolů")) << Heard();
  EXPECT_EQ(asked_.join(u'\n').toStdString(),
            "10 *.csv|||Export dat talníku\n8 *.csv|" + folder_.path().toStdString() + "|Import dat talníku");
  EXPECT_TRUE(user_.AllCame());
}

TEST_F(Exchange, WhatCannotBeReadOrWrittenIsTold) {
  Add(u"x"_qs, u"15.1.2024"_qs);
  Start();
  const std::pair<const char*, const char*> cases[] = {{"mnuImport", "Soubor se nepodařilo otevřít: "},
                                                       {"mnuExport", "Soubor se nepodařilo uložit: "}};
  Picks(folder_.path() + u'/');
  ExpectMessage("Chybné jméno souboru.");
  Choose("mnuExport");
  Picks(File("no/such/folder.csv"));
  for (const auto& [command, message] : cases) {
    ExpectMessage(message);
    Choose(command);
  }
  Write(File("a.csv"), ManyRows(3));
  Picks(File("a.csv"));
  ExpectMessage("Import se nezdařil, talník zůstal beze změny.\nChyba dat: ");
  QFile::rename(InData("talnik.MDB"), InData("away"));
  Choose("mnuImport");
  QFile::rename(InData("away"), InData("talnik.MDB"));
  EXPECT_EQ(RowCount(), 1);
  EXPECT_TRUE(user_.AllCame());
}

TEST_F(Exchange, ALongImportTellsHowFarItIsAndCanBeGivenUp) {
  Start();
  Write(File("long.csv"), ManyRows(20000));
  Picks(File("long.csv"));
  user_.Expect([this](QWidget* window) {
    EXPECT_EQ(window->objectName(), u"frmProgress"_qs);
    EXPECT_FALSE(main_->Timer1.isActive()) << "an alarm would write into the middle of it";
    user_.Press(Qt::Key_Escape, Qt::NoModifier, window);
  });
  ExpectMessage("Import byl zrušen, talník zůstal beze změny.");
  Choose("mnuImport");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_TRUE(main_->Timer1.isActive());
  EXPECT_EQ(RowCount(), 0);

  world_.Heard();
  user_.Expect([](QWidget*) {});
  ExpectMessage("Počet importovaných záznamů: 20000, počet odmítnutých záznamů: 0");
  Choose("mnuImport");
  const std::string heard = Heard();
  EXPECT_NE(heard.find("sound: tick.wav\nsay: 50 procent"), std::string::npos) << heard;
  EXPECT_EQ(RowCount(), 20000);
}

TEST_F(Exchange, ImportedAlarmsRing) {
  Start();
  Write(File("a.csv"), "h\n\"15.1.2024\",\"9:00\",\"zazvoní\",,,TRUE,\"15.1.2024\",\"8:40\"\n");
  Picks(File("a.csv"));
  ExpectMessage("Počet importovaných záznamů: 1");
  Choose("mnuImport");
  world_.clock.Moment = world_.clock.Moment.addSecs(601);
  user_.ExpectAndPress(u"frmAlarmBox"_qs, Qt::Key_Escape);
  EXPECT_TRUE(FormDriver::Until([this] { return user_.AllCame(); }));
}

class SearchCommand : public MainWindow {
 protected:
  void Search(const QString& text, bool fromSelectedDay) {
    user_.Expect([this, text, fromSelectedDay](QWidget* dialog) {
      EXPECT_EQ(dialog->objectName(), u"frmSearchRecord"_qs);
      dialog->findChild<QLineEdit*>(u"Text1"_qs)->setText(text);
      if (fromSelectedDay) dialog->findChild<QRadioButton*>(u"optSearch(1)"_qs)->setChecked(true);
      user_.Press(Qt::Key_Return, Qt::NoModifier, dialog);
    });
  }
  /// The editor opens on so many records.
  void ExpectRecords(const char* position) {
    user_.Expect([this, position](QWidget* editor) {
      EXPECT_EQ(editor->objectName(), u"frmSchedule"_qs);
      EXPECT_EQ(editor->findChild<QLineEdit*>(u"txtPos"_qs)->text().toStdString(), position);
      user_.Press(Qt::Key_Escape, Qt::NoModifier, editor);
    });
  }
};

TEST_F(SearchCommand, FindsTextsByTheirWildcardsFromTheChosenDay) {
  Add(u"Velký KŮŇ"_qs, u"10.1.2024 9:00"_qs);
  Add(u"kůň"_qs, u"20.1.2024 9:00"_qs);
  Add(u"pes"_qs, u"21.1.2024 9:00"_qs);
  Start();
  Search(u"kůň"_qs, false);
  ExpectRecords("1/2");
  user_.Press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(user_.AllCame());
  FormDriver::Settle();
  const std::string heard = Heard();
  EXPECT_TRUE(heard.ends_with("say: 15. pondělí")) << heard;
  Search(u"k?ň"_qs, true);
  ExpectRecords("1/1");
  Choose("mnuSearchRecord");
  Search(QString(), false);
  Choose("mnuSearchRecord");
  EXPECT_TRUE(user_.AllCame()) << "an empty text opens nothing";
}

}  // namespace
}  // namespace talnik::test
