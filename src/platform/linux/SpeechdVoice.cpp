#include "platform/linux/SpeechdVoice.h"

#include "platform/linux/SpeechText.h"
#include "platform/linux/SpeechdSession.h"
#include "platform/linux/Worker.h"

namespace talnik {

SpeechdVoice::SpeechdVoice()
    : session_(std::make_shared<SpeechdSession>()),
      worker_(std::make_unique<Worker>([session = session_] { session->Run(); })) {}

SpeechdVoice::~SpeechdVoice() {
  session_->Close();
}

void SpeechdVoice::Speak(const QString& text, Join join, Urgency urgency) {
  session_->Speak({.text = text, .urgency = urgency}, join);
}

void SpeechdVoice::SpeakCharacter(const QString& character, Join join) {
  bool isWords = false;
  const QString text = SpeakableCharacter(character, isWords);
  session_->Speak({.text = text, .isCharacter = !isWords}, join);
}

void SpeechdVoice::Stop() {
  session_->Stop();
}

Voice::Support SpeechdVoice::Supported() const {
  return session_->Supported();
}

bool SpeechdVoice::IsSpeaking() const {
  return session_->IsSpeaking();
}

}  // namespace talnik
