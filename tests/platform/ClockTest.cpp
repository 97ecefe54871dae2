#include "platform/linux/SystemClock.h"
#include "platform/linux/SystemTimeZone.h"
#include "support/FormDriver.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

namespace talnik::test {

namespace {

/// The time service of a bus of our own.
class FakeTimeService : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    Asked = message;
    return bus.send(Refusal.isEmpty() ? message.createReply() : message.createErrorReply(Refusal, u"told so"_qs));
  }
  QDBusMessage Asked;
  QString Refusal;
};

class ClockTest : public ::testing::Test {
 protected:
  void SetUp() override { StartBus(); }
  void TearDown() override { StopBus(); }

  void StartBus() {
    daemon_.start(u"dbus-daemon"_qs,
                  {u"--session"_qs, u"--nofork"_qs, u"--print-address"_qs, u"--address="_qs + address_});
    ASSERT_TRUE(daemon_.waitForReadyRead(5000));
  }
  void StopBus() {
    QDBusConnection::disconnectFromBus(u"service"_qs);
    daemon_.kill();
    daemon_.waitForFinished();
  }

  void Serve() {
    auto bus = QDBusConnection::connectToBus(address_, u"service"_qs);
    ASSERT_TRUE(bus.registerVirtualObject(u"/org/freedesktop/timedate1"_qs, &service_));
    ASSERT_TRUE(bus.registerService(u"org.freedesktop.timedate1"_qs));
  }

  /// What the clock answers, spinning the loop meanwhile.
  static std::optional<Clock::Outcome> Answer(SystemClock& clock, const QDateTime& moment, QString* text = nullptr) {
    std::optional<Clock::Outcome> answer;
    clock.Set(moment, [&](Clock::Outcome outcome, const QString& description) {
      answer = outcome;
      if (text) *text = description;
    });
    EXPECT_FALSE(answer) << "the answer comes from the event loop";
    FormDriver::Until([&] { return answer.has_value(); });
    return answer;
  }

  QTemporaryDir folder_;
  const QString address_ = u"unix:path="_qs + folder_.filePath(u"bus"_qs);
  QProcess daemon_;
  FakeTimeService service_;
  const QDateTime moment_ = QDateTime(QDate(2031, 5, 6), QTime(7, 8, 9));
};

}  // namespace

TEST(SystemClock, NowIsLocalTimeInWholeSeconds) {
  const QDateTime now = SystemClock().Now();
  EXPECT_TRUE(now.time().msec() == 0 && now.timeSpec() == Qt::LocalTime);
  EXPECT_LE(now.secsTo(QDateTime::currentDateTime()), 1);
}

TEST_F(ClockTest, AsksTheServiceForTheMoment) {
  Serve();
  SystemClock clock(address_);
  EXPECT_EQ(Answer(clock, moment_), Clock::Outcome::Done);
  EXPECT_EQ(service_.Asked.member(), u"SetTime"_qs);
  EXPECT_EQ(service_.Asked.arguments(), QVariantList({moment_.toMSecsSinceEpoch() * 1000, false, true}));
  EXPECT_TRUE(service_.Asked.isInteractiveAuthorizationAllowed());

  const std::pair<QString, Clock::Outcome> refusals[] = {
      {u"org.freedesktop.DBus.Error.AccessDenied"_qs, Clock::Outcome::NotPermitted},
      {u"org.freedesktop.DBus.Error.InteractiveAuthorizationRequired"_qs, Clock::Outcome::NotPermitted},
      {u"org.freedesktop.PolicyKit1.Error.NotAuthorized"_qs, Clock::Outcome::NotPermitted},
      {u"org.freedesktop.timedate1.AutomaticTimeSyncEnabled"_qs, Clock::Outcome::Failed},
  };
  for (const auto& [name, outcome] : refusals) {
    QString text;
    service_.Refusal = name;
    EXPECT_EQ(Answer(clock, moment_, &text), outcome) << name.toStdString();
    EXPECT_EQ(text, u"told so"_qs) << "the service's own words";
  }
}

TEST_F(ClockTest, WithoutServiceOrBusItSaysSoInCzech) {
  for (const QString& bus : {address_, u"unix:path=/nowhere/bus"_qs}) {
    QString text;
    SystemClock clock(bus);
    EXPECT_EQ(Answer(clock, moment_, &text), Clock::Outcome::Failed);
    EXPECT_EQ(text, u"Služba systému pro nastavení času není dostupná."_qs);
  }
}

TEST_F(ClockTest, FindsABusThatCameBack) {
  SystemClock clock(address_);
  for (int start = 0; start < 2; ++start) {
    Serve();
    EXPECT_EQ(Answer(clock, moment_), Clock::Outcome::Done);
    StopBus();
    EXPECT_EQ(Answer(clock, moment_), Clock::Outcome::Failed);
    StartBus();
  }
}

TEST(SystemTimeZone, BiasesAreMinutesWestOfGreenwich) {
  const struct {
    const char* zone;
    QDate date;
    ZoneBiases biases;
  } cases[] = {
      {"Europe/Prague", {2024, 1, 15}, {-60, 0, -60, false}},
      {"Europe/Prague", {2024, 7, 15}, {-60, 0, -60, true}},
      {"America/New_York", {2024, 7, 15}, {300, 0, -60, true}},
      {"Asia/Kolkata", {2024, 7, 15}, {-330, 0, -60, false}},
      {"America/St_Johns", {2024, 1, 1}, {210, 0, -60, false}},
      {"Australia/Lord_Howe", {2024, 1, 1}, {-630, 0, -30, true}},
      {"Australia/Sydney", {2024, 7, 1}, {-600, 0, -60, false}},
      {"UTC", {2024, 7, 1}, {0, 0, -60, false}},
      {"Europe/Dublin", {2024, 1, 15}, {0, 0, -60, false}},
      {"Europe/Dublin", {2024, 7, 15}, {0, 0, -60, true}},
      {"Europe/Prague", {2060, 7, 15}, {-60, 0, -60, true}},
  };
  const auto numbers = [](const ZoneBiases& biases) {
    return std::tuple(biases.Bias, biases.StandardBias, biases.DaylightBias, biases.DaylightInForce);
  };
  for (const auto& one : cases) {
    const QTimeZone zone(one.zone);
    EXPECT_EQ(numbers(BiasesOf(zone, QDateTime(one.date, QTime(12, 0), zone))), numbers(one.biases))
        << one.zone << one.date.toString(Qt::ISODate).toStdString();
  }
  const ZoneBiases biases = SystemTimeZone().Biases();
  const int sum = biases.Bias + biases.StandardBias + (biases.DaylightInForce ? biases.DaylightBias : 0);
  EXPECT_EQ(sum, -QDateTime::currentDateTime().offsetFromUtc() / 60);
}

}  // namespace talnik::test
