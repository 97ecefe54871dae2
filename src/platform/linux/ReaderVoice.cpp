#include "platform/linux/ReaderVoice.h"

#include <QGuiApplication>

#include <utility>

namespace talnik {
namespace {

constexpr int PerCharacter = 65;  // ms
/// How long the keyboard may be with nobody when one window hands it to another.
constexpr int LongestMove = 1000;

}  // namespace

ReaderVoice::ReaderVoice(std::function<ReaderFocus()> look, std::function<void(const QString&)> tell)
    : look_(std::move(look)), tell_(std::move(tell)) {
  waiting_.setSingleShot(true);
  QObject::connect(&waiting_, &QTimer::timeout, &waiting_, [this] { Flush(); });
  QObject::connect(qGuiApp, &QGuiApplication::focusObjectChanged, &waiting_, [this](QObject* object) {
    if (object && isOnTheMove_) waiting_.start(0);
  });
}

void ReaderVoice::Speak(const QString& text, Join join, Urgency urgency) {
  if (join == Join::Cut) Stop();
  text_ = text_.isEmpty() ? text : QString(text_ + u' ' + text);
  isImportant_ = isImportant_ || urgency == Urgency::Important;
  if (text_.isEmpty()) return;
  isOnTheMove_ = !isImportant_ && !look_().control;
  waiting_.start(isOnTheMove_ ? LongestMove : 0);
}

void ReaderVoice::SpeakCharacter(const QString& character, Join join) {
  if (!look_().isText) return Speak(character, join, Urgency::Text);
  if (join == Join::Cut) Stop();
}

void ReaderVoice::Stop() {
  waiting_.stop();
  text_.clear();
  isImportant_ = false;
  isOnTheMove_ = false;
  said_ = QDeadlineTimer();
}

void ReaderVoice::Flush() {
  const ReaderFocus focus = look_();
  said_ = QDeadlineTimer(PerCharacter * text_.size());
  const QString text = isImportant_ ? text_ : Untold(focus);
  before_ = focus;
  text_.clear();
  isImportant_ = false;
  isOnTheMove_ = false;
  if (!text.isEmpty()) tell_(text);
}

QString ReaderVoice::Untold(const ReaderFocus& focus) const {
  if (focus.inPopup) return {};
  if (focus.isText && focus.control == before_.control) {
    // A value that a key other than a letter has changed is told whole, and by us alone.
    if (focus.value != before_.value && text_ == focus.value) return text_;
    if (focus.value.contains(text_) || before_.value.contains(text_)) return {};
  }
  // Where nothing has moved the user asked to hear it again, of which the reader knows nothing.
  const bool moved = focus.control != before_.control || focus.words != before_.words;
  return moved ? WhatIsLeft(text_, focus.words) : text_;
}

}  // namespace talnik
