#include "shell/Speech.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QLoggingCategory>
#include <QTimer>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

QStringList* logged = nullptr;

class SpeechTest : public testing::Test {
 protected:
  SpeechTest() { world.braille.Present = true; }
  FakeWorld world;
  std::unique_ptr<Speech> speech =
      std::make_unique<Speech>(&world.voice, world.braille, world.sound, u"/app/sound/"_qs);
};

TEST_F(SpeechTest, EachTextCutsTheOneBeforeUnlessItContinuesTheSameTurn) {
  speech->Say(u"pondělí"_qs);
  speech->SayPart(0, u"3 úkoly"_qs);
  speech->SayPart(1, QString());
  EXPECT_EQ(world.Heard(), QStringList({u"say: pondělí"_qs, u"and: 3 úkoly"_qs}));
  FormDriver::Settle();
  speech->SayPart(0, u"úterý"_qs);
  speech->SayPart(1, u"2 úkoly"_qs);
  speech->Say(u"středa"_qs);
  EXPECT_EQ(world.Heard(), QStringList({u"say: úterý"_qs, u"and: 2 úkoly"_qs, u"say: středa"_qs}));
  speech->StopSpeech();
  speech->SayPart(0, u"po tichu"_qs);
  EXPECT_EQ(world.Heard(), QStringList({u"stop"_qs, u"say: po tichu"_qs}));
}

TEST_F(SpeechTest, OneCharacterIsSpelled) {
  speech->Say(u"a"_qs);
  speech->Say(u"😀"_qs);
  speech->VoiceCommand(Speech::SpeakNow, 255, u"C"_qs);
  speech->VoiceCommand(Speech::SpeakNow, 255, u"C: disk"_qs);
  speech->Say(QString());
  EXPECT_EQ(world.Heard(), QStringList({u"char: a"_qs, u"char: 😀"_qs, u"char: C"_qs, u"say: C: disk"_qs, u"say: "_qs}));
}

TEST_F(SpeechTest, OnlyTextsReachTheBrailleLine) {
  speech->VoiceCommand(Speech::SpeakNow, 0, u"čas"_qs, 0, 2);
  EXPECT_EQ(world.braille.Shown, u"čas"_qs);
  EXPECT_EQ(world.braille.Cursor, 2);
  speech->Signal(Speech::Refused);
  speech->StopSpeech();
  speech->VoiceCommand(Speech::SpeakNow, 0, u"jen hlas"_qs, 0, 0, 1);
  EXPECT_EQ(world.braille.Shown, u"čas"_qs);
  world.Heard();
  speech->VoiceCommand(Speech::SpeakPart, 0, u"jen řádek"_qs, 1);
  EXPECT_EQ(world.braille.Shown, u"jen řádek"_qs);
  EXPECT_TRUE(world.Heard().isEmpty());
  speech->FocusRead(u"Čas:"_qs, u"8:30"_qs, 1, 3);
  EXPECT_EQ(world.braille.Shown, u"Čas: 8:30"_qs);
  EXPECT_EQ(world.braille.Cursor, 6);
  speech->FocusRead(u"dál"_qs, QString(), 0, 0, false);
  EXPECT_EQ(world.Heard(), QStringList({u"say: Čas: 8:30"_qs, u"and: dál"_qs}));
}

TEST_F(SpeechTest, SignalsAreFilesOfTheSoundFolder) {
  speech->Signal(Speech::Refused);
  speech->Signal(Speech::EndOfList);
  speech->Signal(Speech::EmptyField);
  speech->Signal(3);
  EXPECT_EQ(world.Heard(), QStringList({u"sound: refused.wav"_qs, u"sound: end.wav"_qs, u"sound: empty.wav"_qs}));
}

