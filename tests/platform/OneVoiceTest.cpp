#include "platform/Daemons.h"
#include "platform/linux/OneVoice.h"
#include "platform/linux/ReaderFocus.h"

#include <QComboBox>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

/// A session bus with nobody on it but the test.
class PrivateBus : public Daemon {
 public:
  bool Start() override {
    const QString address = u"unix:path="_qs + Path(u"bus"_qs);
    if (!Run(u"dbus-daemon"_qs, u"--session --nofork --nopidfile --address="_qs + address)) return false;
    return QTest::qWaitFor([&] {
      QDBusConnection::disconnectFromBus(u"program"_qs);
      return QDBusConnection::connectToBus(address, u"program"_qs).isConnected() &&
             QDBusConnection::connectToBus(address, u"desktop"_qs).isConnected();
    });
  }
  ~PrivateBus() override {
    for (const QString& name : {u"program"_qs, u"desktop"_qs}) QDBusConnection::disconnectFromBus(name);
  }
  /// The program's side of it, and everybody else's.
  static QDBusConnection Program() { return QDBusConnection(u"program"_qs); }
  static QDBusConnection Desktop() { return QDBusConnection(u"desktop"_qs); }
};

/// The desktop's switch of the screen reader.
class Switch : public QDBusVirtualObject {
 public:
  Switch() {
    PrivateBus::Desktop().registerService(u"org.a11y.Bus"_qs);
    PrivateBus::Desktop().registerVirtualObject(u"/org/a11y/bus"_qs, this);
  }
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(on_))));
  }
  void Turn(bool on) {
    on_ = on;
    auto changed =
        QDBusMessage::createSignal(u"/org/a11y/bus"_qs, u"org.freedesktop.DBus.Properties"_qs, u"PropertiesChanged"_qs);
    changed << u"org.a11y.Status"_qs << QVariantMap{{u"ScreenReaderEnabled"_qs, on}} << QStringList();
    PrivateBus::Desktop().send(changed);
  }

 private:
  bool on_ = false;
};

class Recorded : public Voice {
 public:
  Recorded(QStringList& said, QString name) : said_(said), name_(std::move(name)) {}
  void Speak(const QString& text, Join, Urgency) override { said_ << name_ + u' ' + text; }
  void SpeakCharacter(const QString& character, Join) override { said_ << name_ + u' ' + character; }
  void Stop() override { said_ << name_ + u" stop"_qs; }
  Support Supported() const override { return Support::There; }
  bool IsSpeaking() const override { return false; }

 private:
  QStringList& said_;
  QString name_;
};

class OneVoiceTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!Daemon::IsInstalled(u"dbus-daemon"_qs)) GTEST_SKIP();
    ASSERT_TRUE(bus_.Start());
  }
  void Make(const QDBusConnection& bus) {
    auto watch = std::make_unique<ReaderWatch>(bus);
    watch_ = watch.get();
    voice_ = std::make_unique<OneVoice>(std::make_unique<Recorded>(said_, u"own"_qs),
                                        std::make_unique<Recorded>(said_, u"reader"_qs), std::move(watch));
  }
  void Say(const QString& text) { voice_->Speak(text, Voice::Join::Cut, Voice::Urgency::Text); }
  bool Comes(const QString& line) {
    return QTest::qWaitFor([&] { return said_.contains(line); });
  }
  bool Runs(bool running) {
    return QTest::qWaitFor([&] { return watch_->IsRunning() == running; });
  }

  PrivateBus bus_;
  QStringList said_;
  ReaderWatch* watch_ = nullptr;
  std::unique_ptr<OneVoice> voice_;
};

TEST_F(OneVoiceTest, FollowsAReaderThatTakesAName) {
  Make(PrivateBus::Program());
  Say(u"a"_qs);
  EXPECT_TRUE(said_.isEmpty()) << "said before it is known by whom";
  EXPECT_TRUE(Comes(u"own a"_qs));
  PrivateBus::Desktop().registerService(u"org.gnome.Orca"_qs);
  ASSERT_TRUE(Runs(true));
  Say(u"b"_qs);
  PrivateBus::Desktop().unregisterService(u"org.gnome.Orca"_qs);
  ASSERT_TRUE(Runs(false));
  Say(u"c"_qs);
  EXPECT_EQ(said_, QStringList({u"own a"_qs, u"own stop"_qs, u"reader b"_qs, u"reader stop"_qs, u"own c"_qs}));
}

TEST_F(OneVoiceTest, FollowsTheSwitchOfTheDesktop) {
  Switch desktop;
  desktop.Turn(true);
  Make(PrivateBus::Program());
  Say(u"a"_qs);
  EXPECT_TRUE(Comes(u"reader a"_qs));
  desktop.Turn(false);
  ASSERT_TRUE(Runs(false));
  desktop.Turn(true);
  ASSERT_TRUE(Runs(true));
}

TEST_F(OneVoiceTest, ObeysTheChoiceWhateverRuns) {
  PrivateBus::Desktop().registerService(u"org.gnome.Orca"_qs);
  Make(PrivateBus::Program());
  voice_->ChooseSpeaker(Voice::Speaker::Own);
  Say(u"a"_qs);
  EXPECT_EQ(said_, QStringList{u"own a"_qs});
  ASSERT_TRUE(Runs(true));
  Say(u"b"_qs);
  voice_->ChooseSpeaker(Voice::Speaker::Reader);
  Say(u"c"_qs);
  EXPECT_EQ(said_.filter(u"stop"_qs), QStringList{u"own stop"_qs});
  EXPECT_TRUE(said_.contains(u"own b"_qs) && said_.contains(u"reader c"_qs));
}

