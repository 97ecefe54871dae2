#include "platform/linux/SystemClock.h"

#include "platform/linux/Worker.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QUuid>

#include <algorithm>
#include <mutex>
#include <utility>

namespace talnik {

namespace {

/// The user may be asked for a password meanwhile.
constexpr int AnswerWithinMs = 5 * 60 * 1000;

QString NoServiceText() {
  return QCoreApplication::translate("SystemClock", "Služba systému pro nastavení času není dostupná.");
}

bool MeansNoService(const QString& errorName) {
  static constexpr QStringView Names[] = {
      u"org.freedesktop.DBus.Error.ServiceUnknown", u"org.freedesktop.DBus.Error.NameHasNoOwner",
      u"org.freedesktop.DBus.Error.Disconnected",   u"org.freedesktop.DBus.Error.NoServer",
      u"org.freedesktop.DBus.Error.NoReply",        u"org.freedesktop.DBus.Error.UnknownMethod",
      u"org.freedesktop.DBus.Error.UnknownObject"};
  return errorName.startsWith(u"org.freedesktop.DBus.Error.Spawn"_qs) ||
         std::find(std::begin(Names), std::end(Names), errorName) != std::end(Names);
}

/// A refusal by the rights of the user, or any other failure.
Clock::Outcome ClockOutcome(const QString& errorName) {
  static constexpr QStringView Refusals[] = {u"org.freedesktop.DBus.Error.AccessDenied",
                                             u"org.freedesktop.DBus.Error.AuthFailed",
                                             u"org.freedesktop.DBus.Error.InteractiveAuthorizationRequired"};
  const bool refused = errorName.startsWith(u"org.freedesktop.PolicyKit1.Error."_qs) ||
                       std::find(std::begin(Refusals), std::end(Refusals), errorName) != std::end(Refusals);
  return refused ? Clock::Outcome::NotPermitted : Clock::Outcome::Failed;
}

}  // namespace

struct SystemClock::Line {
  std::mutex mutex;
  SystemClock* clock;
};

SystemClock::SystemClock(QString busAddress) : busAddress_(std::move(busAddress)), line_(std::make_shared<Line>()) {
  line_->clock = this;
}

SystemClock::~SystemClock() {
  {
    const std::scoped_lock lock(line_->mutex);
    line_->clock = nullptr;
  }
  if (!connection_.isEmpty()) QDBusConnection::disconnectFromBus(connection_);
}

QDateTime SystemClock::Now() const {
  return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch());
}

void SystemClock::Set(const QDateTime& moment, SetResult done) {
  waiting_.push_back({moment, std::move(done)});
  if (waiting_.size() == 1) Connect();
}

void SystemClock::Connect() {
  if (!connection_.isEmpty() && QDBusConnection(connection_).isConnected()) return Connected(connection_);
  // The bus greets everyone who comes; one that hangs would keep us at the door.
  connecting_ = std::make_unique<Worker>([line = line_, address = busAddress_] {
    QString name = u"talnik-clock-"_qs + QUuid::createUuid().toString(QUuid::Id128);
    const QDBusConnection bus = address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SystemBus, name)
                                                  : QDBusConnection::connectToBus(address, name);
    const bool connected = bus.isConnected();
    const std::scoped_lock lock(line->mutex);
    if (!connected || !line->clock) QDBusConnection::disconnectFromBus(name);
    if (!line->clock) return;
    if (!connected) name.clear();
    QMetaObject::invokeMethod(
        &line->clock->context_, [clock = line->clock, name] { clock->Connected(name); }, Qt::QueuedConnection);
  });
}

void SystemClock::Connected(const QString& connection) {
  connection_ = connection;
  for (const Request& request : std::exchange(waiting_, {})) {
    if (connection.isEmpty()) {
      request.done(Outcome::Failed, NoServiceText());
    } else {
      Send(request);
    }
  }
}

void SystemClock::Send(const Request& request) {
  QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.timedate1"_qs, u"/org/freedesktop/timedate1"_qs,
                                                     u"org.freedesktop.timedate1"_qs, u"SetTime"_qs);
  const bool relative = false;
  const bool mayAsk = true;
  call << request.moment.toMSecsSinceEpoch() * 1000 << relative << mayAsk;
  call.setInteractiveAuthorizationAllowed(mayAsk);
  auto* watcher = new QDBusPendingCallWatcher(QDBusConnection(connection_).asyncCall(call, AnswerWithinMs), &context_);
  QObject::connect(
      watcher, &QDBusPendingCallWatcher::finished, &context_, [done = request.done](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusError error = QDBusPendingReply<>(*finished).error();
        if (!error.isValid()) return done(Outcome::Done, QString());
        done(ClockOutcome(error.name()),
             MeansNoService(error.name()) || error.message().isEmpty() ? NoServiceText() : error.message());
      });
}

}  // namespace talnik