TEST_F(SpeechTest, WithoutAVoiceOnlyThePlainSoundsAreLeft) {
  Speech silent(nullptr, world.braille, world.sound, u"/app/sound/"_qs);
  silent.Say(u"nic"_qs);
  silent.FocusRead(u"a"_qs, u"b"_qs);
  silent.Signal(Speech::Refused);
  silent.StopSpeech();
  EXPECT_FALSE(silent.IsSpeaking());
  silent.PlaySoundWait(u"/app/sound/space.wav"_qs);
  EXPECT_EQ(world.Heard(), QStringList(u"sound: space.wav"_qs));
  EXPECT_TRUE(world.braille.Shown.isEmpty());
}

TEST_F(SpeechTest, IsSpeakingAsksTheVoice) {
  EXPECT_FALSE(speech->IsSpeaking());
  world.voice.Speaking = true;
  EXPECT_TRUE(speech->IsSpeaking());
}

TEST_F(SpeechTest, AWaitLastsAsLongAsTheSound) {
  world.sound.Hold = true;
  QStringList order;
  QTimer::singleShot(0, [&] {
    order << u"clock goes on"_qs;
    world.sound.Finish();
  });
  speech->PlaySoundWait(u"/app/sound/space.wav"_qs);
  order << u"returned"_qs;
  EXPECT_EQ(order, QStringList({u"clock goes on"_qs, u"returned"_qs}));
  EXPECT_EQ(world.Heard(), QStringList({u"stop"_qs, u"sound: space.wav"_qs}));
}

TEST_F(SpeechTest, AWaitWithinAWaitEndsBoth) {
  world.sound.Hold = true;
  bool inner = false;
  QTimer::singleShot(0, [&] {
    QTimer::singleShot(0, [&] { world.sound.Finish(); });
    speech->PlayToEnd(u"inner.wav"_qs);
    inner = true;
  });
  speech->PlayToEnd(u"outer.wav"_qs);
  EXPECT_TRUE(inner);
  EXPECT_EQ(world.Heard(), QStringList({u"sound: outer.wav"_qs, u"sound: inner.wav"_qs}));
}

TEST_F(SpeechTest, AWaitEndsWithTheSpeechObjectAndTheSoundMayEndLater) {
  world.sound.Hold = true;
  QTimer::singleShot(0, [&] { speech.reset(); });
  speech->PlayToEnd(u"long.wav"_qs);
  EXPECT_EQ(speech, nullptr);
  world.sound.Finish();
}

TEST_F(SpeechTest, ProgressTicksAtEachTenth) {
  for (const int percent : {0, 4, 9, 10, 55, 58, 100, 130, 20}) speech->ProgressSound(percent);
  EXPECT_EQ(world.Heard().size(), 5);
  speech->PlaySound(u"x.wav"_qs);
  EXPECT_TRUE(world.sound.IsPlaying());
  speech->PlaySound(QString());
  EXPECT_FALSE(world.sound.IsPlaying());
}

TEST_F(SpeechTest, EveryCallIsALineOfTheTranscript) {
  QStringList lines;
  logged = &lines;
  QLoggingCategory::setFilterRules(u"talnik.speech=true"_qs);
  const auto before =
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { *logged << text; });
  speech->Say(u"první \"řádek\"\ndruhý"_qs);
  speech->SayPart(0, u"část"_qs);
  speech->Say(u"a"_qs);
  speech->FocusRead(u"Čas:"_qs, u"8:30"_qs);
  speech->Signal(Speech::Refused);
  speech->SayImportant(u"budík"_qs);
  speech->PlaySoundWait(u"/app/sound/space.wav"_qs);
  qInstallMessageHandler(before);
  QLoggingCategory::setFilterRules(QString());
  EXPECT_EQ(lines, QStringList({u"say \"první \\\"řádek\\\"\\ndruhý\""_qs, u"part \"část\""_qs, u"char \"a\""_qs,
                                u"focus \"Čas: 8:30\""_qs, u"signal 11"_qs, u"alarm \"budík\""_qs, u"stop"_qs,
                                u"sound space.wav"_qs}));
}

}  // namespace
}  // namespace talnik::test
