#include "calendar/MainWindow.h"
#include "editor/EditorState.h"
#include "shell/VoiceDialog.h"

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
  QByteArray ManyRows(int rows) {
    QByteArray bytes = "header\r\n";
    for (int i = 0; i < rows; ++i) bytes += "\"20.1.2024\",\"9:00\",\"" + QByteArray::number(i) + "\"\r\n";
    return bytes;
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
  const QByteArray written = ReadFile(File("kalendář.csv"));
  EXPECT_TRUE(written.contains("\"15.1.2024\",\"09:00:00\",\"Kůň, pes\",\"15.1.2024\",\"09:00:00\",FALSE,,\r\n"));

  Picks(File("kalendář.csv"));
  ExpectMessage(u"Počet importovaných záznamů: 1, počet odmítnutých záznamů: 1"_qs);
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
  const std::pair<const char*, QString> cases[] = {{"mnuImport", u"Soubor se nepodařilo otevřít: …"_qs},
                                                   {"mnuExport", u"Soubor se nepodařilo uložit: …"_qs}};
  Picks(folder_.path() + u'/');
  ExpectMessage(u"Chybné jméno souboru."_qs);
  Choose("mnuExport");
  Picks(File("no/such/folder.csv"));
  for (const auto& [command, message] : cases) {
    ExpectMessage(message);
    Choose(command);
  }
  WriteFile(File("a.csv"), ManyRows(3));
  Picks(File("a.csv"));
  ExpectMessage(u"Import se nezdařil, talník zůstal beze změny.\nChyba dat: …"_qs);
  QFile::rename(InData("talnik.MDB"), InData("away"));
  Choose("mnuImport");
  QFile::rename(InData("away"), InData("talnik.MDB"));
  EXPECT_EQ(RowCount(), 1);
  EXPECT_TRUE(user_.AllCame());
}

TEST_F(Exchange, ALongImportTellsHowFarItIsAndCanBeGivenUp) {
  Start();
  WriteFile(File("long.csv"), ManyRows(20000));
  Picks(File("long.csv"));
  user_.Expect([this](QWidget* window) {
    EXPECT_EQ(window->objectName(), u"frmProgress"_qs);
    EXPECT_FALSE(main_->Timer1.isActive()) << "an alarm would write into the middle of it";
    user_.Press(Qt::Key_Escape, Qt::NoModifier, window);
  });
  ExpectMessage(u"Import byl zrušen, talník zůstal beze změny."_qs);
  Choose("mnuImport");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_TRUE(main_->Timer1.isActive());
  EXPECT_EQ(RowCount(), 0);

  world_.Heard();
  user_.Expect([](QWidget*) {});
  ExpectMessage(u"Počet importovaných záznamů: 20000, počet odmítnutých záznamů: 0"_qs);
  Choose("mnuImport");
  const std::string heard = Heard();
  EXPECT_NE(heard.find("sound: tick.wav\nsay: 50 procent"), std::string::npos) << heard;
  EXPECT_EQ(RowCount(), 20000);
}

TEST_F(Exchange, ImportedAlarmsRing) {
  Start();
  WriteFile(File("a.csv"), "h\n\"15.1.2024\",\"9:00\",\"zazvoní\",,,TRUE,\"15.1.2024\",\"8:40\"\n");
  Picks(File("a.csv"));
  ExpectMessage(u"Počet importovaných záznamů: 1…"_qs);
  Choose("mnuImport");
  world_.clock.Moment = world_.clock.Moment.addSecs(601);
  user_.ExpectAndPress(u"frmAlarmBox"_qs, Qt::Key_Escape);
  EXPECT_TRUE(FormDriver::Until([this] { return user_.AllCame(); }));
}

using SearchCommand = MainWindow;

TEST_F(SearchCommand, FindsTextsByTheirWildcardsFromTheChosenDay) {
  Add(u"Velký KŮŇ"_qs, u"10.1.2024 9:00"_qs);
  Add(u"kůň"_qs, u"20.1.2024 9:00"_qs);
  Add(u"pes"_qs, u"21.1.2024 9:00"_qs);
  Start();
  ExpectPlay("frmSearchRecord", u"Text1=kůň | Return"_qs);
  ExpectEditor("txtPos", u"1/2"_qs);
  user_.Press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(user_.AllCame());
  FormDriver::Settle();
  const std::string heard = Heard();
  EXPECT_TRUE(heard.ends_with("say: 15. pondělí")) << heard;
  ExpectPlay("frmSearchRecord", u"Text1=k?ň | optSearch(1)=true | Return"_qs);
  ExpectEditor("txtPos", u"1/1"_qs);
  Choose("mnuSearchRecord");
  ExpectPlay("frmSearchRecord", u"Text1= | Return"_qs);
  Choose("mnuSearchRecord");
  EXPECT_TRUE(user_.AllCame()) << "an empty text opens nothing";
}

}  // namespace
}  // namespace talnik::test
