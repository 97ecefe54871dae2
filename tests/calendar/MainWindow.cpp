#include "calendar/MainWindow.h"

#include "store/Repair.h"
#include "store/Statements.h"
#include "store/Template.h"
#include "store/Text.h"

namespace talnik::test {
namespace {

// The names of days follow the machine; the tests are about a Czech one.
[[maybe_unused]] const bool kCzechMachine = qputenv("LC_ALL", "cs_CZ.UTF-8");

}  // namespace

MainWindow::MainWindow() {
  world_.shell.LocalData = folder_.path();
  world_.shell.Installed = folder_.path() + u"/installed/"_qs;
  QDir().mkpath(world_.shell.Installed + u"talnik"_qs);
  EXPECT_TRUE(CreateStore(world_.shell.Installed + u"talnik/src_talnik.MDB"_qs));
  QByteArray names;
  for (int slot = 0; slot < 372; ++slot) {
    const QString name = slot == 14 ? u"Alice"_qs : slot == 59 ? u"Horymír"_qs : slot == 182 ? u"Alois"_qs : QString();
    names += (name + u"\r\n"_qs).toUtf8();
  }
  WriteFile(world_.shell.Installed + u"talnik/src_Names.dat"_qs, names);
}

QString MainWindow::InData(const char* name) const {
  return folder_.path() + u"/Orvel1/TALNIK/"_qs + QString::fromLatin1(name);
}

void MainWindow::Load(const QStringList& arguments) {
  main_ = std::make_unique<frmMain>(std::move(world_.platform), arguments);
  QObject::connect(main_.get(), &frmMain::Ended, &user_, [this] { ++ended_; });
  ASSERT_TRUE(main_->Load());
}

void MainWindow::Start(const QStringList& arguments) {
  Load(arguments);
  main_->activateWindow();
  ASSERT_TRUE(ComesToFront());
  ASSERT_TRUE(main_->List1->hasFocus());
}

void MainWindow::GoTo(const QString& dateText) {
  const QDateTime now = world_.clock.Moment;
  world_.clock.Moment = CDate(dateText, Date())->ToQDateTime();
  Choose("mnuToday");
  world_.clock.Moment = now;
  FormDriver::Settle();
  world_.Heard();
}

void MainWindow::GoElsewhere() {
  elsewhere_.show();
  elsewhere_.activateWindow();
  ASSERT_TRUE(FormDriver::Until([this] { return elsewhere_.isActiveWindow(); }));
  world_.Heard();
}

bool MainWindow::ComesToFront() {
  const bool came = FormDriver::Until([this] { return main_->isActiveWindow(); });
  FormDriver::Settle();
  return came;
}

void MainWindow::Add(const QString& text, const QString& start, const QString& end, const QString& alarm) {
  QDir().mkpath(InData(""));
  CreateStore(InData("talnik.MDB"));
  Store store(InData("talnik.MDB"));
  ASSERT_TRUE(RepairSchedule(store));
  const Date today = Date::FromQDateTime(world_.clock.Moment);
  ScheduleRecord record;
  record.appointment = text;
  record.apptime = CDate(start, today);
  record.appdur = end.isEmpty() ? record.apptime : CDate(end, today);
  record.alarm = !alarm.isEmpty();
  if (record.alarm) record.alarmtime = CDate(alarm, today);
  record.status = StatusSingle;
  record.guid = NewGuidText();
  ASSERT_TRUE(store.Insert(record));
}

void MainWindow::ExpectClick(const char* button, const char* field, const QString& text) {
  user_.Expect([=](QWidget* dialog) {
    if (field) FormDriver::Find<QLineEdit>(dialog, field)->setText(text);
    FormDriver::Find<QPushButton>(dialog, button)->click();
  });
}

void MainWindow::ExpectPlay(const char* window, const QString& script) {
  user_.Expect([=, this](QWidget* dialog) {
    EXPECT_EQ(dialog->objectName().toStdString(), window);
    Play(script, dialog);
  });
}

void MainWindow::Execute(const Statement& statement) {
  Store store(InData("talnik.MDB"));
  EXPECT_TRUE(store.Execute(statement));
}

qint64 MainWindow::RowCount() {
  Store store(InData("talnik.MDB"));
  return store.Number(statements::CountAll()).value_or(-1);
}

}  // namespace talnik::test
