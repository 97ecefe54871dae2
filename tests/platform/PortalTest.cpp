#include "platform/linux/PortalKeyboardHook.h"
#include "support/FormDriver.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

const QString Path = u"/org/freedesktop/portal/desktop"_qs;

/// The desktop's side of global shortcuts: a user who agrees or does not.
class FakePortal : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    Asked << message.member();
    if (message.member() == u"Close"_qs) return true;
    if (message.member() == RefusesCall) return bus.send(message.createErrorReply(u"x.y.No"_qs, u"no"_qs));
    const bool creates = message.member() == u"CreateSession"_qs;
    const auto options = qdbus_cast<QVariantMap>(message.arguments().constLast());
    const QString sender = message.service().mid(1).replace(u'.', u'_');
    const QString request = Path + u"/request/"_qs + sender + u'/' + options[u"handle_token"_qs].toString();
    bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    QVariantMap results;
    if (creates) results[u"session_handle"_qs] = Session;
    if (!creates) {
      // What it was asked for is what it tells.
      const auto shortcuts = message.arguments().at(1).value<QDBusArgument>();
      shortcuts.beginArray();
      shortcuts.beginStructure();
      QString id;
      shortcuts >> id >> Properties;
      results[u"shortcuts"_qs] = message.arguments().at(1);
    }
    const uint answer = !creates && UserRefuses ? 1 : 0;
    QDBusMessage response = QDBusMessage::createSignal(request, u"org.freedesktop.portal.Request"_qs, u"Response"_qs);
    return bus.send(response << answer << results);
  }

  static constexpr const char* Name = "org.freedesktop.portal.Desktop";
  const QString Session = Path + u"/session/1"_qs;
  QStringList Asked;
  QVariantMap Properties;
  QString RefusesCall;
  bool UserRefuses = false;
};

class PortalTest : public ::testing::Test {
 protected:
  void SetUp() override {
    daemon_.start(u"dbus-daemon"_qs,
                  {u"--session"_qs, u"--nofork"_qs, u"--print-address"_qs, u"--address="_qs + address_});
    ASSERT_TRUE(daemon_.waitForReadyRead(5000));
    hook_ = std::make_unique<PortalKeyboardHook>(QDBusConnection::connectToBus(address_, u"hook"_qs));
    hook_->Released = [this] { ++released_; };
    hook_->Refused = [this] { ++refused_; };
  }
  void TearDown() override {
    hook_.reset();
    for (const char* name : {"hook", "portal"}) QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
    daemon_.kill();
    daemon_.waitForFinished();
  }
  QDBusConnection Serve() {
    auto bus = QDBusConnection::connectToBus(address_, u"portal"_qs);
    EXPECT_TRUE(bus.registerVirtualObject(Path, &portal_, QDBusConnection::SubPath));
    EXPECT_TRUE(bus.registerService(QString::fromLatin1(FakePortal::Name)));
    return bus;
  }

  QTemporaryDir folder_;
  const QString address_ = u"unix:path="_qs + folder_.filePath(u"bus"_qs);
  QProcess daemon_;
  FakePortal portal_;
  std::unique_ptr<PortalKeyboardHook> hook_;
  int released_ = 0;
  int refused_ = 0;
};

constexpr int kCtrlAltT = 6 << 16 | 'T';

}  // namespace

TEST(PortalTrigger, NamesLettersDigitsAndFunctionKeys) {
  const std::pair<int, const char*> cases[] = {
      {kCtrlAltT, "CTRL+ALT+t"}, {1 << 16 | '7', "SHIFT+7"}, {0x7b, "F12"}, {2 << 16 | 0x24, ""}};
  for (const auto& [hotKey, trigger] : cases) EXPECT_EQ(PortalTrigger(hotKey).toStdString(), trigger);
}

TEST_F(PortalTest, TheReleaseOfTheShortcutIsHeard) {
  EXPECT_FALSE(hook_->Watch(kCtrlAltT)) << "no portal is there";
  const QDBusConnection bus = Serve();
  EXPECT_TRUE(hook_->Watch(kCtrlAltT));
  ASSERT_TRUE(FormDriver::Until([this] { return portal_.Asked.contains(u"BindShortcuts"_qs); }));
  EXPECT_EQ(portal_.Properties[u"preferred_trigger"_qs].toString(), u"CTRL+ALT+t"_qs);
  const auto signal = [&](const QString& name, const QString& id) {
    QDBusMessage message = QDBusMessage::createSignal(Path, u"org.freedesktop.portal.GlobalShortcuts"_qs, name);
    message << QVariant::fromValue(QDBusObjectPath(portal_.Session)) << id << qulonglong{1} << QVariantMap();
    bus.send(message);
  };
  signal(u"Activated"_qs, u"show"_qs);
  signal(u"Deactivated"_qs, u"another"_qs);
  signal(u"Deactivated"_qs, u"show"_qs);
  EXPECT_TRUE(FormDriver::Until([this] { return released_ > 0; }));
  EXPECT_TRUE(hook_->Watch(0));
  EXPECT_TRUE(FormDriver::Until([this] { return portal_.Asked.contains(u"Close"_qs); }));
  signal(u"Deactivated"_qs, u"show"_qs);
  FormDriver::Settle();
  EXPECT_EQ(released_, 1);
  EXPECT_EQ(refused_, 0);
}

TEST_F(PortalTest, ARefusalIsToldLater) {
  Serve();
  portal_.UserRefuses = true;
  EXPECT_TRUE(hook_->Watch(kCtrlAltT));
  EXPECT_TRUE(FormDriver::Until([this] { return refused_ == 1; }));
  portal_.RefusesCall = u"CreateSession"_qs;
  EXPECT_TRUE(hook_->Watch(kCtrlAltT));
  EXPECT_TRUE(FormDriver::Until([this] { return refused_ == 2; }));
}

}  // namespace talnik::test
