#include "platform/Daemons.h"
#include "platform/linux/SpeechdVoice.h"
#include "support/FormDriver.h"

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

using Join = Voice::Join;
using Urgency = Voice::Urgency;

/// Long enough to be still on its way when the next call comes.
const QString longText = u"Toto je dlouhý text, který se nikdy nedopoví, protože jej přeruší jiný"_qs;

class VoiceTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!SpeechDaemon::IsInstalled()) return;
    sound = std::make_unique<SoundServer>();
    daemon = std::make_unique<SpeechDaemon>(*sound);
    ASSERT_TRUE(sound->Start() && daemon->Start());
  }
  static void TearDownTestSuite() {
    daemon.reset();
    sound.reset();
  }

  void SetUp() override {
    if (!daemon) GTEST_SKIP() << "speech-dispatcher with espeak-ng or pulseaudio is not installed";
    daemon->News();
  }

  /// True when the daemon did this and nothing else.
  static ::testing::AssertionResult Does(const QString& awaited) {
    QStringList news;
    const bool does = FormDriver::Until([&] {
      news << daemon->News();
      return news.join(u'|') == awaited;
    });
    return does ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << news.join(u'|').toStdString();
  }

  static std::unique_ptr<SoundServer> sound;
  static std::unique_ptr<SpeechDaemon> daemon;
};

std::unique_ptr<SoundServer> VoiceTest::sound;
std::unique_ptr<SpeechDaemon> VoiceTest::daemon;

}  // namespace

TEST_F(VoiceTest, ATextIsHeardAndIsSpeakingUntilItsEnd) {
  Ear ear(*sound);
  ASSERT_TRUE(ear.Listen());
  SpeechdVoice voice;
  EXPECT_FALSE(voice.IsSpeaking());
  voice.Speak(u"Dobrý den"_qs, Join::Cut, Urgency::Text);
  EXPECT_TRUE(voice.IsSpeaking());
  ASSERT_TRUE(FormDriver::Until([&] { return ear.LoudMilliseconds() > 200; }));
  EXPECT_TRUE(FormDriver::Until([&] { return !voice.IsSpeaking(); }));
  EXPECT_TRUE(Does(u"say: Dobrý den|end"_qs));
  EXPECT_TRUE(daemon->Log().contains("\nlanguage=cs\n")) << "the user's language is English, our texts are not";
}

TEST_F(VoiceTest, ATextCutsTheOneBeforeAndAnAppendedOneWaitsForItsEnd) {
  SpeechdVoice voice;
  voice.Speak(longText, Join::Cut, Urgency::Text);
  ASSERT_TRUE(Does(u"say: "_qs + longText));
  voice.Speak(u"První"_qs, Join::Cut, Urgency::Text);
  voice.Speak(u"druhý"_qs, Join::Append, Urgency::Text);
  voice.SpeakCharacter(u"č"_qs, Join::Append);
  EXPECT_TRUE(Does(u"cut|say: První|end|say: druhý|end|char: č|end"_qs));
  EXPECT_TRUE(FormDriver::Until([&] { return !voice.IsSpeaking(); }));
}

TEST_F(VoiceTest, StopAndAnEmptyTextEndTheSpeechAndWhatWaitsBehindIt) {
  SpeechdVoice voice;
  for (const bool byStop : {true, false}) {
    voice.Speak(longText, Join::Cut, Urgency::Text);
    voice.Speak(u"nikdy"_qs, Join::Append, Urgency::Text);
    ASSERT_TRUE(Does(u"say: "_qs + longText));
    byStop ? voice.Stop() : voice.Speak(u" \n"_qs, Join::Cut, Urgency::Text);
    EXPECT_FALSE(voice.IsSpeaking());
    EXPECT_TRUE(Does(u"cut"_qs));
  }
  voice.Speak(QString(), Join::Append, Urgency::Text);
  EXPECT_FALSE(voice.IsSpeaking());
}

TEST_F(VoiceTest, AnAlarmIsNotCutByOtherProgramsButByOurOwnNextText) {
  SpeechdVoice voice;
  SpeechdVoice other;
  voice.Speak(u"Pozor, začíná schůzka"_qs, Join::Cut, Urgency::Important);
  ASSERT_TRUE(Does(u"say: Pozor, začíná schůzka"_qs));
  other.Speak(u"Ne"_qs, Join::Cut, Urgency::Text);
  EXPECT_TRUE(Does(u"end|say: Ne|end"_qs));

  voice.Speak(longText, Join::Cut, Urgency::Important);
  ASSERT_TRUE(Does(u"say: "_qs + longText));
  voice.Speak(u"Zavřít"_qs, Join::Cut, Urgency::Text);
  EXPECT_TRUE(Does(u"cut|say: Zavřít|end"_qs));
}

