#include "platform/Daemons.h"
#include "platform/Waves.h"
#include "platform/linux/PulseRecorder.h"
#include "platform/linux/PulseSound.h"
#include "support/FormDriver.h"

#include <QTimer>

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <optional>
#include <tuple>

namespace talnik::test {

namespace {

using Ending = Recorder::Ending;

class RecorderTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!Daemon::IsInstalled(u"pulseaudio"_qs)) return;
    server = std::make_unique<SoundServer>(SoundServer::Microphone::Silent);
    ASSERT_TRUE(StartServer());
  }
  /// The socket is there some seconds before anybody answers.
  static bool StartServer() { return server->Start() && Ear(*server).Listen(); }
  static void TearDownTestSuite() { server.reset(); }

  void SetUp() override {
    if (!server) GTEST_SKIP() << "pulseaudio is not installed";
    Wave::Tone({.rate = 11025}, 100).Write(Seed);
  }

  void Record(Recorder& recorder) {
    Ended.reset();
    recorder.Start(New, Seed, [this](Ending ending) {
      EXPECT_FALSE(Ended) << "told twice";
      Ended = ending;
    });
    EXPECT_FALSE(Ended) << "told before the event loop ran";
  }
  /// True when more than the head of the file is there.
  bool HasSound() const { return QFileInfo(New).size() > 2000; }
  bool BeginsToRecord(Recorder& recorder) {
    WriteFile(New, "an older recording");
    Record(recorder);
    return FormDriver::Until([&] { return HasSound() || Ended; }) && !Ended;
  }
  bool HasEnded(Ending ending) {
    return FormDriver::Until([&] { return Ended.has_value(); }) && Ended == ending;
  }
  /// The same before a moment that only what takes no time meets.
  bool HasEndedAtOnce(Ending ending) {
    QTimer late;
    late.setSingleShot(true);
    late.start(1500);
    return HasEnded(ending) && late.isActive();
  }

  static std::unique_ptr<SoundServer> server;
  QTemporaryDir folder_;
  const QString Seed = folder_.filePath(u"seed.wav"_qs);
  const QString New = folder_.filePath(u"new.wav"_qs);
  std::optional<Ending> Ended;
};

std::unique_ptr<SoundServer> RecorderTest::server;

}  // namespace

TEST_F(RecorderTest, AToneSaidIntoTheMicrophoneComesBackFromTheFile) {
  const QString tone = folder_.filePath(u"tone.wav"_qs);
  Wave::Tone({.rate = 44100}, 600, 441).Write(tone);
  const Variable intoTheMicrophone("PULSE_SINK", "mic");
  PulseSound mouth;
  PulseRecorder recorder;
  for (int take = 0; take < 2; ++take) {
    ASSERT_TRUE(BeginsToRecord(recorder));
    EXPECT_TRUE(recorder.IsRecording());
    std::optional<Sound::Ending> said;
    mouth.Play(tone, [&](Sound::Ending ending) { said = ending; });
    ASSERT_TRUE(FormDriver::Until([&] { return said.has_value(); }));
    EXPECT_EQ(said, Sound::Ending::Played);
    const qint64 before = QFileInfo(New).size();
    ASSERT_TRUE(FormDriver::Until([&] { return QFileInfo(New).size() > before + 8000; }));
    EXPECT_TRUE(recorder.Stop());
    EXPECT_FALSE(recorder.IsRecording());

    const Wave heard = Wave::Read(New);
    EXPECT_EQ(heard.rate, 11025) << "the format of the seed";
    EXPECT_EQ(heard.channels, 1);
    EXPECT_EQ(heard.format, SF_FORMAT_PCM_16);
    EXPECT_NEAR(heard.LoudMilliseconds(), 600, 50);
    EXPECT_NEAR(heard.Hertz(), 441, 1);
    EXPECT_EQ(ModeOf(New), 0600);
  }
  FormDriver::Settle();
  EXPECT_FALSE(Ended) << "what was stopped did not end by itself";
}

