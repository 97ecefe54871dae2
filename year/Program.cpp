#include "Program.h"

#include "platform/linux/SystemTimeZone.h"
#include "shell/CommonSettings.h"
#include "shell/VoiceDialog.h"
#include "store/Template.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

namespace talnik::soak {

namespace {

constexpr int kNames = 372;

}  // namespace

Program::Program(const QString& folder) : folder_(folder), data_(folder + u"/Orvel1/TALNIK") {
  QDir().mkpath(data_);
  QFile names(data_ + u"/Names.dat"_qs);
  if (!CreateStore(StorePath()) || !names.open(QIODevice::WriteOnly)) std::abort();
  for (int line = 1; line <= kNames; ++line) names.write("Jméno\r\n");
  QObject::connect(&poll_, &QTimer::timeout, &poll_, [this] {
    // A timer does not run within its own handler, unless it begins anew: a window may open over the one answered.
    poll_.start(0);
    LookForWindow();
  });
}

Program::~Program() = default;

void Program::Start(const RunSettings& settings, const QDateTime& now) {
  world_.emplace();
  world_->shell.LocalData = folder_;
  world_->shell.Installed = folder_ + u"/installed/"_qs;
  const QString ini = data_ + u"/talnik.ini|"_qs;
  const std::pair<const char*, QString> values[] = {{"Application|AlarmWatch", QString::number(settings.watched)},
                                                    {"Application|AlarmLoop", u"1"_qs},
                                                    {"Application|AlarmOnNew", u"4"_qs},
                                                    {"Application|DingPeriod", QString::number(settings.dingPeriod)},
                                                    {"Application|AlarmSndFile", u"alarm.wav"_qs},
                                                    {"Application|TimeOutSndFile", u"minutky.wav"_qs},
                                                    {"Application|DingFile", u"ding.wav"_qs}};
  for (const auto& [key, text] : values) world_->profile.Values[ini + QString::fromLatin1(key)] = text;
  SetClock(now);
  main_ =
      std::make_unique<frmMain>(std::move(world_->platform), settings.hidden ? QStringList{u"/h"_qs} : QStringList());
  if (!main_->Load()) std::abort();
  main_->Timer1.stop();
  poll_.start(0);
}

void Program::End() {
  main_->EndSession();
  Settle();
  poll_.stop();
  main_.reset();
  world_.reset();
}

void Program::SetClock(const QDateTime& now) {
  world_->clock.Moment = now;
  world_->timeZone.Zone = BiasesOf(QTimeZone::systemTimeZone(), now);
}

void Program::Tick() {
  QMetaObject::invokeMethod(&main_->Timer1, "timeout");
  Listen();
}

void Program::Choose(const char* command) {
  main_->Menu(command)->trigger();
  Settle();
  Listen();
}

void Program::Import(const QString& path) {
  main_->dialogs().PickFile = [this, path](int, const QString&) {
    return world_->registry.SetText(CommonKey(), u"SelectedFile"_qs, path) ? 1 : 0;
  };
  Choose("mnuImport");
}

void Program::Settle() {
  for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
}

void Program::Press(QWidget& window, int key) {
  const QPointer<QWidget> target = window.focusWidget() ? window.focusWidget() : &window;
  QTest::sendKeyEvent(QTest::Press, target, static_cast<Qt::Key>(key), QString(), Qt::NoModifier);
  if (target) QTest::sendKeyEvent(QTest::Release, target, static_cast<Qt::Key>(key), QString(), Qt::NoModifier);
}

void Program::LookForWindow() {
  QWidget* window = QApplication::activeModalWidget();
  met_.removeIf([](const QPointer<QWidget>& met) { return met.isNull() || !met->isVisible(); });
  if (!window || !window->isVisible() || met_.contains(window)) return;
  if (!window->isActiveWindow()) return window->activateWindow();
  Listen();
  if (window->objectName() == u"frmAlarmBox" && sounds_ == soundsBefore_) return;
  met_ << window;
  soundsBefore_ = sounds_;
  User(*window);
}

void Program::Listen() {
  static const QRegularExpression time(u"^(?:and|say): (\\d+:\\d\\d:?)$"_qs);
  for (const QString& line : world_->Heard()) {
    const bool isBell = line == u"sound: ding.wav";
    const bool isAlarm = line.startsWith(u"sound: K") || line == u"sound: alarm.wav" || line == u"sound: minutky.wav";
    if (isAlarm) ++sounds_;
    const QString announced = time.match(line).captured(1);
    if (isAlarm || isBell) heard_ << line;
    if (!announced.isEmpty()) heard_ << announced;
  }
}

void Program::Note(const QString& line) {
  Listen();
  heard_ << line;
}

QStringList Program::Heard() {
  Listen();
  return std::exchange(heard_, {});
}

}  // namespace talnik::soak
