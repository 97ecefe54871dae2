#include "platform/Daemons.h"
#include "platform/Waves.h"
#include "platform/linux/PulseSound.h"
#include "support/FormDriver.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

class SoundTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!Daemon::IsInstalled(u"pulseaudio"_qs)) return;
    server = std::make_unique<SoundServer>();
    ASSERT_TRUE(server->Start());
  }
  static void TearDownTestSuite() { server.reset(); }

  void SetUp() override {
    if (!server) GTEST_SKIP() << "pulseaudio is not installed";
    Wave::Tone({}, 400).Write(Short);
    Wave::Tone({}, 20000).Write(Long);
  }

  Sound::Finished Note(const char* name) {
    return [this, name](Sound::Ending ending) {
      const char* how[] = {"", " cut", " failed"};
      Finished << QString::fromLatin1(name) + QString::fromLatin1(how[static_cast<int>(ending)]);
    };
  }
  /// True when all have finished before a moment that only a sound that takes no time meets.
  bool HasFinishedAtOnce(const QStringList& names) {
    QTimer late;
    late.setSingleShot(true);
    late.start(1500);
    return HasFinished(names) && late.isActive();
  }
  bool HasFinished(const QStringList& names) {
    return FormDriver::Until([&] { return Finished.size() >= names.size(); }) && Finished == names;
  }

  static std::unique_ptr<SoundServer> server;
  QTemporaryDir folder_;
  const QString Short = folder_.filePath(u"short.wav"_qs);
  const QString Long = folder_.filePath(u"long.wav"_qs);
  QStringList Finished;
};

std::unique_ptr<SoundServer> SoundTest::server;

}  // namespace

TEST_F(SoundTest, AToneSoundsToItsEndAndFinishesThen) {
  Ear ear(*server);
  ASSERT_TRUE(ear.Listen());
  PulseSound sound;
  QTimer length;
  length.setSingleShot(true);
  length.start(330);  // the silent sink takes up to 50 ms in advance
  sound.Play(Short, Note("short"));
  EXPECT_TRUE(Finished.isEmpty());
  ASSERT_TRUE(HasFinished({u"short"_qs}));
  EXPECT_FALSE(length.isActive()) << "told before it can have been heard";
  EXPECT_TRUE(FormDriver::Until([&] { return ear.LoudMilliseconds() > 0; }));
  EXPECT_TRUE(FormDriver::Until([&] { return ear.QuietMilliseconds() > 200; }));
  EXPECT_NEAR(ear.LoudMilliseconds(), 400, 20);
  EXPECT_EQ(Finished.size(), 1);
}

TEST_F(SoundTest, StopAndTheNextSoundCutTheOneThatPlays) {
  Ear ear(*server);
  ASSERT_TRUE(ear.Listen());
  PulseSound sound;
  sound.Play(Long, Note("long"));
  ASSERT_TRUE(FormDriver::Until([&] { return ear.LoudMilliseconds() > 100; }));
  sound.Stop();
  EXPECT_TRUE(Finished.isEmpty()) << "told before the event loop ran";
  EXPECT_TRUE(HasFinished({u"long cut"_qs}));
  EXPECT_TRUE(FormDriver::Until([&] { return ear.QuietMilliseconds() > 300; }));
  EXPECT_LT(ear.LoudMilliseconds(), 3000);

  sound.Play(Long, Note("again"));
  sound.Play(Short, Note("short"));
  EXPECT_TRUE(HasFinished({u"long cut"_qs, u"again cut"_qs, u"short"_qs}));
  sound.Stop();
  FormDriver::Settle();
  EXPECT_EQ(Finished.size(), 3);
}

TEST_F(SoundTest, WhatCannotBePlayedTakesNoTime) {
  const QString text = folder_.filePath(u"text.wav"_qs);
  const QString half = folder_.filePath(u"half.wav"_qs);
  WriteFile(text, "no sound at all");
  WriteFile(half, ReadFile(Short).left(40));
  PulseSound sound;
  for (const QString& path : {u"/nonexistent/x.wav"_qs, QString(), folder_.path(), text, half, u"/dev/zero"_qs}) {
    Finished.clear();
    sound.Play(path, Note("done"));
    EXPECT_TRUE(HasFinishedAtOnce({u"done failed"_qs})) << path.toStdString();
  }
}

TEST_F(SoundTest, WithoutAServerASoundTakesNoTime) {
  const Variable nowhere("PULSE_SERVER", "unix:/nonexistent/native");
  PulseSound sound;
  sound.Play(Long, Note("one"));
  EXPECT_TRUE(HasFinishedAtOnce({u"one failed"_qs}));
  sound.Play(Long, Note("two"));
  EXPECT_TRUE(HasFinishedAtOnce({u"one failed"_qs, u"two failed"_qs}));
}

TEST_F(SoundTest, AStoppedServerIsGivenUpAndTheNextSoundsTakeNoTime) {
  PulseSound sound;
  server->Freeze();
  sound.Play(Short, Note("first"));
  EXPECT_TRUE(HasFinished({u"first failed"_qs}));
  sound.Play(Short, Note("second"));
  EXPECT_TRUE(HasFinishedAtOnce({u"first failed"_qs, u"second failed"_qs}));
  server->Thaw();
}

}  // namespace talnik::test