TEST_F(RecorderTest, TheSeedGivesTheFormat) {
  const QString text = folder_.filePath(u"text.wav"_qs);
  WriteFile(text, "no sound at all");
  const QString bytes = folder_.filePath(u"bytes.wav"_qs);
  Wave::Tone({.channels = 2, .format = SF_FORMAT_PCM_U8}, 100).Write(bytes);
  const struct {
    QString seed;
    int rate, channels, format;
  } cases[] = {{bytes, 8000, 2, SF_FORMAT_PCM_U8},
               {text, 44100, 1, SF_FORMAT_PCM_16},
               {u"/nonexistent/start.wav"_qs, 44100, 1, SF_FORMAT_PCM_16},
               {u"/dev/zero"_qs, 44100, 1, SF_FORMAT_PCM_16}};
  PulseRecorder recorder;
  for (const auto& row : cases) {
    recorder.Start(New, row.seed, [](Ending) {});
    EXPECT_TRUE(FormDriver::Until([&] { return HasSound(); }));
    EXPECT_TRUE(recorder.Stop());
    const Wave heard = Wave::Read(New);
    EXPECT_EQ(std::tie(heard.rate, heard.channels, heard.format), std::tie(row.rate, row.channels, row.format))
        << row.seed.toStdString();
    QFile::remove(New);
  }
}

TEST_F(RecorderTest, WithoutAMicrophoneOrAFileNothingIsRecordedAndNothingLost) {
  PulseRecorder recorder;
  const auto fails = [&](const char* why) {
    WriteFile(New, "an older recording");
    Record(recorder);
    EXPECT_TRUE(HasEndedAtOnce(Ending::Failed)) << why;
    EXPECT_FALSE(recorder.IsRecording()) << why;
    EXPECT_FALSE(recorder.Stop()) << why;
    EXPECT_EQ(ReadFile(New), "an older recording") << why;
    QFile::remove(New);
  };
  {
    const Variable nowhere("PULSE_SERVER", "unix:/nonexistent/native");
    fails("no server");
  }
  {
    SoundServer deaf;
    ASSERT_TRUE(deaf.Start() && Ear(deaf).Listen());
    fails("no microphone: all that the server offers is what its loudspeaker plays");
  }
  for (const QString& place : {folder_.path(), u"/nonexistent/new.wav"_qs, u"/dev/full"_qs}) {
    Ended.reset();
    recorder.Start(place, Seed, [this](Ending ending) { Ended = ending; });
    EXPECT_TRUE(HasEndedAtOnce(Ending::Failed)) << place.toStdString();
  }
  Record(recorder);
  EXPECT_FALSE(recorder.Stop()) << "stopped before the first sound";
  EXPECT_FALSE(QFile::exists(New));
}

TEST_F(RecorderTest, AServerThatStopsHoldsNothingUpAndLeavesWhatWasSaid) {
  PulseRecorder recorder;
  server->Freeze();
  Record(recorder);
  EXPECT_FALSE(recorder.Stop());
  Record(recorder);
  EXPECT_TRUE(HasEnded(Ending::Failed));
  EXPECT_FALSE(QFile::exists(New));
  server->Thaw();

  ASSERT_TRUE(BeginsToRecord(recorder));
  server->Freeze();
  // The silence is noticed after up to twice the patience.
  FormDriver::Until([&] { return Ended.has_value(); });
  EXPECT_TRUE(HasEnded(Ending::Broken));
  EXPECT_GT(Wave::Read(New).Milliseconds(), 50);
  server->Thaw();

  ASSERT_TRUE(BeginsToRecord(recorder));
  server->Kill();
  EXPECT_TRUE(HasEndedAtOnce(Ending::Broken));
  EXPECT_GT(Wave::Read(New).Milliseconds(), 50);
  ASSERT_TRUE(StartServer());
  EXPECT_TRUE(BeginsToRecord(recorder)) << "found again";
}

TEST_F(RecorderTest, AFullDiskAndTheLongestTimeEndTheRecordingAndKeepIt) {
  constexpr rlim_t room = 30'000;
  signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit little{room, before.rlim_max};
  PulseRecorder recorder;
  ASSERT_TRUE(BeginsToRecord(recorder));
  setrlimit(RLIMIT_FSIZE, &little);
  const bool ended = HasEnded(Ending::NoRoom);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_TRUE(ended);
  EXPECT_NEAR(Wave::Read(New).Milliseconds(), room / 2 * 1000 / 11025, 50);

  PulseRecorder patient(1);
  Record(patient);
  EXPECT_TRUE(HasEnded(Ending::TooLong));
  EXPECT_FALSE(patient.IsRecording());
  EXPECT_EQ(Wave::Read(New).Milliseconds(), 1000);
}

}  // namespace talnik::test
