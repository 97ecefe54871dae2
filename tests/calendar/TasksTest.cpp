#include "calendar/MainWindow.h"
#include "calendar/TaskFilters.h"

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>

namespace talnik::test {
namespace {

class Tasks : public MainWindow {
 protected:
  /// Runs a command and gives the name of the window that it opens, which is closed at once.
  QString Opens(const char* command) {
    QString opened;
    user_.Expect([this, &opened](QWidget* window) {
      opened = window->objectName();
      user_.Press(Qt::Key_Escape, Qt::NoModifier, window);
    });
    Choose(command);
    return opened;
  }
  /// Chooses the time in the dialog of a new record.
  void ExpectTime(const QString& hours, const QString& minutes) {
    user_.Expect([hours, minutes](QWidget* dialog) {
      dialog->findChild<QLineEdit*>(u"Text1(0)"_qs)->setText(hours);
      dialog->findChild<QLineEdit*>(u"Text1(1)"_qs)->setText(minutes);
      dialog->findChild<QPushButton*>(u"cmdSet"_qs)->click();
    });
  }
};

TEST_F(Tasks, AnEmptyFilterIsRefused) {
  Start();
  for (const char* command : {"mnuTaskTodayAfter", "mnuTaskAll", "mnuTaskAlarm"}) {
    world_.Heard();
    Choose(command);
    EXPECT_EQ(Heard(), "sound: refused.wav") << command;
  }
  Add(u"minulý"_qs, u"14.1.2024 9:00"_qs);
  Choose("mnuTaskTodayAfter");
  Choose("mnuTaskAlarm");
  EXPECT_EQ(Heard(), "sound: refused.wav\nsound: refused.wav");
}

TEST_F(Tasks, EachFilterOpensTheEditorOnItsRecords) {
  Add(u"dnes"_qs, u"15.1.2024 9:00"_qs);
  Add(u"včera"_qs, u"14.1.2024 9:00"_qs);
  Add(u"zítra"_qs, u"16.1.2024 9:00"_qs, {}, u"16.1.2024 8:00"_qs);
  Start();
  const std::pair<const char*, const char*> filters[] = {
      {"mnuTaskToday", "1/1"}, {"mnuTaskTodayAfter", "1/2"}, {"mnuTaskAll", "1/3"}, {"mnuTaskAlarm", "1/1"}};
  for (const auto& [command, position] : filters) {
    user_.Expect([this, position = position](QWidget* editor) {
      EXPECT_EQ(editor->objectName(), u"frmSchedule"_qs);
      EXPECT_EQ(editor->findChild<QLineEdit*>(u"txtPos"_qs)->text().toStdString(), position);
      user_.Press(Qt::Key_Escape, Qt::NoModifier, editor);
    });
    Choose(command);
    FormDriver::Settle();
    EXPECT_TRUE(Heard().ends_with("say: 15. pondělí 1 úkolů")) << command << ": the day is spoken anew, without a cue";
  }
  EXPECT_TRUE(user_.AllCame());
  user_.ExpectAndPress(u"frmSchedule"_qs, Qt::Key_Escape);
  user_.Press(Qt::Key_Return);
  EXPECT_TRUE(user_.AllCame()) << "Enter shows the tasks of the day";
}

TEST_F(Tasks, ANewRecordStartsOnTheSelectedDay) {
  Start();
  GoTo(u"20.1.2024"_qs);
  ExpectTime(u"7"_qs, QString());
  user_.Expect([this](QWidget* editor) {
    EXPECT_EQ(editor->objectName(), u"frmSchedule"_qs);
    EXPECT_EQ(editor->findChild<QLineEdit*>(u"Text3"_qs)->text(), u"20.1.2024 7:00"_qs);
    user_.Press(Qt::Key_Escape, Qt::NoModifier, editor);
  });
  Choose("mnuNewRecord");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_EQ(RowCount(), 0);
}

TEST_F(Tasks, APassedTimeIsAskedAbout) {
  Start();
  world_.Heard();
  ExpectTime(u"7"_qs, u"0"_qs);
  user_.Expect([this](QWidget* dialog) {
    EXPECT_EQ(dialog->findChild<QPlainTextEdit*>(u"txtMessage"_qs)->toPlainText(),
              u"Zadaný čas už minul. Chcete jej zadat?"_qs);
    world_.Heard();
    user_.Press(Qt::Key_Escape, Qt::NoModifier, dialog);
  });
  Choose("mnuNewRecord");
  EXPECT_TRUE(user_.AllCame());

  user_.Expect([](QWidget* dialog) { dialog->findChild<QPushButton*>(u"cmdCancel"_qs)->click(); });
  Choose("mnuNewRecord");
  EXPECT_TRUE(user_.AllCame()) << "Storno opens nothing";
}

TEST(HasPassed, ADayWithoutATimePassesAtItsEnd) {
  const Date now = *CDate(u"15.1.2024 8:30"_qs, Date());
  EXPECT_FALSE(HasPassed(u"15.1.2024"_qs, QString(), now));
  EXPECT_TRUE(HasPassed(u"14.1.2024"_qs, QString(), now));
  EXPECT_TRUE(HasPassed(u"15.1.2024"_qs, u"8:29"_qs, now));
  EXPECT_FALSE(HasPassed(u"15.1.2024"_qs, u"8:30"_qs, now));
  EXPECT_FALSE(HasPassed(u"nic"_qs, QString(), now));
}

TEST_F(Tasks, ADayIsDeletedOnYesOnly) {
  Add(u"ráno"_qs, u"15.1.2024 9:00"_qs);
  Add(u"celý den"_qs, u"15.1.2024"_qs);
  Add(u"zítra"_qs, u"16.1.2024 9:00"_qs);
  Start();
  user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);  // the second button is the default
  Choose("mnuDelTodayTasks");
  EXPECT_EQ(RowCount(), 3);
  user_.Expect([](QWidget* dialog) { dialog->findChild<QPushButton*>(u"cmdYES"_qs)->click(); });
  Choose("mnuDelTodayTasks");
  EXPECT_EQ(RowCount(), 2) << "what begins at midnight stays";
  EXPECT_TRUE(Heard().ends_with("say: 15. pondělí 1 úkolů"));
}

TEST_F(Tasks, EverythingIsDeletedWithTheTracesOfSynchronisation) {
  Add(u"ráno"_qs, u"15.1.2024 9:00"_qs);
  Start();
  for (const char* name : {"LmData.txt", "GgData_Saved.txt", "LmData.log", "other.txt"}) {
    QFile file(InData(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  user_.Expect([](QWidget* dialog) { dialog->findChild<QPushButton*>(u"cmdYES"_qs)->click(); });
  Choose("mnuDelSchedule");
  EXPECT_EQ(RowCount(), 0);
  EXPECT_EQ(main_->Command1->text(), u"Úkoly (0)"_qs);
  EXPECT_FALSE(QFile::exists(InData("LmData.txt")));
  EXPECT_FALSE(QFile::exists(InData("GgData_Saved.txt")));
  EXPECT_FALSE(QFile::exists(InData("LmData.log")));
  EXPECT_TRUE(QFile::exists(InData("other.txt")));
}

TEST_F(Tasks, TheDateGoesToTheClipboard) {
  Start();
  GoTo(u"5.2.2024"_qs);
  Choose("mnuInsertToClip");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"5.2.2024"_qs);
  EXPECT_EQ(Heard(), "say: vkládám do schránky");
  Choose("mnuTime");
  EXPECT_EQ(Heard(), "say: 8:30:00");
}

}  // namespace
}  // namespace talnik::test
