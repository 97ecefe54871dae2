#include "platform/linux/ReaderWatch.h"

#include "platform/linux/ReaderBus.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <utility>

namespace talnik {
namespace {

const QString StatusService = u"org.a11y.Bus"_qs;
const QString StatusPath = u"/org/a11y/bus"_qs;
const QString StatusInterface = u"org.a11y.Status"_qs;
const QString SwitchName = u"ScreenReaderEnabled"_qs;
const QString Properties = u"org.freedesktop.DBus.Properties"_qs;
const QString BusService = u"org.freedesktop.DBus"_qs;
const QString ListenersService = u"org.a11y.atspi.Registry"_qs;
const QString ListenersPath = u"/org/a11y/atspi/registry"_qs;
const QString ReaderProgram = u"orca"_qs;
/// A reader announces some dozens of listeners one by one.
constexpr int SettlingTime = 50;

const QStringList& ReaderNames() {
  static const QStringList names = {u"org.gnome.Orca"_qs, u"org.gnome.Orca.Service"_qs};
  return names;
}

QDBusMessage BusQuestion(const QString& member, const QString& argument) {
  auto question = QDBusMessage::createMethodCall(BusService, u"/org/freedesktop/DBus"_qs, BusService, member);
  question << argument;
  return question;
}

/// The readers are scripts, so their name is one of the first words of the command.
bool IsReaderProcess(uint process) {
  QFile command(u"/proc/%1/cmdline"_qs.arg(process));
  if (!command.open(QIODevice::ReadOnly)) return false;
  const QList<QByteArray> words = command.readAll().split('\0').mid(0, 2);
  return std::any_of(words.begin(), words.end(), [](const QByteArray& word) {
    return QFileInfo(QFile::decodeName(word)).fileName() == ReaderProgram;
  });
}

}  // namespace

ReaderWatch::ReaderWatch(const QDBusConnection& session) : session_(session) {
  lookAgain_.setSingleShot(true);
  lookAgain_.setInterval(SettlingTime);
  connect(&lookAgain_, &QTimer::timeout, this, &ReaderWatch::AskListeners);
  if (!session_.isConnected()) return;
  session_.connect(QString(), StatusPath, Properties, u"PropertiesChanged"_qs, this,
                   SLOT(StatusChanged(QString, QVariantMap, QStringList)));
  auto* names = new QDBusServiceWatcher(QString(), session_, QDBusServiceWatcher::WatchForOwnerChange, this);
  names->setWatchedServices(ReaderNames());
  connect(names, &QDBusServiceWatcher::serviceRegistered, this, [this](const QString& name) {
    names_.insert(name);
    Q_EMIT Changed();
  });
  connect(names, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& name) {
    names_.remove(name);
    Q_EMIT Changed();
  });
  AskSwitch();
  AskWhetherToExpect();
  for (const QString& name : ReaderNames()) AskName(name);
  QAccessible::installActivationObserver(this);
  if (QAccessible::isActive()) AskListeners();
}

ReaderWatch::~ReaderWatch() {
  QAccessible::removeActivationObserver(this);
}

void ReaderWatch::Ask(const QDBusConnection& bus, const QDBusMessage& question,
                      std::function<void(const QDBusMessage&)> answer) {
  ++awaited_;
  auto* call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, answer] {
    call->deleteLater();
    --awaited_;
    answer(call->isError() ? QDBusMessage() : call->reply());
    Q_EMIT Changed();
  });
}

void ReaderWatch::AskSwitch() {
  auto question = QDBusMessage::createMethodCall(StatusService, StatusPath, Properties, u"Get"_qs);
  question << StatusInterface << SwitchName;
  Ask(session_, question, [this](const QDBusMessage& reply) {
    isSwitchedOn_ = qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant().toBool();
  });
}

/// Who listens can be asked only when the toolkit is on the accessibility bus, where it goes by the same sign.
void ReaderWatch::AskWhetherToExpect() {
  isExpected_ = qEnvironmentVariableIntValue("QT_LINUX_ACCESSIBILITY_ALWAYS_ON") != 0;
  auto question = QDBusMessage::createMethodCall(StatusService, StatusPath, Properties, u"Get"_qs);
  question << StatusInterface << u"IsEnabled"_qs;
  Ask(session_, question, [this](const QDBusMessage& reply) {
    isExpected_ = isExpected_ || qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant().toBool();
  });
}

void ReaderWatch::StatusChanged(const QString& interface, const QVariantMap& changed, const QStringList& unclear) {
  if (interface != StatusInterface) return;
  if (unclear.contains(SwitchName)) return AskSwitch();
  if (!changed.contains(SwitchName)) return;
  isSwitchedOn_ = changed.value(SwitchName).toBool();
  Q_EMIT Changed();
}

void ReaderWatch::AskName(const QString& name) {
  Ask(session_, BusQuestion(u"NameHasOwner"_qs, name), [this, name](const QDBusMessage& reply) {
    if (reply.arguments().value(0).toBool()) names_.insert(name);
  });
}

/// The toolkit goes to the accessibility bus when somebody is there to listen; until then nobody needs to be looked
/// for.
void ReaderWatch::accessibilityActiveChanged(bool active) {
  if (active) AskListeners();
}

void ReaderWatch::ListenersChanged() {
  lookAgain_.start();
}

void ReaderWatch::AskListeners() {
  QDBusConnection bus = AccessibilityBus();
  if (!bus.isConnected()) return;
  if (!follows_) {
    for (const QString& signal : {u"EventListenerRegistered"_qs, u"EventListenerDeregistered"_qs}) {
      bus.connect(QString(), ListenersPath, ListenersService, signal, this, SLOT(ListenersChanged()));
    }
    follows_ = true;
  }
  Ask(bus, QDBusMessage::createMethodCall(ListenersService, ListenersPath, ListenersService, u"GetRegisteredEvents"_qs),
      [this](const QDBusMessage& reply) { AskWhoListens(reply); });
}

void ReaderWatch::AskWhoListens(const QDBusMessage& listeners) {
  const auto list = qvariant_cast<QDBusArgument>(listeners.arguments().value(0));
  QSet<QString> programs;
  if (listeners.signature() == u"a(ss)"_qs) {
    for (list.beginArray(); !list.atEnd();) {
      QString program;
      QString event;
      list.beginStructure();
      list >> program >> event;
      list.endStructure();
      programs.insert(program);
    }
    list.endArray();
  }
  const auto found = std::make_shared<bool>(false);
  const auto left = std::make_shared<qsizetype>(programs.size());
  const int round = ++round_;
  if (programs.isEmpty()) TakeListeners(false);
  for (const QString& program : programs) {
    Ask(AccessibilityBus(), BusQuestion(u"GetConnectionUnixProcessID"_qs, program),
        [this, found, left, round](const QDBusMessage& reply) {
          *found = *found || IsReaderProcess(reply.arguments().value(0).toUInt());
          if (--*left == 0 && round == round_) TakeListeners(*found);
        });
  }
}

void ReaderWatch::TakeListeners(bool readerIsAmongThem) {
  knowsListeners_ = true;
  listens_ = readerIsAmongThem;
}

}  // namespace talnik
