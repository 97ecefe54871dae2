#pragma once

#include "platform/Voice.h"

#include <memory>

namespace talnik {

class SpeechdSession;
class Worker;

/// Speech through speech-dispatcher. All that can block happens on a worker thread; the calls hand over and return. A
/// daemon that is missing makes the program silent, one that was lost is looked for again by the next text. It is
/// started when it is not there, unless SPEECHD_ADDRESS says which one to use.
class SpeechdVoice : public Voice {
 public:
  SpeechdVoice();
  ~SpeechdVoice() override;

  void Speak(const QString& text, Join join, Urgency urgency) override;
  void SpeakCharacter(const QString& character, Join join) override;
  void Stop() override;
  Support Supported() const override;
  bool IsSpeaking() const override;

 private:
  std::shared_ptr<SpeechdSession> session_;
  std::unique_ptr<Worker> worker_;
};

}  // namespace talnik
