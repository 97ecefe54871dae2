#pragma once

#include "platform/Voice.h"
#include "platform/linux/ReaderVoice.h"
#include "platform/linux/ReaderWatch.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace talnik {

/// One voice at a time: our own, or the screen reader's while one is running, unless the user has chosen. What is to be
/// said before it is known whether a reader runs is held back for a moment.
class OneVoice : public Voice {
 public:
  OneVoice(std::unique_ptr<Voice> own, std::unique_ptr<Voice> reader, std::unique_ptr<ReaderWatch> watch);

  void Speak(const QString& text, Join join, Urgency urgency) override;
  void SpeakCharacter(const QString& character, Join join) override;
  void Stop() override;
  Support Supported() const override;
  bool IsSpeaking() const override;
  void ChooseSpeaker(Speaker speaker) override;

 private:
  Voice& Chosen() const;
  void Say(Join join, std::function<void(Voice&)> words);
  void Decide();

  std::unique_ptr<Voice> own_;
  std::unique_ptr<Voice> reader_;
  std::unique_ptr<ReaderWatch> watch_;
  Voice* now_ = nullptr;  ///< null until it is known which
  Speaker speaker_ = Speaker::Automatic;
  std::vector<std::function<void(Voice&)>> held_;
  QTimer patience_;
};

}  // namespace talnik
