#pragma once

#include "platform/Braille.h"
#include "platform/Sound.h"
#include "platform/Voice.h"

#include <QObject>
#include <QString>

#include <functional>

namespace talnik {

/// The one gate through which the program speaks, writes to the Braille line and plays its cues. Without a voice the
/// speech calls do nothing. Every call is also a line of the logging category "talnik.speech".
///
/// A new text cuts what is being said; only a text of kind 1 that follows another text within the same turn of the
/// event loop is heard behind it, so that one key gives one utterance and the next key cuts all of it.
class Speech : public QObject {
  Q_OBJECT

 public:
  /// Kinds of VoiceCommand.
  enum Kind { SpeakPart = 1, SpeakNow = 2, AskSpeaking = 3, StopSpeaking = 4, PlaySignal = 5, Prepare = 6, Focus = 12 };
  /// Codes of Kind::PlaySignal.
  enum SignalCode { EmptyField = 7, EndOfList = 8, Refused = 11 };

  /// `soundFolder` holds the signals and ends in a separator. `voice` may be null.
  Speech(Voice* voice, Braille& braille, Sound& sound, QString soundFolder);

  Voice::Support Supported() const { return voice_ ? voice_->Supported() : Voice::Support::Missing; }

  /// The general command; see the kinds. The result is nonzero for AskSpeaking while speech is running.
  int VoiceCommand(int kind, int code, const QString& text, int skipVoice = 0, int brailleOffset = 0,
                   int skipBraille = 0);

  void Say(const QString& text) { VoiceCommand(SpeakNow, 0, text); }
  void SayPart(int code, const QString& text) { VoiceCommand(SpeakPart, code, text); }
  int StopSpeech() { return VoiceCommand(StopSpeaking, 0, QString()); }
  bool IsSpeaking() { return VoiceCommand(AskSpeaking, 0, QString()) != 0; }
  void Signal(int code) { VoiceCommand(PlaySignal, code, QString()); }
  /// The same; `sounded` runs from the event loop when the signal has been heard, or at once when it cannot be.
  void Signal(int code, const std::function<void()>& sounded);

  /// Speaks an alarm's words, which other programs' speech gives way to.
  void SayImportant(const QString& text);

  /// Reads a field that just got the focus: prefix, then text, with the cursor of the field on the Braille line.
  /// `interrupt` false lets what is being said end first.
  void FocusRead(const QString& prefix, const QString& text, int selStart = 0, int selLength = 0,
                 bool interrupt = true);

  /// Braille alone; `cursor` counts from 0.
  void BrailleShow(const QString& text, int cursor);
  void BrailleRole(int role);

  /// The audible progress of a long job, 0 to 100.
  void ProgressSound(int percent);

  /// Stops the speech, plays the file to its end and returns then; keys and mouse are held back meanwhile, clock and
  /// screen go on. A sound that cannot be played takes no time.
  void PlaySoundWait(const QString& path);
  /// The same without stopping the speech first.
  void PlayToEnd(const QString& path);
  /// Starts the file and returns at once; an empty path stops what plays. `finished` tells how the sound ended.
  void PlaySound(const QString& path, Sound::Finished finished = {});

 private:
  int Carry(int kind, int code, const QString& text);
  bool PlaySignalFile(int code, Sound::Finished finished);
  void Speak(const QString& text, bool character, bool append, Voice::Urgency urgency = Voice::Urgency::Text);

  Voice* voice_;
  Braille& braille_;
  Sound& sound_;
  QString soundFolder_;
  bool spokeInThisTurn_ = false;
  int progressStep_ = -1;
};

}  // namespace talnik
