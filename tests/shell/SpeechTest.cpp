#include "shell/Speech.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"
#include "support/LogCapture.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

class SpeechTest : public testing::Test {
 protected:
  SpeechTest() { world.braille.Present = true; }
  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }
  FakeWorld world;
  std::unique_ptr<Speech> speech =
      std::make_unique<Speech>(&world.voice, world.braille, world.sound, u"/app/sound/"_qs);
};

TEST_F(SpeechTest, EachTextCutsTheOneBeforeUnlessItContinuesTheSameTurn) {
  speech->Say(u"pondělí"_qs);
  speech->SayPart(0, u"3 úkoly"_qs);
  speech->SayPart(1, QString());
  EXPECT_EQ(Heard(), "say: pondělí; and: 3 úkoly");
  FormDriver::Settle();
  speech->SayPart(0, u"úterý"_qs);
  speech->SayPart(1, u"2 úkoly"_qs);
  speech->Say(u"středa"_qs);
  EXPECT_EQ(Heard(), "say: úterý; and: 2 úkoly; say: středa");
  speech->StopSpeech();
  speech->SayPart(0, u"po tichu"_qs);
  EXPECT_EQ(Heard(), "stop; say: po tichu");
  speech->FocusRead(u"dál"_qs, QString(), 0, 0, false);
  EXPECT_EQ(Heard(), "and: dál");
  EXPECT_FALSE(speech->IsSpeaking());
  world.voice.Speaking = true;
  EXPECT_TRUE(speech->IsSpeaking());
}

TEST_F(SpeechTest, OneCharacterIsSpelledAndEmptyTextsArePassedOn) {
  for (const QString& text : {u"a"_qs, u"😀"_qs, u"C: disk"_qs, QString()})
    speech->VoiceCommand(Speech::SpeakNow, 255, text);
  EXPECT_EQ(Heard(), "char: a; char: 😀; say: C: disk; say: ");
}

TEST_F(SpeechTest, OnlyTextsReachTheBrailleLine) {
  const auto line = [this] { return world.braille.Shown.toStdString() + '@' + std::to_string(world.braille.Cursor); };
  speech->VoiceCommand(Speech::SpeakNow, 0, u"čas"_qs, 0, 2);
  speech->Signal(Speech::Refused);
  speech->StopSpeech();
  speech->VoiceCommand(Speech::SpeakNow, 0, u"jen hlas"_qs, 0, 0, 1);
  EXPECT_EQ(line(), "čas@2");
  Heard();
  speech->VoiceCommand(Speech::SpeakPart, 0, u"jen řádek"_qs, 1);
  EXPECT_EQ(line(), "jen řádek@0");
  EXPECT_EQ(Heard(), "");
  speech->FocusRead(u"Čas:"_qs, u"8:30"_qs, 1, 3);
  EXPECT_EQ(line(), "Čas: 8:30@6");
}

TEST_F(SpeechTest, SignalsAreFilesOfTheSoundFolder) {
  for (const int code : {11, 8, 7, 3}) speech->Signal(code);
  EXPECT_EQ(Heard(), "sound: refused.wav; sound: end.wav; sound: empty.wav");
}

TEST_F(SpeechTest, WithoutAVoiceOnlyThePlainSoundsAreLeft) {
  Speech silent(nullptr, world.braille, world.sound, u"/app/sound/"_qs);
  silent.Say(u"nic"_qs);
  silent.FocusRead(u"a"_qs, u"b"_qs);
  silent.Signal(Speech::Refused);
  silent.StopSpeech();
  EXPECT_FALSE(silent.IsSpeaking());
  silent.PlaySoundWait(u"/app/sound/space.wav"_qs);
  EXPECT_EQ(Heard(), "sound: space.wav");
  EXPECT_TRUE(world.braille.Shown.isEmpty());
}

TEST_F(SpeechTest, AWaitLastsAsLongAsTheSoundAndOneWithinAnotherEndsBoth) {
  world.sound.Hold = true;
  QStringList order;
  QTimer::singleShot(0, [&] {
    QTimer::singleShot(0, [&] { world.sound.Finish(); });
    order << u"clock goes on"_qs;
    speech->PlayToEnd(u"inner.wav"_qs);
    order << u"inner"_qs;
  });
  speech->PlaySoundWait(u"/app/sound/space.wav"_qs);
  order << u"outer"_qs;
  EXPECT_EQ(order.join(u"; "_qs).toStdString(), "clock goes on; inner; outer");
  EXPECT_EQ(Heard(), "stop; sound: space.wav; sound: inner.wav");
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
  speech->PlaySound(QString());
  EXPECT_FALSE(world.sound.IsPlaying());
}

TEST_F(SpeechTest, EveryCallIsALineOfTheTranscript) {
  const LogCapture log(u"talnik.speech=true"_qs);
  speech->Say(u"první \"řádek\"\ndruhý"_qs);
  speech->SayPart(0, u"část"_qs);
  speech->Say(u"a"_qs);
  speech->FocusRead(u"Čas:"_qs, u"8:30"_qs);
  speech->Signal(Speech::Refused);
  speech->SayImportant(u"budík"_qs);
  speech->PlaySoundWait(u"/app/sound/space.wav"_qs);
  EXPECT_EQ(
      LogCapture::Lines().join(u"; "_qs).toStdString(),
      R"(say "první \"řádek\"\ndruhý"; part "část"; char "a"; focus "Čas: 8:30"; signal 11; alarm "budík"; stop; )"
      "sound space.wav");
}

}  // namespace
}  // namespace talnik::test