TEST_F(VoiceTest, TextsThatNoDaemonCanTakeDoNoHarm) {
  SpeechdVoice voice;
  const QString huge = QString(u"slovo "_qs).repeated(10 * 1024 * 1024 / 6);
  const QString hostile[] = {huge,
                             QString(10000, u'x'),
                             QString(QChar(0)),
                             QString(QChar(0xd800)) + u"a"_qs,
                             u".\r\n.\r\nQUIT\r\n"_qs,
                             u"<speak>&amp;\\"_qs};
  for (const QString& text : hostile) voice.Speak(text, Join::Cut, Urgency::Text);
  for (const QString& text : hostile) {
    voice.Speak(text, Join::Cut, Urgency::Text);
    voice.SpeakCharacter(text, Join::Append);
    FormDriver::Settle();
  }
  voice.Speak(u"Pořád tady"_qs, Join::Cut, Urgency::Text);
  QStringList news;
  EXPECT_TRUE(FormDriver::Until([&] {
    news << daemon->News();
    return news.mid(news.size() - 2) == QStringList({u"say: Pořád tady"_qs, u"end"_qs});
  })) << news.join(u'\n').right(500).toStdString();
}

TEST_F(VoiceTest, WithoutADaemonNothingIsSpeaking) {
  const Variable nowhere("SPEECHD_ADDRESS", "unix_socket:/nonexistent/speech.sock");
  SpeechdVoice voice;
  for (int i = 0; i < 100; ++i) voice.Speak(longText, i % 2 ? Join::Cut : Join::Append, Urgency::Text);
  EXPECT_TRUE(FormDriver::Until([&] { return !voice.IsSpeaking(); }));
}

TEST_F(VoiceTest, AKilledDaemonIsFoundAgainByALaterText) {
  SpeechdVoice voice;
  voice.Speak(u"Jedna"_qs, Join::Cut, Urgency::Text);
  ASSERT_TRUE(Does(u"say: Jedna|end"_qs));
  for (const bool spokenMeanwhile : {true, false}) {
    daemon->Kill();
    if (spokenMeanwhile) voice.Speak(longText, Join::Cut, Urgency::Text);
    EXPECT_TRUE(FormDriver::Until([&] { return !voice.IsSpeaking(); }));
    ASSERT_TRUE(daemon->Start());
    voice.Speak(u"Dvě"_qs, Join::Cut, Urgency::Text);
    EXPECT_TRUE(Does(u"say: Dvě|end"_qs));
  }
}

TEST_F(VoiceTest, AStoppedDaemonBlocksNoCallAndTheNewestTextIsSaidWhenItGoesOn) {
  SpeechdVoice connected;
  connected.Speak(u"Jedna"_qs, Join::Cut, Urgency::Text);
  ASSERT_TRUE(Does(u"say: Jedna|end"_qs));
  daemon->Freeze();
  // Each of these would wait for the daemon for ever, in a call or while connecting; the last two die waiting.
  SpeechdVoice connecting;
  auto dying = std::make_unique<SpeechdVoice>();
  for (int i = 0; i < 50; ++i) {
    connected.Speak(u"text %1"_qs.arg(i), Join::Cut, Urgency::Text);
    connecting.SpeakCharacter(u"a"_qs, Join::Cut);
    dying->Speak(longText, Join::Append, Urgency::Text);
  }
  connecting.Stop();
  EXPECT_FALSE(connecting.IsSpeaking());
  dying.reset();
  connected.Speak(u"Nejnovější"_qs, Join::Cut, Urgency::Text);
  EXPECT_TRUE(connected.IsSpeaking());
  daemon->Thaw();
  QStringList news;
  EXPECT_TRUE(FormDriver::Until([&] {
    news << daemon->News();
    return news.contains(u"say: Nejnovější"_qs);
  })) << news.join(u" | "_qs).toStdString();
  EXPECT_LE(news.filter(u"say: text"_qs).size(), 1) << news.join(u'\n').toStdString();
}

}  // namespace talnik::test
