#include "platform/linux/LinuxShell.h"
#include "platform/linux/SocketMailbox.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "shell/frmProgress.h"
#include "store/Statements.h"
#include "store/Template.h"
#include "support/FakeMailbox.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"
#include "sync/SyncDriver.h"
#include "sync/SyncFiles.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

class SyncTest : public testing::Test {
 protected:
  SyncTest() {
    setting.User = u"jana"_qs;
    paths.AppFolder = folder.path() + u"/app/"_qs;
    paths.DataFolder = folder.path();
    paths.SyncAgent = paths.AppFolder + u"CalendarAgent.exe"_qs;
    paths.Store = In("talnik.MDB");
    paths.LmData = In("LmData.txt");
    paths.GgData = In("GgData.txt");
    paths.LmDataSaved = In("LmData_Saved.txt");
    paths.GgDataSaved = In("GgData_Saved.txt");
    QDir().mkpath(paths.AppFolder);
    Write(paths.SyncAgent, "agent");
    CreateStore(paths.Store);
    ScheduleRecord row;
    row.apptime = row.appdur = CDate(u"5.1.2024 8:00"_qs, Date());
    row.appointment = u"Zubař"_qs;
    row.guid = u"old"_qs;
    row.status = StatusSingle;
    store.Insert(row);
  }

  QString In(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
  static void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  static std::string Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(no file)";
  }
  /// The agent has brought this, and says so.
  void Bring(const QByteArray& data) {
    Write(paths.GgData, data);
    box->Write(u"#Done"_qs);
  }
  bool Ends() {
    return FormDriver::Until([this] { return !driver.SyncRunning(); });
  }
  QStringList Titles() {
    QStringList titles;
    store.ForEach(statements::All(), [&titles](const ScheduleRecord& row) {
      titles << row.appointment;
      return true;
    });
    titles.sort();
    return titles;
  }
  QStringList Spoken() { return world.Heard().filter(QRegularExpression(u"^(say|and): "_qs)); }
  /// Presses Escape in the window of the progress as soon as it shows this status.
  void GiveUpAt(const QString& status) {
    QObject::connect(&poll, &QTimer::timeout, [this, status] {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* form = qobject_cast<frmProgress*>(window);
        if (!form || !form->isVisible() || form->Text1->text() != status) continue;
        poll.stop();
        form->reject();
      }
    });
    poll.start(0);
  }

  QTemporaryDir folder;
  FakeWorld world;
  FormDriver user;
  QTimer poll;
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  Speech speech{&world.voice, world.braille, world.sound, QString()};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  Paths paths;
  Store store{folder.filePath(u"talnik.MDB"_qs)};
  FakeMailbox* box = nullptr;
  bool silent = false;
  bool storeIsBusy = false;
  int registered = 0;
  SyncSurroundings surroundings{.store = store,
                                .services = services,
                                .paths = paths,
                                .codePage = world.codePage,
                                .timeZone = world.timeZone,
                                .shell = world.shell,
                                .mailbox = [this](const QString&) { return std::make_unique<FakeMailbox>(box); },
                                .SilentSync = silent,
                                .whileTheStoreIsOurs =
                                    [this](const std::function<void()>& merge) {
                                      if (!storeIsBusy) merge();
                                      return !storeIsBusy;
                                    },
                                .registerAlarms = [this] { ++registered; },
                                .mainWindow = nullptr};
  SyncDriver driver{surroundings};
};

}  // namespace

TEST_F(SyncTest, ARunTellsTheAgentAllAndTakesAllItBrings) {
  Write(paths.GgData, "what the last run brought");
  driver.Start(false);
  ASSERT_TRUE(box);
  EXPECT_FALSE(QFile::exists(paths.GgData));
  EXPECT_EQ(world.shell.Started, QStringList(paths.SyncAgent + u' ' + paths.AppFolder));
  EXPECT_EQ(Read(paths.LmData), "Zubař;5.1.2024 08:00:00;5.1.2024 08:00:00;;;old;0\r\n");
  const std::string at = folder.path().toStdString();
  EXPECT_EQ(Read(In("GoogleAccess.ini")),
            "[Login]\r\n[Application]\r\nAction = Login+Sync+Close\r\nSourceRule = 1\r\nCallBack =  /run/box\r\n"
            "LmFileName = " +
                at + "/LmData.txt\r\nGgFileName = " + at + "/GgData.txt\r\nLmFileName_Saved = " + at +
                "/LmData_Saved.txt\r\nGgFileName_Saved = " + at + "/GgData_Saved.txt\r\n");
  driver.Start(false);  // a second one does nothing at all
  FormDriver::Settle();
  world.Heard();
  for (const char* word : {"Stahuji", "Stahuji", "%1;2", "Porovnávám", "%2;0"}) {
    box->Write(QString::fromUtf8(word));
    FormDriver::Settle();
  }
  EXPECT_EQ(Spoken(), QStringList({u"say: Stahuji"_qs, u"say: Porovnávám"_qs}));
  const QByteArray calendar = "Oběd;6.1.2024 12:00:00;;6.1.2024 11:00:00;;new;0\r\n";
  Bring(calendar);
  ASSERT_TRUE(Ends());
  EXPECT_EQ(Titles(), QStringList(u"Oběd"_qs));
  EXPECT_EQ(registered, 1);
  EXPECT_EQ(Read(paths.LmDataSaved), "Oběd;6.1.2024 12:00:00;6.1.2024 12:00:00;6.1.2024 11:00:00;;new;0\r\n");
  EXPECT_EQ(Read(paths.GgDataSaved), calendar.toStdString());
  EXPECT_EQ(Read(In("LmData.log")).substr(0, 9), "1\r\n1\r\n0\r\n");
  EXPECT_EQ(Read(In("SYNCBACKUP/GgData.txt")), "what the last run brought");
  EXPECT_FALSE(box) << "the mailbox is gone with its run";
}

