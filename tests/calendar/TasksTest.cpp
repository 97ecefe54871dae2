#include "calendar/MainWindow.h"
#include "calendar/TaskFilters.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>

namespace talnik::test {
namespace {

using Tasks = MainWindow;

TEST_F(Tasks, EachFilterOpensTheEditorOnItsRecordsUnlessThereAreNone) {
  Start();
  const auto refused = [this](const char* command) {
    world_.Heard();
    Choose(command);
    EXPECT_EQ(Heard(), "sound: refused.wav") << command;
  };
  for (const char* command : {"mnuTaskTodayAfter", "mnuTaskAll", "mnuTaskAlarm"}) refused(command);
  Add(u"včera"_qs, u"14.1.2024 9:00"_qs);
  for (const char* command : {"mnuTaskTodayAfter", "mnuTaskAlarm"}) refused(command);
  Add(u"dnes"_qs, u"15.1.2024 9:00"_qs);
  Add(u"zítra"_qs, u"16.1.2024 9:00"_qs, {}, u"16.1.2024 8:00"_qs);
  GoTo(u"15.1.2024"_qs);
  const std::pair<const char*, const char*> filters[] = {
      {"mnuTaskToday", "1/1"}, {"mnuTaskTodayAfter", "1/2"}, {"mnuTaskAll", "1/3"}, {"mnuTaskAlarm", "1/1"}};
  for (const auto& [command, position] : filters) {
    ExpectEditor("txtPos", QString::fromLatin1(position));
    Choose(command);
    FormDriver::Settle();
    EXPECT_TRUE(Heard().ends_with("say: 15. pondělí 1 úkolů")) << command << ": the day is spoken anew, without a cue";
  }
  ExpectEditor("txtPos", u"1/1"_qs);
  user_.Press(Qt::Key_Return);
  EXPECT_TRUE(user_.AllCame()) << "Enter shows the tasks of the day";
}

TEST_F(Tasks, AStoreThatGoesAwayIsToldOnceUntilItIsBack) {
  Add(u"dnes"_qs, u"15.1.2024 9:00"_qs);
  Start();
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(QFile::rename(InData("talnik.MDB"), InData("aside")));
    user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);
    user_.Press(Qt::Key_Up);
    ASSERT_TRUE(FormDriver::Until([this] { return user_.AllCame(); }) && ComesToFront());
    user_.Press(Qt::Key_Up);
    FormDriver::Settle();
    ASSERT_TRUE(QFile::rename(InData("aside"), InData("talnik.MDB")));
    world_.Heard();
    user_.Press(Qt::Key_D);
    EXPECT_TRUE(Heard().ends_with("say: 15. pondělí 1 úkolů"));
  }
}

TEST_F(Tasks, ANewRecordStartsOnTheSelectedDayAndAPassedTimeIsAskedAbout) {
  Start();
  const auto expectTime = [this](const char* button) { ExpectClick(button, "Text1(0)", u"7"_qs); };
  GoTo(u"20.1.2024"_qs);
  expectTime("cmdSet");
  ExpectEditor("Text3", u"20.1.2024 7:00"_qs);
  Choose("mnuNewRecord");
  GoTo(u"15.1.2024"_qs);
  expectTime("cmdSet");
  ExpectMessage(u"Zadaný čas už minul. Chcete jej zadat?"_qs, "cmdNO");
  Choose("mnuNewRecord");
  expectTime("cmdCancel");
  Choose("mnuNewRecord");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_EQ(RowCount(), 0);
}

TEST(HasPassed, ADayWithoutATimePassesAtItsEnd) {
  const struct {
    const char* day;
    const char* time;
    bool passed;
  } cases[] = {{"15.1.2024", "", false},
               {"14.1.2024", "", true},
               {"15.1.2024", "8:29", true},
               {"15.1.2024", "8:30", false},
               {"nic", "", false}};
  for (const auto& c : cases) {
    EXPECT_EQ(
        HasPassed(QString::fromLatin1(c.day), QString::fromLatin1(c.time), CDate(u"15.1.2024 8:30"_qs, Date()).value()),
        c.passed)
        << c.day << ' ' << c.time;
  }
}

TEST_F(Tasks, ADayIsDeletedOnYesOnly) {
  Add(u"ráno"_qs, u"15.1.2024 9:00"_qs);
  Add(u"celý den"_qs, u"15.1.2024"_qs);
  Add(u"zítra"_qs, u"16.1.2024 9:00"_qs);
  Start();
  user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);  // the second button is the default
  Choose("mnuDelTodayTasks");
  EXPECT_EQ(RowCount(), 3);
  ExpectMessage(u"Smazat záznamy na tento den?"_qs, "cmdYES");
  Choose("mnuDelTodayTasks");
  EXPECT_EQ(RowCount(), 2) << "what begins at midnight stays";
  EXPECT_TRUE(Heard().ends_with("say: 15. pondělí 1 úkolů"));
}

TEST_F(Tasks, EverythingIsDeletedWithTheTracesOfSynchronisation) {
  Add(u"ráno"_qs, u"15.1.2024 9:00"_qs);
  Start();
  const QStringList gone = {InData("LmData.txt"), InData("GgData_Saved.txt"), InData("LmData.log")};
  for (const QString& path : gone + QStringList{InData("other.txt")}) WriteFile(path);
  ASSERT_TRUE(QDir().mkdir(InData("GgData.txt"))) << "cannot be removed as a file";
  ExpectMessage(u"Smazat všechny záznamy v talníku?"_qs, "cmdYES");
  ExpectMessage(u"Chyba dat: "_qs + InData("GgData.txt"), "cmdYES");
  Choose("mnuDelSchedule");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_EQ(RowCount(), 0);
  EXPECT_EQ(main_->Command1->text(), u"Úkoly (0)"_qs);
  for (const QString& path : gone) EXPECT_FALSE(QFile::exists(path)) << path.toStdString();
  EXPECT_TRUE(QFile::exists(InData("other.txt")));
}

TEST_F(Tasks, TheDateGoesToTheClipboard) {
  Start();
  GoTo(u"5.2.2024"_qs);
  Choose("mnuInsertToClip");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"5.2.2024"_qs);
  Choose("mnuTime");
  EXPECT_EQ(Heard(), "say: vkládám do schránky\nsay: 8:30:00");
}

}  // namespace
}  // namespace talnik::test
