#pragma once

#include "dates/MonthLines.h"
#include "editor/frmSchedule.h"
#include "shell/Paths.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"
#include "support/Files.h"
#include "support/FormWorld.h"

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
class EditorWorld : public testing::Test, protected FormWorld {
 protected:
  EditorWorld() {
    paths.Store = folder.filePath(u"talnik.MDB"_qs);
    paths.RecordFolder = folder.filePath(u"Record"_qs);
    QDir().mkpath(paths.RecordFolder);
    EXPECT_TRUE(CreateStore(paths.Store));
    store.emplace(paths.Store);
    setting.AlarmOnNew = 0;
    settles = true;
  }

  static Date At(const char* text) { return *CDate(QString::fromUtf8(text), Date()); }
  static QString Q(const char* text) { return QString::fromUtf8(text); }

  /// Adds a record of this text; an empty end or alarm is none.
  ScheduleRecord Add(const char* start, const char* text, const char* end = "", const char* alarm = "",
                     const QString& wav = {}, int status = StatusSingle) {
    ScheduleRecord row;
    row.apptime = At(start);
    row.appointment = Q(text);
    if (*end) row.appdur = At(end);
    if (*alarm) row.alarmtime = At(alarm);
    row.alarm = *alarm != '\0';
    row.wav = wav;
    row.status = status;
    row.guid = Q("guid of ") + row.appointment;
    EXPECT_TRUE(store->Insert(row));
    return row;
  }

  ScheduleRecord AddWithNote(const char* start, const char* text, const QString& wav, int status = StatusSingle) {
    return Add(start, text, "", "", wav, status);
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

  void ExpectMessage(const char* text, int key = Qt::Key_Return) { driver.ExpectMessage(Q(text), key); }

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
  static bool MayBeChosen(frmSchedule& form, const char* item) {
    return form.findChild<QAction*>(Q(item))->isEnabled();
  }
  static void Click(frmSchedule& form, const char* button) { FormDriver::Find<QPushButton>(&form, button)->click(); }
  static void Command(frmSchedule& form, const char* item) { form.findChild<QAction*>(Q(item))->trigger(); }
  static void Focus(frmSchedule& form, const char* control) {
    FormDriver::Find<QWidget>(&form, control)->setFocus();
    FormDriver::Settle();
  }

  QString InRecords(const char* name) const { return paths.RecordFolder + u'/' + Q(name); }
  /// Plays each key: what is heard of it, and the position of the record that is then shown.
  struct Step {
    const char* script;
    const char* position;
  };
  void Play(frmSchedule& form, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
      Play(form, step.script);
      EXPECT_EQ(Field(form, "txtPos").toStdString(), step.position) << step.script;
    }
  }
  void Play(frmSchedule& form, const char* script) { FormWorld::Play(script, &form); }
  using FormWorld::Play;
  /// The file of the store is away while `act` runs.
  void WithoutStore(const std::function<void()>& act) {
    store->Close();
    const QString aside = paths.Store + u".aside"_qs;
    ASSERT_TRUE(QFile::rename(paths.Store, aside));
    act();
    QFile::remove(paths.Store);
    ASSERT_TRUE(QFile::rename(aside, paths.Store));
  }

  QTemporaryDir folder;
  Paths paths;
  std::optional<Store> store;
  EditorState state;
  CalendarNames names = LocaleCalendarNames();
  int alarmsRegistered = 0;
  int skips = 0;
  QStringList shownDays;
};

}  // namespace talnik::test