TEST_F(SyncTest, EveryOtherEndLeavesTheStoreAndSaysWhy) {
  struct Case {
    const char* message;
    std::function<void()> before;
    std::function<void()> then;
    bool staysSilent = false;
  };
  const auto nothing = [] {};
  const auto done = [this] { box->Write(u"#Done"_qs); };
  const Case cases[] = {
      {"Chybí údaje pro přihlášení.", [this] { setting.User.clear(); }, nothing},
      {"Nelze najít převodní aplikaci: ", [this] { QFile::remove(paths.SyncAgent); }, nothing},
      {"Nelze spustit převodní aplikaci: ", [this] { world.shell.Starts = false; }, nothing},
      {"Chyba zápisu. Zkontrolujte přístupové údaje.", nothing, [this] { box->Write(u"#Error"_qs); }, true},
      {"Vypršel čas pro získání dat. Zopakujte žádost později.", nothing, done},
      {"Chyba dat: ", [this] { QFile::remove(paths.LmData) && QDir().mkpath(paths.LmData); }, nothing},
  };
  for (const Case& test : cases) {
    test.before();
    QString told;
    user.Expect([&told](QWidget* dialog) {
      for (const QLineEdit* line : dialog->findChildren<QLineEdit*>()) told += line->text();
      for (const QPlainTextEdit* text : dialog->findChildren<QPlainTextEdit*>()) told += text->toPlainText();
      dialog->close();
    });
    driver.Start(true);
    if (box) test.then();
    EXPECT_TRUE(Ends() && user.AllCame()) << test.message;
    EXPECT_TRUE(told.contains(QString::fromUtf8(test.message))) << test.message << told.toStdString();
    EXPECT_EQ(silent, test.staysSilent) << test.message;
    EXPECT_EQ(Titles(), QStringList(u"Zubař"_qs)) << test.message;
    EXPECT_FALSE(QFile::exists(In("LmData.log"))) << test.message;
    setting.User = u"jana"_qs;
    world.shell.Starts = true;
    Write(paths.SyncAgent, "agent");
    QDir(paths.LmData).removeRecursively();
  }
}

TEST_F(SyncTest, GivingUpAtAnyMomentLeavesTheStore) {
  QByteArray calendar;
  for (int line = 0; line < 3000; ++line) {
    calendar += "Úkol;6.1.2024 12:00:00;;;;id" + QByteArray::number(line) + ";0\r\n";
  }
  for (const char* moment : {"", "Stahuji", "Načítání do talníku"}) {
    GiveUpAt(QString::fromUtf8(moment));
    driver.Start(false);
    if (box) {
      box->Write(u"Stahuji"_qs);
      FormDriver::Settle();
    }
    if (box) Bring(calendar);
    EXPECT_TRUE(Ends()) << moment;
    EXPECT_EQ(Titles(), QStringList(u"Zubař"_qs)) << moment;
    EXPECT_FALSE(poll.isActive()) << moment;
    poll.disconnect();
  }
  driver.Start(false);
  Bring(calendar);
  EXPECT_TRUE(Ends());
  EXPECT_EQ(Titles().size(), 3000);
}

TEST_F(SyncTest, NoWordOfAnAgentDoesHarm) {
  driver.Start(false);
  for (const char* word : {"%", "%;", "%5;0", "%x;y", "%-3;-7", "%9e999;1", "%1;99999999999999999999", "#", "#done",
                           "%%s%n", "\x7f", "|", "|||"}) {
    box->Write(QString::fromUtf8(word));
    FormDriver::Settle();
  }
  box->Write(QString(1'000'000, u'x'));
  FormDriver::Settle();
  ASSERT_TRUE(driver.SyncRunning());
  storeIsBusy = true;
  Bring("");
  FormDriver::Settle();
  EXPECT_EQ(Titles().size(), 1) << "not while another long job has the store";
  storeIsBusy = false;
  EXPECT_TRUE(Ends());
  EXPECT_TRUE(Titles().isEmpty()) << "an empty calendar holds nothing";
}

