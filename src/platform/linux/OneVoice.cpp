#include "platform/linux/OneVoice.h"

#include <utility>

namespace talnik {
namespace {

/// Longer than the buses take to answer, shorter than a user waits.
constexpr int LongestWait = 1000;

}  // namespace

OneVoice::OneVoice(std::unique_ptr<Voice> own, std::unique_ptr<Voice> reader, std::unique_ptr<ReaderWatch> watch)
    : own_(std::move(own)), reader_(std::move(reader)), watch_(std::move(watch)) {
  QObject::connect(watch_.get(), &ReaderWatch::Changed, &patience_, [this] {
    if (now_ || watch_->IsKnown() || watch_->IsRunning()) Decide();
  });
  patience_.setSingleShot(true);
  QObject::connect(&patience_, &QTimer::timeout, &patience_, [this] { Decide(); });
  if (watch_->IsKnown()) {
    Decide();
  } else {
    patience_.start(LongestWait);
  }
}

Voice& OneVoice::Chosen() const {
  const bool reader = speaker_ == Speaker::Reader || (speaker_ == Speaker::Automatic && watch_->IsRunning());
  return reader ? *reader_ : *own_;
}

void OneVoice::Decide() {
  patience_.stop();
  Voice* before = std::exchange(now_, &Chosen());
  if (before && before != now_) before->Stop();
  for (const auto& words : std::exchange(held_, {})) words(*now_);
}

void OneVoice::ChooseSpeaker(Speaker speaker) {
  speaker_ = speaker;
  if (now_ || speaker != Speaker::Automatic) Decide();
}

void OneVoice::Say(Join join, std::function<void(Voice&)> words) {
  if (now_) return words(*now_);
  if (join == Join::Cut) held_.clear();
  held_.push_back(std::move(words));
}

void OneVoice::Speak(const QString& text, Join join, Urgency urgency) {
  Say(join, [text, join, urgency](Voice& voice) { voice.Speak(text, join, urgency); });
}

void OneVoice::SpeakCharacter(const QString& character, Join join) {
  Say(join, [character, join](Voice& voice) { voice.SpeakCharacter(character, join); });
}

void OneVoice::Stop() {
  held_.clear();
  if (now_) now_->Stop();
}

Voice::Support OneVoice::Supported() const {
  return now_ ? now_->Supported() : Support::Unknown;
}

bool OneVoice::IsSpeaking() const {
  return now_ ? now_->IsSpeaking() : !held_.empty();
}

}  // namespace talnik
