#pragma once

#include "dates/MonthLines.h"
#include "editor/frmSchedule.h"
#include "shell/Paths.h"
#include "shell/Speech.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

namespace talnik::test {

/// The editor over a real store in a folder of its own. It is Monday, 15.1.2024 8:30.
class EditorWorld : public testing::Test {
 protected:
  EditorWorld() {
    paths.Store = folder.filePath(u"talnik.MDB"_qs);
    paths.RecordFolder = folder.filePath(u"Record"_qs);
    QDir().mkpath(paths.RecordFolder);
    EXPECT_TRUE(CreateStore(paths.Store));
    store.emplace(paths.Store);
    setting.AlarmOnNew = 0;
    world.sound.Hold = false;
  }

  static Date At(const char* text) { return *CDate(QString::fromUtf8(text), Date()); }
  static QString Q(const char* text) { return QString::fromUtf8(text); }

  /// Adds a record of this text; an empty end or alarm is none.
  ScheduleRecord Add(const char* start, const char* text, const char* end = "", const char* alarm = "") {
    ScheduleRecord row;
    row.apptime = At(start);
    row.appointment = Q(text);
    if (*end) row.appdur = At(end);
    if (*alarm) row.alarmtime = At(alarm);
    row.alarm = *alarm != '\0';
    row.status = StatusSingle;
    row.guid = Q("guid of ") + row.appointment;
    EXPECT_TRUE(store->Insert(row));
    return row;
  }

  std::vector<ScheduleRecord> Rows() {
    std::vector<ScheduleRecord> rows;
    store->ForEach(statements::AllByStart(), [&](const ScheduleRecord& row) {
      rows.push_back(row);
      return true;
    });
    return rows;
  }

  /// Opens the editor; `act` plays the user in it, and what it leaves open is dropped.
  void Run(const std::function<void(frmSchedule&)>& act) {
    frmSchedule form(services, Context());
    world.Heard();
    driver.Expect([&](QWidget*) {
      // Out of the driver's own timer, which then goes on to answer what opens above the editor.
      QTimer::singleShot(0, &form, [&] {
        FormDriver::Settle();
        act(form);
        form.Discard();
      });
    });
    form.Run();
    EXPECT_TRUE(driver.AllCame()) << "a window that was to come did not";
  }

  /// The same for a new record.
  void RunNew(const char* start, const std::function<void(frmSchedule&)>& act) {
    state.RecordDate = Q(start);
    Run(act);
  }

  EditorContext Context() {
    return {*store,
            state,
            world.timeZone,
            world.recorder,
            paths,
            names,
            [this] { ++alarmsRegistered; },
            [this](const Date& day) { shownDays << DateText(day); },
            [this] { ++skips; }};
  }

  /// The next window is a message of this text; it is answered by a key.
  void ExpectMessage(const char* text, int key = Qt::Key_Return) {
    driver.Expect([this, text = Q(text), key](QWidget* dialog) {
      QStringList shown;
      for (auto* box : dialog->findChildren<QPlainTextEdit*>()) shown << box->toPlainText();
      EXPECT_EQ(shown.join(u'|').toStdString(), text.toStdString());
      driver.Press(key, Qt::NoModifier, dialog);
    });
  }

  static QString Field(frmSchedule& form, const char* name) {
    auto* field = FormDriver::Find<QLineEdit>(&form, name);
    return field ? field->text() : QString();
  }
  static void SetField(frmSchedule& form, const char* name, const char* text) {
    if (auto* field = FormDriver::Find<QLineEdit>(&form, name)) field->setText(Q(text));
  }
  static QString Note(frmSchedule& form) { return FormDriver::Find<QPlainTextEdit>(&form, "Text1")->toPlainText(); }
  static void SetNote(frmSchedule& form, const QString& text) {
    FormDriver::Find<QPlainTextEdit>(&form, "Text1")->setPlainText(text);
  }
  static int Lead(frmSchedule& form) { return FormDriver::Find<QComboBox>(&form, "cmbUserUnit")->currentIndex(); }
  static void SetLead(frmSchedule& form, int index) {
    FormDriver::Find<QComboBox>(&form, "cmbUserUnit")->setCurrentIndex(index);
  }
  static void Click(frmSchedule& form, const char* button) { FormDriver::Find<QPushButton>(&form, button)->click(); }
  static void Command(frmSchedule& form, const char* item) { form.findChild<QAction*>(Q(item))->trigger(); }
  static void Focus(frmSchedule& form, const char* control) {
    FormDriver::Find<QWidget>(&form, control)->setFocus();
    FormDriver::Settle();
  }

  QTemporaryDir folder;
  FakeWorld world;
  Paths paths;
  std::optional<Store> store;
  EditorState state;
  CalendarNames names = LocaleCalendarNames();
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  Speech speech{&world.voice, world.braille, world.sound, u"/sound/"_qs};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  FormDriver driver;
  int alarmsRegistered = 0;
  int skips = 0;
  QStringList shownDays;
};

}  // namespace talnik::test