TEST_F(SyncTest, ASilentRunSaysNothingAndWhatCameFromAFileIsTheAgentsToo) {
  store.Execute({u"UPDATE schedule SET guid=NULL,status=NULL"_qs, {}});
  driver.Start(true);
  EXPECT_TRUE(silent);
  for (const QString& word : {u"Stahuji"_qs, u"%1;2"_qs}) box->Write(word);
  FormDriver::Settle();
  const QByteArray line = QByteArray::fromStdString(Read(paths.LmData));
  EXPECT_EQ(line.split(';').value(5).size(), 32) << line.constData();
  Bring(line + "Oběd;6.1.2024;;;;new;0\r\n");
  EXPECT_TRUE(Ends());
  EXPECT_EQ(Titles(), QStringList({u"Oběd"_qs, u"Zubař"_qs}));
  EXPECT_EQ(Spoken(), QStringList());
  EXPECT_FALSE(silent);
}

TEST_F(SyncTest, ARealAgentIsFollowedThroughItsSocket) {
  surroundings.mailbox = [this](const QString& name) { return std::make_unique<SocketMailbox>(name, folder.path()); };
  LinuxShell starter;
  SyncSurroundings real{store,
                        services,
                        paths,
                        world.codePage,
                        world.timeZone,
                        starter,
                        surroundings.mailbox,
                        silent,
                        surroundings.whileTheStoreIsOurs,
                        surroundings.registerAlarms,
                        nullptr};
  SyncDriver live(real);
  QFile::remove(paths.SyncAgent);
  ASSERT_TRUE(QFile::link(QString::fromUtf8(SYNC_AGENT), paths.SyncAgent));
  Write(In("calendar"), "Oběd;6.1.2024 12:00:00;;;;new;0\r\n");
  const QByteArray begin = "request " + In("GoogleAccess.ini").toUtf8() + "\n";
  const QByteArray data = "data " + In("calendar").toUtf8() + "\n";
  const auto script = [this](const QByteArray& lines) { Write(paths.AppFolder + u"agent.script"_qs, lines); };
  const auto ends = [&live] { return FormDriver::Until([&live] { return !live.SyncRunning(); }); };

  script(begin + "say Přihlašuji\nflood 500\npart #Do\nwait 50\n" + data + "say ne\n");
  live.Start(false);
  EXPECT_TRUE(ends());
  EXPECT_EQ(Titles(), QStringList(u"Oběd"_qs));

  script(begin + "say Přihlašuji\npart #Done\ndie\n");
  live.Start(false);
  EXPECT_TRUE(FormDriver::Until([this] { return Spoken().contains(u"say: Přihlašuji"_qs); }));
  EXPECT_TRUE(live.SyncRunning()) << "half a word of a dying agent is none";
  GiveUpAt(u"Přihlašuji"_qs);
  EXPECT_TRUE(ends());
}

TEST_F(SyncTest, TheReportTellsWhatTheLogsHold) {
  struct Case {
    const char* ours;
    const char* theirs;
    const char* report;
  };
  const Case cases[] = {
      {"0\r\n0\r\n0\r\nSynchronizace\r\n", nullptr, "Nedošlo k žádným změnám."},
      {"3\r\n0\r\n0\r\n", "0\r\n0\r\n1\r\n", "Talník:\r\nPřidáno 3 záznamů.\r\nGoogle:\r\nUpraveno 1 záznamů."},
      {"1\r\n2\r\n3\r\n", "", "Talník:\r\nPřidáno 1 záznamů.\r\nOdebráno 2 záznamů.\r\nUpraveno 3 záznamů."},
      {"x", "\r\n12", "Google:\r\nOdebráno 12 záznamů."},
  };
  EXPECT_EQ(SyncReport(paths, world.codePage), u"Synchronizace nebyla provedena."_qs);
  for (const Case& test : cases) {
    Write(In("LmData.log"), test.ours);
    QFile::remove(In("GgData.log"));
    if (test.theirs) Write(In("GgData.log"), test.theirs);
    const QString report = SyncReport(paths, world.codePage);
    EXPECT_TRUE(report.startsWith(u"Datum synchronizace: "_qs));
    EXPECT_EQ(report.mid(report.indexOf(u"\r\n"_qs) + 2), QString::fromUtf8(test.report));
  }
}

}  // namespace talnik::test