TEST_F(OneVoiceTest, SpeaksAtOnceWhereNoBusIs) {
  Make(QDBusConnection(u"nowhere"_qs));
  Say(u"a"_qs);
  EXPECT_EQ(said_, QStringList{u"own a"_qs});
}

TEST_F(OneVoiceTest, DoesNotWaitForABusThatAnswersNobody) {
  auto program = PrivateBus::Program();
  bus_.Freeze();
  Make(program);
  Say(u"a"_qs);
  EXPECT_TRUE(Comes(u"own a"_qs));
  bus_.Thaw();
}

struct Told {
  const char* what;
  ReaderFocus before;
  ReaderFocus now;
  QStringList texts;
  QString told;
};

class ReaderVoiceTest : public testing::TestWithParam<Told> {};

TEST_P(ReaderVoiceTest, TellsWhatTheReaderLeavesOut) {
  ReaderFocus focus = GetParam().before;
  QStringList told;
  ReaderVoice voice([&] { return focus; }, [&](const QString& text) { told << text; });
  voice.Speak(u"before"_qs, Voice::Join::Cut, Voice::Urgency::Text);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }));
  told.clear();
  focus = GetParam().now;
  for (const QString& text : GetParam().texts) {
    voice.Speak(text, text == GetParam().texts.first() ? Voice::Join::Cut : Voice::Join::Append, Voice::Urgency::Text);
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(told.join(u'|'), GetParam().told) << GetParam().what;
}

const int kList = 0;  // stand for controls
const int kField = 0;
const ReaderFocus Day25 = {&kList, false, false, {}, {u"Talník"_qs, u"Dny v měsíci"_qs, u"25. středa"_qs}};
const ReaderFocus Day26 = {&kList, false, false, {}, {u"Talník"_qs, u"Dny v měsíci"_qs, u"26. čtvrtek"_qs}};
const ReaderFocus Hour = {&kField, false, true, u"15"_qs, {u"hodin:"_qs, u"Čas"_qs, u"15"_qs}};
const ReaderFocus Later = {&kField, false, true, u"16"_qs, {u"hodin:"_qs, u"Čas"_qs, u"16"_qs}};
const ReaderFocus Menu = {&kList, true, false, {}, {}};

INSTANTIATE_TEST_SUITE_P(
    Focus, ReaderVoiceTest,
    testing::Values(Told{"a day", Day25, Day26, {u"26. čtvrtek"_qs}, {}},
                    Told{"a day with tasks", Day25, Day26, {u"26. čtvrtek 3 úkolů"_qs}, u"3 úkolů"_qs},
                    Told{"another month", Hour, Day26, {u"Talník 26. čtvrtek"_qs, u"prosinec"_qs}, u"prosinec"_qs},
                    Told{"the day again", Day26, Day26, {u"26. čtvrtek"_qs}, u"26. čtvrtek"_qs},
                    Told{"a word within a word", Day25, Day26, {u"126. čtvrtek"_qs}, u"126. čtvrtek"_qs},
                    Told{"a field", Day25, Hour, {u"Čas"_qs, u"hodin: 15"_qs}, {}},
                    Told{"a part of its text", Hour, Hour, {u"5"_qs}, {}},
                    Told{"a deleted part of its text", Hour, Later, {u"5"_qs}, {}},
                    Told{"a number counted up", Hour, Later, {u"16"_qs}, u"16"_qs},
                    Told{"a message in a field", Hour, Hour, {u"uloženo"_qs}, u"uloženo"_qs},
                    Told{"a menu", Day25, Menu, {u"Úkoly Nový"_qs}, {}}));

TEST(ReaderVoice, TellsAnAlarmWhereverTheUserIs) {
  QStringList told;
  ReaderVoice voice([] { return Menu; }, [&](const QString& text) { told << text; });
  voice.Speak(u"Schůze"_qs, Voice::Join::Cut, Voice::Urgency::Important);
  EXPECT_TRUE(voice.IsSpeaking());
  EXPECT_TRUE(QTest::qWaitFor([&] { return told == QStringList{u"Schůze"_qs}; }));
  voice.Stop();
  EXPECT_FALSE(voice.IsSpeaking());
}

TEST(ReaderVoice, WaitsForTheWindowThatGetsTheKeyboard) {
  QStringList told;
  ReaderVoice voice([] { return QApplication::focusWidget() ? Day26 : ReaderFocus(); },
                    [&](const QString& text) { told << text; });
  voice.Speak(u"26. čtvrtek prosinec"_qs, Voice::Join::Cut, Voice::Urgency::Text);
  QCoreApplication::processEvents();
  QLineEdit window;
  window.show();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }));
  EXPECT_EQ(told, QStringList{u"prosinec"_qs}) << "told before the reader had said the day";
}

TEST(ReaderFocus, TheLineOfADropDownListIsLeftToUs) {
  QWidget window;
  window.setWindowTitle(u"Zopakovat"_qs);
  QVBoxLayout layout(&window);
  QLabel label(u"Opakuje se:"_qs);
  QComboBox list;
  QLineEdit line(u"denně"_qs);
  list.addItem(u"denně"_qs);
  label.setBuddy(&list);
  for (QWidget* widget : {static_cast<QWidget*>(&label), static_cast<QWidget*>(&list), static_cast<QWidget*>(&line)}) {
    layout.addWidget(widget);
  }
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  list.setFocus();
  EXPECT_EQ(WhatIsLeft(u"Zopakovat Opakuje se: denně"_qs, LookAtFocus().words), u"denně"_qs);
  line.setFocus();
  EXPECT_EQ(WhatIsLeft(u"Zopakovat denně"_qs, LookAtFocus().words), QString());
}

}  // namespace
}  // namespace talnik::test
