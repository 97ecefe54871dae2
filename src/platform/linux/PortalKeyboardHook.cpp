#include "platform/linux/PortalKeyboardHook.h"

#include "platform/HotKey.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>

namespace talnik {

/// One shortcut as the portal names it.
struct PortalShortcut {
  QString id;
  QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut) {
  argument.beginStructure();
  argument << shortcut.id << shortcut.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut) {
  argument.beginStructure();
  argument >> shortcut.id >> shortcut.properties;
  argument.endStructure();
  return argument;
}

}  // namespace talnik

Q_DECLARE_METATYPE(talnik::PortalShortcut)

namespace talnik {

namespace {

const QString Portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString PortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString Shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString ShowId = QStringLiteral("show");

/// The bus answers at once or not at all; the start of the program does not wait for it.
constexpr int BusAnswersWithinMs = 100;

/// What the bus itself answers.
QVariant AskBus(const QDBusConnection& bus, const QString& method, const QVariantList& arguments = {}) {
  QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_qs, u"/org/freedesktop/DBus"_qs,
                                                     u"org.freedesktop.DBus"_qs, method);
  call.setArguments(arguments);
  const QDBusMessage reply = bus.call(call, QDBus::Block, BusAnswersWithinMs);
  return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty() ? reply.arguments().constFirst()
                                                                                    : QVariant();
}

QString KeyOfTrigger(int key) {
  constexpr int firstFunctionKey = 0x70;
  constexpr int lastFunctionKey = 0x87;
  if (key >= 'A' && key <= 'Z') return QString(QChar(key)).toLower();
  if (key >= '0' && key <= '9') return QString(QChar(key));
  if (key < firstFunctionKey || key > lastFunctionKey) return QString();
  return u"F"_qs + QString::number(key - firstFunctionKey + 1);
}

}  // namespace

QString PortalTrigger(int hotKey) {
  const QString key = KeyOfTrigger(LowWord(hotKey));
  if (key.isEmpty()) return QString();
  QString trigger;
  if (HighWord(hotKey) & HotKeyCtrlBit) trigger += u"CTRL+"_qs;
  if (HighWord(hotKey) & HotKeyAltBit) trigger += u"ALT+"_qs;
  if (HighWord(hotKey) & HotKeyShiftBit) trigger += u"SHIFT+"_qs;
  return trigger + key;
}

PortalKeyboardHook::PortalKeyboardHook(const QDBusConnection& bus) : bus_(bus) {
  qDBusRegisterMetaType<PortalShortcut>();
  qDBusRegisterMetaType<QList<PortalShortcut>>();
  bus_.connect(Portal, QString(), u"org.freedesktop.portal.Request"_qs, u"Response"_qs, this,
               SLOT(Response(QDBusMessage)));
  bus_.connect(Portal, PortalPath, Shortcuts, u"Deactivated"_qs, this, SLOT(Deactivated(QDBusMessage)));
}

PortalKeyboardHook::~PortalKeyboardHook() {
  CloseSession();
}

bool PortalKeyboardHook::Watch(int hotKey) {
  CloseSession();
  hotKey_ = hotKey;
  if (hotKey <= 0) return true;
  if (!bus_.isConnected() || !PortalIsThere()) return false;
  CreateSession();
  return true;
}

bool PortalKeyboardHook::PortalIsThere() const {
  return AskBus(bus_, u"NameHasOwner"_qs, {Portal}).toBool() ||
         AskBus(bus_, u"ListActivatableNames"_qs).toStringList().contains(Portal);
}

/// The portal answers a request by a signal of an object whose path follows from a token of ours.
QString PortalKeyboardHook::ExpectResponse() {
  QString token = u"talnik"_qs + QString::number(++requests_);
  const QString sender = bus_.baseService().mid(1).replace(u'.', u'_');
  requestPath_ = PortalPath + u"/request/"_qs + sender + u'/' + token;
  return token;
}

void PortalKeyboardHook::CreateSession() {
  const QString token = ExpectResponse();
  Call(u"CreateSession"_qs, {QVariantMap{{u"handle_token"_qs, token}, {u"session_handle_token"_qs, token}}});
}

void PortalKeyboardHook::BindShortcut() {
  const QString token = ExpectResponse();
  QVariantMap properties{{u"description"_qs, QCoreApplication::translate("PortalKeyboardHook", "Zobrazit Talník")}};
  if (const QString trigger = PortalTrigger(hotKey_); !trigger.isEmpty()) {
    properties.insert(u"preferred_trigger"_qs, trigger);
  }
  const QList<PortalShortcut> shortcuts{{ShowId, properties}};
  Call(u"BindShortcuts"_qs, {QVariant::fromValue(QDBusObjectPath(session_)), QVariant::fromValue(shortcuts), QString(),
                             QVariantMap{{u"handle_token"_qs, token}}});
}

void PortalKeyboardHook::Call(const QString& method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(Portal, PortalPath, Shortcuts, method);
  call.setArguments(arguments);
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, path = requestPath_](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (finished->isError() && path == requestPath_) Refuse();
          });
}

void PortalKeyboardHook::Response(const QDBusMessage& message) {
  if (requestPath_.isEmpty() || message.path() != requestPath_ || message.arguments().size() < 2) return;
  requestPath_.clear();
  const QVariantMap results = qdbus_cast<QVariantMap>(message.arguments().at(1));
  if (message.arguments().at(0).toUInt() != 0) return Refuse();
  if (session_.isEmpty()) {
    session_ = results.value(u"session_handle"_qs).toString();
    return session_.isEmpty() ? Refuse() : BindShortcut();
  }
  if (qdbus_cast<QList<PortalShortcut>>(results.value(u"shortcuts"_qs)).isEmpty()) Refuse();
}

void PortalKeyboardHook::Deactivated(const QDBusMessage& message) {
  const QVariantList arguments = message.arguments();
  if (session_.isEmpty() || arguments.size() < 2 || arguments.at(1).toString() != ShowId) return;
  if (arguments.at(0).value<QDBusObjectPath>().path() == session_ && Released) Released();
}

void PortalKeyboardHook::CloseSession() {
  requestPath_.clear();
  if (session_.isEmpty()) return;
  bus_.send(QDBusMessage::createMethodCall(Portal, session_, u"org.freedesktop.portal.Session"_qs, u"Close"_qs));
  session_.clear();
}

void PortalKeyboardHook::Refuse() {
  CloseSession();
  if (Refused) Refused();
}

}  // namespace talnik
